#include "tests/host/folder_tree.h"

#include "tests/host/documents.h"

#include <filesystem>

#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;

std::string describe(const fs::path& path)
{
    constexpr off_t longest = 1 << 20; // of a larger file, its time tells a change
    struct stat status = {};
    lstat(path.c_str(), &status);
    if (S_ISDIR(status.st_mode))
        return "folder";
    if (S_ISLNK(status.st_mode))
        return "link to " + fs::read_symlink(path).string();
    if (!S_ISREG(status.st_mode))
        return "neither file nor folder";
    return "file of " + std::to_string(status.st_mtim.tv_sec) + "." +
           std::to_string(status.st_mtim.tv_nsec) + ", " + std::to_string(status.st_size) +
           " bytes: " + (status.st_size < longest ? read_file(path.string()) : "");
}

} // namespace

std::map<std::string, std::string> tree_of(const std::string& folder, const std::string& left_out)
{
    std::map<std::string, std::string> tree;
    for (fs::recursive_directory_iterator entry(folder), end; entry != end; ++entry) {
        const fs::path& path = entry->path();
        tree[path.lexically_relative(folder).string()] = describe(path);
        if (path.string() == left_out)
            entry.disable_recursion_pending();
    }
    return tree;
}
