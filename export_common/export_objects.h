// The host objects that an export works with, from the first to the last step.
#ifndef EXPORT_COMMON_EXPORT_OBJECTS_H
#define EXPORT_COMMON_EXPORT_OBJECTS_H

#include "export_common/host_ref.h"
#include "sdk/igraph_node.h"
#include "sdk/igraph_view.h"
#include "sdk/itovira.h"
#include "sdk/itovira_compiler.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

// Whether there is something to export: exactly one node is selected. False for null arguments.
bool has_single_selection(TSDK::ITovira* app, TSDK::IGraph_view* view);

// Each is empty until it is taken; the exporters take them in their own order. They are released in
// the order errors, node, compiler, preferences, whatever path the export takes.
struct Export_objects {
    Host_ref<TSDK::IPreferences> preferences; // stays empty when the host has none
    Host_ref<TSDK::ITovira_compiler> compiler;
    Host_ref<TSDK::IGraph_node> node; // the selected one
    Host_ref<TSDK::ICompiler_errors> errors;

    void take_node(TSDK::IGraph_view* view);
    void take_compiler(TSDK::ITovira* app);
    void take_preferences(TSDK::ITovira* app);
    void take_errors();

    // A new option set; empty when there is no compiler.
    Host_ref<TSDK::ICompiler_options> create_options() const;

    // Compiles the node by itself; empty on failure. `errors_sink` may be null.
    Host_ref<TSDK::ICompilation_unit> compile_node(TSDK::ICompiler_errors* errors_sink) const;

    // Reads a preference into `value`. False, with `value` unchanged, when it is absent.
    bool read_preference(const char* name, bool& value) const;
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
