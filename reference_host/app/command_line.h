// The program's command line.
#ifndef REFERENCE_HOST_APP_COMMAND_LINE_H
#define REFERENCE_HOST_APP_COMMAND_LINE_H

#include "reference_host/app/commands.h"

namespace reference_host
{

// Reads the command line, runs the command and returns the exit status: 0 done, 1 not done, 2 wrong
// usage. Messages go to standard error.
int run_command_line(int argc, const char* const* argv, Show_window show_window);

// Reads the command line and the configuration in the same way, but does nothing: 0 and 2, and 1
// for a configuration that cannot be read.
int check_command_line(int argc, const char* const* argv);

} // namespace reference_host

#endif
