#include "reference_host/app/commands.h"

#include "reference_host/app/build_plan.h"
#include "reference_host/app/export_item.h"
#include "reference_host/app/interruption.h"
#include "reference_host/app/item_record.h"
#include "reference_host/app/output_place.h"
#include "reference_host/app/plugin_library.h"
#include "reference_host/desktop/wx_runtime.h"
#include "reference_host/output/write_failure.h"
#include "reference_host/system/temporary_folder.h"

#include <cstdio>
#include <filesystem>
#include <stdexcept>

namespace reference_host
{

namespace fs = std::filesystem;
using QZ::TSDK::IExporter;

namespace
{

// What went wrong on standard error, the files on standard output.
void print_outcome(const Export_outcome& outcome, const Opened_document& document)
{
    print_messages(messages_of(outcome, document));
    for (const Exported_file& file : outcome.files) {
        const bool is_written = file.state == Exported_file::State::written;
        std::printf("%s  %zu bytes%s%s\n", printable(file.path).c_str(), file.content.size(),
                    is_written ? "" : "  ", is_written ? "" : state_name(file.state));
    }
}

Export_outcome export_to_standard_output(const Opened_document& document, IExporter& exporter,
                                         const Scene_request& request, Replacement& replacement)
{
    const Temporary_folder folder;
    const std::string output = export_file_name(folder.path() + "/", document.node().name);
    Scene_request here = request;
    here.texture_base = ".";
    Export_outcome outcome = run_export(document, exporter, output, here, replacement);
    if (outcome.files.size() > 1)
        throw std::invalid_argument("standard output takes one file, and '" +
                                    std::string(exporter.get_name()) + "' wrote " +
                                    std::to_string(outcome.files.size()));
    for (const Exported_file& file : outcome.files)
        std::fwrite(file.content.data(), 1, file.content.size(), stdout);
    outcome.files.clear();
    return outcome;
}

// The request with the panel options for this exporter alone.
Scene_request request_for(const Scene_request& all, const Plugin_library& plugin, int exporter)
{
    Scene_request request = all;
    request.options = settings_for(all.options, plugin, exporter);
    return request;
}

// Remembers the export as a batch does, and lists what it read for a build system.
void write_dependencies(const Export_command& command, const Export_item& item,
                        const Item_result& result, const std::string& plugin)
{
    Hash_store hashes;
    write_record(item, key_of(item, command.scene, plugin, hashes), result);
    std::vector<std::string> inputs{plugin};
    for (const Fingerprint& input : result.inputs) {
        if (!input.hash.empty()) // a missing file would stop the build system
            inputs.push_back(input.file);
    }
    write_text(command.depfile, dependency_text(record_file(item), inputs));
}

} // namespace

int exit_status(bool is_success)
{
    constexpr int signal_base = 128;
    if (const int signal = Interruption::signal())
        return signal_base + signal;
    return is_success ? 0 : 1;
}

int export_document(const Export_command& command)
{
    const Opened_document document(command.scene);
    const bool is_streamed = command.output == standard_output;
    const std::string output =
        is_streamed ? std::string() : export_file_name(command.output, document.node().name);
    const fs::path folder = fs::path(output).parent_path();
    if (command.makes_folder && !folder.empty())
        make_folder(folder.string());
    const Wx_runtime wx;
    const Interruption interruption;
    const Plugin_library plugin(command.plugin);
    const int index = plugin.find_exporter(command.exporter);
    const auto exporter = plugin.make_exporter(index);
    const Scene_request request = request_for(command.scene, plugin, index);
    Replacement replacement(command.scene.overwrite);
    const Export_outcome outcome =
        is_streamed ? export_to_standard_output(document, *exporter, request, replacement)
                    : run_export(document, *exporter, output, request, replacement);
    print_outcome(outcome, document);
    if (!command.depfile.empty() && outcome.is_success()) {
        const Export_item item{command.scene.document,
                               full_name(document.node()),
                               index,
                               exporter->get_name(),
                               output,
                               {}};
        write_dependencies(command, item, result_of(outcome, document), plugin.file());
    }
    return exit_status(outcome.is_success());
}

} // namespace reference_host
