// The options of the generic exporter and the controls that edit them, one row for each control.
//
// Building a panel, filling it and reading it back are loops over the rows.
#ifndef EXPORTERS_GENERIC_CONTROLS_H
#define EXPORTERS_GENERIC_CONTROLS_H

#include "exporter_base/control_ids.h"

#include <cstddef>

#include <wx/string.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

// Each feeds the compiler option of its name, unless its comment names another.
struct Generic_options {
    wxString annotation_map;   // a file's name
    wxString vertex_profile;   // vertex_shader_profile
    wxString fragment_profile; // fragment_shader_profile
    int vertex_space;          // vertex_stream_space: 0 object, 1 world, 2 camera, 3 screen
    int internal_space;        // 0 world, 1 camera
    bool two_sided;
    bool face_forward;
    bool rotate_cube_map;
    bool flip_tex2d_v;
    bool generate_sampler_states;
    bool alpha_transparency;
    bool use_oit; // order-independent transparency
    bool depth_test;
    bool depth_write;
    bool hlsl_sas_conformance; // Microsoft SAS
    bool use_interfaces;       // interfaces; CgFX only
    bool eval_volume;          // CgFX only, and only together with the interfaces
    wxString glsl_version;
};

// The effect panels that show a control. An exporter without a known target has an effect panel,
// too, without what belongs to one of the two languages.
enum Generic_effect_panel { ON_CGFX = 1, ON_HLSL = 2, ON_OTHER = 4 };
constexpr int on_effect = ON_CGFX | ON_HLSL | ON_OTHER;

enum Generic_control_kind { CONTROL_TEXT, CONTROL_FILE, CONTROL_CHOICE, CONTROL_CHECK };

// The default value. Texts may have one for CgFX and one for all other targets.
struct Generic_default {
    const wxChar* cgfx_text;
    const wxChar* text;
    int number; // of a choice its index, of a check box 0 or 1
};

struct Generic_control {
    int id;
    Generic_control_kind kind;
    const char* option; // the window's name: that of the compiler option
    const wxChar* label;
    int effect_panels; // joined by |; 0: on none
    const wxChar* box; // the group box there; null: none
    int glsl_place;    // the place from the top of the GLSL panel, from 1 on; 0: not there
    Generic_default by_default;
    // What it edits: the one of its kind, the others are null.
    wxString Generic_options::*text;
    int Generic_options::*choice;
    bool Generic_options::*flag;
    const wxChar* const* entries; // of a choice, ended by null
    const wxChar* example;        // what a text field shows until it is filled
};

// ---- rows by kind ----

constexpr Generic_control text_row(int id, Generic_control_kind kind, const char* option,
                                   const wxChar* label, int panels, const wxChar* box,
                                   int glsl_place, const wxChar* cgfx_text, const wxChar* text,
                                   wxString Generic_options::*member, const wxChar* example)
{
    return {id,     kind,    option,  label,   panels, box, glsl_place, {cgfx_text, text, 0},
            member, nullptr, nullptr, nullptr, example};
}

constexpr Generic_control choice_row(int id, const char* option, const wxChar* label,
                                     const wxChar* box, const wxChar* const* entries, int index,
                                     int Generic_options::*member)
{
    return {id,      CONTROL_CHOICE, option,  label,   on_effect, box, 0, {nullptr, nullptr, index},
            nullptr, member,         nullptr, entries, nullptr};
}

constexpr Generic_control check_row(int id, const char* option, const wxChar* label, int panels,
                                    const wxChar* box, int glsl_place, bool checked,
                                    bool Generic_options::*member)
{
    return {id,      CONTROL_CHECK, option,     label,
            panels,  box,           glsl_place, {nullptr, nullptr, checked},
            nullptr, nullptr,       member,     nullptr,
            nullptr};
}

// ---- the rows, in the order of the effect panel ----

constexpr const wxChar* vertex_space_entries[] = {wxT("object"), wxT("world"), wxT("camera"),
                                                  wxT("screen"), nullptr};
constexpr const wxChar* internal_space_entries[] = {wxT("world"), wxT("camera"), nullptr};

