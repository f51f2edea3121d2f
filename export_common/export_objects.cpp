#include "export_common/export_objects.h"

#include "sdk/interface_ids.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

bool has_single_selection(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    return app && view && view->get_num_selected_nodes() == 1;
}

void Export_objects::take_node(TSDK::IGraph_view* view)
{
    node = adopt(view->get_selected_node(0));
}

void Export_objects::take_compiler(TSDK::ITovira* app)
{
    compiler = query_interface<TSDK::ITovira_compiler>(app, TSDK::INTERFACE_COMPILER);
}

void Export_objects::take_preferences(TSDK::ITovira* app)
{
    preferences = query_interface<TSDK::IPreferences>(app, TSDK::INTERFACE_PREFERENCES);
}

void Export_objects::take_errors()
{
    errors = adopt(compiler ? compiler->get_errors() : nullptr);
}

Host_ref<TSDK::ICompiler_options> Export_objects::create_options() const
{
    return adopt(compiler ? compiler->create_options() : nullptr);
}

Host_ref<TSDK::ICompilation_unit>
Export_objects::compile_node(TSDK::ICompiler_errors* errors_sink) const
{
    constexpr int no_flags = 0;
    return adopt(compiler ? compiler->compile_shader(node.get(), errors_sink, no_flags) : nullptr);
}

bool Export_objects::read_preference(const char* name, bool& value) const
{
    return preferences && preferences->get_bool_preference(name, &value);
}

} // namespace TOVIRAEXPORT
} // namespace QZ
