// Results of exports as JSON: in reports, in records, and between processes.
#ifndef REFERENCE_HOST_APP_ITEM_JSON_H
#define REFERENCE_HOST_APP_ITEM_JSON_H

#include "reference_host/app/export_item.h"

#include <nlohmann/json_fwd.hpp>

namespace reference_host
{

void to_json(nlohmann::json& json, const Item_result& result);

// Throws nlohmann::json::exception when it is not one.
void from_json(const nlohmann::json& json, Item_result& result);

// A text on one line. Bytes that are not UTF-8 are replaced.
std::string dump_line(const nlohmann::json& json);

} // namespace reference_host

#endif
