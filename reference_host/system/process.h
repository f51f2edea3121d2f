// Runs other programs.
#ifndef REFERENCE_HOST_SYSTEM_PROCESS_H
#define REFERENCE_HOST_SYSTEM_PROCESS_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace reference_host
{

// What a program may use; 0 is without limit.
struct Process_limits {
    int seconds = 0;        // from start to end
    std::size_t memory = 0; // bytes of address space
    std::size_t output = 0; // bytes, of its two outputs together and of each file that it writes
};

enum class Process_end {
    exit,       // by itself, with a status
    signal,     // by a signal, such as that of a crash
    no_start,   // there is no such program
    time_limit, // ended after limits.seconds
    output_limit
};

struct Process_result {
    Process_end end = Process_end::no_start;
    int status = -1; // of Process_end::exit, otherwise -1
    int signal = 0;  // of Process_end::signal
    // What it wrote to standard output and standard error, in order of time.
    std::string output;
};

// Runs a program, without a shell, until it ends. `command` begins with the program: a path, or a
// name on the PATH. The program and what it starts are a process group of their own, which is ended
// when a limit is reached; the program itself also ends with this process, however that ends.
Process_result run_program(const std::vector<std::string>& command,
                           const Process_limits& limits = {});

// Runs `action` in a copy of this process in the same way. What it returns is the exit status.
Process_result run_in_own_process(const std::function<int()>& action, const Process_limits& limits);

// "ended by signal 11 (Segmentation fault)" and the like.
std::string describe_end(const Process_result& result, const Process_limits& limits);

} // namespace reference_host

#endif
