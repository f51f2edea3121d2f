#include "reference_host/window/light_row.h"

#include "reference_host/window/command_text.h"
#include "reference_host/window/number_text.h"
#include "reference_host/window/wx_text.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

namespace reference_host
{
namespace
{

constexpr int as_document = 0; // of the choice of kinds; the others follow in their order

wxTextCtrl* add_field(wxWindow* parent, wxSizer* sizer, const wxString& value, const wxString& hint,
                      int share)
{
    wxTextCtrl* field = new wxTextCtrl(parent, wxID_ANY, value);
    field->SetHint(hint);
    field->SetToolTip(hint);
    field->SetMinSize(parent->FromDIP(wxSize(44, -1)));
    sizer->Add(field, share, wxALIGN_CENTER_VERTICAL | wxRIGHT, parent->FromDIP(2));
    return field;
}

wxString number_field(const std::optional<float>& number)
{
    return number ? number_text(*number) : wxString();
}

} // namespace

Light_row::Light_row(wxWindow* parent, const Light_request& light, std::function<void()> changed,
                     std::function<void()> removed)
    : wxPanel(parent), m_given(light)
{
    wxBoxSizer* sizer = new wxBoxSizer(wxHORIZONTAL);
    m_name = add_field(this, sizer, to_text(light.name), wxT("name"), 3);
    m_kind = new wxChoice(this, wxID_ANY);
    m_kind->Append(wxT("as in document"));
    for (const Light_kind_row& row : light_kinds)
        m_kind->Append(to_text(row.word));
    m_kind->SetSelection(light.kind ? static_cast<int>(*light.kind) + 1 : as_document);
    m_kind->SetMinSize(FromDIP(wxSize(80, -1)));
    sizer->Add(m_kind, 3, wxALIGN_CENTER_VERTICAL | wxRIGHT, FromDIP(2));
    m_spread = add_field(this, sizer, number_field(light.spread), wxT("cone"), 1);
    m_limit = add_field(this, sizer, number_field(light.distance_limit), wxT("limit"), 1);
    wxButton* remove =
        new wxButton(this, wxID_ANY, wxT("-"), wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    remove->SetToolTip(wxT("Remove the light"));
    sizer->Add(remove, 0, wxALIGN_CENTER_VERTICAL);
    SetSizer(sizer);
    Bind(wxEVT_TEXT, [changed](wxCommandEvent&) { changed(); });
    Bind(wxEVT_CHOICE, [changed](wxCommandEvent&) { changed(); });
    remove->Bind(wxEVT_BUTTON, [removed](wxCommandEvent&) { removed(); });
}

Light_request Light_row::light() const
{
    Light_request light;
    light.name = to_bytes(m_name->GetValue());
    if (m_kind->GetSelection() != as_document)
        light.kind = static_cast<Light_kind>(m_kind->GetSelection() - 1);
    if (light.kind == m_given.kind)
        light.inputs = m_given.inputs;
    if (light.kind == Light_kind::spot || (light.kind && light.inputs.empty()))
        light.spread = number_in(m_spread->GetValue());
    if (light.kind)
        light.distance_limit = number_in(m_limit->GetValue());
    return light;
}

} // namespace reference_host
