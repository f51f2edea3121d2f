// Runs other programs.
#ifndef REFERENCE_HOST_RENDER_PROCESS_H
#define REFERENCE_HOST_RENDER_PROCESS_H

#include <string>
#include <vector>

namespace reference_host
{

struct Process_result {
    int status = -1; // exit status; -1 when the program did not start or was ended by a signal
    std::string
        output; // what it wrote to standard output and standard error, in that order of time
};

// Runs a program, without a shell, until it ends. `command` begins with the program: a path, or a
// name on the PATH.
Process_result run_program(const std::vector<std::string>& command);

// A new folder for temporary files, removed with what is in it at the end of its life.
class Temporary_folder
{
public:
    Temporary_folder();
    ~Temporary_folder();
    Temporary_folder(const Temporary_folder&) = delete;
    Temporary_folder& operator=(const Temporary_folder&) = delete;

    // Without slash at the end; empty when none could be made.
    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

} // namespace reference_host

#endif
