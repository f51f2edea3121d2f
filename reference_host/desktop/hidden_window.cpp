#include "reference_host/desktop/hidden_window.h"

#include <wx/frame.h>
#include <wx/panel.h>

namespace reference_host
{

namespace
{

// The only one, which belongs to the toolkit.
wxWindow* hidden_frame()
{
    const wxString name = wxT("shader-export hidden");
    wxWindow* known = wxWindow::FindWindowByName(name);
    if (known)
        return known;
    return new wxFrame(nullptr, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                       wxDEFAULT_FRAME_STYLE, name);
}

} // namespace

Hidden_window::Hidden_window() : m_area(new wxPanel(hidden_frame())) {}

Hidden_window::~Hidden_window()
{
    m_area->Destroy();
}

wxWindow& Hidden_window::area()
{
    return *m_area;
}

} // namespace reference_host
