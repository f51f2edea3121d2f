#include "reference_host/app/batch_items.h"
#include "reference_host/app/build_plan.h"
#include "reference_host/app/commands.h"
#include "reference_host/app/item_record.h"
#include "reference_host/output/write_failure.h"

#include <cstdio>
#include <filesystem>

namespace reference_host
{
namespace
{

Planned_command planned(const Export_item& item, const Batch_command& batch,
                        const Plugin_library& plugin)
{
    Planned_command command;
    command.input = item.document;
    command.output = record_file(item);
    command.dependencies = command.output + ".d";
    command.arguments = {std::filesystem::read_symlink("/proc/self/exe").string(),
                         "export",
                         item.document,
                         "--node=" + item.node,
                         "--exporter=" + item.exporter_name,
                         "--output=" + item.output,
                         "--plugin=" + plugin.file(),
                         "--overwrite=" + batch.overwrite_word,
                         "--parents",
                         "--depfile=" + command.dependencies};
    if (batch.scene.overwrite.edited)
        command.arguments.emplace_back("--overwrite-edited");
    const std::vector<std::string>& more = batch.scene.arguments;
    command.arguments.insert(command.arguments.end(), more.begin(), more.end());
    return command;
}

} // namespace

int plan_batch(const Plan_command& command)
{
    const Plugin_library plugin(command.batch.plugin);
    Document_store documents(command.batch.scene.search_path);
    std::vector<Planned_command> commands;
    bool is_complete = true;
    for (const Export_item& item : make_items(command.batch, plugin, documents)) {
        if (item.errors.empty()) {
            commands.push_back(planned(item, command.batch, plugin));
        } else {
            print_messages(item.errors);
            is_complete = false;
        }
    }
    const std::string text = plan_text(commands, command.format);
    if (command.file.empty()) {
        std::fwrite(text.data(), 1, text.size(), stdout);
    } else {
        write_text(command.file, text);
    }
    return is_complete ? 0 : 1;
}

} // namespace reference_host
