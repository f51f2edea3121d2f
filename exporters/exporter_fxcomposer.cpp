#include "exporters/exporter_fxcomposer.h"

#include "export_common/code_output.h"
#include "export_common/compile_group.h"
#include "export_common/compiler_options.h"
#include "export_common/graph_queries.h"
#include "export_common/output_names.h"
#include "exporter_base/border.h"
#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "exporters/file_check_boxes.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

constexpr Compiler_option cgfx_options_before_flip[] = {
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
};

constexpr Compiler_option cgfx_options_after_flip[] = {
    {"alpha_transparency", "true"},
    {"add_default_states", "true"},
    {"internal_space", "world"},
};

constexpr Compiler_option hlsl_options_before_flip[] = {
    {"shader_type", "surface"},          {"format", "HLSL"},
    {"vertex_shader_profile", "vs_3_0"}, {"fragment_shader_profile", "ps_3_0"},
    {"generate_samplers", "true"},       {"generate_umapped_annotations", "false"},
    {"vs_binding_tangent", "TANGENT"},   {"vs_binding_binormal", "BINORMAL"},
    {"rotate_cube_map", "true"},
};

constexpr Compiler_option hlsl_options_after_flip[] = {
    {"alpha_transparency", "true"},
    {"add_default_states", "true"},
    {"internal_space", "world"},
    {"two_sided", "true"},
};

} // namespace

// One of the two files.
struct Exporter_fxcomposer::Output {
    Output(const Option_table& options_before_flip, const Option_table& options_after_flip,
           bool flip_by_default)
        : before_flip(options_before_flip),
          after_flip(options_after_flip),
          default_flip(flip_by_default)
    {
    }

    Option_table before_flip;
    Option_table after_flip;
    bool default_flip; // flip_tex2d_v, when the user prefers neither
    wxString path;
    bool confirmed = false; // the user lets it be written
};

BEGIN_EVENT_TABLE(Exporter_fxcomposer_eventhandler, wxEvtHandler)
END_EVENT_TABLE()

Exporter_fxcomposer_eventhandler::Exporter_fxcomposer_eventhandler(Exporter_fxcomposer* exporter)
    : m_exporter(exporter)
{
}

Exporter_fxcomposer::Exporter_fxcomposer()
    : Exporter_base("FX Composer (HLSL/CgFX)"), m_eventhandler(this)
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
    return "Cg and HLSL";
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

// Asks about both files before anything is compiled. False when none of them is to be written.
bool Exporter_fxcomposer::confirm_outputs(Output& cgfx, Output& hlsl)
{
    if (!m_export_cgfx && !m_export_hlsl) {
        show_error(wxT("Error: Neither CgFX nor HLSL FX file creation has been chosen."));
        return false;
    }
    cgfx.confirmed = m_export_cgfx && can_export(to_bytes(cgfx.path).c_str());
    hlsl.confirmed = m_export_hlsl && can_export(to_bytes(hlsl.path).c_str());
    return cgfx.confirmed || hlsl.confirmed;
}

bool Exporter_fxcomposer::run_export(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    constexpr bool resolve_unsized_arrays = true;
    constexpr bool preserve_light_loop = false;
    constexpr bool world_space = true;
    constexpr bool ignore_literal = false;
    constexpr bool interactive = true;

    if (!has_single_selection(app, view))
        return false;
    if (get_exportfile_name().empty()) {
        show_error(wxT("Error: no export file name is specified."));
        return false;
    }
    // What is flipped by default differs between the two files on purpose.
    Output cgfx{Option_table(cgfx_options_before_flip), Option_table(cgfx_options_after_flip),
                false};
    Output hlsl{Option_table(hlsl_options_before_flip), Option_table(hlsl_options_after_flip),
                true};
    if (!update_filename(get_exportfile_name(), cgfx.path, hlsl.path)) {
        show_error(wxT("Error: Illegal pathname.[") + get_exportfile_name() + wxT("]"));
        return false;
    }
    if (!confirm_outputs(cgfx, hlsl))
        return false;

    Export_objects objects;
    objects.take_node(view);
    if (!objects.node)
        return false;
    if (!is_surface(objects.node.get())) {
        const wxString kind = from_bytes(get_shader_kind(objects.node.get()));
        objects.node.release();
        show_error(wxT("Error: ") + kind + wxT(" shaders are not supported by this format."));
        return false;
    }
    objects.take_compiler(app);
    objects.take_preferences(app);
    objects.take_errors();
    wxString unused_message; // only a call that is not interactive writes it
    const Host_ref<TSDK::ICompilation_unit> unit =
        adopt(compile_group(view, app, objects.errors.get(), objects.node.get(),
                            resolve_unsized_arrays, preserve_light_loop, world_space,
                            ignore_literal, get_window(), interactive, unused_message));
    if (unit)
        write_outputs(app, view, objects, unit.get(), cgfx, hlsl);
    return true;
}

void Exporter_fxcomposer::write_outputs(TSDK::ITovira* app, TSDK::IGraph_view* view,
                                        const Export_objects& objects,
                                        TSDK::ICompilation_unit* unit, const Output& cgfx,
                                        const Output& hlsl)
{
    bool preferred_flip = false;
    const bool has_preference = objects.read_preference("cg_flip_tex2d_v", preferred_flip);
    const auto write_output = [&](const Output& output) {
        const Host_ref<TSDK::ICompiler_options> options = objects.create_options();
        set_options(options.get(), output.before_flip);
        set_option(options.get(), "flip_tex2d_v",
                   switch_text(has_preference ? preferred_flip : output.default_flip));
        set_options(options.get(), output.after_flip);
        set_scene_ambient_option(options.get(), view);
        set_user_copyright_option(app, options.get());
        Host_ref<TSDK::IGenerated_shader> shader = adopt(generate_code(unit, "FX", options.get()));
        if (output.confirmed)
            write_code(output.path, shader.get());
        else
            shader.abandon(); // on purpose: what is made for a refused file is not released
    };
    if (m_export_cgfx)
        write_output(cgfx);
    if (m_export_hlsl)
        write_output(hlsl);
}

} // namespace TOVIRAEXPORT
} // namespace QZ
