#include "exporters/exporter_xsi.h"

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

// Softimage passes the tangent in the first colour stream. The texture coordinates stay at the
// compiler's defaults.
constexpr Option_row<> xsi_options[] = {
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

Exporter_xsi::Exporter_xsi() : Application_exporter(facts_of<Exporter_xsi>(), dialog) {}

bool Exporter_xsi::export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    return export_cgfx_surface(app, view, xsi_options);
}

} // namespace TOVIRAEXPORT
} // namespace QZ
