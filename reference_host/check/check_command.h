// The command `check` of the program.
#ifndef REFERENCE_HOST_CHECK_CHECK_COMMAND_H
#define REFERENCE_HOST_CHECK_CHECK_COMMAND_H

namespace CLI
{
class App;
}

namespace reference_host
{

// Adds the command. `exit_status` must outlive `app`; the command sets it to 0 when no check of the
// severity "error" failed, otherwise to 1.
void add_check_command(CLI::App& app, int& exit_status);

} // namespace reference_host

#endif
