#include "plugin/tovira_exporter_plugin.h"

#include "exporters/exporter_3dsmax.h"
#include "exporters/exporter_catia.h"
#include "exporters/exporter_fxcomposer.h"
#include "exporters/exporter_generic.h"
#include "exporters/exporter_maya.h"
#include "exporters/exporter_xsi.h"
#include "plugin/exporter_plugin_app.h"

#include <memory>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

using Create_exporter = std::unique_ptr<Exporter_base> (*)();

template<typename Exporter>
std::unique_ptr<Exporter_base> create()
{
    return std::make_unique<Exporter>();
}

template<Exporter_generic::Target_language target>
std::unique_ptr<Exporter_base> create_generic()
{
    return std::make_unique<Exporter_generic>(target);
}

// The exporters on offer. The index of a row is the index that the host asks for.
constexpr Create_exporter registry[] = {
    create<Exporter_3dsmax>,
    create<Exporter_catia>,
    create<Exporter_fxcomposer>,
    create<Exporter_maya>,
    create<Exporter_xsi>,
    create_generic<Exporter_generic::TARGET_CGFX>,
    create_generic<Exporter_generic::TARGET_HLSL>,
    create_generic<Exporter_generic::TARGET_GLSL>,
};

constexpr unsigned int registry_size = sizeof registry / sizeof registry[0];

} // namespace

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
    return registry_size;
}

TSDK::IExporter* Tovira_exporter_plugin::get_exporter(int index)
{
    if (static_cast<unsigned int>(index) >= registry_size)
        return nullptr;
    std::unique_ptr<Exporter_base> exporter = registry[index]();
    exporter->initialize();
    return exporter.release();
}

} // namespace TOVIRAEXPORT
} // namespace QZ
