#include "reference_host/system/process.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace reference_host
{
namespace
{

using Clock = std::chrono::steady_clock;

constexpr int not_started_status = 127;

void limit(int resource, std::size_t value)
{
    const rlimit both = {value, value};
    if (value > 0)
        setrlimit(static_cast<__rlimit_resource>(resource), &both);
}

// In the new process: outputs, limits, and an end with the parent.
void set_up_child(int output, pid_t parent, const Process_limits& limits)
{
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(not_started_status); // the parent ended before the line above
    const int silence = open("/dev/null", O_RDONLY);
    dup2(silence, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    const rlimit no_core = {0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
    limit(RLIMIT_AS, limits.memory);
    limit(RLIMIT_FSIZE, limits.output);
    limit(RLIMIT_CPU, limits.seconds > 0 ? static_cast<std::size_t>(limits.seconds) + 1 : 0);
}

int milliseconds_until(Clock::time_point deadline)
{
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    return static_cast<int>(std::max<long long>(left.count(), 0));
}

// Reads until the output ends. False when a limit was reached; `end` then says which.
bool read_output(int descriptor, const Process_limits& limits, Clock::time_point deadline,
                 Process_result& result)
{
    char buffer[1 << 16];
    for (;;) {
        pollfd waiting{descriptor, POLLIN, 0};
        const int ready = poll(&waiting, 1, limits.seconds ? milliseconds_until(deadline) : -1);
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready == 0) {
            result.end = Process_end::time_limit;
            return false;
        }
        const ssize_t count = read(descriptor, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return true;
        result.output.append(buffer, static_cast<std::size_t>(count));
        if (limits.output > 0 && result.output.size() > limits.output) {
            result.output.resize(limits.output);
            result.end = Process_end::output_limit;
            return false;
        }
    }
}

// Waits for the end of a process that has closed its output, but not longer than it may run.
bool wait_until(pid_t process, const Process_limits& limits, Clock::time_point deadline,
                siginfo_t& info)
{
    for (;;) {
        const int options = WEXITED | WNOWAIT | (limits.seconds ? WNOHANG : 0);
        info.si_pid = 0;
        if (waitid(P_PID, static_cast<id_t>(process), &info, options) == 0 && info.si_pid != 0)
            return true;
        if (limits.seconds > 0 && milliseconds_until(deadline) == 0)
            return false;
        if (limits.seconds > 0)
            poll(nullptr, 0, 2);
    }
}

void take_end(const siginfo_t& info, Process_result& result)
{
    const bool exited = info.si_code == CLD_EXITED;
    result.end = exited ? Process_end::exit : Process_end::signal;
    (exited ? result.status : result.signal) = info.si_status;
}

// Follows the process to its end, and ends what is left of its group.
void follow(pid_t process, int output, const Process_limits& limits, Process_result& result)
{
    const auto deadline = Clock::now() + std::chrono::seconds(limits.seconds);
    siginfo_t info = {};
    if (read_output(output, limits, deadline, result)) {
        if (wait_until(process, limits, deadline, info))
            take_end(info, result);
        else
            result.end = Process_end::time_limit;
    }
    kill(-process, SIGKILL); // before its leader is waited for: its number is still its own
    while (waitpid(process, nullptr, 0) < 0 && errno == EINTR)
        continue;
}

// Whether the new process gets a copy of this program's memory, or uses it until it becomes another
// program. To copy the memory of a program with a window takes longer than many a program runs.
enum class Memory { copied, lent };

template<typename Become>
Process_result run(const Process_limits& limits, Memory memory, Become become)
{
    Process_result result;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return result;
    const pid_t parent = getpid();
    // What the child does until then changes no memory but its own frames and the parent waits.
    // NOLINTNEXTLINE(clang-analyzer-security.insecureAPI.vfork,clang-analyzer-unix.Vfork)
    const pid_t process = memory == Memory::lent ? vfork() : fork();
    if (process == 0) {
        set_up_child(ends[1], parent, limits);
        become();
        _exit(not_started_status);
    }
    close(ends[1]);
    if (process > 0) {
        setpgid(process, process); // also done by the child: the first call counts
        follow(process, ends[0], limits, result);
    }
    close(ends[0]);
    return result;
}

} // namespace

Process_result run_program(const std::vector<std::string>& command, const Process_limits& limits)
{
    if (command.empty())
        return {};
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    Process_result result =
        run(limits, Memory::lent, [&arguments] { execvp(arguments[0], arguments.data()); });
    if (result.status == not_started_status && result.output.empty())
        result = {};
    return result;
}

Process_result run_in_own_process(const std::function<int()>& action, const Process_limits& limits)
{
    return run(limits, Memory::copied, [&action] { _exit(action()); });
}

std::string describe_end(const Process_result& result, const Process_limits& limits)
{
    switch (result.end) {
    case Process_end::exit:
        return "ended with status " + std::to_string(result.status);
    case Process_end::signal:
        return "ended by signal " + std::to_string(result.signal) + " (" +
               strsignal(result.signal) + ")";
    case Process_end::no_start:
        return "did not start";
    case Process_end::time_limit:
        return "took longer than " + std::to_string(limits.seconds) + " seconds";
    case Process_end::output_limit:
        return "wrote more than " + std::to_string(limits.output >> 20) + " MiB";
    }
    return {};
}

} // namespace reference_host
