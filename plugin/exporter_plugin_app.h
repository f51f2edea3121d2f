// The wx application that the library declares, and the marker of a live plug-in object.
//
// The library runs inside the host's wx application: it never starts wx, creates no application
// object and runs no event loop. Declaring an application all the same sets wx's application
// factory when the library is loaded; the host accepts that.
#ifndef PLUGIN_EXPORTER_PLUGIN_APP_H
#define PLUGIN_EXPORTER_PLUGIN_APP_H

#include <wx/app.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

class Exporter_plugin_app : public wxApp
{
public:
    bool OnInit() override; // true
    int OnRun() override;   // the base class's
};

// The factory: checks that library and wx were built alike (and ends the process if not), then
// makes an application, which the caller owns.
wxAppConsole* wxCreateApp();

// Sets wx's factory to wxCreateApp when the library is loaded.
extern wxAppInitializer wxTheAppInitializer;

// The running application. It is the host's, whatever this type says.
Exporter_plugin_app& wxGetApp();

// Marks that a plug-in object exists, and that it no longer does. Nothing in the library reads the
// marker; it is there for a debugger.
void mark_live_plugin();
void unmark_live_plugin();

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
