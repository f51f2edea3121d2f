#include "reference_host/app/exporter_options.h"

#include "reference_host/desktop/exporter_panel.h"
#include "reference_host/desktop/hidden_window.h"

#include <nlohmann/json.hpp>

namespace reference_host
{

std::vector<Panel_option> options_of(QZ::TSDK::IExporter& exporter)
{
    constexpr int width = 400; // pixels; any width does, as the window is never shown
    Hidden_window window;
    const Exporter_panel panel(exporter, nullptr, window.area(), width);
    return panel_options(window.area());
}

std::string line_of(const Panel_option& option)
{
    std::string form;
    for (const std::string& choice : option.choices)
        form += (form.empty() ? "" : "|") + choice;
    return option.name + "=" + (form.empty() ? "TEXT" : form) + " (default: " + option.value + ")";
}

nlohmann::ordered_json json_of(const std::vector<Panel_option>& options)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const Panel_option& option : options)
        list.push_back({{"name", option.name},
                        {"type", option.type},
                        {"default", option.value},
                        {"choices", option.choices}});
    return list;
}

} // namespace reference_host
