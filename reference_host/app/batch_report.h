// Reports of a batch for other programs.
#ifndef REFERENCE_HOST_APP_BATCH_REPORT_H
#define REFERENCE_HOST_APP_BATCH_REPORT_H

#include "reference_host/app/export_item.h"

#include <string>
#include <vector>

namespace reference_host
{

struct Finished_item {
    Export_item item;
    Item_result result;
};

struct Batch_report {
    std::string plugin;                 // the file
    std::vector<std::string> arguments; // that were given for all items
    std::vector<Finished_item> items;
    double seconds = 0;

    int count(Item_result::Status status) const;
};

// JSON as docs/report.schema.json describes it. Throws Write_failure.
void write_json_report(const std::string& file, const Batch_report& report);

// The form that build servers read: a test case per item. Throws Write_failure.
void write_junit_report(const std::string& file, const Batch_report& report);

} // namespace reference_host

#endif
