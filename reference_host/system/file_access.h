// Files, looked at before they are opened.
//
// Opening a pipe waits for whoever is at its other end, and reading a device may never end. Only
// regular files (links followed) are let through; no operation here waits.
#ifndef REFERENCE_HOST_SYSTEM_FILE_ACCESS_H
#define REFERENCE_HOST_SYSTEM_FILE_ACCESS_H

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace reference_host
{

struct Stream_closer {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};

// An open file, or null and the reason: "there is no such file", "not a regular file but a pipe".
struct Opened_file {
    std::unique_ptr<std::FILE, Stream_closer> stream;
    std::string reason;
};

Opened_file open_to_read(const std::string& path, std::uintmax_t max_size);

// Makes the file or empties it. A link that leads nowhere is not followed.
Opened_file open_to_write(const std::string& path);

// The whole content of a file. Nothing when it cannot be read or is larger than `max_size`; the
// reason is then in `reason`.
std::optional<std::string> read_whole_file(const std::string& path, std::uintmax_t max_size,
                                           std::string& reason);

// Writes all of it, however the system cuts it; an interruption is no failure. False when the rest
// cannot be written: errno tells why.
bool write_all(int descriptor, std::string_view content);

// Why a file that another program opens cannot be read, or written; empty when it can, judged
// without opening it.
std::string why_not_readable(const std::string& path);
std::string why_not_writable(const std::string& path);

} // namespace reference_host

#endif
