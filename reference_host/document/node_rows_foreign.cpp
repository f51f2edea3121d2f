#include "reference_host/document/node_rows.h"

#include <iterator>

namespace reference_host
{
namespace
{

// Texture coordinates of glTF, whose v runs from the top.
#define GLTF_PLACEMENT                                                                             \
    "vector2 texcoord = texcoord, vector2 pivot = 0 1, vector2 scale = 1 1, float rotate = 0, "    \
    "vector2 offset = 0 0, integer operationorder = 0, string uaddressmode = \"periodic\", "       \
    "string vaddressmode = \"periodic\", string filtertype = \"linear\""
#define GLTF_IMAGE                                                                                 \
    "image(file, gltf_place(texcoord, pivot, scale, rotate, offset), uaddressmode, vaddressmode, " \
    "default)"

constexpr Node_row rows[] = {
    {"gltf_image", "float color3 color4", "filename file, T factor = 1, T default, " GLTF_PLACEMENT,
     "T out = factor * " GLTF_IMAGE},
    {"gltf_image", "vector3", "filename file, T default, " GLTF_PLACEMENT, "T out = " GLTF_IMAGE},
    {"gltf_colorimage", "",
     "filename file, color4 default, " GLTF_PLACEMENT ", color4 color = 1, color4 geomcolor = 1",
     "let color4 texel = color * color_" GLTF_IMAGE " * geomcolor; "
     "color3 outcolor = texel.xyz; float outa = texel.w"},
    {"gltf_normalmap", "", "filename file, vector3 default = 0.5 0.5 1, " GLTF_PLACEMENT,
     "vector3 out = normal_map(" GLTF_IMAGE ", float2(1.0), normal, tangent, bitangent)"},
    {"gltf_iridescence_thickness", "",
     "filename file, vector3 default, " GLTF_PLACEMENT
     ", float thicknessMin = 100, float thicknessMax = 400",
     "float out = mix(thicknessMax, thicknessMin, " GLTF_IMAGE ".y)"},
    {"gltf_anisotropy_image", "",
     "filename file, vector3 default = 1 0.5 1, float anisotropy_strength = 1, "
     "float anisotropy_rotation = 0, " GLTF_PLACEMENT,
     "float anisotropy_strength_out = anisotropy_strength * " GLTF_IMAGE ".z; "
     "float anisotropy_rotation_out = anisotropy_rotation"},

    {"UsdUVTexture", "",
     "filename file, vector2 st = texcoord, string wrapS = \"periodic\", "
     "string wrapT = \"periodic\", color4|vector4 fallback = 0 0 0 1, color4|vector4 scale = 1, "
     "color4|vector4 bias = 0, string sourceColorSpace = \"auto\"",
     "let color4 texel = color_image(file, st, wrapS, wrapT, fallback) * scale + bias; "
     "float r = texel.x; float g = texel.y; float b = texel.z; float a = texel.w; "
     "color3 rgb = texel.xyz; color4 rgba = texel"},
    {"UsdPrimvarReader", "float vector2 vector3 vector4 integer boolean string",
     "string varname, T fallback", "T out = vertex_property(varname, fallback)"},
    {"UsdTransform2d", "",
     "vector2 in = texcoord, float rotation = 0, vector2 scale = 1 1, vector2 translation = 0 0",
     "vector2 out = rotate_2d(in * scale, -rotation) + translation"},
};

#undef GLTF_PLACEMENT
#undef GLTF_IMAGE

} // namespace

Node_rows foreign_rows()
{
    return {rows, std::size(rows)};
}

} // namespace reference_host
