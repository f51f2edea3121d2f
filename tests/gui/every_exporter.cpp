#include "tests/gui/every_exporter.h"

#include "exporters/exporter_default.h"
#include "exporters/exporter_swrc.h"
#include "plugin/tovira_exporter_plugin.h"

namespace QZ
{
namespace TEST
{

using TOVIRAEXPORT::Exporter_base;

std::vector<std::unique_ptr<Exporter_base>> make_every_exporter()
{
    std::vector<std::unique_ptr<Exporter_base>> exporters;
    TOVIRAEXPORT::Tovira_exporter_plugin registry;
    for (int i = 0; i < registry.get_num_exporters(); ++i)
        exporters.emplace_back(static_cast<Exporter_base*>(registry.get_exporter(i)));
    exporters.push_back(std::make_unique<TOVIRAEXPORT::Exporter_swrc>());
    exporters.back()->initialize();
    exporters.push_back(std::make_unique<TOVIRAEXPORT::Exporter_default>());
    exporters.back()->initialize();
    return exporters;
}

} // namespace TEST
} // namespace QZ
