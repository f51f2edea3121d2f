// A display to show windows on, where there may be none.
#ifndef REFERENCE_HOST_DESKTOP_VIRTUAL_DISPLAY_H
#define REFERENCE_HOST_DESKTOP_VIRTUAL_DISPLAY_H

#include "reference_host/system/memory_file.h"

#include <sys/types.h>

struct _XDisplay; // as Xlib calls it; its header has many short macros

namespace reference_host
{

// A connection to the display that the environment names, held as long as this object lives: a
// server may start anew, or end, when its last client leaves.
class Display_connection
{
public:
    Display_connection();
    ~Display_connection();
    Display_connection(const Display_connection&) = delete;
    Display_connection& operator=(const Display_connection&) = delete;

    // Whether there is a display.
    bool is_open() const { return m_display != nullptr; }

private:
    _XDisplay* m_display;
};

// A private Xvfb under a display number of its own choice. It takes only clients that know its
// cookie. While it lives, the environment variables DISPLAY and XAUTHORITY name both. It ends with
// this object, and with the process however that ends.
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

    Memory_file m_cookie;
    pid_t m_server = -1;
};

} // namespace reference_host

#endif
