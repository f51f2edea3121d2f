#include "reference_host/app/batch_items.h"
#include "reference_host/app/batch_progress.h"
#include "reference_host/app/batch_report.h"
#include "reference_host/app/commands.h"
#include "reference_host/app/interruption.h"
#include "reference_host/app/item_record.h"
#include "reference_host/app/output_place.h"
#include "reference_host/app/worker_pool.h"
#include "reference_host/desktop/virtual_display.h"
#include "reference_host/desktop/wx_runtime.h"

#include <chrono>
#include <optional>

namespace reference_host
{
namespace
{

// A display for all processes of a batch: the environment's, or a private one.
class Shared_display
{
public:
    Shared_display()
    {
        if (!m_connection.is_open())
            m_private.emplace();
    }

private:
    Display_connection m_connection;
    std::optional<Virtual_display> m_private;
};

class Batch
{
public:
    Batch(const Batch_command& command, const Plugin_library& plugin)
        : m_command(command), m_plugin(plugin), m_documents(command.scene.search_path)
    {
    }

    int run();

private:
    // Exports in a process of its own.
    class Exporting : public Worker
    {
    public:
        explicit Exporting(Batch& batch)
            : m_batch(batch), m_replacement(batch.m_command.scene.overwrite)
        {
        }
        Item_result run(size_t number) override
        {
            return run_item(m_batch.m_items[number].item, m_batch.m_command.scene,
                            m_batch.m_documents, m_batch.m_plugin, m_replacement);
        }
        bool wants_end() const override { return m_replacement.has_quit(); }

    private:
        Batch& m_batch;
        Wx_runtime m_wx;
        Replacement m_replacement;
    };

    struct Entry {
        Export_item item;
        std::string key;
        std::optional<Item_result> result;
    };

    std::vector<size_t> find_work(Batch_progress& progress);
    void finish(size_t number, const Item_result& result, Batch_progress& progress);
    Batch_report report() const;

    const Batch_command& m_command;
    const Plugin_library& m_plugin;
    Document_store m_documents;
    std::vector<Entry> m_items;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

// The indices of the items that can be exported and are not up to date.
std::vector<size_t> Batch::find_work(Batch_progress& progress)
{
    std::vector<size_t> numbers;
    Hash_store hashes;
    for (size_t number = 0; number < m_items.size(); ++number) {
        Entry& entry = m_items[number];
        if (!entry.item.errors.empty()) {
            finish(number, failed_item(entry.item.errors), progress);
            continue;
        }
        entry.key = key_of(entry.item, m_command.scene, m_plugin.file(), hashes);
        const std::optional<Item_result> unchanged =
            m_command.is_forced ? std::nullopt : find_unchanged(entry.item, entry.key, hashes);
        if (unchanged)
            finish(number, *unchanged, progress);
        else
            numbers.push_back(number);
    }
    return numbers;
}

void Batch::finish(size_t number, const Item_result& result, Batch_progress& progress)
{
    using Status = Item_result::Status;
    Entry& entry = m_items[number];
    const bool is_done = result.status == Status::written || result.status == Status::unchanged;
    if (is_done && result.seconds > 0 && !m_command.scene.is_dry_run)
        write_record(entry.item, entry.key, result);
    entry.result = result;
    progress.finish(entry.item, result);
}

Batch_report Batch::report() const
{
    Batch_report report;
    report.plugin = m_plugin.file();
    report.arguments = m_command.scene.arguments;
    report.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    for (const Entry& entry : m_items) {
        Item_result not_done;
        not_done.status = Item_result::Status::skipped;
        report.items.push_back({entry.item, entry.result.value_or(not_done)});
    }
    return report;
}

int Batch::run()
{
    const Interruption interruption;
    for (const Export_item& item : make_items(m_command, m_plugin, m_documents))
        m_items.push_back({item, {}, {}});
    Batch_progress progress(m_items.size(), m_command.verbosity, m_command.scene.is_dry_run);
    const std::vector<size_t> numbers = find_work(progress);
    if (!numbers.empty()) {
        const Shared_display display;
        run_in_processes(
            numbers, m_command.jobs, [this] { return std::make_unique<Exporting>(*this); },
            [&](size_t number, const Item_result& result) { finish(number, result, progress); });
    }
    const Batch_report result = report();
    if (!m_command.report.empty())
        write_json_report(m_command.report, result);
    if (!m_command.junit.empty())
        write_junit_report(m_command.junit, result);
    progress.sum_up(result);
    const bool is_complete = std::all_of(m_items.begin(), m_items.end(),
                                         [](const Entry& entry) { return entry.result; });
    return exit_status(is_complete && result.count(Item_result::Status::failed) == 0);
}

} // namespace

int export_batch(const Batch_command& command)
{
    const Plugin_library plugin(command.plugin);
    return Batch(command, plugin).run();
}

} // namespace reference_host
