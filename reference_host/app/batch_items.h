// What a batch is made of: its inputs as items.
#ifndef REFERENCE_HOST_APP_BATCH_ITEMS_H
#define REFERENCE_HOST_APP_BATCH_ITEMS_H

#include "reference_host/app/commands.h"
#include "reference_host/app/export_item.h"

#include <vector>

namespace reference_host
{

// Every material of every document through every exporter, in this order. What cannot be exported
// is an item with an error: a document that cannot be read, a material that it does not have, a
// place that an earlier item takes. Throws std::invalid_argument for a name pattern that makes no
// sense and for exporters that do not exist.
std::vector<Export_item> make_items(const Batch_command& command, const Plugin_library& plugin,
                                    Document_store& documents);

// A name pattern with its words filled in. Each part between slashes is a safe name of a file, so
// the result stays in its folder.
std::string fill_pattern(const std::string& pattern, const Export_item& item);

} // namespace reference_host

#endif
