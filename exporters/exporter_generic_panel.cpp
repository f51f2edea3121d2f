// The option panel of the generic exporter: build, fill, read back.
//
// Every control carries the name of the compiler option that it feeds as its window name.
#include "exporters/exporter_generic.h"

#include "exporter_base/border.h"
#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "exporter_base/file_chooser.h"
#include "exporters/generic_flags.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

constexpr int label_id = 5105; // of every label
constexpr int margin = 5;
constexpr int grid_margin = 3; // in a group box: the narrowest panels need what is left

// The group boxes of check boxes on the effect panel, top to bottom.
constexpr const wxChar* flag_group_boxes[] = {wxT("Normals"),       wxT("Texturing"),
                                              wxT("Transparency"),  wxT("Depth buffer"),
                                              wxT("Microsoft SAS"), wxT("Interfaces")};

// The check boxes of the GLSL panel, top to bottom.
constexpr Exporter_generic::Flag glsl_flags[] = {Exporter_generic::FLAG_ALPHA_TRANSPARENCY,
                                                 Exporter_generic::FLAG_USE_OIT,
                                                 Exporter_generic::FLAG_TWO_SIDED};

constexpr const wxChar* vertex_spaces[] = {wxT("object"), wxT("world"), wxT("camera"),
                                           wxT("screen")};
constexpr const wxChar* internal_spaces[] = {wxT("world"), wxT("camera")};

// Makes the controls of one panel, all with the same font.
class Control_factory
{
public:
    Control_factory(wxWindow* parent, const wxFont& font) : m_parent(parent), m_font(font) {}

    wxStaticText* label(const wxChar* text) const
    {
        return dressed(new wxStaticText(m_parent, label_id, text));
    }

    wxTextCtrl* text(int id, const char* option, const wxChar* initial) const
    {
        return named(new wxTextCtrl(m_parent, id, initial), option);
    }

    wxCheckBox* check_box(const Generic_flag& flag) const
    {
        wxCheckBox* box = named(new wxCheckBox(m_parent, flag.id, flag.label), flag.option);
        box->SetValue(false);
        return box;
    }

    template<size_t size>
    wxComboBox* choice(int id, const char* option, const wxChar* const (&entries)[size]) const
    {
        wxArrayString choices;
        for (const wxChar* entry : entries)
            choices.Add(entry);
        return named(new wxComboBox(m_parent, id, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                    choices, wxCB_READONLY),
                     option);
    }

private:
    template<typename Control>
    Control* dressed(Control* control) const
    {
        control->SetFont(m_font);
        return control;
    }

    template<typename Control>
    Control* named(Control* control, const char* option) const
    {
        control->SetName(from_bytes(option));
        return dressed(control);
    }

    wxWindow* m_parent;
    wxFont m_font;
};

// Adds a row that ends where the export-file row does.
void add_row(wxBoxSizer* sizer, wxBoxSizer* row)
{
    row->AddSpacer(margin);
    sizer->Add(row, 0, wxEXPAND | wxALL, margin);
}

// A titled box across the panel, added to its sizer.
wxStaticBoxSizer* add_group_box(wxWindow* parent, wxBoxSizer* sizer, const wxFont& font,
                                const wxChar* title)
{
    wxStaticBoxSizer* box = new wxStaticBoxSizer(wxVERTICAL, parent, title);
    box->GetStaticBox()->SetFont(font);
    sizer->Add(box, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, margin);
    return box;
}

// A two-column grid of labels and controls whose second column takes what width is left.
wxFlexGridSizer* add_grid(wxSizer* sizer)
{
    wxFlexGridSizer* grid = new wxFlexGridSizer(0, 2, margin, margin);
    grid->AddGrowableCol(1, 1);
    sizer->Add(grid, 0, wxEXPAND | wxALL, grid_margin);
    return grid;
}

void add_grid_row(wxFlexGridSizer* grid, wxStaticText* label, wxWindow* control)
{
    grid->Add(label, 0, wxALIGN_CENTER_VERTICAL);
    grid->Add(control, 1, wxEXPAND);
}

} // namespace

