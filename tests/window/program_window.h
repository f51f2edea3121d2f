// The program's window as tests use it: with the real plug-in, settings and files in a folder of
// the test, and a user's hands.
#ifndef TESTS_WINDOW_PROGRAM_WINDOW_H
#define TESTS_WINDOW_PROGRAM_WINDOW_H

#include "reference_host/window/main_window.h"
#include "tests/gui/dialog_driver.h"
#include "tests/gui/user_input.h"
#include "tests/gui/waiting.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/wx_test_main.h"

#include <memory>
#include <string>

#include <wx/fileconf.h>

namespace QZ
{
namespace TEST
{

class Program_window : public Wx_test
{
protected:
    Program_window();
    ~Program_window() override;
    void TearDown() override;

    // Opens the window, and again: as the user does on another day. It has the keys.
    void start(const wxSize& size = wxSize(1366, 768));
    void close();

    // A sample, copied with the images into the test's folder; and its place there.
    std::string sample(const std::string& name) const;

    // Opens a document with an exporter, a light and an environment, and waits for its code.
    void open(const std::string& file, const std::string& exporter);

    // ---- a user's hands

    void click(wxWindow& control);
    void click(wxWindow& control, const wxPoint& at);
    void focus(wxWindow& control);

    // Types into a field that has the keys, in place of what is there.
    void replace_text(const std::string& text);

    // Chooses by keys in a list that drops down.
    void choose(wxWindow& choice, int steps_down);

    // ---- what there is to see

    std::string code() const;
    bool wait_for_code(const std::string& part);
    bool has_message(const std::string& part) const;
    bool wait_for_message(const std::string& part);

    // The control on the exporter's panel with that label or, for a choice, position among them.
    wxWindow& check_box(const std::string& label) const;
    wxWindow& combo_box(int position) const;

    // A picture of the window, where TOVIRAEXPORT_PICTURES names a folder.
    void take_picture(const std::string& name) const;

    reference_host::Main_window& window() const { return *m_window; }

    Temporary_folder folder;
    Dialog_driver dialogs;

private:
    std::unique_ptr<reference_host::Plugin_library> m_plugin;
    std::unique_ptr<wxFileConfig> m_config;
    reference_host::Main_window* m_window = nullptr;
};

} // namespace TEST
} // namespace QZ

#endif
