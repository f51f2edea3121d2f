#include "reference_host/check/check_runner.h"

#include "reference_host/check/check_table.h"
#include "reference_host/desktop/wx_runtime.h"
#include "reference_host/system/process.h"
#include "reference_host/system/temporary_folder.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <mutex>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

constexpr std::size_t max_output = std::size_t{64} << 20; // of findings, and of each file
constexpr const char* fault_library = "libcheck_faults.so";

// Beside the program, or installed beside the plug-in.
std::string fault_library_file()
{
    const fs::path folder = fs::read_symlink("/proc/self/exe").parent_path();
    const fs::path built = folder / fault_library;
    return fs::exists(built)
               ? built.string()
               : (folder / INSTALLED_PLUGIN_FOLDER / fault_library).lexically_normal().string();
}

std::vector<std::string> command_of(const Check_request& request, const Check& check, unsigned seed,
                                    const std::string& folder)
{
    std::vector<std::string> command = {"env", "-u", "DISPLAY", "HOME=" + folder};
    if (check.needs_fault_library)
        command.push_back("LD_PRELOAD=" + fault_library_file());
    command.insert(command.end(),
                   {fs::read_symlink("/proc/self/exe").string(), "check", request.plugin, "--run",
                    check.id, "--seed", std::to_string(seed), "--folder", folder});
    return command;
}

Check_result run_in_child(const Check_request& request, const Check& check, unsigned seed,
                          const std::string& folder)
{
    fs::create_directory(folder);
    const auto start = std::chrono::steady_clock::now();
    // No limit for files: a check makes a sparse one of 3 GB.
    const Process_limits limits = {check.seconds, 0, 0};
    const Process_result process = run_program(command_of(request, check, seed, folder), limits);
    Check_result result;
    result.check = &check;
    result.seed = seed;
    result.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    result.passed = process.end == Process_end::exit && process.status == 0;
    result.findings = process.output.substr(0, max_output);
    if (!result.passed && (process.end != Process_end::exit || process.output.empty()))
        result.findings += describe_end(process, limits) + "\n";
    return result;
}

} // namespace

std::vector<Check_result> run_checks(const Check_request& request,
                                     const std::function<void(const Check_result&)>& report)
{
    const Temporary_folder folder;
    const std::size_t count = request.checks.size() * static_cast<std::size_t>(request.repeat);
    std::vector<Check_result> results(count);
    std::atomic<std::size_t> next{0};
    std::mutex reporting;
    const auto work = [&] {
        for (std::size_t i = next++; i < count; i = next++) {
            const unsigned seed = request.seed + static_cast<unsigned>(i / request.checks.size());
            results[i] = run_in_child(request, request.checks[i % request.checks.size()], seed,
                                      folder.path() + "/" + std::to_string(i));
            const std::lock_guard<std::mutex> lock(reporting);
            report(results[i]);
        }
    };
    std::vector<std::thread> threads;
    for (int i = 1; i < request.jobs; ++i)
        threads.emplace_back(work);
    work();
    for (std::thread& thread : threads)
        thread.join();
    return results;
}

int run_one_check(const std::string& plugin, const std::string& id, unsigned seed,
                  const std::string& folder)
{
    const Check check = choose_checks({id}, {}).at(0);
    const Wx_runtime wx;
    // What boxes and the toolkit say is not a finding.
    const int silence = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(silence, STDERR_FILENO);
    Check_run run(plugin, folder, seed);
    try {
        check.run(run);
    } catch (const std::exception& exception) {
        run.expect(false, exception.what());
    }
    std::fflush(stdout);
    // The toolkit's end, with libraries that are gone, proves nothing.
    _exit(run.has_findings() ? 1 : 0);
}

} // namespace reference_host
