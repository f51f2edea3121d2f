// Exporting from the window.
#include "tests/window/program_window.h"

#include "reference_host/window/export_bar.h"
#include "reference_host/window/exporter_view.h"
#include "reference_host/window/wx_text.h"

#include <filesystem>

#include <unistd.h>

#include <wx/button.h>
#include <wx/progdlg.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace QZ
{
namespace TEST
{
namespace
{

class Export : public Program_window
{
protected:
    std::string result() const
    {
        return reference_host::to_bytes(window().export_bar().result().GetLabelText());
    }

    bool wait_for_result(const std::string& start)
    {
        return wait_until([&] { return result().compare(0, start.size(), start) == 0; },
                          std::chrono::seconds(10));
    }
};

} // namespace

TEST_F(Export, writes_the_code_on_the_screen)
{
    start();
    open(sample("wood_textured"), "Custom CgFX");
    click(window().export_bar().export_button());
    EXPECT_TRUE(wait_for_result("Written: Wood.cgfx")) << result();
    EXPECT_EQ(folder.read("Wood.cgfx"), code());
    take_picture("exported");
}

TEST_F(Export, asks_before_it_replaces_a_file)
{
    start();
    folder.write("Wood.cgfx", "precious");
    open(sample("wood_textured"), "Custom CgFX");
    dialogs.answer_next({Reply::no});
    press_key("Control_L", "e");
    EXPECT_TRUE(wait_for_result("Left as it was: Wood.cgfx")) << result();
    EXPECT_EQ(folder.read("Wood.cgfx"), "precious");
    take_focus(window().GetHandle());
    ASSERT_TRUE(wait_until([&] { return has_focus(window().GetHandle()); }));
    dialogs.answer_next({Reply::yes});
    press_key("Control_L", "e");
    EXPECT_TRUE(wait_for_result("Written: Wood.cgfx")) << result();
    EXPECT_EQ(folder.read("Wood.cgfx"), code());
}

TEST_F(Export, says_so_when_the_disk_is_full)
{
    start();
    ASSERT_EQ(symlink("/dev/full", folder.file("Wood.cgfx").c_str()), 0);
    open(sample("wood_textured"), "Custom CgFX");
    press_key("Control_L", "e");
    EXPECT_TRUE(wait_for_result("Not exported: ")) << result();
    EXPECT_TRUE(has_message("Wood"));
}

TEST_F(Export, to_all_fills_a_folder_for_each_exporter)
{
    start();
    open(sample("wood_textured"), "Custom CgFX");
    window().export_bar().export_to_all(folder.file("all"));
    EXPECT_TRUE(wait_for_result("Exported 8 of 8")) << result();
    EXPECT_TRUE(std::filesystem::exists(folder.file("all/custom_glsl/Wood_f.gl")));
    EXPECT_TRUE(std::filesystem::exists(folder.file("all/catia_cgfx/Wood.fx")));
}

// Escape comes when the first exporter is done: those after it are left out.
TEST_F(Export, to_all_ends_with_escape)
{
    start();
    open(sample("wood_textured"), "Custom CgFX");
    bool is_pressed = false;
    window().workspace().listen([&is_pressed](reference_host::Change change) {
        if (change != reference_host::Change::messages || is_pressed)
            return;
        is_pressed = true;
        for (wxWindow* other : wxTopLevelWindows) {
            if (auto* progress = dynamic_cast<wxGenericProgressDialog*>(other)) {
                take_focus(progress->GetHandle());
                EXPECT_TRUE(wait_until([&] { return has_focus(progress->GetHandle()); }));
                press_key("Escape");
                EXPECT_TRUE(wait_until([&] { return progress->WasCancelled(); }));
            }
        }
    });
    window().export_bar().export_to_all(folder.file("all"));
    EXPECT_TRUE(is_pressed);
    EXPECT_TRUE(wait_for_result("Exported 1 of 8: cancelled")) << result();
    EXPECT_FALSE(std::filesystem::exists(folder.file("all/custom_glsl")));
}

TEST_F(Export, goes_where_the_panel_says)
{
    start();
    open(sample("wood_textured"), "Custom CgFX");
    window().workspace().set_choice({{}, folder.file("other/name")});
    EXPECT_NE(window().workspace().command_line().find("other/name"), std::string::npos);
}

} // namespace TEST
} // namespace QZ
