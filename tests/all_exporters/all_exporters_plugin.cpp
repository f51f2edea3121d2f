// A plug-in library of the same objects that offers every row of the table of exporters, also those
// that the delivered registry keeps back. The index is that of the row.
#include "exporters/exporter_table.h"
#include "exporters/make_exporter.h"
#include "plugin/tovira_exporter_plugin.h"

namespace
{

class All_exporters_plugin : public QZ::TOVIRAEXPORT::Tovira_exporter_plugin
{
public:
    int get_num_exporters() const override
    {
        return static_cast<int>(QZ::TOVIRAEXPORT::exporter_facts.size());
    }

    QZ::TSDK::IExporter* get_exporter(int index) override
    {
        return QZ::TOVIRAEXPORT::make_exporter(static_cast<unsigned int>(index)).release();
    }
};

} // namespace

extern "C" __attribute__((visibility("default"))) qz::base::Plugin*
initializer(unsigned int selector)
{
    return selector == 0 ? new All_exporters_plugin : nullptr;
}
