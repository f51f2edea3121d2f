#include "reference_host/document/node_rows.h"

#include <iterator>

namespace reference_host
{
namespace
{

using namespace row_types;

constexpr const char* image_inputs =
    "filename file, string layer, T default, vector2 texcoord = texcoord, "
    "string uaddressmode = \"periodic\", string vaddressmode = \"periodic\", "
    "string filtertype = \"linear\", string framerange, integer frameoffset, "
    "string frameendaction = \"constant\"";
constexpr const char* tiled_inputs =
    "filename file, string layer, T default, vector2 texcoord = texcoord, "
    "vector2 uvtiling = 1 1, vector2 uvoffset = 0 0, vector2 realworldimagesize = 1 1, "
    "vector2 realworldtilesize = 1 1, string filtertype = \"linear\", string framerange, "
    "integer frameoffset, string frameendaction = \"constant\"";

constexpr const char* hextiled_inputs =
    "filename file, T default, vector2 texcoord = texcoord, vector2 tiling = 1 1, "
    "float rotation = 1, vector2 rotationrange = 0 360, float scale = 1, "
    "vector2 scalerange = 0.5 2, float offset = 1, vector2 offsetrange = 0 1, "
    "float falloff = 0.5 [0 1], float falloffcontrast = 0.5 [0 1], "
    "color3 lumacoeffs = 0.2722287 0.6740818 0.0536895";
constexpr const char* hextiled_normal_inputs =
    "filename file, vector3 default = 0.5 0.5 1, vector2 texcoord = texcoord, "
    "vector2 tiling = 1 1, float rotation = 1, vector2 rotationrange = 0 360, float scale = 1, "
    "vector2 scalerange = 0.5 2, float offset = 1, vector2 offsetrange = 0 1, "
    "float falloff = 0.5 [0 1], float strength = 1, boolean flip_g = false, "
    "vector3 normal = normal, vector3 tangent = tangent, vector3 bitangent = bitangent";
constexpr const char* ramp_inputs =
    "vector2 texcoord = texcoord, integer type = 0, integer interpolation = 1, "
    "integer num_intervals = 2, "
    "float interval1 = 0, color4 color1 = 0 0 0 1, float interval2 = 1, color4 color2 = 1, "
    "float interval3 = 1, color4 color3 = 1, float interval4 = 1, color4 color4 = 1, "
    "float interval5 = 1, color4 color5 = 1, float interval6 = 1, color4 color6 = 1, "
    "float interval7 = 1, color4 color7 = 1, float interval8 = 1, color4 color8 = 1, "
    "float interval9 = 1, color4 color9 = 1, float interval10 = 1, color4 color10 = 1";
constexpr const char* ramp_output =
    "color4 out = ramp_10(type, texcoord, interpolation, num_intervals, "
    "interval1, color1, interval2, color2, interval3, color3, interval4, color4, "
    "interval5, color5, interval6, color6, interval7, color7, interval8, color8, "
    "interval9, color9, interval10, color10)";

// The three images that overlap at a point, and their shares.
#define HEX_TEXEL(number)                                                                          \
    "let vector3 corner" #number " = hex_corner(place, " #number ".0); "                           \
    "let T texel" #number " = image(file, hex_place(place, corner" #number                         \
    ", rotation, rotationrange, scale, scalerange, offset, offsetrange), \"periodic\", "           \
    "\"periodic\", default); "
#define HEX_TEXELS                                                                                 \
    "let vector2 place = texcoord * tiling; " HEX_TEXEL(1) HEX_TEXEL(2)                            \
        HEX_TEXEL(3) "let vector3 shares = float3(corner1.z, corner2.z, corner3.z); "

constexpr Node_row rows[] = {
    {"image", numbers, image_inputs,
     "T out = image(file, texcoord, uaddressmode, vaddressmode, default)"},
    {"tiledimage", numbers, tiled_inputs,
     "T out = image(file, (texcoord * uvtiling - uvoffset) / realworldimagesize * "
     "realworldtilesize, \"periodic\", \"periodic\", default)"},

    {"hextiledimage", colors, hextiled_inputs,
     HEX_TEXELS
     "let vector3 luminances = float3(dot(texel1.xyz, lumacoeffs), dot(texel2.xyz, lumacoeffs), "
     "dot(texel3.xyz, lumacoeffs)); "
     "T out = mix_corners(texel1, texel2, texel3, "
     "hex_contrast(hex_weights(shares, falloff), luminances, falloffcontrast))"},
    {"hextilednormalmap", "vector3", hextiled_normal_inputs,
     HEX_TEXELS
     "let vector3 normal1 = hex_normal(texel1, hex_angle(corner1, rotation, rotationrange), "
     "flip_g); "
     "let vector3 normal2 = hex_normal(texel2, hex_angle(corner2, rotation, rotationrange), "
     "flip_g); "
     "let vector3 normal3 = hex_normal(texel3, hex_angle(corner3, rotation, rotationrange), "
     "flip_g); "
     "vector3 out = normal_map(mix_corners(normal1, normal2, normal3, "
     "hex_weights(shares, falloff)), float2(strength), normal, tangent, bitangent)"},
    {"latlongimage", "", "filename file, color3 default, vector3 viewdir, float rotation",
     "color3 out = image(file, latlong_place(viewdir, rotation), \"periodic\", \"periodic\", "
     "default)"},
    {"triplanarprojection", numbers,
     "filename filex, filename filey, filename filez, string layerx, string layery, "
     "string layerz, T default, vector3 position = position, vector3 normal = object_normal, "
     "integer upaxis = 2, float blend = 1 [0 1], string filtertype = \"linear\", "
     "string framerange, integer frameoffset, string frameendaction = \"constant\"",
     "T out = mix_corners("
     "image(filex, upaxis == 2 ? position.yz : position.zy, \"periodic\", \"periodic\", default), "
     "image(filey, position.xz, \"periodic\", \"periodic\", default), "
     "image(filez, upaxis == 0 ? position.yx : position.xy, \"periodic\", \"periodic\", default), "
     "triplanar_weights(normal, blend))"},

    {"blur", numbers, "T in, float size, string filtertype = \"box\"",
     "T out = refused(\"it reads its input at other places, which takes several passes\")"},

    {"ramp", "", ramp_inputs, ramp_output},
    {"ramp_gradient", "",
     "float x [0 1], float interval1 = 0 [0 1], float interval2 = 1 [0 1], "
     "color4 color1 = 0 0 0 1, color4 color2 = 1, integer interpolation = 1, "
     "color4 prev_color = 0 0 0 1, integer interval_num = 1, integer num_intervals = 2",
     "color4 out = interval_num < num_intervals ? "
     "ramp_step(x, interval1, interval2, color1, color2, interpolation, prev_color) : prev_color"},
    // The left is u = 0, the top v = 1.
    {"ramplr", numbers, "T valuel, T valuer, vector2 texcoord = texcoord",
     "T out = mix(valuel, valuer, saturate(texcoord.x))"},
    {"ramptb", numbers, "T valuet, T valueb, vector2 texcoord = texcoord",
     "T out = mix(valueb, valuet, saturate(texcoord.y))"},
    {"ramp4", numbers, "T valuetl, T valuetr, T valuebl, T valuebr, vector2 texcoord = texcoord",
     "let vector2 place = saturate(texcoord); "
     "T out = mix(mix(valuebl, valuebr, place.x), mix(valuetl, valuetr, place.x), place.y)"},
    {"splitlr", numbers, "T valuel, T valuer, float center = 0.5, vector2 texcoord = texcoord",
     "T out = mix(valuel, valuer, anti_aliased_step(center, texcoord.x))"},
    {"splittb", numbers, "T valuet, T valueb, float center = 0.5, vector2 texcoord = texcoord",
     "T out = mix(valueb, valuet, anti_aliased_step(center, texcoord.y))"},
};

#undef HEX_TEXELS
#undef HEX_TEXEL

} // namespace

Node_rows texture_rows()
{
    return {rows, std::size(rows)};
}

} // namespace reference_host
