#include "reference_host/app/item_record.h"

#include "reference_host/app/item_json.h"
#include "reference_host/output/content_hash.h"
#include "reference_host/output/file_names.h"
#include "reference_host/system/file_access.h"
#include "reference_host/system/whole_file.h"

#include <algorithm>
#include <filesystem>

#include <nlohmann/json.hpp>

namespace reference_host
{

namespace fs = std::filesystem;
using nlohmann::json;

const std::string& Hash_store::of(const std::string& file)
{
    const auto known = m_hashes.find(file);
    return known != m_hashes.end() ? known->second
                                   : m_hashes.emplace(file, file_hash(file)).first->second;
}

std::string key_of(const Export_item& item, const Scene_request& all, const std::string& plugin,
                   Hash_store& hashes)
{
    std::string text;
    for (const std::string& part :
         {hashes.of("/proc/self/exe"), hashes.of(plugin), item.document, item.node,
          item.exporter_name, fs::absolute(item.output).string()})
        text += part + '\n';
    for (const std::string& argument : all.arguments)
        text += argument + '\n';
    return content_hash(text);
}

std::string record_file(const Export_item& item)
{
    const fs::path output(item.output);
    return (output.parent_path() / ".shader-export" /
            (output.filename().string() + "." + folder_name(item.exporter_name) + ".json"))
        .string();
}

void write_record(const Export_item& item, const std::string& key, const Item_result& result)
{
    json record = result;
    record["key"] = key;
    // Without a record the item is merely exported again.
    write_whole_file(record_file(item),
                     record.dump(1, ' ', false, json::error_handler_t::replace) + '\n');
}

std::optional<Item_result> find_unchanged(const Export_item& item, const std::string& key,
                                          Hash_store& hashes)
{
    constexpr std::uintmax_t max_size = std::uintmax_t{16} << 20;
    std::string ignored;
    const std::optional<std::string> text = read_whole_file(record_file(item), max_size, ignored);
    if (!text)
        return {};
    const json record = json::parse(*text, nullptr, false);
    Item_result result;
    try {
        if (record.is_discarded() || record.at("key") != key)
            return {};
        result = record.get<Item_result>();
    } catch (const json::exception&) {
        return {}; // written by somebody else
    }
    const bool has_same_inputs =
        std::all_of(result.inputs.begin(), result.inputs.end(),
                    [&](const Fingerprint& input) { return hashes.of(input.file) == input.hash; });
    const bool has_same_files =
        std::all_of(result.files.begin(), result.files.end(),
                    [](const Result_file& file) { return file_hash(file.path) == file.hash; });
    if (!has_same_inputs || !has_same_files)
        return {};
    result.status = Item_result::Status::unchanged;
    result.seconds = 0;
    for (Result_file& file : result.files)
        file.state = Exported_file::State::unchanged;
    return result;
}

} // namespace reference_host
