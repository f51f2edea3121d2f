#include "exporters/make_exporter.h"

#include "exporters/exporter_3dsmax.h"
#include "exporters/exporter_catia.h"
#include "exporters/exporter_default.h"
#include "exporters/exporter_fxcomposer.h"
#include "exporters/exporter_generic.h"
#include "exporters/exporter_maya.h"
#include "exporters/exporter_swrc.h"
#include "exporters/exporter_table.h"
#include "exporters/exporter_xsi.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

using Create = std::unique_ptr<Exporter_base> (*)();

template<typename Exporter>
constexpr Create creator(const Exporter_row<Exporter>&)
{
    return []() -> std::unique_ptr<Exporter_base> { return std::make_unique<Exporter>(); };
}

template<typename Exporter, int target>
constexpr Create creator(const Exporter_row<Exporter, target>&)
{
    return []() -> std::unique_ptr<Exporter_base> {
        return std::make_unique<Exporter>(typename Exporter::Target_language(target));
    };
}

constexpr std::array creators =
    std::apply([](const auto&... rows) { return std::array{creator(rows)...}; }, exporter_table);

} // namespace

std::unique_ptr<Exporter_base> make_exporter(size_t row)
{
    if (row >= creators.size())
        return nullptr;
    std::unique_ptr<Exporter_base> exporter = creators[row]();
    exporter->initialize();
    return exporter;
}

} // namespace TOVIRAEXPORT
} // namespace QZ
