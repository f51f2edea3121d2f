#include "reference_host/app/commands.h"

#include "reference_host/app/export_job.h"
#include "reference_host/app/interruption.h"
#include "reference_host/app/output_place.h"
#include "reference_host/app/plugin_library.h"
#include "reference_host/app/wx_runtime.h"
#include "reference_host/output/file_names.h"
#include "reference_host/output/write_failure.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace reference_host
{

using QZ::TSDK::IExporter;

namespace
{

namespace fs = std::filesystem;

const char* note_of(Exported_file::State state)
{
    switch (state) {
    case Exported_file::State::unchanged:
        return "  unchanged";
    case Exported_file::State::skipped:
        return "  skipped";
    case Exported_file::State::written:
        break;
    }
    return "";
}

// What went wrong on standard error, the files on standard output.
void print_outcome(const Export_outcome& outcome, const char* indent)
{
    print_messages(outcome);
    for (const Exported_file& file : outcome.files)
        std::printf("%s%s  %zu bytes%s\n", indent, file.path.c_str(), file.content.size(),
                    note_of(file.state));
}

// An empty folder for files on their way to standard output.
class Scratch_folder
{
public:
    Scratch_folder() : m_path((fs::temp_directory_path() / "shader-export-XXXXXX").string())
    {
        if (!mkdtemp(m_path.data()))
            throw Write_failure(m_path, errno);
    }
    ~Scratch_folder()
    {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }
    Scratch_folder(const Scratch_folder&) = delete;
    Scratch_folder& operator=(const Scratch_folder&) = delete;

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

Export_outcome export_to_standard_output(const Opened_document& document, IExporter& exporter,
                                         const Scene_request& request, Replacement& replacement)
{
    const Scratch_folder folder;
    const std::string output = export_file_name(folder.path() + "/", document.node().name);
    Export_outcome outcome = run_export(document, exporter, output, request, replacement);
    if (outcome.files.size() > 1)
        throw std::invalid_argument("standard output takes one file, and '" +
                                    std::string(exporter.get_name()) + "' wrote " +
                                    std::to_string(outcome.files.size()));
    for (const Exported_file& file : outcome.files)
        std::fwrite(file.content.data(), 1, file.content.size(), stdout);
    outcome.files.clear();
    return outcome;
}

// The exit status of an export or of several: that of the signal for an interrupted one.
int exit_status(bool is_success)
{
    constexpr int signal_base = 128; // as shells have it
    if (const int signal = Interruption::signal())
        return signal_base + signal;
    return is_success ? 0 : 1;
}

} // namespace

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
    const bool is_streamed = command.output == standard_output;
    const std::string output =
        is_streamed ? std::string() : export_file_name(command.output, document.node().name);
    const Wx_runtime wx;
    const Interruption interruption;
    const Plugin_library plugin(command.plugin);
    const auto exporter = plugin.make_exporter(plugin.find_exporter(command.exporter));
    Replacement replacement(command.scene.overwrite);
    const Export_outcome outcome =
        is_streamed ? export_to_standard_output(document, *exporter, command.scene, replacement)
                    : run_export(document, *exporter, output, command.scene, replacement);
    print_outcome(outcome, "");
    return exit_status(outcome.is_success());
}

int export_batch(const Batch_command& command)
{
    const Opened_document document(command.scene);
    const Wx_runtime wx;
    const Interruption interruption;
    const Plugin_library plugin(command.plugin);
    const std::vector<std::string> names = plugin.exporter_names();
    std::vector<int> indices;
    for (const std::string& wanted : command.exporters)
        indices.push_back(plugin.find_exporter(wanted));
    for (int index = 0; command.exporters.empty() && index < static_cast<int>(names.size());
         ++index)
        indices.push_back(index);
    Replacement replacement(command.scene.overwrite);
    int failures = 0;
    for (const int index : indices) {
        if (replacement.has_quit() || Interruption::signal() != 0)
            break;
        const std::string& name = names[static_cast<size_t>(index)];
        const std::string folder = (fs::path(command.folder) / folder_name(name)).string();
        make_folder(folder);
        std::printf("%s\n", name.c_str());
        std::fflush(stdout); // before what the export says on standard error
        const auto exporter = plugin.make_exporter(index);
        const std::string output = export_file_name(folder, document.node().name);
        const Export_outcome outcome =
            run_export(document, *exporter, output, command.scene, replacement);
        print_outcome(outcome, "  ");
        if (!outcome.is_success())
            std::printf("  failed\n");
        failures += outcome.is_success() ? 0 : 1;
    }
    return exit_status(failures == 0);
}

} // namespace reference_host
