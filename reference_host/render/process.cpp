#include "reference_host/render/process.h"

#include <cerrno>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace reference_host
{

namespace
{

std::string read_to_end(int descriptor)
{
    std::string text;
    char buffer[4096];
    for (;;) {
        const ssize_t count = read(descriptor, buffer, sizeof buffer);
        if (count > 0)
            text.append(buffer, static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            return text;
    }
}

// Starts the program with both outputs going to `output`. False when it does not start.
bool start(const std::vector<std::string>& command, int output, pid_t& process)
{
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDERR_FILENO);
    const int failure =
        posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return failure == 0;
}

} // namespace

Process_result run_program(const std::vector<std::string>& command)
{
    Process_result result;
    int ends[2];
    if (command.empty() || pipe2(ends, O_CLOEXEC) != 0)
        return result;
    pid_t process = 0;
    const bool started = start(command, ends[1], process);
    close(ends[1]);
    if (started) {
        result.output = read_to_end(ends[0]);
        int status = 0;
        while (waitpid(process, &status, 0) < 0 && errno == EINTR)
            continue;
        if (WIFEXITED(status))
            result.status = WEXITSTATUS(status);
    }
    close(ends[0]);
    return result;
}

} // namespace reference_host
