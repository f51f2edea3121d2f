// A window that is never shown, with an area for a panel.
#ifndef REFERENCE_HOST_DESKTOP_HIDDEN_WINDOW_H
#define REFERENCE_HOST_DESKTOP_HIDDEN_WINDOW_H

class wxFrame;
class wxPanel;
class wxWindow;

namespace reference_host
{

// Gone at the end of its scope.
class Hidden_window
{
public:
    Hidden_window();
    ~Hidden_window();
    Hidden_window(const Hidden_window&) = delete;
    Hidden_window& operator=(const Hidden_window&) = delete;

    wxWindow& area();

private:
    wxFrame* m_frame;
    wxPanel* m_area;
};

} // namespace reference_host

#endif
