#include "exporters/application_exporter.h"

#include "export_common/code_output.h"
#include "export_common/compile_group.h"
#include "export_common/export_objects.h"
#include "export_common/graph_queries.h"
#include "exporter_base/border.h"
#include "exporter_base/bytes.h"

#include <wx/msgdlg.h>
#include <wx/panel.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

constexpr const wxChar* no_name_message = wxT("Error! no export file name is specified.");

} // namespace

Application_exporter::Application_exporter(const Exporter_facts& facts,
                                           const Application_dialog& dialog)
    : Exporter_base(facts.name), m_facts(facts), m_dialog(dialog)
{
}

int Application_exporter::create_window(wxWindow* parent, int width, TSDK::IGraph_view*)
{
    return create_exportfile_panel(parent, width);
}

void Application_exporter::initialize()
{
    constexpr bool extension_autoadd = true;
    register_exportfile_setting();
    register_chooser_properties(wxT("exportfile"), {m_dialog.wildcard,
                                                    {m_dialog.extension, wxT("*")},
                                                    m_dialog.caption_open,
                                                    m_dialog.caption_save,
                                                    extension_autoadd});
}

const char* Application_exporter::get_language() const
{
    return m_facts.language;
}

bool Application_exporter::export_and_report(TSDK::ITovira* app, TSDK::IGraph_view* view,
                                             Export_function export_function)
{
    return at_border(false, [&] {
        constexpr bool interactive = true;
        if (!has_single_selection(app, view) || !require_exportfile_name(no_name_message))
            return false;
        const wxString path = add_extension(get_exportfile_name(), m_dialog.extension);
        if (!can_export(to_bytes(path).c_str()))
            return false;
        wxString error;
        if (export_function(app, view, path, get_window(), interactive, error))
            return true;
        wxMessageDialog dialog(get_top_panel(), error, wxT("Tovira"), wxOK | wxCENTRE);
        dialog.ShowModal();
        return false;
    });
}

bool Application_exporter::export_cgfx_surface(TSDK::ITovira* app, TSDK::IGraph_view* view,
                                               const Option_table& options)
{
    return at_border(false, [&] {
        constexpr bool interactive = true;
        if (!has_single_selection(app, view) || !require_exportfile_name(no_name_message))
            return false;
        const wxString path = add_extension(get_exportfile_name(), m_dialog.extension);
        if (!can_export(to_bytes(path).c_str()))
            return false;

        Export_objects objects;
        objects.take_node(view);
        if (!objects.node || !is_surface_kind(get_shader_kind(objects.node.get())))
            return false;
        objects.take_compiler(app);
        objects.take_preferences(app); // held like the rest, though none is read
        objects.take_errors();

        wxString unused_message; // only a call that is not interactive writes it
        Host_ref<TSDK::ICompilation_unit> unit =
            compile_group(view, app, objects.errors.get(), objects.node.get(),
                          RESOLVE_UNSIZED_ARRAYS, get_window(), interactive, unused_message);
        if (!unit)
            return true;

        Host_ref<TSDK::ICompiler_options> option_set = objects.create_options();
        set_options(option_set.get(), options);
        set_scene_ambient_option(option_set.get(), view);
        set_user_copyright_option(app, option_set.get());
        Host_ref<TSDK::IGenerated_shader> shader =
            adopt(generate_code(unit.get(), "FX", option_set.get()));
        write_code(path, shader.get());
        return true; // and the scope releases the shader, the options, the unit and the rest
    });
}

} // namespace TOVIRAEXPORT
} // namespace QZ
