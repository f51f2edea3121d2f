#include "reference_host/system/whole_file.h"

#include "reference_host/system/file_access.h"
#include "reference_host/system/held_signals.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

constexpr mode_t new_file_rights = 0666; // less what the user's umask takes away

class Descriptor
{
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor()
    {
        if (m_number >= 0)
            close(m_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return m_number; }

private:
    int m_number;
};

std::string write_in_place(const std::string& path, const std::string& content)
{
    Opened_file file = open_to_write(path);
    if (!file.stream)
        return file.reason;
    errno = 0;
    const bool is_written =
        std::fwrite(content.data(), 1, content.size(), file.stream.get()) == content.size();
    const bool is_closed = std::fclose(file.stream.release()) == 0;
    return is_written && is_closed ? std::string() : std::strerror(errno);
}

// Gives a file without a name its name, and replaces what has it.
bool name_file(int descriptor, const std::string& path)
{
    const std::string nameless = "/proc/self/fd/" + std::to_string(descriptor);
    const auto name_it = [&](const std::string& name) {
        return linkat(AT_FDCWD, nameless.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    };
    const Held_signals held;
    if (name_it(path))
        return true;
    if (errno != EEXIST)
        return false;
    // A name that is taken can only be taken over. The next run removes what a killed one left.
    const std::string unfinished = path + ".unfinished";
    unlink(unfinished.c_str());
    return name_it(unfinished) && rename(unfinished.c_str(), path.c_str()) == 0;
}

} // namespace

std::string write_whole_file(const std::string& path, const std::string& content)
{
    if (std::string reason = why_not_writable(path); !reason.empty())
        return reason;
    struct stat old;
    const bool is_there = stat(path.c_str(), &old) == 0;
    if (is_there && access(path.c_str(), W_OK) != 0)
        return std::strerror(errno);
    std::error_code failure;
    const fs::path place = is_there ? fs::canonical(path, failure) : fs::path(path);
    const std::string folder = place.has_parent_path() ? place.parent_path().string() : ".";
    const Descriptor file(open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, new_file_rights));
    if (file.number() < 0 && (errno == ENOENT || errno == ENOTDIR))
        return std::strerror(errno);
    if (file.number() < 0)
        return write_in_place(path, content);
    if (!write_all(file.number(), content))
        return std::strerror(errno);
    if (is_there)
        fchmod(file.number(), old.st_mode & 07777U);
    return name_file(file.number(), place.string()) ? std::string() : write_in_place(path, content);
}

} // namespace reference_host
