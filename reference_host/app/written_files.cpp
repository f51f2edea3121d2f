#include "reference_host/app/written_files.h"

#include "reference_host/system/file_access.h"

#include <filesystem>

#include <sys/stat.h>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

std::string stem_of(const std::string& chosen_name)
{
    std::string stem = fs::path(chosen_name).stem().string();
    for (const char* suffix : {"_v", "_f"}) {
        if (stem.size() > 2 && stem.compare(stem.size() - 2, 2, suffix) == 0)
            return stem.substr(0, stem.size() - 2);
    }
    return stem;
}

constexpr std::uintmax_t max_size = std::uintmax_t{256} << 20;

// Empty when it cannot be read.
std::string read_file(const std::string& path)
{
    std::string ignored;
    return read_whole_file(path, max_size, ignored).value_or("");
}

} // namespace

bool Written_files::State::operator==(const State& other) const
{
    return size == other.size && seconds == other.seconds && nanoseconds == other.nanoseconds;
}

Written_files::Written_files(const std::string& chosen_name)
    : m_folder(fs::path(chosen_name).parent_path().string()),
      m_stem(stem_of(chosen_name)),
      m_before(look())
{
}

std::vector<Written_file> Written_files::changes() const
{
    std::vector<Written_file> files;
    for (const auto& [path, state] : look()) {
        const auto before = m_before.find(path);
        if (before == m_before.end() || !(before->second == state))
            files.push_back({path, read_file(path)});
    }
    return files;
}

std::map<std::string, Written_files::State> Written_files::look() const
{
    std::map<std::string, State> states;
    std::error_code failure;
    const fs::path folder = m_folder.empty() ? fs::path(".") : fs::path(m_folder);
    for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        const std::string name = entry->path().filename().string();
        if (name.compare(0, m_stem.size(), m_stem) != 0)
            continue;
        const std::string path = m_folder.empty() ? name : entry->path().string();
        struct stat status;
        if (stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode))
            states[path] = {status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
    }
    return states;
}

} // namespace reference_host
