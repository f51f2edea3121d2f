#include "reference_host/app/batch_progress.h"

#include "reference_host/app/messages.h"

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace reference_host
{
namespace
{

using State = Exported_file::State;

constexpr const char* red = "\033[31m";
constexpr const char* plain = "\033[0m";
constexpr const char* start_of_line = "\r\033[K";

std::string note_of(State state, bool is_dry_run)
{
    if (state == State::written)
        return is_dry_run ? "  would be written" : "";
    return std::string("  ") + (is_dry_run && state == State::skipped ? "would be " : "") +
           state_name(state);
}

// A document that cannot be read is an item without node and exporter.
std::string title_of(const Export_item& item)
{
    return printable(item.exporter_name.empty()
                         ? item.document
                         : item.document + ": " + item.node + " -> " + item.exporter_name);
}

} // namespace

Batch_progress::Batch_progress(size_t count, const Verbosity& verbosity, bool is_dry_run)
    : m_count(count),
      m_verbosity(verbosity),
      m_is_dry_run(is_dry_run),
      m_has_terminal(isatty(STDERR_FILENO) != 0 && !verbosity.is_quiet)
{
    const char* no_color = std::getenv("NO_COLOR");
    m_has_color = isatty(STDERR_FILENO) != 0 && (!no_color || !*no_color);
}

void Batch_progress::finish(const Export_item& item, const Item_result& result)
{
    ++m_done;
    clear_line();
    print(item, result);
    show_line(item);
}

void Batch_progress::print_messages_of(const Export_item& item, const Item_result& result)
{
    for (Message message : result.messages) {
        const bool is_placed = !message.place.file.empty();
        if (!is_placed) {
            message.place.file = item.document;
            if (!item.exporter_name.empty())
                message.text = item.node + " -> " + item.exporter_name + ": " + message.text;
        }
        if (!is_placed || m_told.insert(line_of(message)).second)
            print_messages({message});
    }
}

void Batch_progress::print(const Export_item& item, const Item_result& result)
{
    const bool is_failed = result.status == Item_result::Status::failed;
    if (m_verbosity.is_verbose)
        std::printf("%s: %s, %.3f s\n", title_of(item).c_str(), status_name(result.status),
                    result.seconds);
    for (const Result_file& file : result.files) {
        if (!m_verbosity.is_quiet)
            std::printf("%s  %zu bytes%s\n", printable(file.path).c_str(), file.size,
                        note_of(file.state, m_is_dry_run).c_str());
    }
    std::fflush(stdout); // before what goes to standard error
    if (is_failed && !item.output.empty())
        std::fprintf(stderr, "%sshader-export: error: failed: %s%s\n", m_has_color ? red : "",
                     title_of(item).c_str(), m_has_color ? plain : "");
    print_messages_of(item, result);
}

void Batch_progress::show_line(const Export_item& item) const
{
    if (!m_has_terminal || m_done == m_count)
        return;
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    const int left = static_cast<int>(seconds / static_cast<double>(m_done) *
                                      static_cast<double>(m_count - m_done));
    std::fprintf(stderr, "[%zu/%zu] %d:%02d left  %s", m_done, m_count, left / 60, left % 60,
                 printable(item.output).c_str());
    std::fflush(stderr);
}

void Batch_progress::clear_line() const
{
    if (m_has_terminal)
        std::fputs(start_of_line, stderr);
}

void Batch_progress::sum_up(const Batch_report& report) const
{
    clear_line();
    using Status = Item_result::Status;
    if (!m_verbosity.is_quiet)
        std::printf("%s%d written, %d unchanged, %d skipped, %d failed\n",
                    m_is_dry_run ? "would be: " : "", report.count(Status::written),
                    report.count(Status::unchanged), report.count(Status::skipped),
                    report.count(Status::failed));
}

} // namespace reference_host
