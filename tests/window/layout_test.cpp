// The window on screens of every size.
#include "tests/window/program_window.h"

#include "reference_host/window/code_view.h"
#include "reference_host/window/document_tree.h"
#include "reference_host/window/export_bar.h"
#include "reference_host/window/exporter_view.h"
#include "reference_host/window/message_list.h"
#include "tests/gui/gtk_functions.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/notebook.h>
#include <wx/scrolwin.h>
#include <wx/stattext.h>

namespace QZ
{
namespace TEST
{
namespace
{

class Layout : public Program_window
{
protected:
    void expect_visible(wxWindow& control, const char* name)
    {
        const wxRect outside = window().GetScreenRect();
        const wxRect inside = control.GetScreenRect();
        EXPECT_TRUE(control.IsShownOnScreen()) << name;
        EXPECT_TRUE(outside.Contains(inside)) << name << " " << inside.x << "," << inside.y << " "
                                              << inside.width << "x" << inside.height;
    }

    // Those in areas that scroll can be brought into sight.
    void expect_buttons_in_sight(const wxWindow& parent)
    {
        for (wxWindow* child : parent.GetChildren()) {
            if (dynamic_cast<wxScrolledWindow*>(child) || !child->IsShownOnScreen())
                continue;
            if (dynamic_cast<wxButton*>(child)) {
                EXPECT_TRUE(parent.GetScreenRect().Contains(child->GetScreenRect()))
                    << child->GetLabel().utf8_string();
            }
            expect_buttons_in_sight(*child);
        }
    }

    void expect_usable(const wxSize& size)
    {
        start(size);
        open(sample("wood_textured"), "Custom CgFX");
        ASSERT_TRUE(wait_until([&] { return window().GetSize() == size; }));
        expect_visible(window().export_bar().export_button(), "export");
        expect_visible(window().export_bar().result(), "result");
        expect_visible(window().exporter().exporter(), "exporter");
        expect_visible(window().messages(), "messages");
        EXPECT_GT(window().code().GetSize().x, 380);
        EXPECT_GT(window().code().GetSize().y, 400);
        EXPECT_GT(window().exporter().GetSize().y, 250);
    }
};

} // namespace

TEST_F(Layout, everything_is_in_sight_at_1024_x_700)
{
    expect_usable(wxSize(1024, 700));
    take_picture("size_1024x700");
}

TEST_F(Layout, everything_is_in_sight_at_1366_x_768)
{
    expect_usable(wxSize(1366, 768));
    take_picture("size_1366x768");
}

TEST_F(Layout, every_button_is_in_sight_with_letters_twice_as_large)
{
    void* settings = gtk_function<void*()>("gtk_settings_get_default")();
    const auto set = gtk_function<void(void*, const char*, ...)>("g_object_set");
    const std::string usual = text_property(settings, "gtk-font-name");
    set(settings, "gtk-font-name", "Sans 20", nullptr);
    start(wxSize(1024, 700));
    open(sample("wood_textured"), "Custom CgFX");
    for (const char* page : {"1", "2", "3", "4"}) {
        press_key("Control_L", page);
        EXPECT_TRUE(wait_until([&] { return window().pages().GetSelection() == page[0] - '1'; }));
        handle_events();
        expect_buttons_in_sight(window());
        take_picture(std::string("large_letters_") + page);
    }
    set(settings, "gtk-font-name", usual.c_str(), nullptr);
}

TEST_F(Layout, tab_goes_through_the_export_controls)
{
    start();
    open(sample("wood_textured"), "Custom CgFX");
    focus(window().export_bar().export_button());
    press_key("Tab");
    EXPECT_TRUE(wait_until(
        [&] { return wxWindow::FindFocus() != &window().export_bar().export_button(); }));
}

} // namespace TEST
} // namespace QZ
