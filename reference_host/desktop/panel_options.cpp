#include "reference_host/desktop/panel_options.h"

#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "reference_host/system/suggestion.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace reference_host
{

using QZ::TOVIRAEXPORT::from_bytes;
using QZ::TOVIRAEXPORT::to_bytes;

namespace
{

struct Panel_control {
    wxWindow* window;
    std::vector<std::string> names; // the best one first
};

std::string plain_name(const std::string& label)
{
    std::string name = label;
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) {
        return c == ' ' ? '_' : static_cast<char>(std::tolower(c));
    });
    const size_t last = name.find_last_not_of(":_");
    return name.substr(0, last == std::string::npos ? 0 : last + 1);
}

bool is_option(const wxWindow& window)
{
    return dynamic_cast<const wxCheckBox*>(&window) || dynamic_cast<const wxComboBox*>(&window) ||
           dynamic_cast<const wxTextCtrl*>(&window);
}

// `label` is the text before the window, and after the call the one before the next window.
void collect(wxWindow& window, std::string& label, std::vector<Panel_control>& options)
{
    for (wxWindow* child : window.GetChildren()) {
        const std::string own_label = to_bytes(child->GetLabel());
        if (dynamic_cast<wxStaticText*>(child)) {
            label = own_label;
        } else if (is_option(*child)) {
            const bool is_check_box = dynamic_cast<wxCheckBox*>(child) != nullptr;
            options.push_back({child,
                               {plain_name(is_check_box ? own_label : label),
                                plain_name(to_bytes(child->GetName()))}});
            label.clear();
        } else {
            collect(*child, label, options);
        }
    }
}

std::vector<Panel_control> controls_of(wxWindow& panel)
{
    std::vector<Panel_control> options;
    std::string label;
    collect(panel, label, options);
    return options;
}

// The controls are set by value, and the event that a user's hand would cause follows.
void notify(wxWindow& control, wxEventType type)
{
    wxCommandEvent event(type, control.GetId());
    event.SetEventObject(&control);
    control.GetEventHandler()->ProcessEvent(event);
}

void set_check_box(wxCheckBox& box, const Option_setting& setting)
{
    const std::string value = plain_name(setting.value);
    const bool is_on = value == "on" || value == "true";
    if (!is_on && value != "off" && value != "false")
        throw std::invalid_argument("the option '" + setting.name + "' is on or off, not '" +
                                    setting.value + "'");
    box.SetValue(is_on);
    notify(box, wxEVT_COMMAND_CHECKBOX_CLICKED);
}

void set_combo_box(wxComboBox& box, const Option_setting& setting)
{
    std::string entries;
    for (unsigned int i = 0; i < box.GetCount(); ++i) {
        const std::string entry = to_bytes(box.GetString(i));
        if (plain_name(entry) == plain_name(setting.value)) {
            box.SetSelection(static_cast<int>(i));
            notify(box, wxEVT_COMMAND_COMBOBOX_SELECTED);
            return;
        }
        entries += (entries.empty() ? "" : ", ") + entry;
    }
    throw std::invalid_argument("the option '" + setting.name + "' is one of " + entries +
                                ", not '" + setting.value + "'");
}

void set_control(wxWindow& control, const Option_setting& setting)
{
    if (auto* check_box = dynamic_cast<wxCheckBox*>(&control))
        set_check_box(*check_box, setting);
    else if (auto* combo_box = dynamic_cast<wxComboBox*>(&control))
        set_combo_box(*combo_box, setting);
    else if (auto* text = dynamic_cast<wxTextCtrl*>(&control))
        text->SetValue(from_bytes(setting.value.c_str())); // sends its event itself
}

Panel_option facts_of(const Panel_control& control)
{
    const std::string& name = control.names.front();
    if (const auto* check_box = dynamic_cast<const wxCheckBox*>(control.window))
        return {name, "flag", check_box->GetValue() ? "on" : "off", {"on", "off"}};
    if (const auto* text = dynamic_cast<const wxTextCtrl*>(control.window))
        return {name, "text", to_bytes(text->GetValue()), {}};
    Panel_option option{name, "choice", {}, {}};
    if (const auto* box = dynamic_cast<const wxComboBox*>(control.window)) {
        option.value = to_bytes(box->GetValue());
        for (unsigned int i = 0; i < box->GetCount(); ++i)
            option.choices.push_back(to_bytes(box->GetString(i)));
    }
    return option;
}

bool is_called(const Panel_control& option, const std::string& name)
{
    return std::find(option.names.begin(), option.names.end(), plain_name(name)) !=
           option.names.end();
}

bool has_option(const std::vector<Panel_control>& options, const std::string& name)
{
    return std::any_of(options.begin(), options.end(),
                       [&](const Panel_control& option) { return is_called(option, name); });
}

wxWindow& find_control(const std::vector<Panel_control>& options, const std::string& name)
{
    std::vector<wxWindow*> fitting;
    std::string known;
    std::vector<std::string> names;
    for (const Panel_control& option : options) {
        if (is_called(option, name))
            fitting.push_back(option.window);
        known += (known.empty() ? "" : ", ") + option.names.front();
        names.push_back(option.names.front());
    }
    if (fitting.size() == 1)
        return *fitting.front();
    const std::string near = suggestion(plain_name(name), names);
    throw std::invalid_argument(
        (fitting.empty() ? "the panel has no option '" : "the panel has several options '") + name +
        "'" + (near.empty() ? "; there are: " : near + " There are: ") + known);
}

} // namespace

void set_panel_options(wxWindow& panel, const std::vector<Option_setting>& settings)
{
    const std::vector<Panel_control> options = controls_of(panel);
    for (const Option_setting& setting : settings) {
        if (setting.exporter != "*" || has_option(options, setting.name))
            set_control(find_control(options, setting.name), setting);
    }
}

std::vector<Panel_option> panel_options(wxWindow& panel)
{
    std::vector<Panel_option> options;
    for (const Panel_control& control : controls_of(panel)) {
        if (control.window->GetId() != QZ::TOVIRAEXPORT::ID_EXPORTFILE_TEXT)
            options.push_back(facts_of(control));
    }
    return options;
}

} // namespace reference_host
