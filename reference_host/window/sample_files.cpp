#include "reference_host/window/sample_files.h"

#include <algorithm>
#include <filesystem>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

// Where the samples lie: installed with the program, else in the sources that it was built from.
fs::path sample_folder()
{
    std::error_code problem;
    const fs::path program = fs::read_symlink("/proc/self/exe", problem);
    const fs::path installed = program.parent_path() / INSTALLED_SAMPLES;
    return fs::is_directory(installed, problem) ? installed.lexically_normal() : SOURCE_SAMPLES;
}

} // namespace

std::vector<std::string> sample_files()
{
    std::vector<std::string> files;
    std::error_code problem;
    for (const auto& entry : fs::directory_iterator(sample_folder(), problem)) {
        if (entry.path().extension() == ".mtlx")
            files.push_back(entry.path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace reference_host
