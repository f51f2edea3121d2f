#include "reference_host/app/commands.h"

#include "reference_host/app/export_job.h"
#include "reference_host/app/plugin_library.h"
#include "reference_host/app/wx_runtime.h"

#include <cctype>
#include <cstdio>
#include <filesystem>
#include <stdexcept>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

// "Custom CgFX (.cgfx)" becomes "custom_cgfx_cgfx": fit for a file name.
std::string file_name_of(const std::string& exporter_name)
{
    std::string name;
    for (const unsigned char c : exporter_name) {
        if (std::isalnum(c))
            name += static_cast<char>(std::tolower(c));
        else if (!name.empty() && name.back() != '_')
            name += '_';
    }
    while (!name.empty() && name.back() == '_')
        name.pop_back();
    return name;
}

// What went wrong on standard error, the files on standard output.
void print_outcome(const Export_outcome& outcome, const char* indent)
{
    print_diagnostics(outcome.diagnostics);
    for (const std::string& reason : outcome.reasons)
        std::fprintf(stderr, "shader-export: error: %s\n", reason.c_str());
    for (const Written_file& file : outcome.files)
        std::printf("%s%s  %zu bytes\n", indent, file.path.c_str(), file.content.size());
}

// The folder of one exporter in that of a batch, made when missing.
fs::path make_exporter_folder(const std::string& batch, const std::string& exporter_name)
{
    fs::path folder = fs::path(batch) / file_name_of(exporter_name);
    std::error_code failure;
    fs::create_directories(folder, failure);
    if (failure)
        throw std::runtime_error("cannot make the folder '" + folder.string() +
                                 "': " + failure.message());
    return folder;
}

} // namespace

int list_exporters(const std::string& plugin)
{
    const std::vector<std::string> names = Plugin_library(plugin).exporter_names();
    for (size_t index = 0; index < names.size(); ++index)
        std::printf("%zu  %s\n", index, names[index].c_str());
    return 0;
}

int list_nodes(const std::string& document, const std::vector<std::string>& search_path)
{
    const std::unique_ptr<Shader_graph> graph = open_document(document, search_path);
    for (const auto& node : graph->nodes)
        std::printf("%s  %s  %s  %s:%d\n", full_name(*node).c_str(), node->category.c_str(),
                    type_name(node->type), node->place.file.c_str(), node->place.line);
    return 0;
}

int export_document(const Export_command& command)
{
    const Opened_document document(command.scene);
    const Wx_runtime wx;
    const Plugin_library plugin(command.plugin);
    const auto exporter = plugin.make_exporter(plugin.find_exporter(command.exporter));
    const Export_outcome outcome = run_export(document, *exporter, command.output, command.scene);
    print_outcome(outcome, "");
    return outcome.is_success() ? 0 : 1;
}

int export_batch(const Batch_command& command)
{
    const Opened_document document(command.scene);
    const Wx_runtime wx;
    const Plugin_library plugin(command.plugin);
    const std::vector<std::string> names = plugin.exporter_names();
    std::vector<int> indices;
    for (const std::string& wanted : command.exporters)
        indices.push_back(plugin.find_exporter(wanted));
    for (int index = 0; command.exporters.empty() && index < static_cast<int>(names.size());
         ++index)
        indices.push_back(index);
    int failures = 0;
    for (const int index : indices) {
        const std::string& name = names[static_cast<size_t>(index)];
        const fs::path folder = make_exporter_folder(command.folder, name);
        std::printf("%s\n", name.c_str());
        std::fflush(stdout); // before what the export says on standard error
        const auto exporter = plugin.make_exporter(index);
        const std::string output = (folder / document.node().name).string();
        const Export_outcome outcome = run_export(document, *exporter, output, command.scene);
        print_outcome(outcome, "  ");
        if (!outcome.is_success())
            std::printf("  failed\n");
        failures += outcome.is_success() ? 0 : 1;
    }
    return failures == 0 ? 0 : 1;
}

} // namespace reference_host
