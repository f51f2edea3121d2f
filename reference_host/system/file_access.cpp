#include "reference_host/system/file_access.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace reference_host
{
namespace
{

constexpr mode_t new_file_rights = 0666; // less what the user's umask takes away

struct Kind_name {
    mode_t kind;
    const char* name;
};

constexpr Kind_name kind_names[] = {{S_IFDIR, "a folder"},
                                    {S_IFIFO, "a pipe"},
                                    {S_IFCHR, "a device"},
                                    {S_IFBLK, "a device"},
                                    {S_IFSOCK, "a socket"}};

std::string error_text(int error)
{
    return error == ENOENT ? "there is no such file" : std::strerror(error);
}

// Empty for a regular file.
std::string why_not_regular(mode_t mode)
{
    if (S_ISREG(mode))
        return {};
    for (const Kind_name& row : kind_names) {
        if ((mode & S_IFMT) == row.kind)
            return std::string("not a regular file but ") + row.name;
    }
    return "not a regular file";
}

std::string why_too_large(off_t size, std::uintmax_t max_size)
{
    if (static_cast<std::uintmax_t>(size) <= max_size)
        return {};
    return "larger than " + std::to_string(max_size >> 20) + " MiB";
}

bool is_link_to_nowhere(const std::string& path)
{
    struct stat link;
    return lstat(path.c_str(), &link) == 0 && S_ISLNK(link.st_mode);
}

// Looks once more at what was opened: it may have been replaced since the look before.
Opened_file adopt(int descriptor, const char* mode)
{
    Opened_file result;
    struct stat status;
    if (descriptor < 0 || fstat(descriptor, &status) != 0)
        result.reason = error_text(errno);
    else
        result.reason = why_not_regular(status.st_mode);
    if (result.reason.empty())
        result.stream.reset(fdopen(descriptor, mode));
    else if (descriptor >= 0)
        close(descriptor);
    return result;
}

} // namespace

std::string why_not_readable(const std::string& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return error_text(errno);
    const std::string reason = why_not_regular(status.st_mode);
    if (reason.empty() && access(path.c_str(), R_OK) != 0)
        return error_text(errno);
    return reason;
}

std::string why_not_writable(const std::string& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) == 0)
        return why_not_regular(status.st_mode);
    if (errno != ENOENT)
        return error_text(errno);
    return is_link_to_nowhere(path) ? "a link that leads nowhere" : "";
}

Opened_file open_to_read(const std::string& path, std::uintmax_t max_size)
{
    Opened_file result;
    result.reason = why_not_readable(path);
    if (!result.reason.empty())
        return result;
    result = adopt(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC), "rb");
    struct stat status;
    if (result.stream && fstat(fileno(result.stream.get()), &status) == 0)
        result.reason = why_too_large(status.st_size, max_size);
    if (!result.reason.empty())
        result.stream.reset();
    return result;
}

Opened_file open_to_write(const std::string& path)
{
    Opened_file result;
    result.reason = why_not_writable(path);
    if (!result.reason.empty())
        return result;
    constexpr int flags = O_WRONLY | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    result = adopt(open(path.c_str(), flags, new_file_rights), "wb");
    if (result.stream && ftruncate(fileno(result.stream.get()), 0) != 0) {
        result.reason = error_text(errno);
        result.stream.reset();
    }
    return result;
}

std::optional<std::string> read_whole_file(const std::string& path, std::uintmax_t max_size,
                                           std::string& reason)
{
    const Opened_file file = open_to_read(path, max_size);
    reason = file.reason;
    if (!file.stream)
        return std::nullopt;
    std::string text;
    char block[1 << 16];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file.stream.get())) {
        text.append(block, count);
        if (text.size() > max_size) // it grew, or its size was not told, as in /proc
            reason = why_too_large(static_cast<off_t>(text.size()), max_size);
        if (!reason.empty())
            return std::nullopt;
    }
    if (std::ferror(file.stream.get())) {
        reason = error_text(errno);
        return std::nullopt;
    }
    return text;
}

bool write_all(int descriptor, std::string_view content)
{
    while (!content.empty()) {
        const ssize_t count = write(descriptor, content.data(), content.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        content.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

} // namespace reference_host
