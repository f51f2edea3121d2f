// Checks of exports in which something fails.
#include "reference_host/check/check.h"
#include "reference_host/check/check_functions.h"
#include "reference_host/check/faults.h"
#include "reference_host/check/scripted_export.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>

#include <dlfcn.h>

namespace reference_host
{
namespace
{

using QZ::TEST::Call_failure;
using QZ::TEST::Failed_text;
using QZ::TEST::Recording_host;
using Files = std::map<std::string, std::string>;

constexpr int max_calls = 100'000; // of one export; more means that it does not end

// An exporter with its file named and what it writes when all goes well.
struct Subject {
    std::unique_ptr<QZ::TSDK::IExporter> exporter;
    std::string name;
    Files files;
};

std::vector<Subject> make_subjects(Check_run& run)
{
    std::vector<Subject> subjects;
    for (auto& exporter : run.make_exporters()) {
        name_export_file(*exporter, run.folder() + "/out");
        const auto host = make_scene();
        export_scene(*exporter, *host);
        const std::string name = exporter->get_name();
        subjects.push_back({std::move(exporter), name, folder_contents(run.folder())});
        empty_folder(run.folder());
    }
    return subjects;
}

void write_old_files(Check_run& run, const Subject& subject)
{
    for (const auto& [name, text] : subject.files)
        std::ofstream(run.folder() + "/" + name) << "old";
}

// What stands on the disk after an export in which a call failed: nothing that does not belong
// there, and of each file no more than a beginning of its text.
void expect_sound_files(Check_run& run, const Subject& subject, const std::string& which)
{
    for (const auto& [name, text] : folder_contents(run.folder())) {
        const auto whole = subject.files.find(name);
        run.expect(whole != subject.files.end(), which + " leaves a file " + name);
        run.expect(whole == subject.files.end() || whole->second.compare(0, text.size(), text) == 0,
                   which + ": " + name + " holds what it should not");
    }
}

// ---- calls of the host --------------------------------------------------------------------------

enum class Before { no_file, old_file, refused_file };

struct Failure_row {
    const char* name;
    Call_failure failure;
};

constexpr Failure_row failure_rows[] = {
    {"null", {Failed_text::null, false}},
    {"empty", {Failed_text::empty, false}},
    {"garbage", {Failed_text::garbage, false}},
    {"null from then on", {Failed_text::null, true}},
    {"empty from then on", {Failed_text::empty, true}},
    {"garbage from then on", {Failed_text::garbage, true}},
};

// One export with one failing call. False when the call was not reached.
bool export_with_failure(Check_run& run, Subject& subject, Before before, const Failure_row& row,
                         int number)
{
    empty_folder(run.folder());
    if (before != Before::no_file)
        write_old_files(run, subject);
    const auto host = make_scene();
    host->set_keeps_log(false);
    host->set_failing_call(number, row.failure);
    const Scripted_result result =
        export_scene(*subject.exporter, *host,
                     before == Before::refused_file ? Box_answer::no : Box_answer::yes);
    const std::string which =
        subject.name + ", host call " + std::to_string(number) + " " + row.name;
    run.expect(result.exception.empty(), which + ": " + result.exception);
    for (const std::string& problem : result.problems) {
        if (problem.compare(0, 14, "never released") != 0)
            run.expect(false, which + ": " + problem);
    }
    for (const auto& [name, text] : folder_contents(run.folder())) {
        run.expect(subject.files.count(name) > 0, which + " leaves a file " + name);
        if (before == Before::refused_file)
            run.expect(text == "old", which + " changes a refused file");
    }
    return host->fallible_calls() >= number;
}

} // namespace

void check_undisturbed_export(Check_run& run)
{
    for (const auto& exporter : run.make_exporters()) {
        const std::string name = exporter->get_name();
        name_export_file(*exporter, run.folder() + "/out");
        const auto host = make_scene();
        const Scripted_result result = export_scene(*exporter, *host);
        run.expect(result.returned, name + " returns false");
        run.expect(result.exception.empty(), name + ": " + result.exception);
        run.expect(result.boxes.empty(), name + " shows a box");
        for (const std::string& problem : result.problems)
            run.expect(false, name + ": " + problem);
        run.expect(!folder_contents(run.folder()).empty(), name + " writes no file");
        empty_folder(run.folder());
    }
}

void check_failing_host_calls(Check_run& run)
{
    for (Subject& subject : make_subjects(run)) {
        for (const Before before : {Before::no_file, Before::old_file, Before::refused_file}) {
            for (const Failure_row& row : failure_rows) {
                int number = 1;
                while (number < max_calls && export_with_failure(run, subject, before, row, number))
                    ++number;
                run.expect(number < max_calls, subject.name + " does not end");
            }
        }
    }
}

// ---- allocations and system calls ---------------------------------------------------------------

namespace
{

// Looked up by name: the library that has them is loaded only for the checks that need it.
class Faults
{
public:
    Faults()
        : m_set(find<decltype(shader_export_set_faults)>("shader_export_set_faults")),
          m_calls(find<decltype(shader_export_fault_calls)>("shader_export_fault_calls"))
    {
    }

