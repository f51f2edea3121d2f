#include "reference_host/desktop/hidden_window.h"

#include <wx/frame.h>
#include <wx/panel.h>

namespace reference_host
{

Hidden_window::Hidden_window()
    : m_frame(new wxFrame(nullptr, wxID_ANY, wxT("shader-export"))), m_area(new wxPanel(m_frame))
{
}

Hidden_window::~Hidden_window()
{
    m_frame->Destroy();
}

wxWindow& Hidden_window::area()
{
    return *m_area;
}

} // namespace reference_host
