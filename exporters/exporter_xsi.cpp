#include "exporters/exporter_xsi.h"

#include "exporter_base/border.h"
#include "exporters/application_export.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

constexpr Application_dialog dialog = {
    wxT("XSI CgFX (*.cgfx)|*.cgfx|"),
    wxT("cgfx"),
    wxT("Choose a XSI CgFX file"),
    wxT("Save a XSI CgFX file"),
};

// Softimage brings the tangent in the first colour stream. The texture coordinates stay at the
// compiler's defaults.
constexpr Compiler_option xsi_options[] = {
    {"shader_type", "surface"},
    {"format", "CgFX"},
    {"vertex_shader_profile", "vp40"},
    {"fragment_shader_profile", "fp40"},
    {"two_sided", "false"},
    {"eval_volume", "false"},
    {"generate_samplers", "true"},
    {"generate_umapped_annotations", "false"},
    {"vs_binding_tangent", "COLOR0"},
    {"vs_binding_binormal", "BINORMAL"},
    {"rotate_cube_map", "false"},
    {"flip_tex2d_v", "false"},
    {"alpha_transparency", "true"},
    {"add_default_states", "true"},
    {"internal_space", "world"},
};

} // namespace

Exporter_xsi::Exporter_xsi() : Exporter_base("Autodesk Softimage (CgFX)") {}

bool Exporter_xsi::export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    return at_border(
        false, [&] { return export_cgfx_surface(*this, app, view, Option_table(xsi_options)); });
}

int Exporter_xsi::create_window(wxWindow* parent, int width, TSDK::IGraph_view*)
{
    return create_exportfile_panel(parent, width);
}

void Exporter_xsi::initialize()
{
    register_exportfile_setting();
    register_chooser_properties(wxT("exportfile"), chooser_properties(dialog));
}

const char* Exporter_xsi::get_language() const
{
    return "CgFX";
}

} // namespace TOVIRAEXPORT
} // namespace QZ
