// Exports a surface shader as one CgFX file (.cgfx) for Autodesk Softimage (XSI).
#ifndef EXPORTERS_EXPORTER_XSI_H
#define EXPORTERS_EXPORTER_XSI_H

#include "exporters/application_exporter.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

// The panel holds only the export-file row; what the compiler is told is fixed. How the export goes
// and what it reports: Application_exporter::export_cgfx_surface.
class Exporter_xsi : public Application_exporter
{
public:
    Exporter_xsi();

    bool export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view) override;
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
