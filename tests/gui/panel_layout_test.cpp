// How the panels are laid out: every sizer with the numbers that each of its items was added with.
#include "exporter_base/bytes.h"
#include "tests/gui/every_exporter.h"
#include "tests/gui/window_test.h"

#include <cstdio>
#include <map>

#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

namespace QZ
{
namespace TEST
{
namespace
{

using namespace TOVIRAEXPORT;
using Lines = std::vector<std::string>;

const char* const row_gap = "space 5 x 0: 0 0x0 0";
const char* const column_gap = "space 0 x 5: 0 0x0 0";

std::string name_of(wxWindow* window)
{
    const bool is_label = dynamic_cast<wxStaticText*>(window) != nullptr;
    return is_label || window->GetId() < 0 ? "'" + to_bytes(window->GetLabel()) + "'"
                                           : std::to_string(window->GetId());
}

std::string name_of(wxSizer* sizer)
{
    if (auto* grid = dynamic_cast<wxFlexGridSizer*>(sizer))
        return "grid of " + std::to_string(grid->GetCols()) + " columns, gaps " +
               std::to_string(grid->GetHGap()) + " " + std::to_string(grid->GetVGap());
    if (auto* box = dynamic_cast<wxStaticBoxSizer*>(sizer))
        return std::string(box->GetOrientation() == wxVERTICAL ? "box" : "lying box") + " '" +
               to_bytes(box->GetStaticBox()->GetLabel()) + "'";
    auto* plain = dynamic_cast<wxBoxSizer*>(sizer);
    return plain && plain->GetOrientation() == wxHORIZONTAL ? "row" : "column";
}

std::string name_of(wxSizerItem* item)
{
    if (item->IsSizer())
        return name_of(item->GetSizer());
    if (item->IsWindow())
        return name_of(item->GetWindow());
    const wxSize space = item->GetMinSize(); // as added, however it is laid out
    return "space " + std::to_string(space.x) + " x " + std::to_string(space.y);
}

// A line for each item: its name, then proportion, flags and border. Items of inner sizers are
// indented by two spaces.
void list_items(wxSizer* sizer, const std::string& indent, Lines& lines)
{
    for (wxSizerItemList::compatibility_iterator node = sizer->GetChildren().GetFirst(); node;
         node = node->GetNext()) {
        wxSizerItem* item = node->GetData();
        char numbers[64];
        std::snprintf(numbers, sizeof numbers, ": %d 0x%x %d", item->GetProportion(),
                      static_cast<unsigned int>(item->GetFlag()), item->GetBorder());
        lines.push_back(indent + name_of(item) + numbers);
        if (item->IsSizer())
            list_items(item->GetSizer(), indent + "  ", lines);
    }
}

Lines layout_of(wxWindow* window)
{
    if (!window->GetSizer())
        return {"no sizer"};
    Lines lines = {name_of(window->GetSizer())};
    list_items(window->GetSizer(), "", lines);
    return lines;
}

const Lines file_row = {
    "column",
    "row: 0 0x2010 5",          // expands, left
    "  'File name:': 1 0xf0 0", //
    "row: 0 0x20f0 5",          // expands, all around
    "  18201: 1 0x20d1 5",      // expands; left, top, bottom
    "  18202: 0 0xf1 5",
};

Lines file_row_and(const Lines& others)
{
    Lines lines = file_row;
    lines.insert(lines.end(), others.begin(), others.end());
    return lines;
}

// Two check boxes, indented, with a gap between them and all other space below.
Lines file_boxes(const std::string& first, const std::string& second)
{
    return file_row_and({first + ": 0 0x10 10", "space 5 x 5: 0 0x100 5", second + ": 0 0x90 10",
                         "space 0 x 0: 10 0x0 0"});
}

Lines labelled_row(const std::string& label, const std::string& field, bool with_button)
{
    Lines lines = {"row: 0 0x20f0 5", "  '" + label + "': 0 0x820 5",
                   "  " + field + ": 1 0x2000 0"};
    if (with_button)
        lines.push_back("  18206: 0 0x810 5");
    lines.push_back(std::string("  ") + row_gap);
    return lines;
}

// A titled box across the panel.
std::string box_line(const std::string& title)
{
    return "box '" + title + "': 0 0x20b0 5";
}

Lines grid_box(const std::string& title, const Lines& labels, const Lines& fields)
{
    Lines lines = {box_line(title), "  grid of 2 columns, gaps 5 5: 0 0x20f0 3"};
    for (size_t i = 0; i < labels.size(); ++i) {
        lines.push_back("    '" + labels[i] + "': 0 0x800 0");
        lines.push_back("    " + fields[i] + ": 1 0x2000 0");
    }
    return lines;
}

Lines check_box_group(const std::string& title, const Lines& boxes)
{
    Lines lines = {box_line(title), std::string("  ") + column_gap};
    for (const std::string& box : boxes)
        lines.push_back("  " + box + ": 0 0x90 5");
    return lines;
}

Lines joined(const std::vector<Lines>& parts)
{
    Lines lines;
    for (const Lines& part : parts)
        lines.insert(lines.end(), part.begin(), part.end());
    return lines;
}

// The panels of CgFX and HLSL FX but for their check boxes of normals and the last box.
Lines effect_panel(const Lines& normals, const Lines& last_box)
{
    return joined({file_row, labelled_row("Annotation map file:", "18205", true),
                   grid_box("Profiles", {"Vertex shader profile:", "Fragment shader profile:"},
                            {"18207", "18208"}),
                   grid_box("Coordinate systems", {"Vertex coordinate space:", "Internal space:"},
                            {"18209", "18210"}),
                   check_box_group("Normals", normals),
                   check_box_group("Texturing", {"18213", "18214", "18215"}),
                   check_box_group("Transparency", {"18216", "18217"}),
                   check_box_group("Depth buffer", {"18218", "18219"}), last_box});
}

const std::map<std::string, Lines>& expected_layouts()
{
    static const std::map<std::string, Lines> layouts = {
        {"Autodesk 3ds Max legacy (HLSL)", file_row},
        {"CATIA (CgFX)", file_row},
        {"FX Composer (HLSL/CgFX)", file_boxes("18203", "18204")},
        {"Autodesk Maya (CgFX)", file_row},
        {"Autodesk Softimage (CgFX)", file_row},
        {"Custom CgFX",
         effect_panel({"18211", "18212"}, check_box_group("Interfaces", {"18221", "18222"}))},
        {"Custom HLSL FX", effect_panel({"18212"}, check_box_group("Microsoft SAS", {"18220"}))},
        {"Custom GLSL", joined({file_row,
                                labelled_row("GLSL version:", "18223", false),
                                {"18216: 0 0xb0 5", "18217: 0 0xb0 5", "18211: 0 0xb0 5"}})},
        {"Corvane", file_boxes("18224", "18225")},
        {"default exporter",
         {"column", "row: 0 0x0 0", "  'a:': 0 0x0 0", "  '': 0 0x0 0", "  '...': 0 0x0 0",
          "'another exporter': 0 0x0 0", "'line 2': 0 0x0 0", "'r1': 0 0x0 0", "'r2': 0 0x0 0",
          "'create qz file': 0 0x0 0", "'button!': 0 0x0 0", "space 0 x 0: 0 0x0 0"}},
    };
    return layouts;
}

class Panel_layout : public Window_test
{
};

TEST_F(Panel_layout, panel_fills_the_container_but_for_a_border)
{
    for (const auto& exporter : make_every_exporter()) {
        SCOPED_TRACE(exporter->get_name());
        exporter->create_ui(handle(), 400, nullptr);
        const Lines lines = layout_of(container());
        ASSERT_EQ(lines.size(), 3u);
        EXPECT_EQ(lines[0], "column");
        EXPECT_EQ(lines[1], "row: 1 0x20f1 5");
        EXPECT_EQ(lines[2].substr(lines[2].find(':')), ": 1 0x2001 0");
        EXPECT_EQ(container()->GetSizer()->GetItem(exporter->get_top_panel(), true)->GetWindow(),
                  exporter->get_top_panel());
        exporter->remove_ui(nullptr, true);
    }
}

TEST_F(Panel_layout, every_control_has_its_place)
{
    for (const auto& exporter : make_every_exporter()) {
        SCOPED_TRACE(exporter->get_name());
        ASSERT_EQ(expected_layouts().count(exporter->get_name()), 1u);
        exporter->create_ui(handle(), 400, nullptr);
        EXPECT_EQ(layout_of(exporter->get_top_panel()),
                  expected_layouts().at(exporter->get_name()));
        exporter->remove_ui(nullptr, true);
    }
}

} // namespace
} // namespace TEST
} // namespace QZ
