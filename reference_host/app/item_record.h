// What is remembered of an export, so that the next run can see that nothing changed:
//
//   FOLDER/.shader-export/NAME.EXPORTER.json   the key, the inputs and the files with fingerprints
#ifndef REFERENCE_HOST_APP_ITEM_RECORD_H
#define REFERENCE_HOST_APP_ITEM_RECORD_H

#include "reference_host/app/export_item.h"

#include <optional>

namespace reference_host
{

// Fingerprints of files, each read once.
class Hash_store
{
public:
    const std::string& of(const std::string& file);

private:
    std::map<std::string, std::string> m_hashes;
};

// Everything but files that decides what an item's files hold: this program, the plug-in, the node,
// the exporter, the place and the options as they were given.
std::string key_of(const Export_item& item, const Scene_request& all, const std::string& plugin,
                   Hash_store& hashes);

// The file that remembers an item.
std::string record_file(const Export_item& item);

// Remembers a success. Nothing happens when that fails: the next run exports again.
void write_record(const Export_item& item, const std::string& key, const Item_result& result);

// The result of an item whose key, inputs and files are as remembered; nothing otherwise.
std::optional<Item_result> find_unchanged(const Export_item& item, const std::string& key,
                                          Hash_store& hashes);

} // namespace reference_host

#endif
