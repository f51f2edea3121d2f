// The window on screens of every size.
#include "tests/window/program_window.h"

#include "reference_host/window/code_view.h"
#include "reference_host/window/document_tree.h"
#include "reference_host/window/export_bar.h"
#include "reference_host/window/exporter_view.h"
#include "reference_host/window/message_list.h"

#include <wx/button.h>
#include <wx/choice.h>
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
