#include "reference_host/document/node_rows.h"

#include <iterator>

namespace reference_host
{
namespace
{

using namespace row_types;

constexpr const char* spaces = "vector3 in, string fromspace, string tospace";

// Directions without a source are those of the shading itself, in its internal space; a node that
// asks for world space gets world space.
constexpr Node_row rows[] = {
    {"position", "", "string space = \"object\"",
     "vector3 out = space == \"world\" ? world_position : object_position"},
    {"normal", "", "string space = \"object\"",
     "vector3 out = space == \"world\" ? world_normal : object_normal"},
    {"tangent", "", "string space = \"object\", integer index",
     "vector3 out = space == \"world\" ? world_tangent : object_tangent"},
    {"bitangent", "", "string space = \"object\", integer index",
     "vector3 out = space == \"world\" ? world_bitangent : object_bitangent"},
    {"viewdirection", "", "string space = \"world\"",
     "vector3 out = space == \"world\" ? world_viewdirection : "
     "normalize(host_transform(float3x3(world_inverse), world_viewdirection))"},
    {"texcoord", "", "integer index", "vector2 out = texture_set(index)"},
    {"texcoord", "", "integer index", "vector3 out = float3(texture_set(index), 0.0)"},
    {"geomcolor", "", "integer index", "float out = vertex_color.x"},
    {"geomcolor", "", "integer index", "color3 out = vertex_color.xyz"},
    {"geomcolor", "", "integer index", "color4 out = vertex_color"},
    {"geompropvalue", numbers, "string geomprop, T default",
     "T out = vertex_property(geomprop, default)"},
    {"geompropvalue", "integer boolean", "string geomprop, T default",
     "T out = vertex_property(geomprop, default)"},
    {"geompropvalueuniform", "string filename", "string geomprop, T default", "T out = default"},
    {"time", "", "float fps = 24", "float out = time"},
    {"frame", "", "", "float out = time * 24.0"},

    {"transformpoint", "", spaces,
     "vector3 out = transform_names(fromspace, tospace) == \"to world\" ? "
     "host_transform(world, float4(in, 1.0)).xyz : "
     "(transform_names(fromspace, tospace) == \"to object\" ? "
     "host_transform(world_inverse, float4(in, 1.0)).xyz : in)"},
    {"transformvector", "", spaces,
     "vector3 out = transform_names(fromspace, tospace) == \"to world\" ? "
     "host_transform(float3x3(world), in) : "
     "(transform_names(fromspace, tospace) == \"to object\" ? "
     "host_transform(float3x3(world_inverse), in) : in)"},
    {"transformnormal", "", "vector3 in = 0 0 1, string fromspace, string tospace",
     "vector3 out = transform_names(fromspace, tospace) == \"to world\" ? "
     "normalize(host_transform(float3x3(world_it), in)) : "
     "(transform_names(fromspace, tospace) == \"to object\" ? "
     "normalize(host_untransform(float3x3(world), in)) : in)"},

    {"place2d", "",
     "vector2 texcoord = texcoord, vector2 pivot = 0 0, vector2 scale = 1 1, float rotate = 0, "
     "vector2 offset = 0 0, integer operationorder = 0",
     "vector2 out = operationorder == 0 ? "
     "rotate_2d((texcoord - pivot) / scale, rotate) - offset + pivot : "
     "rotate_2d(texcoord - pivot - offset, rotate) / scale + pivot"},
    {"rotate2d", "", "vector2 in, float amount", "vector2 out = rotate_2d(in, amount)"},
    {"rotate3d", "", "vector3 in, float amount, vector3 axis = 0 1 0",
     "vector3 out = rotate_3d(in, amount, axis)"},

    {"normalmap", "",
     "vector3 in = 0.5 0.5 1, float|vector2 scale = 1, vector3 normal = normal, "
     "vector3 tangent = tangent, vector3 bitangent = bitangent, string space = \"tangent\"",
     "vector3 out = space == \"object\" ? normalize(in * 2.0 - 1.0) : "
     "normal_map(in, float2(scale), normal, tangent, bitangent)"},
    {"heighttonormal", "", "float in, float scale = 1, vector2 texcoord = texcoord",
     "vector3 out = height_to_normal(in, scale, texcoord)"},
    {"bump", "",
     "float height, float scale = 1, vector3 normal = normal, vector3 tangent = tangent, "
     "vector3 bitangent = bitangent",
     "vector3 out = normal_map(height_to_normal(height, scale, texcoord), float2(1.0), normal, "
     "tangent, bitangent)"},

    {"facingratio", "",
     "vector3 viewdirection = viewdirection, vector3 normal = normal, boolean faceforward = true, "
     "boolean invert = false",
     "float out = invert ? "
     "1.0 - (faceforward ? abs(dot(viewdirection, normal)) : -dot(viewdirection, normal)) : "
     "(faceforward ? abs(dot(viewdirection, normal)) : -dot(viewdirection, normal))"},
    {"gooch_shade", "",
     "color3 warm_color = 0.8 0.8 0.7, color3 cool_color = 0.3 0.3 0.8, "
     "float specular_intensity = 1, float shininess = 64, vector3 light_direction = 1 -0.5 -0.5",
     "color3 out = gooch_shade(warm_color, cool_color, specular_intensity, shininess, "
     "normalize(light_direction), world_normal, world_viewdirection)"},
};

} // namespace

Node_rows geometry_rows()
{
    return {rows, std::size(rows)};
}

} // namespace reference_host
