#include "reference_host/render/text_file.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace reference_host
{

namespace
{

constexpr std::uintmax_t max_size = std::uintmax_t{16} << 20;

}

std::optional<std::string> read_text_file(const std::string& file)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error) ||
        std::filesystem::file_size(file, error) > max_size)
        return std::nullopt;
    const std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    if (!stream)
        return std::nullopt;
    return text.str();
}

bool write_text_file(const std::string& file, const std::string& text)
{
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    stream.close();
    return static_cast<bool>(stream);
}

} // namespace reference_host