// clang-format off
constexpr Generic_control generic_controls[] = {
    text_row(ID_ANNOTATION_MAP_TEXT, CONTROL_FILE, "annotation_map", wxT("Annotation map file:"),
             on_effect, nullptr, 0, wxT("default.axml"), wxT("default.axml"),
             &Generic_options::annotation_map, wxT("")),

    text_row(ID_VERTEX_PROFILE, CONTROL_TEXT, "vertex_shader_profile",
             wxT("Vertex shader profile:"), on_effect, wxT("Profiles"), 0, wxT("vp40"),
             wxT("vs_3_0"), &Generic_options::vertex_profile, wxT("vs_4_0")),
    text_row(ID_FRAGMENT_PROFILE, CONTROL_TEXT, "fragment_shader_profile",
             wxT("Fragment shader profile:"), on_effect, wxT("Profiles"), 0, wxT("fp40"),
             wxT("ps_3_0"), &Generic_options::fragment_profile, wxT("ps_4_0")),

    choice_row(ID_VERTEX_SPACE, "vertex_stream_space", wxT("Vertex coordinate space:"),
               wxT("Coordinate systems"), vertex_space_entries, 0, &Generic_options::vertex_space),
    choice_row(ID_INTERNAL_SPACE, "internal_space", wxT("Internal space:"),
               wxT("Coordinate systems"), internal_space_entries, 1,
               &Generic_options::internal_space),

    check_row(ID_TWO_SIDED, "two_sided", wxT("Two sided"), ON_CGFX, wxT("Normals"), 4,
              false, &Generic_options::two_sided),
    check_row(ID_FACE_FORWARD, "face_forward", wxT("Face forward"), on_effect, wxT("Normals"), 0,
              false, &Generic_options::face_forward),

    check_row(ID_ROTATE_CUBE_MAP, "rotate_cube_map", wxT("Rotate cube map"), on_effect,
              wxT("Texturing"), 0, false, &Generic_options::rotate_cube_map),
    check_row(ID_FLIP_TEX2D_V, "flip_tex2d_v", wxT("Vertically flip tex2d lookup"), on_effect,
              wxT("Texturing"), 0, false, &Generic_options::flip_tex2d_v),
    check_row(ID_GENERATE_SAMPLER_STATES, "generate_sampler_states",
              wxT("Generate sampler states"), on_effect, wxT("Texturing"), 0, true,
              &Generic_options::generate_sampler_states),

    check_row(ID_ALPHA_TRANSPARENCY, "alpha_transparency", wxT("Alpha transparency"),
              on_effect, wxT("Transparency"), 2, false,
              &Generic_options::alpha_transparency),
    check_row(ID_USE_OIT, "use_oit", wxT("Order independent transparency"), on_effect,
              wxT("Transparency"), 3, false, &Generic_options::use_oit),

    check_row(ID_DEPTH_TEST, "depth_test", wxT("Depth test"), on_effect, wxT("Depth buffer"), 0,
              true, &Generic_options::depth_test),
    check_row(ID_DEPTH_WRITE, "depth_write", wxT("Depth write"), on_effect, wxT("Depth buffer"), 0,
              true, &Generic_options::depth_write),

    check_row(ID_HLSL_SAS_CONFORMANCE, "hlsl_sas_conformance", wxT("Enabled"), ON_HLSL,
              wxT("Microsoft SAS"), 0, false, &Generic_options::hlsl_sas_conformance),

    check_row(ID_USE_INTERFACES, "interfaces", wxT("Use interfaces"), ON_CGFX, wxT("Interfaces"),
              0, false, &Generic_options::use_interfaces),
    check_row(ID_EVAL_VOLUME, "eval_volume", wxT("Evaluate volume shader"), ON_CGFX,
              wxT("Interfaces"), 0, false, &Generic_options::eval_volume),

    text_row(ID_GLSL_VERSION, CONTROL_TEXT, "glsl_version", wxT("GLSL version:"), 0, nullptr, 1,
             wxT("130"), wxT("130"), &Generic_options::glsl_version, wxT("")),
};
// clang-format on

constexpr size_t generic_control_count = sizeof generic_controls / sizeof generic_controls[0];

// The index of a control's row.
constexpr size_t generic_control_index(int id)
{
    size_t index = 0;
    while (generic_controls[index].id != id)
        ++index;
    return index;
}

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
