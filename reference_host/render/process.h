// Runs other programs.
#ifndef REFERENCE_HOST_RENDER_PROCESS_H
#define REFERENCE_HOST_RENDER_PROCESS_H

#include <string>
#include <vector>

namespace reference_host
{

struct Process_result {
    // The exit status; -1 when the program did not start or was ended by a signal.
    int status = -1;
    // What it wrote to standard output and standard error, in order of time.
    std::string output;
};

// Runs a program, without a shell, until it ends. `command` begins with the program: a path, or a
// name on the PATH.
Process_result run_program(const std::vector<std::string>& command);

} // namespace reference_host

#endif
