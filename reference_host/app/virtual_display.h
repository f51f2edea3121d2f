// A display to show windows on, where there may be none.
#ifndef REFERENCE_HOST_APP_VIRTUAL_DISPLAY_H
#define REFERENCE_HOST_APP_VIRTUAL_DISPLAY_H

#include <sys/types.h>

namespace reference_host
{

// Whether the display that the environment names can be opened.
bool has_display();

// A private Xvfb under a display number of its own choice. While it lives, the environment variable
// DISPLAY names it. It ends with this object, and with the process however that ends.
class Virtual_display
{
public:
    // Throws std::runtime_error with a message when Xvfb is missing or does not start.
    Virtual_display();
    ~Virtual_display();
    Virtual_display(const Virtual_display&) = delete;
    Virtual_display& operator=(const Virtual_display&) = delete;

private:
    void end_server();

    pid_t m_server = -1;
};

} // namespace reference_host

#endif
