// The code on the screen follows what the user chooses.
#include "tests/window/program_window.h"

#include "reference_host/window/code_view.h"
#include "reference_host/window/command_text.h"
#include "reference_host/window/document_tree.h"
#include "reference_host/window/export_bar.h"
#include "reference_host/window/exporter_view.h"
#include "reference_host/window/scene_view.h"
#include "reference_host/window/wx_text.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/srchctrl.h>
#include <wx/stopwatch.h>
#include <wx/textctrl.h>

namespace QZ
{
namespace TEST
{
namespace
{

using reference_host::to_bytes;

using Code = Program_window;

} // namespace

TEST_F(Code, changes_with_an_option_of_the_exporters_panel)
{
    start();
    open(sample("wood_textured"), "Custom CgFX");
    const std::string before = code();
    choose(combo_box(0), 1);
    EXPECT_TRUE(wait_until([&] { return code() != before; }));
    take_picture("other_option");
}

TEST_F(Code, changes_with_the_exporter)
{
    start();
    open(sample("wood_textured"), "Custom GLSL");
    choose(window().exporter().exporter(), 0);
    press_key("Up");
    EXPECT_TRUE(wait_for_code("technique"));
}

TEST_F(Code, changes_with_the_scene)
{
    start();
    open(sample("wood_textured"), "Custom GLSL");
    reference_host::Scene_request scene = window().workspace().current()->scene;
    scene.render.lights.push_back({"lamp", {}, {}, {}, {}});
    window().workspace().set_scene(scene);
    EXPECT_TRUE(wait_for_code("lamp"));
}

TEST_F(Code, keeps_the_cone_of_a_light_of_any_kind)
{
    start();
    open(sample("wood_textured"), "Custom GLSL");
    reference_host::Scene_request scene = window().workspace().current()->scene;
    scene.render.lights = {{"sun", reference_host::Light_kind::directional, 40.0f, 3.0f, {}}};
    window().workspace().set_scene(scene);
    window().workspace().select(*window().workspace().current(), ""); // shows the scene
    window().scene().environment().SetValue(wxT("dusk"));
    const reference_host::Scene_request& edited = window().workspace().current()->scene;
    EXPECT_EQ(edited.render.environment, "dusk");
    EXPECT_EQ(reference_host::light_text(edited.render.lights.at(0)), "sun:directional:40:3");
}

TEST_F(Code, is_searched_with_ctrl_f)
{
    start();
    open(sample("wood_textured"), "Custom GLSL");
    press_key("Control_L", "f");
    ASSERT_TRUE(wait_until([&] {
        wxWindow* focused = wxWindow::FindFocus();
        return focused && window().code().text().search().IsDescendant(focused);
    }));
    type_text("main");
    EXPECT_TRUE(wait_until([&] { return window().code().text().selection() == "main"; }));
    const int line = window().code().text().line();
    EXPECT_GT(line, 1);
}

TEST_F(Code, is_searched_until_escape)
{
    start();
    open(sample("wood_textured"), "Custom GLSL");
    press_key("Control_L", "f");
    type_text("main");
    ASSERT_TRUE(wait_until([&] { return window().code().text().selection() == "main"; }));
    press_key("Escape");
    EXPECT_TRUE(wait_until([&] { return window().code().text().text().HasFocus(); }));
    EXPECT_TRUE(window().code().text().search().IsEmpty());
}

TEST_F(Code, leads_to_the_node_of_the_line_that_is_clicked)
{
    start();
    open(sample("wood_textured"), "Custom GLSL");
    const reference_host::Work_document& document = *window().workspace().current();
    const std::string text = "float a;\nvec3 tinted_grain = grain * 2.0;\n}\nfloat wear_2;\n";
    const auto node_of_line = [&](int line) {
        const reference_host::Node* node = document.node_near(text, line);
        return node ? node->name : std::string();
    };
    EXPECT_EQ(node_of_line(2), "tinted_grain");
    EXPECT_EQ(node_of_line(4), "tinted_grain") << "the nearest above";
    EXPECT_EQ(node_of_line(1), "tinted_grain") << "else below";
    EXPECT_FALSE(document.node_near("void main()\n", 1));
    window().code().text().go_to_line(1);
    click(window().code().text().text(), wxPoint(300, 45)); // in the head, which names the node
    EXPECT_TRUE(wait_until([&] { return window().workspace().pointed_out() == "Varnished_wood"; }))
        << window().workspace().pointed_out();
}

TEST_F(Code, shows_the_node_of_a_line_and_stays_until_that_is_selected)
{
    start();
    open(sample("wood_textured"), "Custom GLSL");
    press_key("Control_L", "3");
    const std::string before = code();
    wxTreeCtrl& tree = window().documents().tree();
    const auto marked = [&tree] { return to_bytes(tree.GetItemText(tree.GetSelection())); };
    const std::string exported = marked();
    window().code().text().go_to_line(1);
    const auto click_on_head = [this](int x) { // which names the node
        click(window().code().text().text(), wxPoint(x, 45));
    };
    click_on_head(300);
    EXPECT_TRUE(wait_until([&] { return marked().find("Varnished_wood ") == 0; })) << marked();
    EXPECT_EQ(code(), before);
    press_key("Escape");
    EXPECT_TRUE(wait_until([&] { return marked() == exported; })) << marked();
    click_on_head(340); // not a double click
    ASSERT_TRUE(wait_until([&] { return marked() != exported; }));
    focus(tree);
    press_key("Return");
    EXPECT_TRUE(wait_for_code("Shader: Varnished_wood"));
}

TEST_F(Code, is_made_once_for_another_exporter)
{
    start();
    open(sample("wood_textured"), "Custom GLSL");
    int trials = 0;
    window().workspace().listen([&trials](reference_host::Change change) {
        trials += change == reference_host::Change::trial ? 1 : 0;
    });
    window().workspace().choose_exporter("Custom CgFX");
    EXPECT_TRUE(wait_for_code("technique"));
    const wxStopWatch watch;
    wait_until([&] { return watch.Time() > 500; });
    EXPECT_LE(trials, 2) << "once for the exporter, once for what its panel says";
}

TEST_F(Code, shows_its_difference_to_the_file_on_disk)
{
    start();
    open(sample("wood_textured"), "Custom CgFX");
    window().export_bar().export_current();
    const std::string before = code();
    choose(combo_box(0), 1);
    ASSERT_TRUE(wait_until([&] { return code() != before; }));
    click(window().code().difference());
    EXPECT_TRUE(wait_until([&] { return window().code().text().marked_lines() > 1; }));
    EXPECT_GT(code().size(), before.size()) << "lines of both";
    take_picture("difference");
}

} // namespace TEST
} // namespace QZ
