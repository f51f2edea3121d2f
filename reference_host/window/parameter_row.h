// One parameter of a shader as a row of controls: its name, what suits its kind (sliders, a color,
// a check box), and its numbers, which may also be typed and may lie beyond the sliders.
#ifndef REFERENCE_HOST_WINDOW_PARAMETER_ROW_H
#define REFERENCE_HOST_WINDOW_PARAMETER_ROW_H

#include "reference_host/render/effect_parameters.h"

#include <functional>
#include <vector>

#include <wx/panel.h>

class wxCheckBox;
class wxColourPickerCtrl;
class wxSizer;
class wxSlider;
class wxTextCtrl;

namespace reference_host
{

class Parameter_row : public wxPanel
{
public:
    // Calls back when the user changes the value.
    Parameter_row(wxWindow* parent, const Effect_parameter& parameter,
                  std::function<void()> changed);

    const Effect_parameter& parameter() const { return m_parameter; }
    const std::vector<float>& value() const { return m_value; }
    void set_value(const std::vector<float>& value);

    // Null where the row has none.
    wxSlider* slider(size_t component) const;
    wxTextCtrl* numbers() const { return m_numbers; }

private:
    void add_label(wxSizer* sizer);
    wxWindow* make_sliders();
    void add_numbers(wxSizer* sizer);
    void take_slider(size_t component);
    void take_numbers();
    void take(const std::vector<float>& value);
    void show_value();
    void show_numbers();

    const Effect_parameter m_parameter;
    const std::function<void()> m_changed;
    std::vector<float> m_value;
    float m_lowest = 0; // of the sliders
    float m_highest = 1;
    std::vector<wxSlider*> m_sliders;
    wxColourPickerCtrl* m_color = nullptr;
    wxCheckBox* m_check_box = nullptr;
    wxTextCtrl* m_numbers = nullptr;
};

} // namespace reference_host

#endif
