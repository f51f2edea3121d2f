// Texts in double quotes, as the notation writes them: \" and \\ stand for the signs themselves, \n
// for the end of a line.
#ifndef REFERENCE_HOST_SHADING_QUOTES_H
#define REFERENCE_HOST_SHADING_QUOTES_H

#include <cstddef>
#include <string>
#include <string_view>

namespace reference_host
{

std::string in_quotes(const std::string& text);

// The length of the text in quotes with which `text` begins, both quotes included; all of it where
// the text does not end.
std::size_t quoted_length(std::string_view text);

// What stands between the quotes of `word`.
std::string without_quotes(std::string_view word);

} // namespace reference_host

#endif
