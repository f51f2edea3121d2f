#include "reference_host/app/command_line.h"
#include "reference_host/system/standard_streams.h"
#include "reference_host/window/window_command.h"

#include <csignal>
#include <cstdio>

int main(int argc, char** argv)
{
    reference_host::open_missing_standard_streams();
    std::signal(SIGXFSZ, SIG_IGN); // a file that grows too large is a failed write, not the end
    const int status = reference_host::run_command_line(argc, argv, reference_host::show_window);
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return status;
    std::perror("shader-export: error: standard output");
    return status == 0 ? 1 : status;
}
