#include "reference_host/window/window_command.h"

#include <stdexcept>

namespace reference_host
{

int show_window(const Window_command&)
{
    throw std::runtime_error("the window needs wxWidgets 3.2; this program has an older one");
}

} // namespace reference_host
