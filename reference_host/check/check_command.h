// The command `check` of the program.
#ifndef REFERENCE_HOST_CHECK_CHECK_COMMAND_H
#define REFERENCE_HOST_CHECK_CHECK_COMMAND_H

#include <functional>

namespace CLI
{
class App;
}

namespace reference_host
{

// Adds the command, which leaves in `action` what it does when the command line is read. That
// returns 0 when no check of the severity "error" failed, otherwise 1. `action` must outlive `app`.
void add_check_command(CLI::App& app, std::function<int()>& action);

} // namespace reference_host

#endif
