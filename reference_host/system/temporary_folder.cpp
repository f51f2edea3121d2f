#include "reference_host/system/temporary_folder.h"

#include "reference_host/system/held_signals.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace reference_host
{
namespace
{

// Makes the folder, tells its path, and removes it once nobody holds the other end of the link.
// In a process group of its own: what ends the program's group does not end this.
[[noreturn]] void keep_folder(int link, std::string path)
{
    setpgid(0, 0);
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, nullptr);
    dup2(link, STDIN_FILENO);
    close_range(STDOUT_FILENO, ~0U, 0); // whoever reads the program's output must see its end
    if (!mkdtemp(path.data()))
        _exit(1);
    if (send(STDIN_FILENO, path.data(), path.size(), MSG_NOSIGNAL) >= 0) {
        char byte;
        while (read(STDIN_FILENO, &byte, 1) < 0 && errno == EINTR)
            continue;
    }
    std::error_code ignored; // a folder that stays behind fails nothing
    std::filesystem::remove_all(path, ignored);
    _exit(0);
}

// The pattern of a new folder's path: the end of its name is random.
std::string path_pattern()
{
    std::error_code failure;
    const auto place = std::filesystem::temp_directory_path(failure);
    return failure ? "" : (place / "shader-export-XXXXXX").string();
}

// False when the other end closed before it told so many bytes.
bool receive(int link, std::string& text)
{
    ssize_t count;
    do
        count = recv(link, text.data(), text.size(), MSG_WAITALL);
    while (count < 0 && errno == EINTR);
    return count == static_cast<ssize_t>(text.size());
}

} // namespace

Temporary_folder::Temporary_folder() : m_path(path_pattern())
{
    int ends[2] = {-1, -1};
    if (m_path.empty() || socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        throw std::runtime_error("no temporary folder can be made");
    {
        const Held_signals held; // none ends the keeper before it is on its own
        m_keeper = fork();
        if (m_keeper == 0)
            keep_folder(ends[0], m_path);
    }
    close(ends[0]);
    m_link = ends[1];
    if (m_keeper > 0 && receive(m_link, m_path))
        return;
    end_keeper();
    throw std::runtime_error("no temporary folder can be made");
}

Temporary_folder::~Temporary_folder()
{
    end_keeper();
}

void Temporary_folder::end_keeper()
{
    close(m_link);
    while (m_keeper > 0 && waitpid(m_keeper, nullptr, 0) < 0 && errno == EINTR)
        continue;
}

} // namespace reference_host
