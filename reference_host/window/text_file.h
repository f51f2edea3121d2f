// Text files as a whole, up to the size that a page can show.
#ifndef REFERENCE_HOST_WINDOW_TEXT_FILE_H
#define REFERENCE_HOST_WINDOW_TEXT_FILE_H

#include "reference_host/system/file_access.h"

namespace reference_host
{

// The text of a file; empty when it cannot be read or is larger than 16 MiB.
inline std::string read_text(const std::string& file)
{
    constexpr std::uintmax_t max_size = 16u << 20u;
    std::string reason;
    return read_whole_file(file, max_size, reason).value_or(std::string());
}

} // namespace reference_host

#endif
