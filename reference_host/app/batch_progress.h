// What a batch tells while it runs.
#ifndef REFERENCE_HOST_APP_BATCH_PROGRESS_H
#define REFERENCE_HOST_APP_BATCH_PROGRESS_H

#include "reference_host/app/batch_report.h"
#include "reference_host/app/commands.h"

#include <chrono>
#include <set>
#include <string>

namespace reference_host
{

// Files on standard output, messages on standard error: those about a place in a document once, for
// all items that read it, the others with the name of their item. Where standard error is a
// terminal, a line there tells the item, the count and the time left; it is coloured unless
// NO_COLOR is set.
class Batch_progress
{
public:
    Batch_progress(size_t count, const Verbosity& verbosity, bool is_dry_run);

    void finish(const Export_item& item, const Item_result& result);

    // The last line: how many were written, unchanged, skipped and failed.
    void sum_up(const Batch_report& report) const;

private:
    void show_line(const Export_item& item) const;
    void clear_line() const;
    void print(const Export_item& item, const Item_result& result);
    void print_messages_of(const Export_item& item, const Item_result& result);

    size_t m_count;
    size_t m_done = 0;
    Verbosity m_verbosity;
    bool m_is_dry_run;
    bool m_has_terminal;
    bool m_has_color;
    std::set<std::string> m_told; // lines about documents
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

} // namespace reference_host

#endif
