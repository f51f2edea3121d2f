#include "reference_host/window/parameter_row.h"

#include "reference_host/render/linear_picture.h"
#include "reference_host/window/number_text.h"
#include "reference_host/window/wx_text.h"

#include <algorithm>
#include <cmath>

#include <wx/checkbox.h>
#include <wx/clrpicker.h>
#include <wx/sizer.h>
#include <wx/slider.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/tokenzr.h>

namespace reference_host
{
namespace
{

constexpr int slider_steps = 1000;
constexpr int shown_digits = 4;
constexpr int label_width = 100; // pixels at scale 1
constexpr int slider_width = 50; // the least
constexpr int numbers_width = 80;

// A range for what the effect does not limit: it holds the value, and the usual ones.
float usual_lowest(const Effect_parameter& parameter)
{
    const float least = *std::min_element(parameter.value.begin(), parameter.value.end());
    const bool is_vector = parameter.value.size() > 1;
    return std::min(is_vector ? -1.0F : 0.0F, 2 * least);
}

float usual_highest(const Effect_parameter& parameter)
{
    return std::max(1.0F, 2 * *std::max_element(parameter.value.begin(), parameter.value.end()));
}

wxString numbers_text(const std::vector<float>& value)
{
    wxString text;
    for (const float number : value)
        text += (text.empty() ? wxT("") : wxT(", ")) + number_text(number, shown_digits);
    return text;
}

unsigned char color_byte(float light)
{
    return static_cast<unsigned char>(
        std::lround(srgb_encoded(std::clamp(light, 0.0F, 1.0F)) * 255));
}

wxColour color_of(const std::vector<float>& value)
{
    return wxColour(color_byte(value[0]), color_byte(value[1]), color_byte(value[2]));
}

} // namespace

Parameter_row::Parameter_row(wxWindow* parent, const Effect_parameter& parameter,
                             std::function<void()> changed)
    : wxPanel(parent),
      m_parameter(parameter),
      m_changed(std::move(changed)),
      m_value(parameter.value),
      m_lowest(parameter.min.value_or(usual_lowest(parameter))),
      m_highest(std::max(parameter.max.value_or(usual_highest(parameter)), m_lowest))
{
    wxBoxSizer* sizer = new wxBoxSizer(wxHORIZONTAL);
    add_label(sizer);
    if (parameter.widget == Parameter_widget::check_box) {
        m_check_box = new wxCheckBox(this, wxID_ANY, wxString());
        m_check_box->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
            take({event.IsChecked() ? 1.0F : 0.0F});
        });
        sizer->Add(m_check_box, 1, wxALIGN_CENTER_VERTICAL);
    } else if (parameter.widget == Parameter_widget::color && m_value.size() >= 3) {
        m_color = new wxColourPickerCtrl(this, wxID_ANY);
        m_color->Bind(wxEVT_COLOURPICKER_CHANGED, [this](wxColourPickerEvent& event) {
            std::vector<float> value = m_value;
            const wxColour color = event.GetColour();
            const unsigned char bytes[] = {color.Red(), color.Green(), color.Blue()};
            for (size_t i = 0; i < 3; ++i)
                value[i] = srgb_decoded(static_cast<float>(bytes[i]) / 255.0F);
            take(value);
        });
        sizer->Add(m_color, 1, wxALIGN_CENTER_VERTICAL | wxRIGHT, FromDIP(4));
    } else {
        sizer->Add(make_sliders(), 1, wxALIGN_CENTER_VERTICAL);
    }
    if (!m_check_box)
        add_numbers(sizer);
    SetSizer(sizer);
    show_value();
}

void Parameter_row::add_label(wxSizer* sizer)
{
    wxStaticText* label = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition,
                                           wxDefaultSize, wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    label->SetLabelText(to_text(m_parameter.label));
    label->SetToolTip(to_text(m_parameter.label + " (" + m_parameter.name + ")"));
    label->SetMinSize(FromDIP(wxSize(label_width, -1)));
    sizer->Add(label, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, FromDIP(4));
}

// One below the other: side by side those of a vector would be too short to be moved finely.
wxWindow* Parameter_row::make_sliders()
{
    wxPanel* panel = new wxPanel(this);
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    for (size_t i = 0; i < m_value.size(); ++i) {
        wxSlider* slider = new wxSlider(panel, wxID_ANY, 0, 0, slider_steps);
        slider->SetMinSize(FromDIP(wxSize(slider_width, -1)));
        slider->Bind(wxEVT_SLIDER, [this, i](wxCommandEvent&) { take_slider(i); });
        sizer->Add(slider, 0, wxEXPAND);
        m_sliders.push_back(slider);
    }
    panel->SetSizer(sizer);
    return panel;
}

void Parameter_row::add_numbers(wxSizer* sizer)
{
    m_numbers = new wxTextCtrl(this, wxID_ANY);
    m_numbers->SetMinSize(FromDIP(wxSize(numbers_width, -1)));
    m_numbers->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { take_numbers(); });
    sizer->Add(m_numbers, 0, wxALIGN_CENTER_VERTICAL);
}

wxSlider* Parameter_row::slider(size_t component) const
{
    return component < m_sliders.size() ? m_sliders[component] : nullptr;
}

void Parameter_row::set_value(const std::vector<float>& value)
{
    m_value = value;
    show_value();
}

// The value goes up in the effect's own steps.
void Parameter_row::take_slider(size_t component)
{
    const float share = static_cast<float>(m_sliders[component]->GetValue()) / slider_steps;
    const float step = m_parameter.is_whole ? 1.0F : m_parameter.step.value_or(0.0F);
    float number = m_lowest + share * (m_highest - m_lowest);
    if (step > 0)
        number = std::min(m_lowest + std::round((number - m_lowest) / step) * step, m_highest);
    m_value[component] = number;
    show_numbers();
    m_changed();
}

// Half a number, as it is being typed, changes nothing.
void Parameter_row::take_numbers()
{
    std::vector<float> value;
    for (wxStringTokenizer words(m_numbers->GetValue(), wxT(", ")); words.HasMoreTokens();) {
        if (const auto number = number_in(words.GetNextToken()))
            value.push_back(*number);
    }
    if (value.size() != m_value.size())
        return;
    m_value = value;
    show_value();
    m_changed();
}

void Parameter_row::take(const std::vector<float>& value)
{
    m_value = value;
    show_numbers();
    m_changed();
}

void Parameter_row::show_value()
{
    for (size_t i = 0; i < m_sliders.size(); ++i) {
        const float width = m_highest - m_lowest;
        const float share = width > 0 ? (m_value[i] - m_lowest) / width : 0.0F;
        m_sliders[i]->SetValue(
            static_cast<int>(std::lround(std::clamp(share, 0.0F, 1.0F) * slider_steps)));
    }
    if (m_check_box)
        m_check_box->SetValue(m_value[0] != 0);
    if (m_color)
        m_color->SetColour(color_of(m_value));
    if (!m_numbers || !m_numbers->HasFocus())
        show_numbers();
}

void Parameter_row::show_numbers()
{
    if (m_numbers)
        m_numbers->ChangeValue(numbers_text(m_value));
}

} // namespace reference_host
