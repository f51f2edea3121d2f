#include "export_common/compile_group.h"

#include "export_common/compiler_options.h"
#include "export_common/graph_queries.h"
#include "exporter_base/bytes.h"
#include "exporter_base/decimal.h"
#include "sdk/interface_ids.h"

#include <cstdio>
#include <string>

#include <wx/msgdlg.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

// What the user is told when the scene lacks what the shader needs; empty when it lacks nothing.
wxString missing_message(bool lights_missing, bool environment_missing)
{
    if (lights_missing && environment_missing)
        return wxT("Exported shader requires lights and an environment shader,\n")
            wxT("but none are assigned in the Render Settings Dialog.\n\n");
    if (lights_missing)
        return wxT("Exported shader requires lights, but none are assigned in\n")
            wxT("the Render Settings Dialog.\n\n");
    if (environment_missing)
        return wxT("Exported shader requires an environment shader, but there is\n")
            wxT("not one assigned in the Render Settings Dialog.\n\n");
    return wxString();
}

// Closing the question without an answer goes on.
bool user_continues(wxWindow* parent, const wxString& message)
{
    wxMessageDialog dialog(parent, message + wxT("Are you sure you want to continue?"),
                           wxT("Tovira - Warning"), wxYES_NO);
    return dialog.ShowModal() != wxID_NO;
}

// Decides about a compilation for which something is missing: asks the user or, without one, fails
// with the reason on standard error and in `message`.
bool may_continue(const wxString& missing, wxWindow* parent, bool interactive, wxString& message)
{
    if (interactive)
        return user_continues(parent, missing);
    std::fprintf(stderr,
                 "%s non-interactive mode, we are missing lights or some environment. return\n",
                 to_bytes(missing).c_str());
    message = missing;
    return false;
}

std::string node_name(TSDK::IGraph_node* node)
{
    return node ? text_or_empty(node->get_name()) : "";
}

// One group of options per light, numbered from 0, and the list of their names. The host may change
// its lights while it is asked, so the count is fetched again each time.
void set_light_options(TSDK::ICompiler_options* options, TSDK::IGraph_view* view)
{
    std::string names;
    for (unsigned int i = 0; i < view->get_num_lights(); ++i) {
        Host_ref<TSDK::IGraph_node> light = adopt(view->get_light(i));
        names += node_name(light.get());
        if (i < view->get_num_lights() - 1)
            names += ", ";
        light.release();

        const std::string prefix = "light_state" + std::to_string(i);
        set_option(options, (prefix + "_type").c_str(), std::to_string(view->get_light_type(i)));
        set_option(options, (prefix + "_spread").c_str(), fixed(view->get_light_spread(i), 6));
        set_option(options, (prefix + "_distance_limit").c_str(),
                   fixed(view->get_light_distance_limit(i), 6));
    }
    if (view->get_num_lights() != 0)
        set_option(options, "lights", names);
}

} // namespace

TSDK::ICompilation_unit* compile_group(TSDK::IGraph_view* view, TSDK::ITovira* app,
                                       TSDK::ICompiler_errors* errors,
                                       TSDK::IGraph_node* shader_node, bool resolve_unsized_arrays,
                                       bool preserve_light_loop, bool world_space,
                                       bool ignore_literal, wxWindow* parent, bool interactive,
                                       wxString& message)
{
    if (!view || !app)
        return nullptr;
    Host_ref<TSDK::ITovira_compiler> compiler =
        query_interface<TSDK::ITovira_compiler>(app, TSDK::INTERFACE_COMPILER);
    if (!compiler)
        return nullptr;
    Host_ref<TSDK::ICompiler_options> options = adopt(compiler->create_options());
    if (!options)
        return nullptr;
    set_option(options.get(), "shader_name", node_name(shader_node));
    if (resolve_unsized_arrays)
        set_option(options.get(), "resolve_unsized_arrays", "true");
    if (preserve_light_loop)
        set_option(options.get(), "preserve_light_loop", "true");
    if (world_space)
        set_option(options.get(), "internal_space", "world");
    if (ignore_literal)
        set_option(options.get(), "ignore_literal", "true");

    bool uses_lights = false;
    bool uses_environment = false;
    determine_subshader_usage(shader_node, uses_lights, uses_environment);
    Host_ref<TSDK::IGraph_node> environment = adopt(view->get_environment_shader());
    Host_ref<TSDK::IGraph_node> volume = adopt(view->get_volume_shader());

    const bool lights_missing = uses_lights && view->get_num_lights() == 0 && !preserve_light_loop;
    const wxString missing = missing_message(lights_missing, uses_environment && !environment);
    if (!missing.empty() && !may_continue(missing, parent, interactive, message)) {
        release_in_order(environment, volume, compiler, options);
        return nullptr;
    }

    if (uses_lights && !preserve_light_loop)
        set_light_options(options.get(), view);
    if (uses_environment && environment)
        set_option(options.get(), "environment", node_name(environment.get()));
    // Whether or not the shader itself looks at it: a volume lies between every surface and the
    // eye.
    if (volume)
        set_option(options.get(), "volume", node_name(volume.get()));

    Host_ref<TSDK::Interface> graph = adopt(view->get_graph());
    TSDK::ICompilation_unit* unit = compiler->compile(graph.get(), errors, options.get());
    release_in_order(graph, compiler, options, environment, volume);
    return unit;
}

Host_ref<TSDK::ICompilation_unit> compile_group(TSDK::IGraph_view* view, TSDK::ITovira* app,
                                                TSDK::ICompiler_errors* errors,
                                                TSDK::IGraph_node* shader_node, int flags,
                                                wxWindow* parent, bool interactive,
                                                wxString& message)
{
    return adopt(compile_group(view, app, errors, shader_node,
                               (flags & RESOLVE_UNSIZED_ARRAYS) != 0,
                               (flags & PRESERVE_LIGHT_LOOP) != 0, (flags & WORLD_SPACE) != 0,
                               (flags & IGNORE_LITERAL) != 0, parent, interactive, message));
}

} // namespace TOVIRAEXPORT
} // namespace QZ
