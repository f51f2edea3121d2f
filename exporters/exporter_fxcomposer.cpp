#include "exporters/exporter_fxcomposer.h"

#include "export_common/code_output.h"
#include "export_common/compile_group.h"
#include "export_common/compiler_options.h"
#include "export_common/export_objects.h"
#include "export_common/graph_queries.h"
#include "export_common/output_names.h"
#include "exporter_base/border.h"
#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "exporters/exporter_table.h"
#include "exporters/file_check_boxes.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

std::optional<std::string> flip_tex2d_v(const bool& flip)
{
    return switch_text(flip);
}

// Both tables are computed from the preference.
constexpr Option_row<bool> cgfx_options[] = {
    {"shader_type", "surface"},
    {"format", "CgFX"},
    {"vertex_shader_profile", "vp40"},
    {"fragment_shader_profile", "fp40"},
    {"two_sided", "true"},
    {"eval_volume", "false"},
    {"generate_samplers", "true"},
    {"generate_umapped_annotations", "false"},
    {"vs_binding_tangent", "TANGENT"},
    {"vs_binding_binormal", "BINORMAL"},
    {"rotate_cube_map", "true"},
    {"flip_tex2d_v", flip_tex2d_v},
    {"alpha_transparency", "true"},
    {"add_default_states", "true"},
    {"internal_space", "world"},
};

constexpr Option_row<bool> hlsl_options[] = {
    {"shader_type", "surface"},          {"format", "HLSL"},
    {"vertex_shader_profile", "vs_3_0"}, {"fragment_shader_profile", "ps_3_0"},
    {"generate_samplers", "true"},       {"generate_umapped_annotations", "false"},
    {"vs_binding_tangent", "TANGENT"},   {"vs_binding_binormal", "BINORMAL"},
    {"rotate_cube_map", "true"},         {"flip_tex2d_v", flip_tex2d_v},
    {"alpha_transparency", "true"},      {"add_default_states", "true"},
    {"internal_space", "world"},         {"two_sided", "true"},
};

// Completes the options of one of the two files, generates its text and, where the user lets it be
// written, writes it.
void generate_and_write(TSDK::ITovira* app, TSDK::IGraph_view* view, TSDK::ICompilation_unit* unit,
                        TSDK::ICompiler_options* options, bool confirmed, const wxString& path)
{
    set_scene_ambient_option(options, view);
    set_user_copyright_option(app, options);
    Host_ref<TSDK::IGenerated_shader> shader = adopt(generate_code(unit, "FX", options));
    if (confirmed)
        write_code(path, shader.get());
    else
        shader.abandon(); // on purpose: what is made for a refused file is not released
}

} // namespace

BEGIN_EVENT_TABLE(Exporter_fxcomposer_eventhandler, wxEvtHandler)
END_EVENT_TABLE()

Exporter_fxcomposer_eventhandler::Exporter_fxcomposer_eventhandler(Exporter_fxcomposer* exporter)
    : m_exporter(exporter)
{
}

Exporter_fxcomposer::Exporter_fxcomposer()
    : Exporter_base(facts_of<Exporter_fxcomposer>().name), m_eventhandler(this)
{
}

Exporter_fxcomposer::~Exporter_fxcomposer()
{
    detach_from_panel();
}

// The chooser adds no extension: update_filename makes both.
void Exporter_fxcomposer::initialize()
{
    register_exportfile_setting();
    register_chooser_properties(wxT("exportfile"),
                                {wxT("FX Composer files (*.fx;*.cgfx)|*.fx;*.cgfx|"),
                                 {wxT("*")},
                                 wxT("Choose a FX Composer file"),
                                 wxT("Save a FX Composer file"),
                                 false});
}

const char* Exporter_fxcomposer::get_language() const
{
    return facts_of<Exporter_fxcomposer>().language;
}

