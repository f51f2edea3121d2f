// One export of many: what is exported, where to, and what became of it.
//
// This is what `export`, `batch` and `plan` share: the requests become items, an item becomes one
// session with the plug-in, a session becomes a result.
#ifndef REFERENCE_HOST_APP_EXPORT_ITEM_H
#define REFERENCE_HOST_APP_EXPORT_ITEM_H

#include "reference_host/app/export_job.h"
#include "reference_host/app/export_request.h"
#include "reference_host/app/plugin_library.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace reference_host
{

struct Export_item {
    std::string document;
    std::string node; // its full name
    int exporter = 0;
    std::string exporter_name;
    std::string output;          // the export file name
    std::vector<Message> errors; // why it cannot be exported; then nothing else may be known
};

struct Fingerprint {
    std::string file;
    std::string hash; // empty: there is no such file
};

struct Result_file {
    std::string path;
    size_t size = 0;
    std::string hash;
    Exported_file::State state = Exported_file::State::written;
};

struct Item_result {
    enum class Status { written, unchanged, skipped, failed };
    Status status = Status::failed;
    std::vector<Result_file> files;
    std::vector<Fingerprint> inputs;
    std::vector<Message> messages;
    double seconds = 0;
};

const char* status_name(Item_result::Status status);
const char* state_name(Exported_file::State state);

// Documents, each read once.
class Document_store
{
public:
    explicit Document_store(std::vector<std::string> search_path)
        : m_search_path(std::move(search_path))
    {
    }

    // Throws Failure.
    std::shared_ptr<Shader_graph> open(const std::string& file);

private:
    std::vector<std::string> m_search_path;
    std::map<std::string, std::shared_ptr<Shader_graph>> m_graphs;
};

// The settings that are meant for the exporter.
std::vector<Option_setting> settings_for(const std::vector<Option_setting>& settings,
                                         const Plugin_library& plugin, int exporter);

// What became of one export in the terms of many.
Item_result result_of(const Export_outcome& outcome, const Opened_document& document);

// Exports the item. Never throws: what goes wrong is in the result. Needs a Wx_runtime.
Item_result run_item(const Export_item& item, const Scene_request& all, Document_store& documents,
                     const Plugin_library& plugin, Replacement& replacement);

Item_result failed_item(const std::vector<Message>& reasons);
Item_result failed_item(const std::string& reason);

// What an export said, and the same with the warnings about its document before it.
std::vector<Message> messages_of(const Export_outcome& outcome);
std::vector<Message> messages_of(const Export_outcome& outcome, const Opened_document& document);

} // namespace reference_host

#endif
