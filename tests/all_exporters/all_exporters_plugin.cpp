// A plug-in library of the same objects whose registry goes on after the last exporter of the
// delivered one: 8 is the renderer source exporter, 9 the sample exporter.
#include "exporters/exporter_default.h"
#include "exporters/exporter_swrc.h"
#include "plugin/tovira_exporter_plugin.h"

#include <memory>

namespace
{

using QZ::TOVIRAEXPORT::Exporter_base;
using QZ::TOVIRAEXPORT::Exporter_default;
using QZ::TOVIRAEXPORT::Exporter_swrc;
using QZ::TOVIRAEXPORT::Tovira_exporter_plugin;

class All_exporters_plugin : public Tovira_exporter_plugin
{
public:
    int get_num_exporters() const override
    {
        return Tovira_exporter_plugin::get_num_exporters() + 2;
    }

    QZ::TSDK::IExporter* get_exporter(int index) override
    {
        const int delivered = Tovira_exporter_plugin::get_num_exporters();
        std::unique_ptr<Exporter_base> exporter;
        if (index == delivered)
            exporter = std::make_unique<Exporter_swrc>();
        else if (index == delivered + 1)
            exporter = std::make_unique<Exporter_default>();
        else
            return Tovira_exporter_plugin::get_exporter(index);
        exporter->initialize();
        return exporter.release();
    }
};

} // namespace

extern "C" __attribute__((visibility("default"))) qz::base::Plugin*
initializer(unsigned int selector)
{
    return selector == 0 ? new All_exporters_plugin : nullptr;
}
