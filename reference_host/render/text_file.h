// Whole text files in memory.
#ifndef REFERENCE_HOST_RENDER_TEXT_FILE_H
#define REFERENCE_HOST_RENDER_TEXT_FILE_H

#include <optional>
#include <string>

namespace reference_host
{

// Nothing when `file` is not a regular file, cannot be read or is larger than 16 MiB.
std::optional<std::string> read_text_file(const std::string& file);

bool write_text_file(const std::string& file, const std::string& text);

} // namespace reference_host

#endif
