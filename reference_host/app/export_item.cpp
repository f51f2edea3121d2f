#include "reference_host/app/export_item.h"

#include "reference_host/app/output_place.h"
#include "reference_host/output/content_hash.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <sstream>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

// A message of several lines as one.
std::string on_one_line(const std::string& message)
{
    std::istringstream words(message);
    std::string line;
    for (std::string word; words >> word;)
        line += (line.empty() ? "" : " ") + word;
    return line;
}

Item_result::Status status_of(const Export_outcome& outcome)
{
    if (!outcome.is_success())
        return Item_result::Status::failed;
    const auto has = [&](Exported_file::State state) {
        return std::any_of(outcome.files.begin(), outcome.files.end(),
                           [&](const Exported_file& file) { return file.state == state; });
    };
    if (has(Exported_file::State::skipped))
        return Item_result::Status::skipped;
    return has(Exported_file::State::written) ? Item_result::Status::written
                                              : Item_result::Status::unchanged;
}

Item_result export_item(const Export_item& item, const Scene_request& all,
                        Document_store& documents, const Plugin_library& plugin,
                        Replacement& replacement)
{
    Scene_request request = all;
    request.document = item.document;
    request.node = item.node;
    request.options = settings_for(all.options, plugin, item.exporter);
    const Opened_document document(request, documents.open(item.document));
    const fs::path folder = fs::path(item.output).parent_path();
    if (!folder.empty() && !request.is_dry_run)
        make_folder(folder.string());
    const auto exporter = plugin.make_exporter(item.exporter);
    const Export_outcome outcome =
        run_export(document, *exporter, item.output, request, replacement);
    return result_of(outcome, document);
}

} // namespace

Item_result result_of(const Export_outcome& outcome, const Opened_document& document)
{
    Item_result result;
    result.status = status_of(outcome);
    result.messages = messages_of(outcome, document);
    for (const Exported_file& file : outcome.files)
        result.files.push_back(
            {file.path, file.content.size(), content_hash(file.content), file.state});
    for (const std::string& input : document.inputs())
        result.inputs.push_back({input, file_hash(input)});
    return result;
}

const char* status_name(Item_result::Status status)
{
    constexpr const char* names[] = {"written", "unchanged", "skipped", "failed"};
    return names[static_cast<size_t>(status)];
}

const char* state_name(Exported_file::State state)
{
    constexpr const char* names[] = {"written", "unchanged", "skipped"};
    return names[static_cast<size_t>(state)];
}

std::shared_ptr<Shader_graph> Document_store::open(const std::string& file)
{
    std::shared_ptr<Shader_graph>& graph = m_graphs[file];
    if (!graph)
        graph = open_document(file, m_search_path);
    return graph;
}

std::vector<Option_setting> settings_for(const std::vector<Option_setting>& settings,
                                         const Plugin_library& plugin, int exporter)
{
    std::vector<Option_setting> own;
    for (const Option_setting& setting : settings) {
        const bool is_for_all = setting.exporter.empty() || setting.exporter == "*";
        if (is_for_all || plugin.fits(setting.exporter, exporter))
            own.push_back(setting);
    }
    return own;
}

Item_result failed_item(const std::vector<Message>& reasons)
{
    Item_result result;
    result.messages = reasons;
    return result;
}

Item_result failed_item(const std::string& reason)
{
    return failed_item(std::vector<Message>{{Severity::error, reason, {}}});
}

Item_result run_item(const Export_item& item, const Scene_request& all, Document_store& documents,
                     const Plugin_library& plugin, Replacement& replacement)
{
    const auto start = std::chrono::steady_clock::now();
    Item_result result;
    try {
        result = item.errors.empty() ? export_item(item, all, documents, plugin, replacement)
                                     : failed_item(item.errors);
    } catch (const Failure& failure) {
        result = failed_item(failure.messages());
    } catch (const std::exception& error) {
        result = failed_item(error.what());
    }
    result.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return result;
}

std::vector<Message> messages_of(const Export_outcome& outcome, const Opened_document& document)
{
    std::vector<Message> messages = document.warnings();
    const std::vector<Message> more = messages_of(outcome);
    messages.insert(messages.end(), more.begin(), more.end());
    return messages;
}

std::vector<Message> messages_of(const Export_outcome& outcome)
{
    std::vector<Message> messages = outcome.diagnostics;
    for (const Answered_box& box : outcome.boxes)
        messages.push_back(
            {Severity::warning,
             "[" + box.caption + "] " + on_one_line(box.message) + " -> " + word_of(box.answer),
             {}});
    for (const std::string& reason : outcome.reasons)
        messages.push_back({Severity::error, reason, {}});
    return messages;
}

} // namespace reference_host
