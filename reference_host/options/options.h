// The two sets of options that steer a generation, as fields.
//
// compile_group gets a Group_options, generate a Text_options. The defaults stand beside the
// fields; they hold for options that were not set. An unknown option is a warning, a value that the
// option cannot have an error.
#ifndef REFERENCE_HOST_OPTIONS_OPTIONS_H
#define REFERENCE_HOST_OPTIONS_OPTIONS_H

#include "reference_host/document/light_kind.h"
#include "reference_host/options/generation.h"
#include "reference_host/shading/shading_state.h"

#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

struct Light_option {
    std::string name; // of the light's node
    Light_kind kind = Light_kind::directional;
    bool kind_given = false;     // otherwise the node's category decides
    double spread = 0.0;         // the full cone angle in degrees; 0: as the node says
    double distance_limit = 0.0; // in units of the scene; 0: none
};

struct Group_options {
    std::string shader_name;
    bool resolve_unsized_arrays = false;
    bool preserve_light_loop = false; // an unsized list of lights in place of `lights`
    bool ignore_literal = false;      // literal parameters are ordinary ones
    Space internal_space = Space::camera;
    std::vector<Light_option> lights;
    std::string environment; // names of nodes; empty: none
    std::string volume;
};

enum class Effect_format { cgfx, hlsl };

struct Text_options {
    Effect_format format = Effect_format::cgfx;
    std::string shader_name; // empty: the name of the node
    std::string shader_type = "surface";
    std::string vertex_shader_profile; // empty: the usual one of the format
    std::string fragment_shader_profile;
    std::string fx_header;
    std::string user_copyright;
    std::string annotation_map;
    std::string scene_ambient; // empty: no ambient light
    std::optional<Space> internal_space;
    Space vertex_stream_space = Space::object;
    bool screen_space_vertices = false;
    bool two_sided = false;
    bool face_forward = false;
    bool normals_face_forward = false; // means the same
    bool rotate_cube_map = false;
    bool flip_tex2d_v = false;
    bool flip_vs_texture_v = false;
    bool generate_texture_parameters = true;
    bool generate_samplers = true;
    bool generate_sampler_states = true;
    bool generate_sampler_default_address_mode = false;
    bool generate_umapped_annotations = false;
    bool alpha_transparency = false;
    bool use_oit = false;
    bool depth_test = true;
    bool depth_write = true;
    bool add_default_states = false;
    bool hlsl_sas_conformance = false;
    bool interfaces = false;
    bool light_interfaces_only = false;
    bool eval_volume = false;
    std::string light_interface_name = "Light";
    std::string light_list_name = "lights";
    std::string texture_resource_annotation = "ResourceName";
    std::string tangent_semantic = "TANGENT";
    std::string binormal_semantic = "BINORMAL";
    std::string texcoord_semantics[4] = {"TEXCOORD0", "TEXCOORD1", "TEXCOORD2", "TEXCOORD3"};
    int glsl_version = 130;
};

Group_options read_group_options(const Option_set& options, Diagnostics& diagnostics);
Text_options read_text_options(const Option_set& options, Diagnostics& diagnostics);

// Whether the shader is a pass that covers the screen: an environment or a lens.
bool covers_screen(const Text_options& options);

} // namespace reference_host

#endif