// ---- build ----

int Exporter_generic::create_window(wxWindow* parent, int width, TSDK::IGraph_view*)
{
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    create_common_ui(sizer);
    if (m_target == TARGET_GLSL)
        create_window_glsl(parent, sizer);
    else
        create_window_fx(parent, sizer);
    fill_controls();
    const int height = lay_out_panel(parent, sizer, width);
    get_top_panel()->Connect(
        ID_ANNOTATION_MAP_BROWSE, wxEVT_COMMAND_BUTTON_CLICKED,
        wxCommandEventHandler(Exporter_generic::Event_dispatcher::on_choose_annotation_map_file),
        nullptr, m_event_dispatcher);
    return height;
}

void Exporter_generic::create_window_fx(wxWindow* parent, wxBoxSizer* sizer)
{
    const Control_factory create(parent, get_os_specific_font(1, 90));
    wxStaticText* label = create.label(wxT("Annotation map file:"));
    m_annotation_map_text = create.text(ID_ANNOTATION_MAP_TEXT, "annotation_map", wxEmptyString);
    m_annotation_map_button = create_browse_button(parent, ID_ANNOTATION_MAP_BROWSE);
    wxBoxSizer* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(label, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, margin);
    row->Add(m_annotation_map_text, 1, wxEXPAND);
    row->Add(m_annotation_map_button, 0, wxALIGN_CENTER_VERTICAL | wxLEFT, margin);
    add_row(sizer, row);

    create_profile_box(parent, sizer);
    create_space_box(parent, sizer);
    for (const wxChar* title : flag_group_boxes)
        create_flag_box(parent, sizer, title);
}

// The first texts of the two fields are examples; fill_controls replaces them.
void Exporter_generic::create_profile_box(wxWindow* parent, wxBoxSizer* sizer)
{
    const wxFont font = get_os_specific_font(1, 90);
    wxStaticBoxSizer* box = add_group_box(parent, sizer, font, wxT("Profiles"));
    wxFlexGridSizer* grid = add_grid(box);
    const Control_factory create(parent, font);
    wxStaticText* label = create.label(wxT("Vertex shader profile:"));
    m_vertex_profile_text = create.text(ID_VERTEX_PROFILE, "vertex_shader_profile", wxT("vs_4_0"));
    add_grid_row(grid, label, m_vertex_profile_text);
    label = create.label(wxT("Fragment shader profile:"));
    m_fragment_profile_text =
        create.text(ID_FRAGMENT_PROFILE, "fragment_shader_profile", wxT("ps_4_0"));
    add_grid_row(grid, label, m_fragment_profile_text);
}

void Exporter_generic::create_space_box(wxWindow* parent, wxBoxSizer* sizer)
{
    const wxFont font = get_os_specific_font(1, 90);
    wxStaticBoxSizer* box = add_group_box(parent, sizer, font, wxT("Coordinate systems"));
    wxFlexGridSizer* grid = add_grid(box);
    const Control_factory create(parent, font);
    wxStaticText* label = create.label(wxT("Vertex coordinate space:"));
    m_vertex_space_combo = create.choice(ID_VERTEX_SPACE, "vertex_stream_space", vertex_spaces);
    add_grid_row(grid, label, m_vertex_space_combo);
    label = create.label(wxT("Internal space:"));
    m_internal_space_combo = create.choice(ID_INTERNAL_SPACE, "internal_space", internal_spaces);
    add_grid_row(grid, label, m_internal_space_combo);
}

