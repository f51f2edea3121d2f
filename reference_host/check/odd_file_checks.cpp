// Checks of exports in folders where something else stands in place of a file.
#include "reference_host/check/check.h"
#include "reference_host/check/check_functions.h"
#include "reference_host/check/scripted_export.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>

#include <sys/stat.h>
#include <unistd.h>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

constexpr double max_seconds = 5;

struct Odd_file {
    const char* name;
    void (*make)(const std::string& path);
};

void link_to(const std::string& target, const std::string& path)
{
    fs::create_symlink(target, path);
}

const Odd_file odd_files[] = {
    {"a pipe", [](const std::string& path) { mkfifo(path.c_str(), 0600); }},
    {"a full device", [](const std::string& path) { link_to("/dev/full", path); }},
    {"an endless device", [](const std::string& path) { link_to("/dev/zero", path); }},
    {"a folder", [](const std::string& path) { fs::create_directory(path); }},
    {"a loop of links", [](const std::string& path) { link_to(path, path); }},
    {"a link to nowhere", [](const std::string& path) { link_to(path + "/nowhere", path); }},
    {"a forbidden file",
     [](const std::string& path) {
         std::ofstream(path) << "old";
         chmod(path.c_str(), 0);
     }},
    {"a file of 3 GB",
     [](const std::string& path) {
         std::ofstream(path) << "old";
         fs::resize_file(path, std::uintmax_t{3} << 30);
     }},
};

std::set<std::string> output_names(Check_run& run, QZ::TSDK::IExporter& exporter)
{
    const auto host = make_scene();
    export_scene(exporter, *host);
    std::set<std::string> names;
    for (const auto& [name, text] : folder_contents(run.folder()))
        names.insert(name);
    empty_folder(run.folder());
    return names;
}

// Exports and looks at the clock.
void export_in_time(Check_run& run, QZ::TSDK::IExporter& exporter, const std::string& search_path,
                    const std::string& which)
{
    const auto host = make_scene(search_path);
    const auto start = std::chrono::steady_clock::now();
    const Scripted_result result = export_scene(exporter, *host);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    run.expect(time.count() < max_seconds, which + " takes " + std::to_string(time.count()) + " s");
    run.expect(result.exception.empty(), which + ": " + result.exception);
    for (const std::string& problem : result.problems) {
        if (problem.compare(0, 14, "never released") != 0)
            run.expect(false, which + ": " + problem);
    }
}

mode_t kind_of(const std::string& path)
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0 ? status.st_mode & S_IFMT : 0;
}

} // namespace

void check_odd_output_files(Check_run& run)
{
    for (const auto& exporter : run.make_exporters()) {
        name_export_file(*exporter, run.folder() + "/out");
        const std::set<std::string> names = output_names(run, *exporter);
        for (const std::string& name : names) {
            for (const Odd_file& odd : odd_files) {
                const std::string path = run.folder() + "/" + name;
                odd.make(path);
                const mode_t kind = kind_of(path);
                const std::string which = std::string(exporter->get_name()) + " onto " + odd.name;
                export_in_time(run, *exporter, {}, which);
                run.expect(kind_of(path) == kind, which + " replaces it");
                for (const auto& entry : fs::directory_iterator(run.folder()))
                    run.expect(names.count(entry.path().filename().string()) > 0,
                               which + " leaves " + entry.path().filename().string());
                empty_folder(run.folder());
            }
        }
    }
}

void check_odd_copyright_files(Check_run& run)
{
    const std::string search_path = run.folder() + "/texts";
    for (const auto& exporter : run.make_exporters()) {
        name_export_file(*exporter, run.folder() + "/out");
        for (const Odd_file& odd : odd_files) {
            fs::create_directory(search_path);
            odd.make(search_path + "/user_copyright.txt");
            export_in_time(run, *exporter, search_path,
                           std::string(exporter->get_name()) + " with " + odd.name);
            empty_folder(run.folder());
        }
    }
}

} // namespace reference_host
