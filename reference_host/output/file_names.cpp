#include "reference_host/output/file_names.h"

#include <cctype>
#include <cstring>

namespace reference_host
{
namespace
{

// A name has 255 bytes at most; extensions, suffixes and the number of a backup need some.
constexpr size_t longest_name = 200;

bool is_continuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0u) == 0x80u;
}

// Never ends inside a character of UTF-8.
std::string cut(const std::string& text)
{
    if (text.size() <= longest_name)
        return text;
    size_t end = longest_name;
    while (end > longest_name - 4 && is_continuation(text[end]))
        --end;
    return text.substr(0, end);
}

} // namespace

std::string safe_file_name(const std::string& text)
{
    std::string name = cut(text);
    for (char& c : name) {
        const bool is_control = static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
        if (is_control || std::strchr("/\\:*?\"<>|", c)) // not every disk takes the last ones
            c = '_';
    }
    if (name.empty())
        return "_";
    if (name[0] == '.' || name[0] == '-')
        name[0] = '_';
    return name;
}

std::string folder_name(const std::string& text)
{
    std::string name;
    for (const unsigned char c : text) {
        if (std::isalnum(c))
            name += static_cast<char>(std::tolower(c));
        else if (!name.empty() && name.back() != '_')
            name += '_';
    }
    while (!name.empty() && name.back() == '_')
        name.pop_back();
    return safe_file_name(name);
}

} // namespace reference_host
