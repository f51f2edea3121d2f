#include "reference_host/shading/quotes.h"

#include <algorithm>

namespace reference_host
{

std::string in_quotes(const std::string& text)
{
    std::string made = "\"";
    for (const char sign : text) {
        if (sign == '"' || sign == '\\' || sign == '\n')
            made += '\\';
        made += sign == '\n' ? 'n' : sign;
    }
    return made + "\"";
}

std::size_t quoted_length(std::string_view text)
{
    std::size_t end = 1;
    while (end < text.size() && text[end] != '"')
        end += text[end] == '\\' ? 2 : 1;
    return std::min(end + 1, text.size());
}

std::string without_quotes(std::string_view word)
{
    std::string text;
    for (std::size_t i = 1; i + 1 < word.size(); ++i) {
        const bool is_escaped = word[i] == '\\';
        i += is_escaped ? 1 : 0;
        text += is_escaped && word[i] == 'n' ? '\n' : word[i];
    }
    return text;
}

} // namespace reference_host
