// Any bytes as the value of every setting of every exporter, which comes back as it went in, and as
// the name of a file.
#include "export_common/output_names.h"
#include "exporter_base/bytes.h"
#include "exporter_base/exporter_base.h"
#include "exporters/exporter_table.h"
#include "exporters/make_exporter.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

using namespace QZ::TOVIRAEXPORT;

namespace
{

void require(bool condition)
{
    if (!condition)
        std::abort();
}

std::vector<std::unique_ptr<Exporter_base>> make_exporters()
{
    std::vector<std::unique_ptr<Exporter_base>> exporters;
    while (std::unique_ptr<Exporter_base> exporter = make_exporter(exporters.size()))
        exporters.push_back(std::move(exporter));
    return exporters;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // Never freed: exporters leave the texts that they lent to a host.
    static const auto& exporters = *new std::vector(make_exporters());
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string bytes = text.c_str(); // what the border takes: up to the first NUL
    require(to_bytes(from_bytes(bytes.c_str())) == bytes);

    for (const auto& exporter : exporters) {
        for (unsigned int i = 0; i < exporter->get_num_settings(); ++i) {
            exporter->set_setting_value(i, bytes.c_str());
            require(exporter->get_setting_value(i) == bytes);
        }
    }

    split_output_name(from_bytes(bytes.c_str()), {wxT("fx"), wxT("cgfx")});
    return 0;
}