int Exporter_fxcomposer::create_window(wxWindow* parent, int width, TSDK::IGraph_view*)
{
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    create_common_ui(sizer);
    parent->PushEventHandler(&m_eventhandler);
    const File_check_box_pair boxes =
        add_file_check_boxes(parent, sizer, get_os_specific_font(1, 90),
                             {ID_FXCOMPOSER_HLSL, wxT("Export HLSL FX file")},
                             {ID_FXCOMPOSER_CGFX, wxT("Export CgFX file")});
    m_hlsl_checkbox = boxes.first;
    m_cgfx_checkbox = boxes.second;
    m_cgfx_checkbox->SetValue(m_export_cgfx);
    m_hlsl_checkbox->SetValue(m_export_hlsl);
    return lay_out_panel(parent, sizer, width);
}

void Exporter_fxcomposer::window_closing(wxWindow* parent, bool cancelled)
{
    parent->PopEventHandler(false);
    if (cancelled)
        return;
    m_export_cgfx = m_cgfx_checkbox->GetValue();
    m_export_hlsl = m_hlsl_checkbox->GetValue();
}

bool Exporter_fxcomposer::update_filename(const wxString& chosen, wxString& cgfx_name,
                                          wxString& fx_name)
{
    const Output_stem stem = split_output_name(chosen, {wxT("fx"), wxT("cgfx")});
    cgfx_name = stem.with(wxT(".cgfx"));
    fx_name = stem.with(wxT(".fx"));
    return true;
}

bool Exporter_fxcomposer::export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    return at_border(false, [&] { return run_export(app, view); });
}

bool Exporter_fxcomposer::run_export(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    constexpr bool interactive = true;
    if (!has_single_selection(app, view) ||
        !require_exportfile_name(wxT("Error: no export file name is specified.")))
        return false;
    wxString cgfx_path;
    wxString fx_path;
    if (!update_filename(get_exportfile_name(), cgfx_path, fx_path)) {
        show_error(wxT("Error: Illegal pathname.[") + get_exportfile_name() + wxT("]"));
        return false;
    }
    if (!m_export_cgfx && !m_export_hlsl) {
        show_error(wxT("Error: Neither CgFX nor HLSL FX file creation has been chosen."));
        return false;
    }
    // Both files are asked about before anything is compiled.
    const bool cgfx_ok = m_export_cgfx && can_export(to_bytes(cgfx_path).c_str());
    const bool hlsl_ok = m_export_hlsl && can_export(to_bytes(fx_path).c_str());
    if (!cgfx_ok && !hlsl_ok)
        return false;

    Export_objects objects;
    objects.take_node(view);
    if (!objects.node)
        return false;
    const char* kind = get_shader_kind(objects.node.get());
    if (!is_surface_kind(kind)) {
        const wxString kind_text = from_bytes(kind); // before the node goes
        objects.node.release();
        show_error(wxT("Error: ") + kind_text + wxT(" shaders are not supported by this format."));
        return false;
    }
    objects.take_compiler(app);
    objects.take_preferences(app);
    objects.take_errors();
    wxString unused_message; // only a call that is not interactive writes it
    const Host_ref<TSDK::ICompilation_unit> unit = compile_group(
        view, app, objects.errors.get(), objects.node.get(), RESOLVE_UNSIZED_ARRAYS | WORLD_SPACE,
        get_window(), interactive, unused_message);
    if (!unit)
        return true;

    // Without the preference the HLSL file is flipped and the CgFX file is not, on purpose.
    bool flip = false;
    const bool found = objects.read_preference("cg_flip_tex2d_v", flip);
    if (m_export_cgfx) {
        const Host_ref<TSDK::ICompiler_options> options = objects.create_options();
        set_options(options.get(), cgfx_options, found && flip);
        generate_and_write(app, view, unit.get(), options.get(), cgfx_ok, cgfx_path);
    }
    if (m_export_hlsl) {
        const Host_ref<TSDK::ICompiler_options> options = objects.create_options();
        set_options(options.get(), hlsl_options, !found || flip);
        generate_and_write(app, view, unit.get(), options.get(), hlsl_ok, fx_path);
    }
    return true;
}

} // namespace TOVIRAEXPORT
} // namespace QZ