// The check boxes that the target shows in the group box of that title; no box without any.
void Exporter_generic::create_flag_box(wxWindow* parent, wxBoxSizer* sizer, const wxChar* title)
{
    wxStaticBoxSizer* box = nullptr;
    for (int flag = 0; flag < FLAG_COUNT; ++flag) {
        const Generic_flag& row = generic_flags[flag];
        const bool shown = m_target == TARGET_HLSL ? row.on_hlsl_panel : row.on_cgfx_panel;
        if (!shown || wxString(row.group_box) != title)
            continue;
        if (!box) {
            box = add_group_box(parent, sizer, get_os_specific_font(1, 90), title);
            box->AddSpacer(margin);
        }
        box->Add(create_check_box(parent, static_cast<Flag>(flag)), 0, wxLEFT | wxBOTTOM, margin);
    }
}

wxCheckBox* Exporter_generic::create_check_box(wxWindow* parent, Flag flag)
{
    const Control_factory create(parent, get_os_specific_font(1, 90));
    m_check_boxes[flag] = create.check_box(generic_flags[flag]);
    return m_check_boxes[flag];
}

void Exporter_generic::create_window_glsl(wxWindow* parent, wxBoxSizer* sizer)
{
    const Control_factory create(parent, get_os_specific_font(1, 90));
    wxStaticText* label = create.label(wxT("GLSL version:"));
    m_glsl_version_text = create.text(ID_GLSL_VERSION, "glsl_version", wxEmptyString);
    wxBoxSizer* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(label, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, margin);
    row->Add(m_glsl_version_text, 1, wxALIGN_CENTER_VERTICAL);
    add_row(sizer, row);
    for (Flag flag : glsl_flags)
        sizer->Add(create_check_box(parent, flag), 0, wxLEFT | wxRIGHT | wxBOTTOM, margin);
}

// ---- fill and read back ----

void Exporter_generic::fill_controls()
{
    const auto fill_text = [](wxTextCtrl* control, const wxString& text) {
        if (control)
            control->SetValue(text);
    };
    const auto fill_choice = [](wxComboBox* control, int index) {
        if (control)
            control->SetSelection(index);
    };
    fill_text(m_annotation_map_text, m_annotation_map);
    fill_text(m_vertex_profile_text, m_vertex_profile);
    fill_text(m_fragment_profile_text, m_fragment_profile);
    fill_text(m_glsl_version_text, m_glsl_version);
    fill_choice(m_vertex_space_combo, m_vertex_space);
    fill_choice(m_internal_space_combo, m_internal_space);
    for (int flag = 0; flag < FLAG_COUNT; ++flag)
        if (m_check_boxes[flag])
            m_check_boxes[flag]->SetValue(m_flags[flag]);
}

void Exporter_generic::window_closing(wxWindow*, bool discard)
{
    if (discard)
        return;
    const auto read_text = [](const wxTextCtrl* control, wxString& text) {
        if (control)
            text = control->GetValue();
    };
    const auto read_choice = [](const wxComboBox* control, int& index) {
        if (control)
            index = control->GetSelection();
    };
    read_text(m_annotation_map_text, m_annotation_map);
    read_text(m_vertex_profile_text, m_vertex_profile);
    read_text(m_fragment_profile_text, m_fragment_profile);
    read_choice(m_vertex_space_combo, m_vertex_space);
    read_choice(m_internal_space_combo, m_internal_space);
    for (int flag = 0; flag < FLAG_COUNT; ++flag)
        if (m_check_boxes[flag])
            m_flags[flag] = m_check_boxes[flag]->GetValue();
    read_text(m_glsl_version_text, m_glsl_version);
}

// ---- annotation map ----

void Exporter_generic::choose_annotation_map_file()
{
    at_border([&] {
        wxString path;
        File_chooser chooser(get_window(), this, wxT("annotationfile"));
        // The host may have closed the panel below the dialog.
        if (chooser.get_open_file(path) && get_top_panel())
            m_annotation_map_text->SetValue(path);
    });
}

void Exporter_generic::Event_dispatcher::set_exporter(Exporter_generic* exporter)
{
    m_exporter = exporter;
}

void Exporter_generic::Event_dispatcher::on_choose_annotation_map_file(wxCommandEvent&)
{
    if (m_exporter)
        m_exporter->choose_annotation_map_file();
}

} // namespace TOVIRAEXPORT
} // namespace QZ
