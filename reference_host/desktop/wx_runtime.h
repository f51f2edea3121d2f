// The wx application that the host is.
#ifndef REFERENCE_HOST_DESKTOP_WX_RUNTIME_H
#define REFERENCE_HOST_DESKTOP_WX_RUNTIME_H

#include "reference_host/desktop/virtual_display.h"

#include <optional>

namespace reference_host
{

// Whether a private display will do where the environment has none.
enum class Display_choice { any, users };

// Starts wx, on a private display when the environment has none, and ends both. One per process;
// windows may be made while it lives.
class Wx_runtime
{
public:
    // Throws std::runtime_error with a message when there is no way to show windows.
    explicit Wx_runtime(Display_choice choice = Display_choice::any);
    ~Wx_runtime();
    Wx_runtime(const Wx_runtime&) = delete;
    Wx_runtime& operator=(const Wx_runtime&) = delete;

    // Handles events until the windows have been drawn.
    static void settle();

    // Handles events until the last window is closed.
    static void run();

private:
    Display_connection m_users_display;
    std::optional<Virtual_display> m_private_display;
};

} // namespace reference_host

#endif
