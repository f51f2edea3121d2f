#include "exporter_base/files.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

// How often in a row an interrupted call is repeated. Signals are rare; a system that interrupts
// every call must not hang the host.
constexpr int retry_limit = 1000;

// An open file, closed at the end of its life.
class Descriptor
{
public:
    // Opens without waiting for the other end of a pipe, the carrier of a terminal or the holder of
    // a lease.
    Descriptor(const std::string& name, int flags)
    {
        constexpr mode_t mode = 0666; // what the user's mask leaves of it
        for (int tries = 0; tries < retry_limit; ++tries) {
            m_descriptor = ::open(name.c_str(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, mode);
            if (m_descriptor >= 0 || errno != EINTR)
                return;
        }
    }
    ~Descriptor()
    {
        if (is_open())
            ::close(m_descriptor);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool is_open() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }

    // Closes now. False when the system could not keep what was written. Never tried again: the
    // descriptor is gone also after a failure.
    bool close()
    {
        const int descriptor = m_descriptor;
        m_descriptor = -1;
        return ::close(descriptor) == 0;
    }

private:
    int m_descriptor = -1;
};

// Keeps a pipe whose reader goes away from ending the process; the write fails instead.
class Broken_pipe_guard
{
public:
    Broken_pipe_guard()
    {
        ::sigemptyset(&m_broken_pipe);
        ::sigaddset(&m_broken_pipe, SIGPIPE);
        ::pthread_sigmask(SIG_BLOCK, &m_broken_pipe, &m_previous);
    }
    // A signal that is pending now is ours: none was pending before.
    ~Broken_pipe_guard()
    {
        if (::sigismember(&m_previous, SIGPIPE) == 0) {
            const timespec at_once = {0, 0};
            ::sigtimedwait(&m_broken_pipe, nullptr, &at_once);
        }
        ::pthread_sigmask(SIG_SETMASK, &m_previous, nullptr);
    }
    Broken_pipe_guard(const Broken_pipe_guard&) = delete;
    Broken_pipe_guard& operator=(const Broken_pipe_guard&) = delete;

private:
    sigset_t m_broken_pipe;
    sigset_t m_previous;
};

// Waits for the reader of a pipe, for a second at most.
bool wait_until_writable(int descriptor)
{
    constexpr int milliseconds = 1000;
    pollfd pipe = {descriptor, POLLOUT, 0};
    return ::poll(&pipe, 1, milliseconds) == 1;
}

bool write_piece(int descriptor, std::string_view bytes)
{
    int interruptions = 0;
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<size_t>(written));
            interruptions = 0;
        } else if (written == 0 || (errno != EINTR && errno != EAGAIN)) {
            return false;
        } else if (errno == EAGAIN ? !wait_until_writable(descriptor)
                                   : ++interruptions == retry_limit) {
            return false;
        }
    }
    return true;
}

// read(2), repeated when interrupted.
ssize_t read_some(int descriptor, char* buffer, size_t size)
{
    for (int tries = 0; tries < retry_limit; ++tries) {
        const ssize_t count = ::read(descriptor, buffer, size);
        if (count >= 0 || errno != EINTR)
            return count;
    }
    return -1;
}

} // namespace

bool is_regular_file(const char* name)
{
    struct stat status;
    return ::stat(name, &status) == 0 && S_ISREG(status.st_mode);
}

bool read_text_file(const std::string& name, std::string& text)
{
    const Descriptor file(name, O_RDONLY);
    struct stat status;
    if (!file.is_open() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    text.clear();
    char buffer[16384];
    for (;;) {
        const ssize_t count = read_some(file.get(), buffer, sizeof buffer);
        if (count <= 0)
            return count == 0;
        const char* const start = buffer;
        const char* const end = start + count;
        const char* const text_end = std::find(start, end, '\0');
        text.append(start, text_end);
        if (text_end != end)
            return true;
    }
}

Write_result write_file(const std::string& name, std::initializer_list<std::string_view> pieces)
{
    Descriptor file(name, O_WRONLY | O_CREAT | O_TRUNC);
    if (!file.is_open())
        return WRITE_OPEN_FAILED;
    const Broken_pipe_guard guard;
    for (const std::string_view piece : pieces)
        if (!write_piece(file.get(), piece))
            return WRITE_FAILED;
    return file.close() ? WRITE_DONE : WRITE_FAILED;
}

} // namespace TOVIRAEXPORT
} // namespace QZ
