// The program's command line.
#ifndef REFERENCE_HOST_APP_COMMAND_LINE_H
#define REFERENCE_HOST_APP_COMMAND_LINE_H

#include "reference_host/app/commands.h"

namespace reference_host
{

// Reads the command line, runs the command and returns the exit status: 0 done, 1 not done, 2 wrong
// usage. Messages go to standard error.
int run_command_line(int argc, char** argv, Show_window show_window);

} // namespace reference_host

#endif
