// Whether the panels look well at the widths that hosts give them: nothing cut, nothing
// overlapping.
#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "tests/gui/every_exporter.h"
#include "tests/gui/window_test.h"

#include <algorithm>
#include <cstdlib>

#include <wx/combobox.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/statbox.h>

namespace QZ
{
namespace TEST
{
namespace
{

using namespace TOVIRAEXPORT;

constexpr int widths[] = {280, 400, 800};
constexpr int container_border = 5; // around the panel

bool is_group_box(wxWindow* window)
{
    return dynamic_cast<wxStaticBox*>(window) != nullptr;
}

std::vector<wxWindow*> controls_of(wxWindow* panel)
{
    std::vector<wxWindow*> controls;
    for (wxWindowList::compatibility_iterator node = panel->GetChildren().GetFirst(); node;
         node = node->GetNext())
        controls.push_back(node->GetData());
    return controls;
}

std::string text_of(wxWindow* window)
{
    const wxRect at = window->GetRect();
    return "'" + to_bytes(window->GetLabel()) + "' (" + std::to_string(window->GetId()) + ") at " +
           std::to_string(at.x) + "," + std::to_string(at.y) + " " + std::to_string(at.width) +
           " x " + std::to_string(at.height);
}

// What a control needs to be seen whole: what its toolkit asks for, and for a choice at least its
// longest entry beside the arrow, which is about square.
wxSize needed_by(wxWindow* control)
{
    wxSize needed = control->GetEffectiveMinSize();
    if (auto* choice = dynamic_cast<wxComboBox*>(control)) {
        for (unsigned int i = 0; i < choice->GetCount(); ++i) {
            int width = 0;
            int height = 0;
            choice->GetTextExtent(choice->GetString(i), &width, &height);
            needed.x = std::max(needed.x, width + height);
        }
    }
    return needed;
}

// What is wrong with the look of a panel; empty when nothing is.
std::vector<std::string> faults_of(wxWindow* panel)
{
    std::vector<std::string> faults;
    const std::vector<wxWindow*> controls = controls_of(panel);
    for (size_t i = 0; i < controls.size(); ++i) {
        wxWindow* control = controls[i];
        const wxRect at = control->GetRect();
        const wxSize needed = needed_by(control);
        if (!wxRect(panel->GetClientSize()).Contains(at))
            faults.push_back("not inside the panel: " + text_of(control));
        if (is_group_box(control))
            continue;
        if (at.width < needed.x || at.height < needed.y)
            faults.push_back("cut: " + text_of(control) + ", needs " + std::to_string(needed.x) +
                             " x " + std::to_string(needed.y));
        for (size_t k = i + 1; k < controls.size(); ++k) {
            if (at.Intersects(controls[k]->GetRect()))
                faults.push_back(text_of(control) + " overlaps " + text_of(controls[k]));
        }
    }
    return faults;
}

// A control belongs into the group box made last before it; the file row stands in none.
std::vector<std::string> misplaced_in_boxes(wxWindow* panel)
{
    std::vector<std::string> faults;
    wxWindow* box = nullptr;
    for (wxWindow* control : controls_of(panel)) {
        if (is_group_box(control))
            box = control;
        else if (box && !box->GetRect().Contains(control->GetRect()))
            faults.push_back(text_of(control) + " is not inside " + text_of(box));
    }
    return faults;
}

class Panel_geometry : public Window_test
{
protected:
    // Shows the panel as the host does, in an area of its width and of the height it asked for. A
    // panel that was measured before GTK knew its fonts asks for too little; it is opened anew.
    wxWindow* show(Exporter_base& exporter, int width)
    {
        constexpr int openings = 10;
        for (int opening = 1; !open(exporter, width) && opening < openings; ++opening)
            exporter.remove_ui(nullptr, true);
        return exporter.get_top_panel();
    }

private:
    // Whether the panel comes to look well: sizes of windows arrive when they like, and GTK settles
    // its styles on the screen.
    bool open(Exporter_base& exporter, int width)
    {
        const int height = exporter.create_ui(handle(), width, nullptr);
        const wxSize area(width + 2 * container_border, height + 2 * container_border);
        container()->GetParent()->SetClientSize(area);
        exporter.set_ui_size(width, height);
        wxWindow* panel = exporter.get_top_panel();
        if (!wait_until([&] { return container()->GetSize() == area; }))
            return false;
        return wait_until(
            [&] {
                if (!faults_of(panel).empty())
                    exporter.set_ui_size(width, height);
                return panel->GetSize() == wxSize(width, height) && faults_of(panel).empty();
            },
            std::chrono::seconds(2));
    }
};

TEST_F(Panel_geometry, every_control_is_whole_inside_the_panel_and_overlaps_no_other)
{
    for (const auto& exporter : make_every_exporter()) {
        for (const int width : widths) {
            SCOPED_TRACE(std::string(exporter->get_name()) + " at " + std::to_string(width));
            wxWindow* panel = show(*exporter, width);
            EXPECT_EQ(faults_of(panel), std::vector<std::string>());
            EXPECT_EQ(misplaced_in_boxes(panel), std::vector<std::string>());
            EXPECT_EQ(panel->GetSize().x, width);
            exporter->remove_ui(nullptr, true);
        }
    }
}

// Reading order: a control stands below the one made before it, or to the right of it.
TEST_F(Panel_geometry, controls_stand_in_the_order_in_which_they_were_made)
{
    for (const auto& exporter : make_every_exporter()) {
        SCOPED_TRACE(exporter->get_name());
        wxWindow* panel = show(*exporter, 400);
        wxWindow* before = nullptr;
        for (wxWindow* control : controls_of(panel)) {
            if (is_group_box(control))
                continue;
            if (before) {
                const wxRect last = before->GetRect();
                const wxRect at = control->GetRect();
                EXPECT_TRUE(at.y > last.GetBottom() || at.x > last.GetRight())
                    << text_of(control) << " after " << text_of(before);
            }
            before = control;
        }
        exporter->remove_ui(nullptr, true);
    }
}

TEST_F(Panel_geometry, fields_and_labels_of_a_row_are_centred_on_each_other)
{
    struct {
        int field;
        const wxChar* label;
    } const rows[] = {
        {ID_ANNOTATION_MAP_TEXT, wxT("Annotation map file:")},
        {ID_VERTEX_PROFILE, wxT("Vertex shader profile:")},
        {ID_FRAGMENT_PROFILE, wxT("Fragment shader profile:")},
        {ID_VERTEX_SPACE, wxT("Vertex coordinate space:")},
        {ID_INTERNAL_SPACE, wxT("Internal space:")},
        {ID_GLSL_VERSION, wxT("GLSL version:")},
    };
    constexpr int rounding = 1;
    for (const auto& exporter : make_every_exporter()) {
        wxWindow* panel = show(*exporter, 400);
        for (const auto& row : rows) {
            wxWindow* field = panel->FindWindow(row.field);
            if (!field)
                continue;
            const wxRect label = wxWindow::FindWindowByLabel(row.label, panel)->GetRect();
            const wxRect at = field->GetRect();
            EXPECT_LE(std::abs(2 * label.y + label.height - 2 * at.y - at.height), 2 * rounding)
                << text_of(field);
        }
        exporter->remove_ui(nullptr, true);
    }
}

TEST_F(Panel_geometry, browse_buttons_stand_below_each_other)
{
    for (const int width : widths) {
        for (const auto& exporter : make_every_exporter()) {
            wxWindow* panel = show(*exporter, width);
            if (wxWindow* button = panel->FindWindow(ID_ANNOTATION_MAP_BROWSE)) {
                const wxWindow* other = panel->FindWindow(ID_EXPORTFILE_BROWSE);
                EXPECT_EQ(button->GetRect().x, other->GetRect().x);
                EXPECT_EQ(button->GetRect().width, other->GetRect().width);
            }
            exporter->remove_ui(nullptr, true);
        }
    }
}

} // namespace
} // namespace TEST
} // namespace QZ
