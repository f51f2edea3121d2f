#include "plugin/tovira_exporter_plugin.h"

#include "exporters/exporter_table.h"
#include "exporters/make_exporter.h"
#include "plugin/exporter_plugin_app.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

Tovira_exporter_plugin::Tovira_exporter_plugin()
{
    mark_live_plugin();
}

Tovira_exporter_plugin::~Tovira_exporter_plugin()
{
    unmark_live_plugin();
}

const char* Tovira_exporter_plugin::get_name() const
{
    return "Tovira_exporter_plugin";
}

const char* Tovira_exporter_plugin::get_type() const
{
    return "Exporter_plugin";
}

int Tovira_exporter_plugin::get_version() const
{
    return 1;
}

const char* Tovira_exporter_plugin::get_compiler() const
{
    return "";
}

void Tovira_exporter_plugin::release() {}

int Tovira_exporter_plugin::get_num_exporters() const
{
    return static_cast<int>(count_offered_exporters());
}

TSDK::IExporter* Tovira_exporter_plugin::get_exporter(int index)
{
    const unsigned int row = static_cast<unsigned int>(index);
    return row < count_offered_exporters() ? make_exporter(row).release() : nullptr;
}

} // namespace TOVIRAEXPORT
} // namespace QZ
