// Exporters that serve one run or panel after the other. One that ends leaves its settings in
// memory, so a window that made one for each look at a document would grow.
#ifndef REFERENCE_HOST_WINDOW_KEPT_EXPORTERS_H
#define REFERENCE_HOST_WINDOW_KEPT_EXPORTERS_H

#include "reference_host/app/plugin_library.h"
#include "reference_host/desktop/panel_options.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace reference_host
{

struct Kept_exporter {
    std::unique_ptr<QZ::TSDK::IExporter> exporter;
    // All options of its panel as they were when it was new. Whoever opens a panel sets these
    // first: the exporter remembers what was set before.
    std::vector<Option_setting> untouched;
};

class Kept_exporters
{
public:
    // The library must outlive the exporters.
    explicit Kept_exporters(const Plugin_library& plugin) : m_plugin(plugin) {}

    // The exporter of that name. Throws as the library does when there is none.
    const Kept_exporter& get(const std::string& name);

    // Makes a new one the next time: a failure may have left this one in any state.
    void give_up(const std::string& name) { m_exporters.erase(name); }

private:
    const Plugin_library& m_plugin;
    std::map<std::string, Kept_exporter> m_exporters;
};

} // namespace reference_host

#endif
