#include "reference_host/app/list_command.h"

#include "exporters/exporter_table.h"
#include "reference_host/app/plugin_library.h"
#include "reference_host/output/file_names.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

#include <nlohmann/json.hpp>

namespace reference_host
{
namespace
{

using nlohmann::ordered_json;
using QZ::TOVIRAEXPORT::Exporter_facts;
using QZ::TOVIRAEXPORT::Output_file;

void add_facts(ordered_json& exporter, const Exporter_facts& facts)
{
    exporter["language"] = facts.language;
    exporter["kinds"] = ordered_json::array();
    std::istringstream kinds(facts.kinds);
    for (std::string kind; kinds >> kind;)
        exporter["kinds"].push_back(kind);
    exporter["files"] = ordered_json::array();
    for (const Output_file& file : facts.files) {
        if (file.suffix)
            exporter["files"].push_back(
                {{"suffix", file.suffix}, {"text", file.text}, {"checker", file.checker}});
    }
}

ordered_json describe(size_t index, const std::string& name)
{
    ordered_json exporter = {{"index", index}, {"name", name}, {"folder", folder_name(name)}};
    const auto& table = QZ::TOVIRAEXPORT::exporter_facts;
    const auto facts = std::find_if(table.begin(), table.end(),
                                    [&](const Exporter_facts& row) { return name == row.name; });
    if (facts != table.end())
        add_facts(exporter, *facts);
    return exporter;
}

} // namespace

int list_exporters(const std::string& plugin, bool as_json)
{
    const std::vector<std::string> names = Plugin_library(plugin).exporter_names();
    ordered_json exporters = ordered_json::array();
    for (size_t index = 0; index < names.size(); ++index) {
        if (as_json)
            exporters.push_back(describe(index, names[index]));
        else
            std::printf("%zu  %s\n", index, names[index].c_str());
    }
    if (as_json) // a plug-in may name an exporter in any bytes
        std::puts(exporters.dump(2, ' ', false, ordered_json::error_handler_t::replace).c_str());
    return 0;
}

} // namespace reference_host
