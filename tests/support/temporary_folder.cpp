#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace QZ
{
namespace TEST
{

Temporary_folder::Temporary_folder()
    : m_path((std::filesystem::temp_directory_path() / "toviraexport-XXXXXX").string())
{
    if (!::mkdtemp(m_path.data()))
        std::abort();
}

Temporary_folder::~Temporary_folder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string Temporary_folder::write(const std::string& name, const std::string& content) const
{
    const std::filesystem::path path = file(name);
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
}

std::string Temporary_folder::read(const std::string& name) const
{
    std::ifstream stream(file(name), std::ios::binary);
    if (!stream)
        return "<no file>";
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::vector<std::string> Temporary_folder::files() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(m_path))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace TEST
} // namespace QZ
