#include "reference_host/system/temporary_folder.h"

#include "reference_host/system/held_signals.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace reference_host
{
namespace
{

std::string make_folder()
{
    std::error_code failure;
    std::string name =
        (std::filesystem::temp_directory_path(failure) / "shader-export-XXXXXX").string();
    if (failure || !mkdtemp(name.data()))
        throw std::runtime_error("no temporary folder can be made");
    return name;
}

void remove_folder(const std::string& path)
{
    std::error_code ignored; // a folder that stays behind does not fail the program
    std::filesystem::remove_all(path, ignored);
}

// Waits until nobody holds the other end of the pipe, in a process group of its own: what ends the
// program's group does not end this.
[[noreturn]] void stand_by(int sign_of_life, const std::string& path)
{
    setpgid(0, 0);
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, nullptr);
    dup2(sign_of_life, STDIN_FILENO);
    close_range(STDOUT_FILENO, ~0U, 0); // whoever reads the program's output must see its end
    char byte;
    while (read(STDIN_FILENO, &byte, 1) < 0 && errno == EINTR)
        continue;
    remove_folder(path);
    _exit(0);
}

} // namespace

Temporary_folder::Temporary_folder()
{
    const Held_signals held; // one that ends the program waits until the remover is there
    m_path = make_folder();
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return;
    m_remover = fork();
    if (m_remover == 0)
        stand_by(ends[0], m_path);
    setpgid(m_remover, m_remover); // also here: a signal for the group may come at once
    close(ends[0]);
    m_sign_of_life = ends[1];
}

Temporary_folder::~Temporary_folder()
{
    if (m_sign_of_life >= 0)
        close(m_sign_of_life);
    if (m_remover > 0)
        waitpid(m_remover, nullptr, 0);
    else
        remove_folder(m_path);
}

} // namespace reference_host
