// What the tests with real windows share: the host's window, a folder for files, the driver of the
// dialogs.
#ifndef TESTS_GUI_WINDOW_TEST_H
#define TESTS_GUI_WINDOW_TEST_H

#include "exporter_base/exporter_base.h"
#include "tests/gui/dialog_driver.h"
#include "tests/gui/waiting.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/wx_test_main.h"

#include <string>

class wxFrame;
class wxWindow;

namespace QZ
{
namespace TEST
{

// The title of the window that stands for the host's.
constexpr const char* host_title = "Host";

// A shown window with a container in it, as the host gives one to its exporters, and an empty
// folder, which HOME names. A test fails when a dialog appeared that it had no answer for, or did
// not appear.
class Window_test : public Wx_test
{
protected:
    Window_test();
    ~Window_test() override;
    void TearDown() override;

    // The container's handle as the host passes it.
    unsigned long long handle() const;
    wxWindow* container() const { return m_container; }

    // Closes the host's window with everything in it.
    void close_host_window();

    // The exporter's panel in the container, shown and laid out. Returns the height asked for.
    int open_panel(TOVIRAEXPORT::Exporter_base& exporter, int width);

    // The control of that id in the container; a failure of the test when there is none.
    wxWindow* control(int id) const;
    template<typename Control>
    Control* control(int id) const
    {
        return dynamic_cast<Control*>(control(id));
    }

    // The last dialog that appeared.
    const Shown_dialog& shown() const;

    Temporary_folder folder;
    Dialog_driver dialogs;

private:
    wxFrame* m_host;
    wxWindow* m_container;
};

} // namespace TEST
} // namespace QZ

#endif
