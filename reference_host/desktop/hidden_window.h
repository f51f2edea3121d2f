// An area for a panel in a window that is never shown.
#ifndef REFERENCE_HOST_DESKTOP_HIDDEN_WINDOW_H
#define REFERENCE_HOST_DESKTOP_HIDDEN_WINDOW_H

class wxPanel;
class wxWindow;

namespace reference_host
{

// The area is gone at the end of its scope. The window is made once and ends with the program: it
// takes longer to make than most panels.
class Hidden_window
{
public:
    Hidden_window();
    ~Hidden_window();
    Hidden_window(const Hidden_window&) = delete;
    Hidden_window& operator=(const Hidden_window&) = delete;

    wxWindow& area();

private:
    wxPanel* m_area;
};

} // namespace reference_host

#endif
