#include "reference_host/app/batch_items.h"

#include "reference_host/output/file_names.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <set>
#include <sstream>
#include <stdexcept>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

constexpr const char* list_on_standard_input = "-";

bool is_document(const fs::directory_entry& entry)
{
    std::error_code failure;
    return entry.path().extension() == ".mtlx" && entry.is_regular_file(failure);
}

template<typename Iterator>
std::vector<std::string> documents_in(const std::string& folder)
{
    std::vector<std::string> files;
    std::error_code failure;
    for (Iterator entry(folder, failure), end; !failure && entry != end; entry.increment(failure)) {
        if (is_document(*entry))
            files.push_back(entry->path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// The documents that an input of the command line stands for. One that does not exist stands for
// itself, and fails later.
std::vector<std::string> documents_of(const std::string& input, bool is_recursive)
{
    std::error_code failure;
    if (!fs::is_directory(input, failure))
        return {input};
    return is_recursive ? documents_in<fs::recursive_directory_iterator>(input)
                        : documents_in<fs::directory_iterator>(input);
}

std::vector<std::string> all_documents(const Batch_command& command)
{
    std::vector<std::string> documents;
    const auto add = [&](const std::string& input) {
        const std::vector<std::string> more = documents_of(input, command.is_recursive);
        documents.insert(documents.end(), more.begin(), more.end());
    };
    for (const std::string& input : command.inputs) {
        if (input != list_on_standard_input) {
            add(input);
            continue;
        }
        for (std::string line; std::getline(std::cin, line);) {
            if (!line.empty())
                add(line);
        }
    }
    return documents;
}

std::vector<std::string> shown_names(const Shader_graph& graph)
{
    std::vector<std::string> names;
    for (const Node* node : shown_nodes(graph))
        names.push_back(full_name(*node));
    return names;
}

std::vector<int> chosen_exporters(const Batch_command& command, const Plugin_library& plugin,
                                  int count)
{
    std::vector<int> indices;
    for (const std::string& wanted : command.exporters)
        indices.push_back(plugin.find_exporter(wanted));
    for (int index = 0; command.exporters.empty() && index < count; ++index)
        indices.push_back(index);
    return indices;
}

// The items of one document without exporters and places.
std::vector<Export_item> items_of(const std::string& file, const Batch_command& command,
                                  Document_store& documents)
{
    Export_item item;
    item.document = file;
    std::vector<Export_item> items;
    try {
        const std::shared_ptr<Shader_graph> graph = documents.open(file);
        const std::vector<std::string> names =
            command.materials.empty() ? shown_names(*graph) : command.materials;
        for (const std::string& name : names) {
            item.node = name;
            item.errors.clear();
            if (!graph->find_node(name))
                item.errors = {{Severity::error, no_such_node(*graph, name), {file, 0}}};
            items.push_back(item);
        }
        if (names.empty())
            item.errors = {
                {Severity::error, "there is no surface material and no surface shader", {file, 0}}};
    } catch (const Failure& failure) {
        item.errors = failure.messages();
    }
    if (items.empty())
        items.push_back(item);
    return items;
}

std::string value_of(const std::string& word, const Export_item& item)
{
    if (word == "material")
        return item.node.substr(item.node.rfind('/') + 1);
    if (word == "exporter")
        return folder_name(item.exporter_name);
    if (word == "document")
        return fs::path(item.document).stem().string();
    throw std::invalid_argument("--name: '{" + word +
                                "}' is none of {material}, {exporter}, "
                                "{document}");
}

std::string fill_part(const std::string& part, const Export_item& item)
{
    std::string name;
    for (size_t at = 0; at < part.size();) {
        const size_t end = part[at] == '{' ? part.find('}', at) : std::string::npos;
        if (end == std::string::npos) {
            name += part[at++];
        } else {
            name += value_of(part.substr(at + 1, end - at - 1), item);
            at = end + 1;
        }
    }
    return safe_file_name(name);
}

} // namespace

std::string fill_pattern(const std::string& pattern, const Export_item& item)
{
    std::istringstream parts(pattern);
    fs::path name;
    for (std::string part; std::getline(parts, part, '/');)
        name /= fill_part(part, item);
    if (name.empty())
        throw std::invalid_argument("--name is empty");
    return name.string();
}

std::vector<Export_item> make_items(const Batch_command& command, const Plugin_library& plugin,
                                    Document_store& documents)
{
    fill_pattern(command.name, {}); // reports a wrong pattern even without documents
    const std::vector<std::string> names = plugin.exporter_names();
    const std::vector<int> exporters =
        chosen_exporters(command, plugin, static_cast<int>(names.size()));
    std::vector<Export_item> items;
    std::set<std::string> taken;
    for (const std::string& file : all_documents(command)) {
        for (Export_item& item : items_of(file, command, documents)) {
            if (!item.errors.empty()) {
                items.push_back(item);
                continue;
            }
            for (const int index : exporters) {
                item.exporter = index;
                item.exporter_name = names[static_cast<size_t>(index)];
                item.output =
                    (fs::path(command.folder) / fill_pattern(command.name, item)).string();
                item.errors.clear();
                if (!taken.insert(item.output).second)
                    item.errors = {{Severity::error,
                                    item.output + " is written by an earlier item of this batch; "
                                                  "choose other names with --name",
                                    {}}};
                items.push_back(item);
            }
        }
    }
    return items;
}

} // namespace reference_host
