#include "exporters/application_export.h"

#include "export_common/code_output.h"
#include "export_common/compile_group.h"
#include "export_common/export_objects.h"
#include "export_common/graph_queries.h"
#include "exporter_base/bytes.h"

#include <wx/msgdlg.h>
#include <wx/panel.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

Chooser_properties chooser_properties(const Application_dialog& dialog)
{
    return {dialog.wildcard,
            {dialog.extension, wxT("*")},
            dialog.caption_open,
            dialog.caption_save,
            true};
}

bool choose_output(Exporter_base& exporter, TSDK::ITovira* app, TSDK::IGraph_view* view,
                   const wxString& extension, wxString& path)
{
    if (!has_single_selection(app, view))
        return false;
    if (exporter.get_exportfile_name().empty()) {
        exporter.show_error(wxT("Error! no export file name is specified."));
        return false;
    }
    path = add_extension(exporter.get_exportfile_name(), extension);
    return exporter.can_export(to_bytes(path).c_str());
}

bool export_and_report(Exporter_base& exporter, TSDK::ITovira* app, TSDK::IGraph_view* view,
                       const wxString& extension, Export_function export_function)
{
    constexpr bool interactive = true;
    wxString path;
    if (!choose_output(exporter, app, view, extension, path))
        return false;
    wxString error;
    if (export_function(app, view, path, exporter.get_window(), interactive, error))
        return true;
    wxMessageDialog dialog(exporter.get_top_panel(), error, wxT("Tovira"), wxOK | wxCENTRE);
    dialog.ShowModal();
    return false;
}

bool export_cgfx_surface(Exporter_base& exporter, TSDK::ITovira* app, TSDK::IGraph_view* view,
                         const Option_table& options_table)
{
    constexpr bool resolve_unsized_arrays = true;
    constexpr bool preserve_light_loop = false;
    constexpr bool world_space = false;
    constexpr bool ignore_literal = false;
    constexpr bool interactive = true;

    wxString path;
    if (!choose_output(exporter, app, view, wxT("cgfx"), path))
        return false;
    Export_objects objects;
    objects.take_node(view);
    if (!objects.node || !is_surface(objects.node.get()))
        return false;
    objects.take_compiler(app);
    objects.take_preferences(app);
    objects.take_errors();

    wxString unused_message; // only a call that is not interactive writes it
    Host_ref<TSDK::ICompilation_unit> unit =
        adopt(compile_group(view, app, objects.errors.get(), objects.node.get(),
                            resolve_unsized_arrays, preserve_light_loop, world_space,
                            ignore_literal, exporter.get_window(), interactive, unused_message));
    if (!unit)
        return true;

    Host_ref<TSDK::ICompiler_options> options = objects.create_options();
    set_options(options.get(), options_table);
    set_scene_ambient_option(options.get(), view);
    set_user_copyright_option(app, options.get());
    Host_ref<TSDK::IGenerated_shader> shader =
        adopt(generate_code(unit.get(), "FX", options.get()));
    write_code(path, shader.get());
    release_in_order(shader, options, unit);
    return true;
}

} // namespace TOVIRAEXPORT
} // namespace QZ
