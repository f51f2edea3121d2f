// The program's command line.
#ifndef REFERENCE_HOST_APP_COMMAND_LINE_H
#define REFERENCE_HOST_APP_COMMAND_LINE_H

namespace reference_host
{

// Reads the command line, runs the command and returns the exit status: 0 done, 1 not done, 2 wrong
// usage. Messages go to standard error.
int run_command_line(int argc, char** argv);

} // namespace reference_host

#endif
