#include "reference_host/system/standard_streams.h"

#include <initializer_list>

#include <fcntl.h>
#include <unistd.h>

namespace reference_host
{

void open_missing_standard_streams()
{
    // In this order: open() gives the lowest number that is free.
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const bool is_open = fcntl(stream, F_GETFD) != -1;
        if (!is_open && open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) != stream)
            _exit(1);
    }
}

} // namespace reference_host
