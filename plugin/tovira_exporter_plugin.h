// The plug-in object and its registry of exporters.
#ifndef PLUGIN_TOVIRA_EXPORTER_PLUGIN_H
#define PLUGIN_TOVIRA_EXPORTER_PLUGIN_H

#include "plugin/iexporter_plugin.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

// Has no data of its own. A marker in the library tells whether one is alive
// (plugin/exporter_plugin_app.h).
class Tovira_exporter_plugin : public TSDK::IExporter_plugin
{
public:
    Tovira_exporter_plugin();
    ~Tovira_exporter_plugin() override;

    const char* get_name() const override;
    const char* get_type() const override;
    int get_version() const override;

    // Empty: the build does not name its compiler.
    const char* get_compiler() const override;

    // Does nothing: the object stays for the life of the process, unless the host deletes it.
    void release() override;

    int get_num_exporters() const override;

    // A new exporter, initialised, which the caller owns; null for an index out of range.
    TSDK::IExporter* get_exporter(int index) override;
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
