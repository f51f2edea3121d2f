#include "reference_host/app/item_json.h"

#include <nlohmann/json.hpp>

namespace reference_host
{

using nlohmann::json;
using State = Exported_file::State;
using Status = Item_result::Status;

NLOHMANN_JSON_SERIALIZE_ENUM(Status, {{Status::failed, "failed"},
                                      {Status::written, "written"},
                                      {Status::unchanged, "unchanged"},
                                      {Status::skipped, "skipped"}})

namespace
{

State state_from(const std::string& name)
{
    for (const State state : {State::unchanged, State::skipped}) {
        if (name == state_name(state))
            return state;
    }
    return State::written;
}

json message_json(const Message& message)
{
    json result = {{"severity", message.severity == Severity::error ? "error" : "warning"},
                   {"text", message.text}};
    if (!message.place.file.empty())
        result["file"] = message.place.file;
    if (message.place.line > 0)
        result["line"] = message.place.line;
    return result;
}

} // namespace

void to_json(json& result, const Item_result& item)
{
    result = {{"status", status_name(item.status)},
              {"seconds", item.seconds},
              {"files", json::array()},
              {"inputs", json::array()},
              {"messages", json::array()}};
    for (const Result_file& file : item.files)
        result["files"].push_back({{"file", file.path},
                                   {"bytes", file.size},
                                   {"hash", file.hash},
                                   {"state", state_name(file.state)}});
    for (const Fingerprint& input : item.inputs)
        result["inputs"].push_back({{"file", input.file}, {"hash", input.hash}});
    for (const Message& message : item.messages)
        result["messages"].push_back(message_json(message));
}

void from_json(const json& source, Item_result& item)
{
    item.status = source.at("status").get<Status>();
    item.seconds = source.at("seconds");
    for (const json& file : source.at("files"))
        item.files.push_back(
            {file.at("file"), file.at("bytes"), file.at("hash"), state_from(file.at("state"))});
    for (const json& input : source.at("inputs"))
        item.inputs.push_back({input.at("file"), input.at("hash")});
    for (const json& message : source.at("messages"))
        item.messages.push_back(
            {message.at("severity") == "error" ? Severity::error : Severity::warning,
             message.at("text"),
             {message.value("file", ""), message.value("line", 0)}});
}

std::string dump_line(const json& value)
{
    return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

} // namespace reference_host
