#include "reference_host/check/check_table.h"

#include "reference_host/check/check_functions.h"

#include <algorithm>
#include <stdexcept>

namespace reference_host
{
namespace
{

bool fits(const Check& check, const std::string& name)
{
    const std::string id = check.id;
    return id == name || id.compare(0, name.size() + 1, name + ".") == 0;
}

bool fits_any(const Check& check, const std::vector<std::string>& names)
{
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& name) { return fits(check, name); });
}

void refuse_unknown(const std::vector<std::string>& names)
{
    for (const std::string& name : names) {
        const auto& checks = all_checks();
        if (std::none_of(checks.begin(), checks.end(),
                         [&](const Check& check) { return fits(check, name); }))
            throw std::invalid_argument("no check fits '" + name + "'");
    }
}

} // namespace

const std::vector<Check>& all_checks()
{
    constexpr Severity error = Severity::error;
    constexpr Severity warning = Severity::warning;
    static const std::vector<Check> checks = {
        {"interface.entries",
         "Both entry functions return a new plug-in object for the selector 0 and null for others.",
         error, 20, false, check_entries},
        {"interface.plugin",
         "The plug-in object has a name, the type of exporter plug-ins and a plug-in system "
         "version, and leaves the value alone when asked for a property that it does not have.",
         error, 20, false, check_plugin_object},
        {"interface.exporters",
         "Each index below the count gets an object of its own with a name; all others get null.",
         error, 20, false, check_exporter_indices},
        {"interface.ids",
         "An exporter returns itself for the id of its interface and null for every other id.",
         error, 20, false, check_exporter_interfaces},
        {"interface.settings",
         "Settings are ordered by name, keep what they are set to, take null as the empty text, "
         "and "
         "ignore every index out of range.",
         error, 20, false, check_settings},
        {"interface.loadings", "The library can be loaded, used and unloaded 1,000 times.", error,
         60, false, check_loadings},
        {"interface.pairs", "Any two calls on an exporter, one after the other, do no damage.",
         error, 120, false, check_call_pairs},
        {"interface.sequences",
         "10,000 random sequences of calls do no damage, and each reference is returned once.",
         error, 600, false, check_random_calls},
        {"faults.none",
         "An undisturbed export writes its files, shows no box and returns every reference.", error,
         60, false, check_undisturbed_export},
        {"faults.host_calls",
         "Whichever call of the host fails, once or from then on, with null, an empty text or "
         "garbage: no reference is returned twice, a refused file stays as it was, and a file "
         "that is replaced is either the old one or the whole new one.",
         error, 240, false, check_failing_host_calls},
        {"faults.allocations",
         "Whichever allocation of an export fails, no exception reaches the host, and the next "
         "export is as good as ever.",
         error, 240, true, check_failing_allocations},
        {"faults.system_calls",
         "Whichever system call on a file fails, the file holds the beginning of its text; "
         "when the call is only interrupted or cut short, it holds all.",
         error, 240, true, check_failing_system_calls},
        {"faults.reads",
         "Whichever call that reads user_copyright.txt fails, the files are written as ever and "
         "the text is handed on whole or not at all; when the call is only interrupted or cut "
         "short, it is handed on.",
         error, 240, true, check_failing_reads},
        {"panels.life",
         "Panels are created, resized and removed in any order, also twice or never.", error, 120,
         false, check_panel_life},
        {"panels.sizes", "A panel takes every size from 1 x 1 to 3840 x 2160 pixels.", error, 120,
         false, check_panel_sizes},
        {"panels.controls",
         "Every control of every panel can be used, with any text in its fields, and the dialogs "
         "that it opens can be cancelled.",
         error, 120, false, check_panel_controls},
        {"panels.destroyed_containers",
         "The host may destroy its window, and the panel in it, at any time.", error, 120, false,
         check_destroyed_containers},
        {"panels.memory", "1,000 panels take no more memory than 100.", warning, 600, false,
         check_panel_memory},
        {"graphs.chains", "The time for a chain of nodes grows with its length.", warning, 120,
         false, check_chains},
        {"graphs.cycles", "A cycle of nodes ends, in a time that grows with its length.", error,
         120, false, check_cycles},
        {"graphs.sharing", "Nodes that are shared, on 2^n ways, are not walked again for each way.",
         error, 120, false, check_sharing},
        {"graphs.inputs",
         "The time for the inputs of a node grows with their number, to 1,000,000.", warning, 240,
         false, check_many_inputs},
        {"files.output",
         "An export to the name of a pipe, device, folder, loop of links, link to nowhere, "
         "forbidden file or very large file ends within 5 seconds and replaces nothing but files.",
         error, 120, false, check_odd_output_files},
        {"files.copyright",
         "An export ends within 5 seconds whatever has the name user_copyright.txt.", error, 120,
         false, check_odd_copyright_files},
    };
    return checks;
}

std::vector<Check> choose_checks(const std::vector<std::string>& included,
                                 const std::vector<std::string>& excluded)
{
    refuse_unknown(included);
    refuse_unknown(excluded);
    std::vector<Check> chosen;
    for (const Check& check : all_checks()) {
        if ((included.empty() || fits_any(check, included)) && !fits_any(check, excluded))
            chosen.push_back(check);
    }
    return chosen;
}

const char* severity_name(Severity severity)
{
    return severity == Severity::error ? "error" : "warning";
}

std::string checks_as_markdown()
{
    std::string page =
        "# Check a plug-in library\n\n"
        "`shader-export check LIBRARY.so` runs every check of this list, each in a process of its\n"
        "own with a limit of time, and exits with status 0 when no check of the severity \"error\" "
        "failed.\n"
        "`--include` and `--exclude` choose by id or by its beginning, such as `faults`; `--seed`\n"
        "repeats random checks, `--repeat` runs each several times, `--jobs` several at once;\n"
        "`--json` prints the results for programs. All of them together take some minutes;\n"
        "`panels.memory` and `graphs` take most of that, `--exclude` leaves them out.\n\n"
        "This page is the output of `shader-export check --markdown`.\n\n"
        "| Check | What it proves | Severity | Seconds at most |\n|---|---|---|---|\n";
    for (const Check& check : all_checks())
        page += std::string("| `") + check.id + "` | " + check.sentence + " | " +
                severity_name(check.severity) + " | " + std::to_string(check.seconds) + " |\n";
    return page;
}

} // namespace reference_host
