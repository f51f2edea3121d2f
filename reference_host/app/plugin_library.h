// The plug-in's shared library, loaded the way Tovira does it: through its entry function, and used
// through virtual tables alone.
#ifndef REFERENCE_HOST_APP_PLUGIN_LIBRARY_H
#define REFERENCE_HOST_APP_PLUGIN_LIBRARY_H

#include "plugin/iexporter.h"
#include "plugin/iexporter_plugin.h"

#include <memory>
#include <string>
#include <vector>

namespace reference_host
{

class Plugin_library
{
public:
    // Loads the library. Throws std::runtime_error with a message when that fails or it is not an
    // exporter plug-in. An empty file name means what TOVIRAEXPORT_PLUGIN names, else the library
    // in its usual places: where the build or the installation puts it.
    explicit Plugin_library(const std::string& file);

    // The names of the exporters, in the order of their indices. They are asked for once: an
    // exporter leaves its settings in memory when it ends.
    const std::vector<std::string>& exporter_names() const { return m_names; }

    // The index of the exporter that the user means: by its index, its name, or a part of its name
    // that fits only one; upper and lower case do not matter. Throws std::invalid_argument with a
    // message when none or several fit.
    int find_exporter(const std::string& wanted) const;

    // Whether the user's word for an exporter fits that one.
    bool fits(const std::string& wanted, int index) const;

    // The file that was loaded.
    const std::string& file() const { return m_file; }

    // A new exporter of that index. Throws std::runtime_error when the plug-in returns none.
    std::unique_ptr<QZ::TSDK::IExporter> make_exporter(int index) const;

private:
    // The library stays loaded until the process ends: wx keeps pointers into it.
    std::unique_ptr<QZ::TSDK::IExporter_plugin> m_plugin;
    std::string m_file;
    std::vector<std::string> m_names;
};

} // namespace reference_host

#endif
