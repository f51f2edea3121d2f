#include "reference_host/app/batch_report.h"

#include "reference_host/app/item_json.h"
#include "reference_host/output/content_hash.h"
#include "reference_host/output/write_failure.h"

#include <algorithm>
#include <sstream>

#include <nlohmann/json.hpp>
#include <pugixml.hpp>

namespace reference_host
{
namespace
{

using nlohmann::json;
using Status = Item_result::Status;

constexpr Status all_statuses[] = {Status::written, Status::unchanged, Status::skipped,
                                   Status::failed};

json item_json(const Finished_item& finished)
{
    json result = finished.result;
    result["document"] = finished.item.document;
    result["material"] = finished.item.node;
    result["exporter"] = finished.item.exporter_name;
    result["output"] = finished.item.output;
    return result;
}

std::string messages_text(const Item_result& result)
{
    std::string text;
    for (const Message& message : result.messages)
        text += line_of(message) + '\n';
    return text;
}

void add_test_case(pugi::xml_node suite, const Finished_item& finished)
{
    pugi::xml_node test = suite.append_child("testcase");
    test.append_attribute("classname") = finished.item.document.c_str();
    test.append_attribute("name") =
        (finished.item.node + " - " + finished.item.exporter_name).c_str();
    test.append_attribute("time") = finished.result.seconds;
    const std::string text = messages_text(finished.result);
    if (finished.result.status == Status::failed) {
        pugi::xml_node failure = test.append_child("failure");
        failure.append_attribute("message") = text.substr(0, text.find('\n')).c_str();
        failure.text() = text.c_str();
    } else if (finished.result.status == Status::skipped) {
        test.append_child("skipped");
    } else if (!text.empty()) {
        test.append_child("system-err").text() = text.c_str();
    }
}

} // namespace

int Batch_report::count(Status status) const
{
    return static_cast<int>(
        std::count_if(items.begin(), items.end(), [status](const Finished_item& finished) {
            return finished.result.status == status;
        }));
}

void write_json_report(const std::string& file, const Batch_report& report)
{
    json result = {{"version", 1},
                   {"program", {{"name", "shader-export"}, {"version", TOVIRAEXPORT_VERSION}}},
                   {"plugin", {{"file", report.plugin}, {"hash", file_hash(report.plugin)}}},
                   {"options", report.arguments},
                   {"seconds", report.seconds},
                   {"items", json::array()}};
    for (const Status status : all_statuses)
        result["summary"][status_name(status)] = report.count(status);
    for (const Finished_item& finished : report.items)
        result["items"].push_back(item_json(finished));
    write_text(file, result.dump(1, ' ', false, json::error_handler_t::replace) + '\n');
}

void write_junit_report(const std::string& file, const Batch_report& report)
{
    pugi::xml_document document;
    pugi::xml_node suite = document.append_child("testsuites").append_child("testsuite");
    suite.append_attribute("name") = "shader-export";
    suite.append_attribute("tests") = report.items.size();
    suite.append_attribute("failures") = report.count(Status::failed);
    suite.append_attribute("skipped") = report.count(Status::skipped);
    suite.append_attribute("time") = report.seconds;
    for (const Finished_item& finished : report.items)
        add_test_case(suite, finished);
    std::ostringstream text;
    document.save(text, " ");
    write_text(file, text.str());
}

} // namespace reference_host
