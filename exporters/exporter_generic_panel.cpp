// The option panel of the generic exporter: build, fill, read back.
//
// Every control carries the name of the compiler option that it feeds as its window name.
#include "exporters/exporter_generic.h"

#include "exporter_base/border.h"
#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "exporter_base/file_chooser.h"
#include "exporter_base/wx_compat.h"
#include "exporters/generic_controls.h"

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

bool is_on_effect_panel(const Generic_control& row, int target)
{
    const int panel = target == Exporter_generic::TARGET_CGFX   ? ON_CGFX
                      : target == Exporter_generic::TARGET_HLSL ? ON_HLSL
                                                                : ON_OTHER;
    return (row.effect_panels & panel) != 0;
}

wxWindow* new_control(wxWindow* parent, const Generic_control& row)
{
    switch (row.kind) {
    case CONTROL_TEXT:
    case CONTROL_FILE:
        return new wxTextCtrl(parent, row.id, row.example);
    case CONTROL_CHECK:
        return new wxCheckBox(parent, row.id, row.label);
    case CONTROL_CHOICE:
        break;
    }
    wxArrayString entries;
    for (const wxChar* const* entry = row.entries; *entry; ++entry)
        entries.Add(*entry);
    return new wxComboBox(parent, row.id, wxEmptyString, wxDefaultPosition, wxDefaultSize, entries,
                          wxCB_READONLY);
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

} // namespace

// ---- build ----

int Exporter_generic::create_window(wxWindow* parent, int width, TSDK::IGraph_view*)
{
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    create_common_ui(sizer);
    for (Shown_control& control : m_controls)
        control = Shown_control();
    if (m_target == TARGET_GLSL)
        create_window_glsl(parent, sizer);
    else
        create_window_fx(parent, sizer);
    fill_controls();
    const int height = lay_out_panel(parent, sizer, width);
    // On every panel, also on that of GLSL, which has no such button.
    connect_to_panel(
        ID_ANNOTATION_MAP_BROWSE, wxEVT_COMMAND_BUTTON_CLICKED,
        wxCommandEventHandler(Exporter_generic::Event_dispatcher::on_choose_annotation_map_file),
        m_event_dispatcher);
    return height;
}

// The rows of one group box are next to each other in the table.
void Exporter_generic::create_window_fx(wxWindow* parent, wxBoxSizer* sizer)
{
    wxStaticBoxSizer* box = nullptr;
    wxFlexGridSizer* grid = nullptr; // of the box, for controls with labels
    wxString title;
    for (size_t i = 0; i < generic_control_count; ++i) {
        const Generic_control& row = generic_controls[i];
        if (!is_on_effect_panel(row, m_target))
            continue;
        if (!row.box) {
            add_labelled_row(parent, sizer, i);
            continue;
        }
        if (title != row.box) {
            title = row.box;
            box = add_group_box(parent, sizer, get_os_specific_font(1, 90), row.box);
            grid = row.kind == CONTROL_CHECK ? nullptr : add_grid(box);
            if (!grid)
                box->Add(0, margin);
        }
        if (grid) {
            grid->Add(create_label(parent, row.label), 0, wxALIGN_CENTER_VERTICAL);
            grid->Add(create_control(parent, i), 1, wxEXPAND);
        } else {
            box->Add(create_control(parent, i), 0, wxLEFT | wxBOTTOM, margin);
        }
    }
}

void Exporter_generic::create_window_glsl(wxWindow* parent, wxBoxSizer* sizer)
{
    size_t rows[generic_control_count];
    size_t count = 0;
    for (size_t i = 0; i < generic_control_count; ++i)
        if (const int place = generic_controls[i].glsl_place) {
            rows[place - 1] = i;
            ++count;
        }
    for (size_t place = 0; place < count; ++place) {
        if (generic_controls[rows[place]].kind == CONTROL_CHECK)
            sizer->Add(create_control(parent, rows[place]), 0, wxLEFT | wxRIGHT | wxBOTTOM, margin);
        else
            add_labelled_row(parent, sizer, rows[place]);
    }
}

// A label, a text field and, for the name of a file, a browse button. The row ends where the
// export-file row does.
void Exporter_generic::add_labelled_row(wxWindow* parent, wxBoxSizer* sizer, size_t row)
{
    wxBoxSizer* line = new wxBoxSizer(wxHORIZONTAL);
    line->Add(create_label(parent, generic_controls[row].label), 0,
              wxALIGN_CENTER_VERTICAL | wxRIGHT, margin);
    line->Add(create_control(parent, row), 1, wxEXPAND);
    if (generic_controls[row].kind == CONTROL_FILE)
        line->Add(create_browse_button(parent, ID_ANNOTATION_MAP_BROWSE), 0,
                  wxALIGN_CENTER_VERTICAL | wxLEFT, margin);
    line->Add(margin, 0);
    sizer->Add(line, 0, wxEXPAND | wxALL, margin);
}

wxStaticText* Exporter_generic::create_label(wxWindow* parent, const wxChar* text)
{
    wxStaticText* label = new wxStaticText(parent, label_id, text);
    label->SetFont(get_os_specific_font(1, 90));
    return label;
}

wxWindow* Exporter_generic::create_control(wxWindow* parent, size_t row)
{
    wxWindow* control = new_control(parent, generic_controls[row]);
    control->SetName(from_bytes(generic_controls[row].option));
    control->SetFont(get_os_specific_font(1, 90));
    if (wxComboBox* choice = dynamic_cast<wxComboBox*>(control))
        fit_to_entries(choice);
    m_controls[row].window = control;
    if (wxTextCtrl* field = dynamic_cast<wxTextCtrl*>(control))
        m_controls[row].field = Text_field(field, generic_controls[row].example);
    return control;
}

// ---- fill and read back ----

void Exporter_generic::fill_controls()
{
    for (size_t i = 0; i < generic_control_count; ++i) {
        const Generic_control& row = generic_controls[i];
        Shown_control& control = m_controls[i];
        if (!control.window)
            continue;
        if (row.text)
            control.field.fill(m_options.*row.text);
        else if (row.choice)
            static_cast<wxComboBox*>(control.window)->SetSelection(m_options.*row.choice);
        else
            static_cast<wxCheckBox*>(control.window)->SetValue(m_options.*row.flag);
    }
}

void Exporter_generic::window_closing(wxWindow*, bool discard)
{
    for (size_t i = 0; i < generic_control_count; ++i) {
        const Generic_control& row = generic_controls[i];
        const Shown_control& control = m_controls[i];
        if (discard || !control.window)
            continue;
        if (row.text)
            m_options.*row.text = control.field.text();
        else if (row.choice)
            m_options.*row.choice = static_cast<wxComboBox*>(control.window)->GetSelection();
        else
            m_options.*row.flag = static_cast<wxCheckBox*>(control.window)->GetValue();
    }
}

// ---- annotation map ----

void Exporter_generic::choose_annotation_map_file()
{
    at_border([&] {
        wxString path;
        File_chooser chooser(get_window(), this, wxT("annotationfile"));
        Text_field& field = m_controls[generic_control_index(ID_ANNOTATION_MAP_TEXT)].field;
        // The host may have closed the panel below the dialog, or sent the event to the panel of
        // GLSL, which has no such field.
        if (chooser.get_open_file(path) && get_top_panel() && field)
            field.fill(path);
    });
}

void Exporter_generic::Event_dispatcher::on_choose_annotation_map_file(wxCommandEvent&)
{
    m_exporter->choose_annotation_map_file();
}

} // namespace TOVIRAEXPORT
} // namespace QZ
