// Checks of exports of large graphs: the time for n, 2n and 4n.
#include "reference_host/check/check.h"
#include "reference_host/check/check_functions.h"
#include "reference_host/check/scripted_export.h"

#include <algorithm>

#include <time.h>

namespace reference_host
{
namespace
{

using QZ::TEST::Recording_host;
using QZ::TEST::Scripted_node;
using Shape = void (*)(Recording_host& host, Scripted_node& root, int size);

constexpr double max_ratio = 2.5; // of the times for twice the size, on the mean of two steps
constexpr int measurements = 3;   // the shortest of them counts

Scripted_node& add_chain(Recording_host& host, Scripted_node& root, int size, int connections)
{
    Scripted_node* end = &root;
    for (int i = 0; i < size; ++i) {
        Scripted_node& next = host.add_node("node");
        for (int connection = 0; connection < connections; ++connection)
            end->connect(&next);
        end = &next;
    }
    return *end;
}

// Of this thread alone, whatever else the machine does.
double processor_seconds()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double export_seconds(Check_run& run, QZ::TSDK::IExporter& exporter, Shape shape, int size)
{
    double shortest = 1e9;
    for (int i = 0; i < measurements; ++i) {
        Recording_host host;
        host.set_keeps_log(false);
        shape(host, host.add_selected_node("root"), size);
        const double start = processor_seconds();
        const Scripted_result result = export_scene(exporter, host);
        shortest = std::min(shortest, processor_seconds() - start);
        for (const std::string& problem : result.problems)
            run.expect(false, problem);
        run.expect(result.exception.empty(), result.exception);
    }
    return shortest;
}

struct Times {
    double once, twice, four_times; // for so many nodes

    bool grow_with_the_size() const { return four_times < max_ratio * max_ratio * once; }
};

// Measures again when the times grow too fast: a busy machine may slow the last one down.
Times export_times(Check_run& run, QZ::TSDK::IExporter& exporter, Shape shape, int size)
{
    constexpr int most_tries = 3;
    Times times = {};
    for (int tries = 0; tries < most_tries; ++tries) {
        times = {export_seconds(run, exporter, shape, size),
                 export_seconds(run, exporter, shape, 2 * size),
                 export_seconds(run, exporter, shape, 4 * size)};
        if (times.grow_with_the_size())
            break;
    }
    return times;
}

void check_shape(Check_run& run, Shape shape, int size)
{
    for (const auto& exporter : run.make_exporters()) {
        name_export_file(*exporter, run.folder() + "/out");
        export_seconds(run, *exporter, shape, 1); // what is made once is made now
        const Times times = export_times(run, *exporter, shape, size);
        run.expect(times.grow_with_the_size(),
                   std::string(exporter->get_name()) + ": " + std::to_string(size) +
                       ", twice and four times as many take " + std::to_string(times.once) + ", " +
                       std::to_string(times.twice) + " and " + std::to_string(times.four_times) +
                       " s");
        empty_folder(run.folder());
    }
}

} // namespace

void check_chains(Check_run& run)
{
    check_shape(
        run,
        [](Recording_host& host, Scripted_node& root, int size) { add_chain(host, root, size, 1); },
        10'000);
}

void check_cycles(Check_run& run)
{
    check_shape(
        run,
        [](Recording_host& host, Scripted_node& root, int size) {
            add_chain(host, root, size, 1).connect(&root);
        },
        10'000);
}

void check_sharing(Check_run& run)
{
    check_shape(
        run,
        [](Recording_host& host, Scripted_node& root, int size) { add_chain(host, root, size, 2); },
        5'000);
}

void check_many_inputs(Check_run& run)
{
    check_shape(
        run,
        [](Recording_host& host, Scripted_node& root, int size) {
            Scripted_node& source = host.add_node("source");
            for (int i = 0; i < size; ++i)
                root.connect(&source);
        },
        250'000);
}

} // namespace reference_host
