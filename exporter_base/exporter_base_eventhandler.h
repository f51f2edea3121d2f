// Routes the events of an exporter's panel to the exporter.
#ifndef EXPORTER_BASE_EXPORTER_BASE_EVENTHANDLER_H
#define EXPORTER_BASE_EXPORTER_BASE_EVENTHANDLER_H

#include <wx/event.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

class Exporter_base;

// Embedded in its exporter and pushed onto the exporter's panel while there is one.
class Exporter_base_eventhandler : public wxEvtHandler
{
public:
    explicit Exporter_base_eventhandler(Exporter_base* exporter);

    // The browse button of the export-file row: asks for a file to save and puts its path into the
    // row's text field.
    void on_choose_file(wxCommandEvent& event);

    // The panel goes away with the host's window, without remove_ui: the exporter lets go of it.
    void on_panel_destroyed(wxWindowDestroyEvent& event);

private:
    Exporter_base* m_exporter;

    DECLARE_EVENT_TABLE()
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
