// Exports a surface shader as one CgFX file (.cgfx) for Autodesk Maya.
#ifndef EXPORTERS_EXPORTER_MAYA_H
#define EXPORTERS_EXPORTER_MAYA_H

#include "exporter_base/exporter_base.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

// The panel holds only the export-file row; what the compiler is told is fixed. How the export goes
// and what it reports: export_cgfx_surface (exporters/application_export.h).
class Exporter_maya : public Exporter_base
{
public:
    Exporter_maya();

    bool export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view) override;
    int create_window(wxWindow* parent, int width, TSDK::IGraph_view* view) override;
    void initialize() override;
    const char* get_language() const override;
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
