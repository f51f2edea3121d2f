#include "reference_host/window/kept_exporters.h"

#include "reference_host/app/exporter_options.h"

namespace reference_host
{

const Kept_exporter& Kept_exporters::get(const std::string& name)
{
    const auto found = m_exporters.find(name);
    if (found != m_exporters.end())
        return found->second;
    Kept_exporter kept;
    kept.exporter = m_plugin.make_exporter(m_plugin.find_exporter(name));
    for (const Panel_option& option : options_of(*kept.exporter))
        kept.untouched.push_back({"", option.name, option.value});
    return m_exporters.emplace(name, std::move(kept)).first->second;
}

} // namespace reference_host
