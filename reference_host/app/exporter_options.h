// The options of exporters, told to users and to programs.
#ifndef REFERENCE_HOST_APP_EXPORTER_OPTIONS_H
#define REFERENCE_HOST_APP_EXPORTER_OPTIONS_H

#include "plugin/iexporter.h"
#include "reference_host/desktop/panel_options.h"

#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace reference_host
{

// The options on the exporter's panel, with their defaults. Needs a Wx_runtime.
std::vector<Panel_option> options_of(QZ::TSDK::IExporter& exporter);

// "internal_space=world|camera (default: camera)".
std::string line_of(const Panel_option& option);

// An array of {name, type, default, choices}.
nlohmann::ordered_json json_of(const std::vector<Panel_option>& options);

} // namespace reference_host

#endif
