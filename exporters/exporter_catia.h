// Exports a surface shader as one CgFX effect (.fx) for CATIA.
//
// The compiler is told to reach all lights through an interface named Light and a list named
// lights; three implementations of that interface (exporters/catia_lights.txt) are appended to its
// code.
#ifndef EXPORTERS_EXPORTER_CATIA_H
#define EXPORTERS_EXPORTER_CATIA_H

#include "exporters/application_exporter.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

// The panel holds only the export-file row; what the compiler is told is fixed, except for the
// tangent streams and a preference.
class Exporter_catia : public Application_exporter
{
public:
    Exporter_catia();

    // True when the file was written; every failure of the export itself is shown in a box.
    bool export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view) override;
};

// Exports the selected node to `path`. `parent` and `interactive` are compile_group's. `error` is
// empty on success and holds the message for the user on failure.
bool export_catia_shader(TSDK::ITovira* app, TSDK::IGraph_view* view, const wxString& path,
                         wxWindow* parent, bool interactive, wxString& error);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
