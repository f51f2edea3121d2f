#include "tests/host/temporary_folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

Temporary_folder::Temporary_folder()
{
    std::string pattern = (fs::temp_directory_path() / "shader-export-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("no temporary folder");
    m_path = pattern;
}

Temporary_folder::~Temporary_folder()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::string Temporary_folder::write(const std::string& name, const std::string& content) const
{
    const fs::path path = fs::path(m_path) / name;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
}

std::string read_file(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::string document(const std::string& elements)
{
    return "<materialx version=\"1.39\" colorspace=\"lin_rec709\">\n" + elements +
           "\n</materialx>\n";
}
