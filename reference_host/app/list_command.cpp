#include "reference_host/app/list_command.h"

#include "exporters/exporter_table.h"
#include "reference_host/app/exporter_options.h"
#include "reference_host/app/messages.h"
#include "reference_host/app/opened_document.h"
#include "reference_host/app/plugin_library.h"
#include "reference_host/desktop/wx_runtime.h"
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

ordered_json describe(size_t index, const std::string& name,
                      const std::vector<Panel_option>& options)
{
    ordered_json exporter = {{"index", index}, {"name", name}, {"folder", folder_name(name)}};
    const auto& table = QZ::TOVIRAEXPORT::exporter_facts;
    const auto facts = std::find_if(table.begin(), table.end(),
                                    [&](const Exporter_facts& row) { return name == row.name; });
    if (facts != table.end())
        add_facts(exporter, *facts);
    exporter["options"] = json_of(options);
    return exporter;
}

void print(size_t index, const std::string& name, const std::vector<Panel_option>& options)
{
    std::printf("%zu  %s\n", index, name.c_str());
    for (const Panel_option& option : options)
        std::printf("     %s\n", line_of(option).c_str());
}

} // namespace

int list_exporters(const std::string& plugin, bool as_json)
{
    const Wx_runtime wx;
    const Plugin_library library(plugin);
    const std::vector<std::string> names = library.exporter_names();
    ordered_json exporters = ordered_json::array();
    for (size_t index = 0; index < names.size(); ++index) {
        const auto exporter = library.make_exporter(static_cast<int>(index));
        const std::vector<Panel_option> options = options_of(*exporter);
        if (as_json)
            exporters.push_back(describe(index, names[index], options));
        else
            print(index, names[index], options);
    }
    if (as_json) // a plug-in may name an exporter in any bytes
        std::puts(exporters.dump(2, ' ', false, ordered_json::error_handler_t::replace).c_str());
    return 0;
}

int list_nodes(const Nodes_command& command)
{
    const std::unique_ptr<Shader_graph> graph =
        open_document(command.document, command.search_path);
    ordered_json nodes = ordered_json::array();
    for (const auto& node : graph->nodes) {
        const Place& place = node->place;
        if (command.as_json)
            nodes.push_back({{"name", full_name(*node)},
                             {"category", node->category},
                             {"type", type_name(node->type)},
                             {"file", place.file},
                             {"line", place.line}});
        else
            std::printf("%s  %s  %s  %s:%d\n", printable(full_name(*node)).c_str(),
                        node->category.c_str(), type_name(node->type),
                        printable(place.file).c_str(), place.line);
    }
    if (command.as_json)
        std::puts(nodes.dump(2, ' ', false, ordered_json::error_handler_t::replace).c_str());
    return 0;
}

} // namespace reference_host