    // Exports while the calls of one kind fail. Whether the call of that number was reached.
    bool reach(const Fault_plan& plan, Fault_kind kind, Subject& subject, Recording_host& host,
               Scripted_result& result) const
    {
        m_set(&plan);
        result = export_scene(*subject.exporter, host);
        const bool reached = m_calls(kind) >= plan.faults[kind].first;
        m_set(nullptr);
        return reached;
    }

private:
    template<typename Function>
    static Function* find(const char* name)
    {
        void* const address = dlsym(RTLD_DEFAULT, name);
        if (!address)
            throw std::runtime_error("the library that makes calls fail is not loaded");
        return reinterpret_cast<Function*>(address);
    }

    decltype(shader_export_set_faults)* m_set;
    decltype(shader_export_fault_calls)* m_calls;
};

void expect_good_export(Check_run& run, Subject& subject, const std::string& which)
{
    const auto host = make_scene();
    const Scripted_result result = export_scene(*subject.exporter, *host);
    run.expect(result.returned && folder_contents(run.folder()) == subject.files,
               which + ": the next export is not as good as before");
}

struct System_fault {
    const char* name;
    Fault_kind kind;
    int error;        // 0: the call is only cut short
    bool is_harmless; // repeating the call is enough
};

constexpr System_fault write_faults[] = {
    {"open, EACCES", FAULT_OPEN, EACCES, false}, {"open, EINTR", FAULT_OPEN, EINTR, true},
    {"open, EMFILE", FAULT_OPEN, EMFILE, false}, {"write, ENOSPC", FAULT_WRITE, ENOSPC, false},
    {"write, EIO", FAULT_WRITE, EIO, false},     {"write, EDQUOT", FAULT_WRITE, EDQUOT, false},
    {"write, EINTR", FAULT_WRITE, EINTR, true},  {"short write", FAULT_WRITE, 0, true},
    {"close, EIO", FAULT_CLOSE, EIO, false},     {"close, EDQUOT", FAULT_CLOSE, EDQUOT, false},
};

constexpr System_fault read_faults[] = {
    {"stat, EACCES", FAULT_STAT, EACCES, false}, {"stat, EIO", FAULT_STAT, EIO, false},
    {"open, EACCES", FAULT_OPEN, EACCES, false}, {"open, EINTR", FAULT_OPEN, EINTR, true},
    {"read, EIO", FAULT_READ, EIO, false},       {"read, EINTR", FAULT_READ, EINTR, true},
    {"short read", FAULT_READ, 0, true},         {"close, EIO", FAULT_CLOSE, EIO, true},
};

Fault_plan plan_of(const System_fault& fault, int number, const std::string& folder)
{
    Fault_plan plan;
    plan.faults[fault.kind] = fail_at(number, fault.error);
    plan.folder = folder.c_str();
    return plan;
}

// One export with one failing call on a file. False when the call was not reached.
bool export_with_fault(Check_run& run, const Faults& faults, Subject& subject,
                       const System_fault& fault, int number)
{
    empty_folder(run.folder());
    const std::string which = subject.name + ", " + fault.name + " " + std::to_string(number);
    Scripted_result result;
    const auto host = make_scene();
    host->set_keeps_log(false);
    const bool reached =
        faults.reach(plan_of(fault, number, run.folder()), fault.kind, subject, *host, result);
    run.expect(result.exception.empty(), which + ": " + result.exception);
    expect_sound_files(run, subject, which);
    run.expect(!fault.is_harmless || folder_contents(run.folder()) == subject.files,
               which + ": a file is not whole");
    return reached;
}

} // namespace

// The calls that told the compiler the copyright text.
std::set<std::string> copyrights(const Recording_host& host)
{
    std::set<std::string> calls;
    for (const std::string& call : host.log()) {
        const std::size_t at = call.find("set_option(\"user_copyright\"");
        if (at != std::string::npos)
            calls.insert(call.substr(at));
    }
    return calls;
}

constexpr const char* copyright = "By the artist.\nAll rights reserved.\n";

struct Read_result {
    bool reached;               // the call that fails
    std::set<std::string> told; // the copyright text
};

// One export that reads a copyright text, with one failing call on that.
Read_result export_with_read_fault(Check_run& run, const Faults& faults, Subject& subject,
                                   const System_fault& fault, int number)
{
    const std::string which = subject.name + ", " + fault.name + " " + std::to_string(number);
    const std::string folder = run.folder() + "/texts";
    std::filesystem::create_directory(folder);
    std::ofstream(folder + "/user_copyright.txt") << copyright;
    const auto host = make_scene(folder);
    Scripted_result result;
    const bool reached =
        faults.reach(plan_of(fault, number, folder), fault.kind, subject, *host, result);
    std::filesystem::remove_all(folder);
    run.expect(result.exception.empty(), which + ": " + result.exception);
    run.expect(folder_contents(run.folder()) == subject.files, which + ": a file is not whole");
    empty_folder(run.folder());
    return {reached, copyrights(*host)};
}

void check_failing_allocations(Check_run& run)
{
    const Faults faults;
    std::vector<Subject> subjects = make_subjects(run);
    for (Subject& subject : subjects) {
        for (int number = 1; number < max_calls; ++number) {
            const std::string which = subject.name + ", allocation " + std::to_string(number);
            Scripted_result result;
            Fault_plan plan;
            plan.faults[FAULT_ALLOCATION] = fail_at(number);
            plan.library = run.plugin_file().c_str();
            const auto host = make_scene();
            host->set_keeps_log(false);
            const bool reached = faults.reach(plan, FAULT_ALLOCATION, subject, *host, result);
            run.expect(result.exception.empty(), which + ": " + result.exception);
            for (const auto& [name, text] : folder_contents(run.folder()))
                run.expect(subject.files.count(name) > 0, which + " leaves a file " + name);
            expect_good_export(run, subject, which);
            if (!reached)
                break;
        }
        empty_folder(run.folder());
    }
}

void check_failing_system_calls(Check_run& run)
{
    const Faults faults;
    std::vector<Subject> subjects = make_subjects(run);
    for (Subject& subject : subjects) {
        for (const System_fault& fault : write_faults) {
            int number = 1;
            while (number < max_calls && export_with_fault(run, faults, subject, fault, number))
                ++number;
            run.expect(number < max_calls, subject.name + " does not end");
        }
        empty_folder(run.folder());
    }
}

void check_failing_reads(Check_run& run)
{
    const Faults faults;
    for (Subject& subject : make_subjects(run)) {
        const std::set<std::string> usual =
            export_with_read_fault(run, faults, subject, read_faults[0], max_calls).told;
        for (const System_fault& fault : read_faults) {
            int number = 0;
            for (bool reached = true; reached && number < max_calls;) {
                const Read_result result =
                    export_with_read_fault(run, faults, subject, fault, ++number);
                const std::string which =
                    subject.name + ", " + fault.name + " " + std::to_string(number);
                run.expect(result.told == usual || (result.told.empty() && !fault.is_harmless),
                           which + ": the copyright text is cut short or forgotten");
                reached = result.reached;
            }
            run.expect(number < max_calls, subject.name + " does not end");
        }
    }
}

} // namespace reference_host
