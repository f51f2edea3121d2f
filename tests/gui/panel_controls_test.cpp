// What stands on the panels: kinds, ids, labels, order, values, fonts; and what closing them takes.
#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "exporters/exporter_3dsmax.h"
#include "exporters/exporter_default.h"
#include "exporters/exporter_fxcomposer.h"
#include "exporters/exporter_generic.h"
#include "exporters/exporter_swrc.h"
#include "tests/gui/entry_texts.h"
#include "tests/gui/every_exporter.h"
#include "tests/gui/window_test.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace QZ
{
namespace TEST
{
namespace
{

using namespace TOVIRAEXPORT;
using Lines = std::vector<std::string>;

std::string mark(bool on)
{
    return on ? "[x]" : "[ ]";
}

std::string entries_of(const wxComboBox& choice)
{
    std::string text;
    for (unsigned int i = 0; i < choice.GetCount(); ++i) {
        const std::string entry = to_bytes(choice.GetString(i));
        text += (i ? " " : "") +
                (static_cast<int>(i) == choice.GetSelection() ? "<" + entry + ">" : entry);
    }
    return text;
}

// Whether both lines are there, the first one first.
bool before(const Lines& lines, const char* first, const char* second)
{
    const auto at = std::find(lines.begin(), lines.end(), first);
    return std::find(at, lines.end(), second) != lines.end();
}

// A control as a line: kind, id ("-" when wx chose it), label or content.
std::string line_of(wxWindow* window)
{
    const std::string id =
        window->GetId() < 0 ? " - " : " " + std::to_string(window->GetId()) + " ";
    const std::string label = to_bytes(window->GetLabel());
    if (dynamic_cast<wxStaticBox*>(window))
        return "box - " + label;
    if (dynamic_cast<wxStaticText*>(window))
        return "label" + id + label;
    if (auto* check = dynamic_cast<wxCheckBox*>(window))
        return mark(check->GetValue()) + id + label;
    if (auto* radio = dynamic_cast<wxRadioButton*>(window))
        return "radio" + id + label + (radio->GetValue() ? " (on)" : "");
    if (auto* choice = dynamic_cast<wxComboBox*>(window))
        return (choice->GetWindowStyleFlag() & wxCB_READONLY ? "choice" : "open choice") + id +
               entries_of(*choice);
    if (auto* field = dynamic_cast<wxTextCtrl*>(window))
        return "field" + id + to_bytes(field->GetValue());
    if (dynamic_cast<wxButton*>(window))
        return "button" + id + label;
    return "other" + id + label;
}

class Panel_controls : public Window_test
{
protected:
    // The controls of an exporter's panel in the order in which they were made.
    Lines lines_of(Exporter_base& exporter)
    {
        open_panel(exporter, 400);
        Lines lines;
        for (wxWindowList::compatibility_iterator node =
                 exporter.get_top_panel()->GetChildren().GetFirst();
             node; node = node->GetNext())
            lines.push_back(line_of(node->GetData()));
        exporter.remove_ui(nullptr, true);
        return lines;
    }

    // The lines of the export-file row, which come first, and others.
    Lines with_file_row(const Lines& others) const
    {
        Lines lines = {"label - File name:", "field 18201 " + folder.path() + "/untitled",
                       "button 18202 ..."};
        lines.insert(lines.end(), others.begin(), others.end());
        return lines;
    }

    Lines lines_of(Exporter_generic::Target_language target)
    {
        Exporter_generic exporter(target);
        exporter.initialize();
        return lines_of(exporter);
    }
};

TEST_F(Panel_controls, cgfx_panel)
{
    EXPECT_EQ(lines_of(Exporter_generic::TARGET_CGFX),
              with_file_row({"label 5105 Annotation map file:",
                             "field 18205 default.axml",
                             "button 18206 ...",
                             "box - Profiles",
                             "label 5105 Vertex shader profile:",
                             "field 18207 vp40",
                             "label 5105 Fragment shader profile:",
                             "field 18208 fp40",
                             "box - Coordinate systems",
                             "label 5105 Vertex coordinate space:",
                             "choice 18209 <object> world camera screen",
                             "label 5105 Internal space:",
                             "choice 18210 world <camera>",
                             "box - Normals",
                             "[ ] 18211 Two sided",
                             "[ ] 18212 Face forward",
                             "box - Texturing",
                             "[ ] 18213 Rotate cube map",
                             "[ ] 18214 Vertically flip tex2d lookup",
                             "[x] 18215 Generate sampler states",
                             "box - Transparency",
                             "[ ] 18216 Alpha transparency",
                             "[ ] 18217 Order independent transparency",
                             "box - Depth buffer",
                             "[x] 18218 Depth test",
                             "[x] 18219 Depth write",
                             "box - Interfaces",
                             "[ ] 18221 Use interfaces",
                             "[ ] 18222 Evaluate volume shader"}));
}

TEST_F(Panel_controls, hlsl_panel)
{
    EXPECT_EQ(lines_of(Exporter_generic::TARGET_HLSL),
              with_file_row({"label 5105 Annotation map file:",
                             "field 18205 default.axml",
                             "button 18206 ...",
                             "box - Profiles",
                             "label 5105 Vertex shader profile:",
                             "field 18207 vs_3_0",
                             "label 5105 Fragment shader profile:",
                             "field 18208 ps_3_0",
                             "box - Coordinate systems",
                             "label 5105 Vertex coordinate space:",
                             "choice 18209 <object> world camera screen",
                             "label 5105 Internal space:",
                             "choice 18210 world <camera>",
                             "box - Normals",
                             "[ ] 18212 Face forward",
                             "box - Texturing",
                             "[ ] 18213 Rotate cube map",
                             "[ ] 18214 Vertically flip tex2d lookup",
                             "[x] 18215 Generate sampler states",
                             "box - Transparency",
                             "[ ] 18216 Alpha transparency",
                             "[ ] 18217 Order independent transparency",
                             "box - Depth buffer",
                             "[x] 18218 Depth test",
                             "[x] 18219 Depth write",
                             "box - Microsoft SAS",
                             "[ ] 18220 Enabled"}));
}

TEST_F(Panel_controls, glsl_panel)
{
    EXPECT_EQ(lines_of(Exporter_generic::TARGET_GLSL),
              with_file_row({"label 5105 GLSL version:", "field 18223 130",
                             "[ ] 18216 Alpha transparency",
                             "[ ] 18217 Order independent transparency", "[ ] 18211 Two sided"}));
}

TEST_F(Panel_controls, fx_composer_panel)
{
    Exporter_fxcomposer exporter;
    exporter.initialize();
    EXPECT_EQ(lines_of(exporter),
              with_file_row({"[x] 18203 Export HLSL FX file", "[x] 18204 Export CgFX file"}));
}

TEST_F(Panel_controls, renderer_panel)
{
    Exporter_swrc exporter;
    exporter.initialize();
    EXPECT_EQ(lines_of(exporter),
              with_file_row({"[x] 18224 Export qz file", "[x] 18225 Export cpp file"}));
}

TEST_F(Panel_controls, other_applications_show_the_file_row_alone)
{
    for (const auto& exporter : make_every_exporter()) {
        const std::string name = exporter->get_name();
        const bool has_row_alone =
            name.find("3ds Max") != std::string::npos || name.find("CATIA") != std::string::npos ||
            name.find("Maya") != std::string::npos || name.find("Softimage") != std::string::npos;
        if (has_row_alone) {
            EXPECT_EQ(lines_of(*exporter), with_file_row({})) << name;
        }
    }
}

TEST_F(Panel_controls, sample_panel)
{
    Exporter_default exporter;
    exporter.initialize();
    EXPECT_EQ(lines_of(exporter),
              (Lines{"label - a:", "field - ", "button - ...", "label - another exporter",
                     "label - line 2", "radio - r1 (on)", "radio - r2", "[ ] - create qz file",
                     "button - button!"}));
}

// The profiles of shader model 4 stand in the fields only until the stored ones replace them.
TEST_F(Panel_controls, profile_fields_are_made_with_the_profiles_of_shader_model_4)
{
    Exporter_generic exporter(Exporter_generic::TARGET_CGFX);
    exporter.initialize();
    const Entry_text_watch watch;
    open_panel(exporter, 400);
    const Lines texts = watch.texts();
    EXPECT_TRUE(before(texts, "vs_4_0", "vp40"));
    EXPECT_TRUE(before(texts, "ps_4_0", "fp40"));
    exporter.remove_ui(nullptr, true);
}

// The style with which a browse button is made gives it its look alone.
TEST_F(Panel_controls, browse_buttons_keep_no_style)
{
    Exporter_generic exporter(Exporter_generic::TARGET_CGFX);
    exporter.initialize();
    open_panel(exporter, 400);
    for (const int id : {18202, 18206}) {
        const wxWindow* button = container()->FindWindow(id);
        ASSERT_TRUE(button) << id;
        EXPECT_EQ(button->GetWindowStyleFlag(), 0) << id;
    }
    exporter.remove_ui(nullptr, true);
}

// ---- window names

// Whoever drives a panel finds a control also by the compiler option that it feeds.
TEST_F(Panel_controls, generic_controls_are_named_after_their_options)
{
    struct {
        int id;
        const char* name;
    } const cases[] = {
        {18205, "annotation_map"},
        {18207, "vertex_shader_profile"},
        {18208, "fragment_shader_profile"},
        {18209, "vertex_stream_space"},
        {18210, "internal_space"},
        {18211, "two_sided"},
        {18212, "face_forward"},
        {18213, "rotate_cube_map"},
        {18214, "flip_tex2d_v"},
        {18215, "generate_sampler_states"},
        {18216, "alpha_transparency"},
        {18217, "use_oit"},
        {18218, "depth_test"},
        {18219, "depth_write"},
        {18220, "hlsl_sas_conformance"},
        {18221, "interfaces"},
        {18222, "eval_volume"},
        {18223, "glsl_version"},
    };
    for (const auto target : {Exporter_generic::TARGET_CGFX, Exporter_generic::TARGET_HLSL,
                              Exporter_generic::TARGET_GLSL}) {
        Exporter_generic exporter(target);
        exporter.initialize();
        open_panel(exporter, 400);
        size_t found = 0;
        for (const auto& row : cases) {
            if (const wxWindow* window = container()->FindWindow(row.id)) {
                EXPECT_EQ(to_bytes(window->GetName()), row.name);
                ++found;
            }
        }
        EXPECT_EQ(found, target == Exporter_generic::TARGET_CGFX   ? 16u
                         : target == Exporter_generic::TARGET_HLSL ? 14u
                                                                   : 4u);
        exporter.remove_ui(nullptr, true);
    }
}

// ---- fonts

TEST_F(Panel_controls, font_has_three_sizes_and_two_weights)
{
    Exporter_3dsmax exporter;
    struct {
        int size;
        int weight;
        int points;
        int wx_weight;
    } const cases[] = {
        {1, 90, 9, wxFONTWEIGHT_NORMAL},  {2, 90, 10, wxFONTWEIGHT_NORMAL},
        {3, 90, 11, wxFONTWEIGHT_NORMAL}, {0, 90, 11, wxFONTWEIGHT_NORMAL},
        {-1, 92, 11, wxFONTWEIGHT_BOLD},  {2, 92, 10, wxFONTWEIGHT_BOLD},
    };
    for (const auto& row : cases) {
        const wxFont font = exporter.get_os_specific_font(row.size, row.weight);
        EXPECT_EQ(font.GetPointSize(), row.points);
        EXPECT_EQ(font.GetWeight(), row.wx_weight);
        EXPECT_EQ(font.GetFamily(), wxFONTFAMILY_SWISS);
        EXPECT_EQ(font.GetStyle(), wxFONTSTYLE_NORMAL);
        EXPECT_FALSE(font.GetUnderlined());
        EXPECT_EQ(font.GetFaceName(), wxT("DejaVu LGC Sans"));
    }
}

TEST_F(Panel_controls, every_control_has_the_panels_font)
{
    for (const auto& exporter : make_every_exporter()) {
        if (std::string(exporter->get_name()) == "default exporter")
            continue; // the sample leaves its controls as they are
        open_panel(*exporter, 400);
        for (wxWindowList::compatibility_iterator node =
                 exporter->get_top_panel()->GetChildren().GetFirst();
             node; node = node->GetNext()) {
            const wxFont font = node->GetData()->GetFont();
            EXPECT_TRUE(font == exporter->get_os_specific_font(1, 90)) << line_of(node->GetData());
        }
        exporter->remove_ui(nullptr, true);
    }
}

// ---- fill and read back

class Panel_values : public Panel_controls
{
protected:
    // Turns every check box, chooses the last entry of every choice, and writes into every field.
    void change_everything(Exporter_base& exporter)
    {
        for (wxWindowList::compatibility_iterator node =
                 exporter.get_top_panel()->GetChildren().GetFirst();
             node; node = node->GetNext()) {
            wxWindow* window = node->GetData();
            if (auto* check = dynamic_cast<wxCheckBox*>(window))
                check->SetValue(!check->GetValue());
            else if (auto* choice = dynamic_cast<wxComboBox*>(window))
                choice->SetSelection(
                    choice->GetSelection() == 0 ? static_cast<int>(choice->GetCount()) - 1 : 0);
            else if (auto* field = dynamic_cast<wxTextCtrl*>(window))
                field->SetValue(wxT(" new ") + field->GetValue() + wxT(" "));
        }
    }
};

TEST_F(Panel_values, opening_and_closing_changes_nothing)
{
    for (const auto& exporter : make_every_exporter()) {
        const Lines before = lines_of(*exporter);
        open_panel(*exporter, 400);
        exporter->remove_ui(nullptr, false);
        EXPECT_EQ(lines_of(*exporter), before) << exporter->get_name();
    }
}

TEST_F(Panel_values, discarding_leaves_every_value)
{
    for (const auto& exporter : make_every_exporter()) {
        const Lines before = lines_of(*exporter);
        open_panel(*exporter, 400);
        change_everything(*exporter);
        exporter->remove_ui(nullptr, true);
        EXPECT_EQ(lines_of(*exporter), before) << exporter->get_name();
    }
}

TEST_F(Panel_values, closing_normally_takes_every_value_as_it_is)
{
    for (const auto& exporter : make_every_exporter()) {
        if (std::string(exporter->get_name()) == "default exporter")
            continue; // the sample keeps nothing
        open_panel(*exporter, 400);
        change_everything(*exporter);
        Lines changed;
        for (wxWindowList::compatibility_iterator node =
                 exporter->get_top_panel()->GetChildren().GetFirst();
             node; node = node->GetNext())
            changed.push_back(line_of(node->GetData()));
        exporter->remove_ui(nullptr, false);
        EXPECT_EQ(lines_of(*exporter), changed) << exporter->get_name();
    }
}

TEST_F(Panel_values, exporters_of_one_kind_keep_their_values_apart)
{
    Exporter_generic changed(Exporter_generic::TARGET_CGFX);
    Exporter_generic untouched(Exporter_generic::TARGET_CGFX);
    changed.initialize();
    untouched.initialize();
    const Lines before = lines_of(untouched);
    open_panel(changed, 400);
    change_everything(changed);
    changed.remove_ui(nullptr, false);
    EXPECT_EQ(lines_of(untouched), before);
}

TEST_F(Panel_values, options_are_not_settings)
{
    Exporter_generic exporter(Exporter_generic::TARGET_CGFX);
    exporter.initialize();
    open_panel(exporter, 400);
    change_everything(exporter);
    exporter.remove_ui(nullptr, false);
    EXPECT_EQ(exporter.get_num_settings(), 6u);
}

} // namespace
} // namespace TEST
} // namespace QZ
