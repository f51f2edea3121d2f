// Exports a surface, environment or lens shader as one HLSL effect (.fx) for Autodesk 3ds Max
// (legacy HLSL effects).
#ifndef EXPORTERS_EXPORTER_3DSMAX_H
#define EXPORTERS_EXPORTER_3DSMAX_H

#include "exporters/application_exporter.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

// The panel holds only the export-file row; what the compiler is told depends on nothing but the
// kind of the selected shader.
class Exporter_3dsmax : public Application_exporter
{
public:
    Exporter_3dsmax();

    // True when the file was written; every failure of the export itself is shown in a box.
    bool export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view) override;
};

// Exports the selected node to `path`. `parent` and `interactive` are compile_group's. `error` is
// empty on success and holds the message for the user on failure.
bool export_3dsmax_shader(TSDK::ITovira* app, TSDK::IGraph_view* view, const wxString& path,
                          wxWindow* parent, bool interactive, wxString& error);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
