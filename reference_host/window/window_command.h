// The command `window`.
#ifndef REFERENCE_HOST_WINDOW_WINDOW_COMMAND_H
#define REFERENCE_HOST_WINDOW_WINDOW_COMMAND_H

#include "reference_host/app/commands.h"

namespace reference_host
{

// Opens the window and returns when it is closed. Throws std::runtime_error when there is no
// display, or no window with this version of wxWidgets.
int show_window(const Window_command& command);

} // namespace reference_host

#endif
