#include "tests/gui/every_exporter.h"

#include "exporters/exporter_table.h"
#include "exporters/make_exporter.h"

namespace QZ
{
namespace TEST
{

using TOVIRAEXPORT::Exporter_base;

std::vector<std::unique_ptr<Exporter_base>> make_every_exporter()
{
    std::vector<std::unique_ptr<Exporter_base>> exporters;
    for (size_t row = 0; row < TOVIRAEXPORT::exporter_facts.size(); ++row)
        exporters.push_back(TOVIRAEXPORT::make_exporter(row));
    return exporters;
}

} // namespace TEST
} // namespace QZ
