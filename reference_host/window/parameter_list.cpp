#include "reference_host/window/parameter_list.h"

#include "reference_host/window/parameter_row.h"
#include "reference_host/window/wx_text.h"

#include <algorithm>
#include <tuple>

#include <wx/sizer.h>
#include <wx/stattext.h>

namespace reference_host
{
namespace
{

bool is_same(const Effect_parameter& one, const Effect_parameter& other)
{
    const auto parts = [](const Effect_parameter& row) {
        return std::tie(row.name, row.label, row.folder, row.widget, row.is_whole, row.min, row.max,
                        row.step, row.value);
    };
    return parts(one) == parts(other);
}

} // namespace

Parameter_list::Parameter_list(wxWindow* parent, std::function<void()> changed)
    : wxScrolledWindow(parent, wxID_ANY), m_changed(std::move(changed))
{
    SetScrollRate(0, FromDIP(8));
    SetSizer(new wxBoxSizer(wxVERTICAL));
}

void Parameter_list::show(const std::vector<Effect_parameter>& parameters)
{
    const bool is_shown = std::equal(parameters.begin(), parameters.end(), m_parameters.begin(),
                                     m_parameters.end(), is_same);
    if (is_shown)
        return;
    std::map<std::string, std::vector<float>> changed;
    for (const Parameter_row* row : m_rows) {
        if (row->value() != row->parameter().value)
            changed[row->parameter().name] = row->value();
    }
    m_parameters = parameters;
    make_rows();
    for (Parameter_row* row : m_rows) {
        const auto kept = changed.find(row->parameter().name);
        if (kept != changed.end() && kept->second.size() == row->value().size())
            row->set_value(kept->second);
    }
}

// In the order of the effect, the folders where their first parameter is.
void Parameter_list::make_rows()
{
    std::vector<std::string> folders;
    for (const Effect_parameter& parameter : m_parameters) {
        if (std::find(folders.begin(), folders.end(), parameter.folder) == folders.end())
            folders.push_back(parameter.folder);
    }
    Freeze();
    GetSizer()->Clear(true);
    m_rows.clear();
    for (const std::string& folder : folders) {
        if (!folder.empty()) {
            wxStaticText* title = new wxStaticText(this, wxID_ANY, wxString());
            title->SetFont(GetFont().Bold());
            title->SetLabelText(to_text(folder));
            GetSizer()->Add(title, 0, wxEXPAND | wxALL, FromDIP(4));
        }
        for (const Effect_parameter& parameter : m_parameters) {
            if (parameter.folder != folder)
                continue;
            m_rows.push_back(new Parameter_row(this, parameter, m_changed));
            GetSizer()->Add(m_rows.back(), 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(4));
        }
    }
    Thaw();
    Layout();
    FitInside();
}

void Parameter_list::reset()
{
    for (Parameter_row* row : m_rows)
        row->set_value(row->parameter().value);
    m_changed();
}

std::map<std::string, std::vector<float>> Parameter_list::values() const
{
    std::map<std::string, std::vector<float>> values;
    for (const Parameter_row* row : m_rows)
        values[row->parameter().name] = row->value();
    return values;
}

} // namespace reference_host
