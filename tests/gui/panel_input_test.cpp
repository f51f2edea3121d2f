// The panels worked with mouse and keyboard; what is exported then shows the choices.
#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "exporters/exporter_3dsmax.h"
#include "exporters/exporter_default.h"
#include "exporters/exporter_fxcomposer.h"
#include "exporters/exporter_generic.h"
#include "exporters/exporter_swrc.h"
#include "reference_host/recording_host/recording_host.h"
#include "tests/gui/gtk_functions.h"
#include "tests/gui/user_input.h"
#include "tests/gui/window_test.h"

#include <cstdio>

#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace QZ
{
namespace TEST
{
namespace
{

using namespace TOVIRAEXPORT;

struct Check_box_case {
    int id;
    const char* option;
    const char* value; // after a click
};

class Panel_input : public Window_test
{
protected:
    Panel_input() { host.add_selected_node("node"); }

    // Shows the panel, and gives the host's window the keys.
    void show(Exporter_base& exporter)
    {
        constexpr int width = 400;
        exporter.initialize();
        const int height = open_panel(exporter, width);
        void* window = container()->GetParent()->GetHandle();
        container()->GetParent()->SetClientSize(width + 10, height + 10);
        ASSERT_TRUE(wait_until([&] { return container()->GetSize().y == height + 10; }));
        exporter.set_ui_size(width, height);
        take_focus(window);
        ASSERT_TRUE(wait_until([&] { return has_focus(window); }));
    }

    bool wait_for_focus(int id)
    {
        return wait_until([&] { return wxWindow::FindFocus() == control(id); });
    }

    void focus(int id)
    {
        control(id)->SetFocus();
        EXPECT_TRUE(wait_for_focus(id)) << id;
    }

    // Goes on to the next control. A choice of GTK 3 is two stops, the second one within it.
    void tab_to(int id)
    {
        for (int stop = 0; stop < 2 && wxWindow::FindFocus() != control(id); ++stop) {
            const wxWindow* before = wxWindow::FindFocus();
            press_key("Tab");
            EXPECT_TRUE(wait_until([&] { return wxWindow::FindFocus() != before; })) << id;
        }
        EXPECT_EQ(wxWindow::FindFocus(), control(id)) << id;
    }

    // ---- what a user does, until the control shows it

    void click(int id, int from_left)
    {
        wxWindow* target = control(id);
        EXPECT_TRUE(wait_until([&] {
            point_at(target, wxPoint(from_left, target->GetSize().y / 2));
            return is_pointed_at(target);
        })) << id;
        press_button();
    }
    void click(int id) { click(id, control(id)->GetSize().x / 2); }

    void click_check_box(int id)
    {
        wxCheckBox* check = control<wxCheckBox>(id);
        const bool before = check->GetValue();
        constexpr int into_the_box = 9;
        click(id, into_the_box);
        EXPECT_TRUE(wait_until([&] { return check->GetValue() != before; })) << id;
    }

    void toggle_check_box_by_key(int id)
    {
        wxCheckBox* check = control<wxCheckBox>(id);
        const bool before = check->GetValue();
        press_key("space");
        EXPECT_TRUE(wait_until([&] { return check->GetValue() != before; })) << id;
    }

    // Replaces the text of the field that has the focus.
    void type_into(int id, const std::string& text)
    {
        press_key("Control_L", "a");
        type_text(text);
        EXPECT_TRUE(wait_until([&] { return field_text(id) == text; })) << id << field_text(id);
    }

    void click_and_type_into(int id, const std::string& text)
    {
        click(id);
        EXPECT_TRUE(wait_for_focus(id)) << id;
        type_into(id, text);
    }

    // The list of the choice that has the focus stays closed.
    void choose_by_key(int id, const char* key, int wanted)
    {
        wxComboBox* choice = control<wxComboBox>(id);
        press_key(key);
        EXPECT_TRUE(wait_until([&] { return choice->GetSelection() == wanted; })) << id;
    }

    std::string field_text(int id) const { return to_bytes(control<wxTextCtrl>(id)->GetValue()); }

    // ---- what comes of it

    void close_and_export(Exporter_base& exporter)
    {
        exporter.remove_ui(nullptr, false);
        EXPECT_TRUE(exporter.export_shader(host.app(), host.view()));
    }

    // An option of the last option set, the one that the generator got.
    std::string option(const std::string& name) const
    {
        int last = 1;
        while (!host.options(last + 1).empty())
            ++last;
        return option_value(host.options(last), name);
    }

    // Opens the panel, clicks every box, closes it and exports: the compiler is told of each.
    void expect_clicks_to_show(Exporter_base& exporter, const std::vector<Check_box_case>& cases)
    {
        show(exporter);
        for (const Check_box_case& row : cases)
            click_check_box(row.id);
        close_and_export(exporter);
        for (const Check_box_case& row : cases)
            EXPECT_EQ(option(row.option), row.value) << row.option;
    }

    Recording_host host;
};

TEST_F(Panel_input, cgfx_check_boxes_by_mouse)
{
    const std::vector<Check_box_case> cases = {
        {ID_TWO_SIDED, "two_sided", "true"},
        {ID_FACE_FORWARD, "face_forward", "true"},
        {ID_ROTATE_CUBE_MAP, "rotate_cube_map", "true"},
        {ID_FLIP_TEX2D_V, "flip_tex2d_v", "true"},
        {ID_GENERATE_SAMPLER_STATES, "generate_sampler_states", "false"},
        {ID_ALPHA_TRANSPARENCY, "alpha_transparency", "true"},
        {ID_USE_OIT, "use_oit", "true"},
        {ID_DEPTH_TEST, "depth_test", "false"},
        {ID_DEPTH_WRITE, "depth_write", "false"},
        {ID_USE_INTERFACES, "interfaces", "true"},
        {ID_EVAL_VOLUME, "eval_volume", "true"},
    };
    Exporter_generic exporter(Exporter_generic::TARGET_CGFX);
    expect_clicks_to_show(exporter, cases);
}

TEST_F(Panel_input, hlsl_check_boxes_by_mouse)
{
    const std::vector<Check_box_case> cases = {
        {ID_FACE_FORWARD, "face_forward", "true"},
        {ID_ROTATE_CUBE_MAP, "rotate_cube_map", "true"},
        {ID_FLIP_TEX2D_V, "flip_tex2d_v", "true"},
        {ID_GENERATE_SAMPLER_STATES, "generate_sampler_states", "false"},
        {ID_ALPHA_TRANSPARENCY, "alpha_transparency", "true"},
        {ID_USE_OIT, "use_oit", "true"},
        {ID_DEPTH_TEST, "depth_test", "false"},
        {ID_DEPTH_WRITE, "depth_write", "false"},
        {ID_HLSL_SAS_CONFORMANCE, "hlsl_sas_conformance", "true"},
    };
    Exporter_generic exporter(Exporter_generic::TARGET_HLSL);
    expect_clicks_to_show(exporter, cases);
    EXPECT_EQ(option("two_sided"), "false"); // this panel has no box for it
}

TEST_F(Panel_input, fields_by_mouse_and_a_choice_by_key)
{
    Exporter_generic exporter(Exporter_generic::TARGET_HLSL);
    show(exporter);
    click_and_type_into(ID_EXPORTFILE_TEXT, folder.file("By_Mouse.fx"));
    click_and_type_into(ID_ANNOTATION_MAP_TEXT, "my-map.axml");
    click_and_type_into(ID_VERTEX_PROFILE, "vs_4_0");
    click_and_type_into(ID_FRAGMENT_PROFILE, " ps_4_0 "); // taken with its spaces
    focus(ID_VERTEX_SPACE);
    for (const int entry : {1, 2, 3})
        choose_by_key(ID_VERTEX_SPACE, "Down", entry);
    close_and_export(exporter);
    EXPECT_EQ(option("annotation_map"), "my-map.axml");
    EXPECT_EQ(option("vertex_shader_profile"), "vs_4_0");
    EXPECT_EQ(option("fragment_shader_profile"), " ps_4_0 ");
    EXPECT_EQ(option("vertex_stream_space"), "screen");
    EXPECT_EQ(option("internal_space"), "camera");
    EXPECT_EQ(folder.files(), std::vector<std::string>{"By_Mouse.fx"});
}

TEST_F(Panel_input, cgfx_panel_by_keyboard_alone)
{
    Exporter_generic exporter(Exporter_generic::TARGET_CGFX);
    show(exporter);
    focus(ID_EXPORTFILE_TEXT);
    type_into(ID_EXPORTFILE_TEXT, folder.file("keys"));
    tab_to(ID_EXPORTFILE_BROWSE);
    tab_to(ID_ANNOTATION_MAP_TEXT);
    type_into(ID_ANNOTATION_MAP_TEXT, "keys.axml");
    tab_to(ID_ANNOTATION_MAP_BROWSE);
    tab_to(ID_VERTEX_PROFILE);
    type_into(ID_VERTEX_PROFILE, "vp30");
    tab_to(ID_FRAGMENT_PROFILE);
    type_into(ID_FRAGMENT_PROFILE, "fp30");
    tab_to(ID_VERTEX_SPACE);
    choose_by_key(ID_VERTEX_SPACE, "Down", 1);
    tab_to(ID_INTERNAL_SPACE);
    choose_by_key(ID_INTERNAL_SPACE, "Up", 0);
    for (const int id : {ID_TWO_SIDED, ID_FACE_FORWARD, ID_ROTATE_CUBE_MAP, ID_FLIP_TEX2D_V,
                         ID_GENERATE_SAMPLER_STATES, ID_ALPHA_TRANSPARENCY, ID_USE_OIT,
                         ID_DEPTH_TEST, ID_DEPTH_WRITE, ID_USE_INTERFACES, ID_EVAL_VOLUME}) {
        tab_to(id);
        toggle_check_box_by_key(id);
    }
    close_and_export(exporter);
    EXPECT_EQ(folder.files(), std::vector<std::string>{"keys.cgfx"});
    const std::pair<const char*, const char*> options[] = {
        {"annotation_map", "keys.axml"},
        {"vertex_shader_profile", "vp30"},
        {"fragment_shader_profile", "fp30"},
        {"vertex_stream_space", "world"},
        {"internal_space", "world"},
        {"two_sided", "true"},
        {"generate_sampler_states", "false"},
        {"depth_write", "false"},
        {"interfaces", "true"},
        {"eval_volume", "true"},
    };
    for (const auto& row : options)
        EXPECT_EQ(option(row.first), row.second) << row.first;
}

TEST_F(Panel_input, glsl_panel_by_mouse_and_keyboard)
{
    Exporter_generic exporter(Exporter_generic::TARGET_GLSL);
    show(exporter);
    click_and_type_into(ID_EXPORTFILE_TEXT, folder.file("water.glsl"));
    click_and_type_into(ID_GLSL_VERSION, "330 core");
    click_check_box(ID_ALPHA_TRANSPARENCY);
    click_check_box(ID_USE_OIT);
    focus(ID_TWO_SIDED);
    toggle_check_box_by_key(ID_TWO_SIDED);
    close_and_export(exporter);
    EXPECT_EQ(option("glsl_version"), "330 core");
    EXPECT_EQ(option("alpha_transparency"), "true");
    EXPECT_EQ(option("use_oit"), "true");
    EXPECT_EQ(option("two_sided"), "true");
    EXPECT_EQ(folder.files(), (std::vector<std::string>{"water_f.glsl", "water_v.glsl"}));
}

// ---- browse buttons

TEST_F(Panel_input, browse_button_is_clicked_and_pressed)
{
    Exporter_generic exporter(Exporter_generic::TARGET_CGFX);
    show(exporter);
    dialogs.answer_next({Reply::accept, -1, "clicked"});
    click(ID_EXPORTFILE_BROWSE);
    EXPECT_TRUE(
        wait_until([&] { return field_text(ID_EXPORTFILE_TEXT) == folder.file("clicked.cgfx"); }));
    focus(ID_EXPORTFILE_BROWSE);
    dialogs.answer_next({Reply::accept, -1, "pressed"});
    press_key("space");
    EXPECT_TRUE(
        wait_until([&] { return field_text(ID_EXPORTFILE_TEXT) == folder.file("pressed.cgfx"); }));
    dialogs.answer_next({Reply::escape_key});
    click(ID_EXPORTFILE_BROWSE);
    EXPECT_TRUE(wait_until([&] { return dialogs.shown().size() == 3; }));
    handle_events();
    EXPECT_EQ(field_text(ID_EXPORTFILE_TEXT), folder.file("pressed.cgfx"));
    close_and_export(exporter);
    EXPECT_NE(folder.read("pressed.cgfx"), "<no file>");
    EXPECT_EQ(folder.read("clicked.cgfx"), "<no file>");
}

TEST_F(Panel_input, annotation_map_button_is_clicked)
{
    const std::string map = folder.write("map.axml", "");
    Exporter_generic exporter(Exporter_generic::TARGET_HLSL);
    show(exporter);
    dialogs.answer_next(select_from_anywhere(map));
    click(ID_ANNOTATION_MAP_BROWSE);
    EXPECT_TRUE(wait_until([&] { return field_text(ID_ANNOTATION_MAP_TEXT) == map; }));
    EXPECT_EQ(shown().caption, "Choose a HLSL annotation map file");
    close_and_export(exporter);
    EXPECT_EQ(option("annotation_map"), map);
}

// ---- other exporters

TEST_F(Panel_input, fx_composer_writes_what_is_ticked)
{
    Exporter_fxcomposer exporter;
    show(exporter);
    click_and_type_into(ID_EXPORTFILE_TEXT, folder.file("both.fx"));
    click_check_box(ID_FXCOMPOSER_HLSL);
    close_and_export(exporter);
    EXPECT_EQ(folder.files(), std::vector<std::string>{"both.cgfx"});
    std::remove(folder.file("both.cgfx").c_str());
    show(exporter);
    focus(ID_FXCOMPOSER_HLSL);
    toggle_check_box_by_key(ID_FXCOMPOSER_HLSL);
    focus(ID_FXCOMPOSER_CGFX);
    toggle_check_box_by_key(ID_FXCOMPOSER_CGFX);
    close_and_export(exporter);
    EXPECT_EQ(folder.files(), std::vector<std::string>{"untitled.fx"});
}

TEST_F(Panel_input, renderer_writes_what_is_ticked)
{
    Exporter_swrc exporter;
    show(exporter);
    click_and_type_into(ID_EXPORTFILE_TEXT, folder.file("scene"));
    click_check_box(ID_SWRC_QZ);
    close_and_export(exporter);
    EXPECT_EQ(folder.files(), std::vector<std::string>{"scene.cpp"});
}

TEST_F(Panel_input, panel_of_the_file_row_names_the_file)
{
    Exporter_3dsmax exporter;
    show(exporter);
    click_and_type_into(ID_EXPORTFILE_TEXT, folder.file("max"));
    close_and_export(exporter);
    EXPECT_EQ(folder.files(), std::vector<std::string>{"max.fx"});
}

TEST_F(Panel_input, sample_panel_can_be_played_with)
{
    Exporter_default exporter;
    show(exporter);
    for (wxWindowList::compatibility_iterator node =
             exporter.get_top_panel()->GetChildren().GetFirst();
         node; node = node->GetNext()) {
        wxWindow* window = node->GetData();
        if (dynamic_cast<wxStaticText*>(window))
            continue;
        click(window->GetId());
        handle_events();
        if (auto* radio = dynamic_cast<wxRadioButton*>(window)) {
            EXPECT_TRUE(wait_until([&] { return radio->GetValue(); }));
        }
    }
    close_and_export(exporter);
    EXPECT_TRUE(folder.files().empty());
}

} // namespace
} // namespace TEST
} // namespace QZ
