#include "tests/gui/window_test.h"

#include "tests/gui/gtk_functions.h"

#include <cstdlib>
#include <stdexcept>

#include <wx/frame.h>
#include <wx/panel.h>

namespace QZ
{
namespace TEST
{

Window_test::Window_test()
    : m_host(new wxFrame(nullptr, wxID_ANY, wxString(host_title, wxConvUTF8), wxPoint(20, 20),
                         wxSize(840, 800))),
      m_container(new wxPanel(m_host, wxID_ANY))
{
    setenv("HOME", folder.path().c_str(), 1);
    m_host->Show();
    EXPECT_TRUE(wait_until([this] { return is_mapped(m_host->GetHandle()); }));
}

Window_test::~Window_test()
{
    close_host_window();
}

void Window_test::TearDown()
{
    for (const std::string& complaint : dialogs.complaints())
        ADD_FAILURE() << complaint;
    EXPECT_EQ(dialogs.unused_answers(), 0u) << "a dialog did not appear";
}

unsigned long long Window_test::handle() const
{
    return reinterpret_cast<unsigned long long>(m_container);
}

void Window_test::close_host_window()
{
    if (!m_host)
        return;
    m_host->Destroy();
    m_host = nullptr;
    m_container = nullptr;
    handle_events(); // wx deletes a frame when it is idle
}

int Window_test::open_panel(TOVIRAEXPORT::Exporter_base& exporter, int width)
{
    const int height = exporter.create_ui(handle(), width, nullptr);
    exporter.set_ui_size(width, height);
    handle_events();
    return height;
}

wxWindow* Window_test::control(int id) const
{
    wxWindow* found = m_container->FindWindow(id);
    if (!found)
        throw std::runtime_error("no control " + std::to_string(id));
    return found;
}

const Shown_dialog& Window_test::shown() const
{
    if (dialogs.shown().empty())
        throw std::runtime_error("no dialog has appeared");
    return dialogs.shown().back();
}

} // namespace TEST
} // namespace QZ
