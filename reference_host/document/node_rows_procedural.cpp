#include "reference_host/document/node_rows.h"

#include <iterator>

namespace reference_host
{
namespace
{

// The amplitude has the output's type or is one number; colours take the vector of their size.
#define NOISE_INPUTS(amplitude, place) amplitude " amplitude = 1, float pivot = 0, " place
#define FRACTAL_INPUTS(amplitude, place)                                                           \
    amplitude " amplitude = 1, integer octaves = 3 [1 8], float lacunarity = 2, "                  \
              "float diminish = 0.5, " place
#define ON_SURFACE "vector2 texcoord = texcoord"
#define IN_SPACE "vector3 position = position"

constexpr const char* worley_2d_inputs =
    "vector2 texcoord = texcoord, float jitter = 1 [0 1], integer style = 0";
constexpr const char* worley_3d_inputs =
    "vector3 position = position, float jitter = 1 [0 1], integer style = 0";
constexpr const char* unified_2d_inputs =
    "vector2 texcoord = texcoord, vector2 freq = 1 1, vector2 offset = 0 0, "
    "float jitter = 1 [0 1], float outmin = 0, float outmax = 1, boolean clampoutput = true, "
    "integer octaves = 3 [1 8], float lacunarity = 2, float diminish = 0.5, integer type = 0, "
    "integer style = 0";
constexpr const char* unified_3d_inputs =
    "vector3 position = position, vector3 freq = 1 1 1, vector3 offset = 0 0 0, "
    "float jitter = 1 [0 1], float outmin = 0, float outmax = 1, boolean clampoutput = true, "
    "integer octaves = 3 [1 8], float lacunarity = 2, float diminish = 0.5, integer type = 0, "
    "integer style = 0";
constexpr const char* random_color_inputs =
    "float|integer in, float huelow = 0, float huehigh = 1, float saturationlow = 0.825, "
    "float saturationhigh = 1, float brightnesslow = 1, float brightnesshigh = 1, integer seed";
constexpr const char* shape_inputs =
    "vector2 texcoord = texcoord, vector2 center = 0 0, float radius = 0.5";
constexpr const char* line_pattern_inputs =
    "vector2 texcoord = texcoord, vector2 uvtiling = 1 1, vector2 uvoffset = 0 0, "
    "float thickness = 0.05, boolean staggered = false";
constexpr const char* shape_pattern_inputs =
    "vector2 texcoord = texcoord, vector2 uvtiling = 1 1, vector2 uvoffset = 0 0, "
    "float size = 0.5, boolean staggered = false";

constexpr Node_row rows[] = {
    {"noise2d", "float", NOISE_INPUTS("float", ON_SURFACE),
     "T out = amplitude * noise_2d(texcoord) + pivot"},
    {"noise2d", "vector2 vector3 vector4", NOISE_INPUTS("T|float", ON_SURFACE),
     "T out = amplitude * T(noises_2d(texcoord)) + pivot"},
    {"noise2d", "color3", NOISE_INPUTS("vector3|float", ON_SURFACE),
     "T out = amplitude * T(noises_2d(texcoord)) + pivot"},
    {"noise2d", "color4", NOISE_INPUTS("vector4|float", ON_SURFACE),
     "T out = amplitude * T(noises_2d(texcoord)) + pivot"},
    {"noise3d", "float", NOISE_INPUTS("float", IN_SPACE),
     "T out = amplitude * noise_3d(position) + pivot"},
    {"noise3d", "vector2 vector3 vector4", NOISE_INPUTS("T|float", IN_SPACE),
     "T out = amplitude * T(noises_3d(position)) + pivot"},
    {"noise3d", "color3", NOISE_INPUTS("vector3|float", IN_SPACE),
     "T out = amplitude * T(noises_3d(position)) + pivot"},
    {"noise3d", "color4", NOISE_INPUTS("vector4|float", IN_SPACE),
     "T out = amplitude * T(noises_3d(position)) + pivot"},
    {"fractal2d", "float", FRACTAL_INPUTS("float", ON_SURFACE),
     "T out = amplitude * fractal_2d(texcoord, octaves, lacunarity, diminish)"},
    {"fractal2d", "vector2 vector3 vector4", FRACTAL_INPUTS("T|float", ON_SURFACE),
     "T out = amplitude * T(fractals_2d(texcoord, octaves, lacunarity, diminish))"},
    {"fractal2d", "color3", FRACTAL_INPUTS("vector3|float", ON_SURFACE),
     "T out = amplitude * T(fractals_2d(texcoord, octaves, lacunarity, diminish))"},
    {"fractal2d", "color4", FRACTAL_INPUTS("vector4|float", ON_SURFACE),
     "T out = amplitude * T(fractals_2d(texcoord, octaves, lacunarity, diminish))"},
    {"fractal3d", "float", FRACTAL_INPUTS("float", IN_SPACE),
     "T out = amplitude * fractal_3d(position, octaves, lacunarity, diminish)"},
    {"fractal3d", "vector2 vector3 vector4", FRACTAL_INPUTS("T|float", IN_SPACE),
     "T out = amplitude * T(fractals_3d(position, octaves, lacunarity, diminish))"},
    {"fractal3d", "color3", FRACTAL_INPUTS("vector3|float", IN_SPACE),
     "T out = amplitude * T(fractals_3d(position, octaves, lacunarity, diminish))"},
    {"fractal3d", "color4", FRACTAL_INPUTS("vector4|float", IN_SPACE),
     "T out = amplitude * T(fractals_3d(position, octaves, lacunarity, diminish))"},
    {"cellnoise2d", "", ON_SURFACE, "float out = hash_2d(floor(texcoord)) / 288.0"},
    {"cellnoise2d", "", ON_SURFACE, "vector3 out = random_point(hash_2d(floor(texcoord)))"},
    {"cellnoise3d", "", IN_SPACE, "float out = hash_3d(floor(position)) / 288.0"},
    {"cellnoise3d", "", IN_SPACE, "vector3 out = random_point(hash_3d(floor(position)))"},
    {"worleynoise2d", "float vector2 vector3", worley_2d_inputs,
     "T out = T(style == 0 ? worley_2d(texcoord, jitter) : worley_cell_2d(texcoord, jitter))"},
    {"worleynoise3d", "float vector2 vector3", worley_3d_inputs,
     "T out = T(style == 0 ? worley_3d(position, jitter) : worley_cell_3d(position, jitter))"},

    {"unifiednoise2d", "", unified_2d_inputs,
     "float out = fit_noise("
     "type == 0 ? noise_2d(texcoord * freq + offset) * 0.5 + 0.5 : "
     "(type == 1 ? hash_2d(floor(texcoord * freq + offset)) / 288.0 : "
     "(type == 2 ? (style == 0 ? worley_2d(texcoord * freq + offset, jitter).x : "
     "worley_cell_2d(texcoord * freq + offset, jitter).x) : "
     "fractal_2d(texcoord * freq + offset, octaves, lacunarity, diminish) * 0.5 + 0.5)), "
     "outmin, outmax, clampoutput)"},
    {"unifiednoise3d", "", unified_3d_inputs,
     "float out = fit_noise("
     "type == 0 ? noise_3d(position * freq + offset) * 0.5 + 0.5 : "
     "(type == 1 ? hash_3d(floor(position * freq + offset)) / 288.0 : "
     "(type == 2 ? (style == 0 ? worley_3d(position * freq + offset, jitter).x : "
     "worley_cell_3d(position * freq + offset, jitter).x) : "
     "fractal_3d(position * freq + offset, octaves, lacunarity, diminish) * 0.5 + 0.5)), "
     "outmin, outmax, clampoutput)"},
    {"randomfloat", "", "float|integer in, float min = 0, float max = 1, integer seed",
     "float out = min + (max - min) * random_number(float(in), float(seed))"},
    {"randomcolor", "", random_color_inputs,
     "color3 out = hsv_to_rgb(float3("
     "mix(huelow, huehigh, random_number(float(in), float(seed) + 413.3)), "
     "mix(saturationlow, saturationhigh, random_number(float(in), float(seed) + 1522.4)), "
     "mix(brightnesslow, brightnesshigh, random_number(float(in), float(seed) + 5813.8))))"},
    {"checkerboard", "",
     "color3 color1 = 1, color3 color2 = 0, vector2 uvtiling = 8 8, vector2 uvoffset = 0 0, "
     "vector2 texcoord = texcoord",
     "color3 out = mix(color1, color2, checker(texcoord * uvtiling - uvoffset))"},
    {"line", "",
     "vector2 texcoord = texcoord, vector2 center = 0 0, float radius = 0.1, "
     "vector2 point1 = 0.25 0.25, vector2 point2 = 0.75 0.75",
     "float out = step(segment_distance(texcoord - center, point1, point2), radius)"},
    {"circle", "", shape_inputs, "float out = circle(texcoord - center, radius)"},
    {"cloverleaf", "", shape_inputs, "float out = cloverleaf(texcoord - center, radius)"},
    {"hexagon", "", shape_inputs, "float out = hexagon(texcoord - center, radius)"},
    {"grid", "", line_pattern_inputs,
     "color3 out = float3(grid(pattern_tile(texcoord * uvtiling - uvoffset, staggered), "
     "thickness))"},
    {"crosshatch", "", line_pattern_inputs,
     "color3 out = float3(crosshatch(pattern_tile(texcoord * uvtiling - uvoffset, staggered), "
     "thickness))"},
    {"tiledcircles", "", shape_pattern_inputs,
     "color3 out = float3(circle(pattern_tile(texcoord * uvtiling - uvoffset, staggered) - 0.5, "
     "size * 0.5))"},
    {"tiledcloverleafs", "", shape_pattern_inputs,
     "color3 out = float3(cloverleaf(pattern_tile(texcoord * uvtiling - uvoffset, staggered) - "
     "0.5, size * 0.5))"},
    {"tiledhexagons", "", shape_pattern_inputs,
     "color3 out = float3(hexagon(pattern_tile(texcoord * uvtiling - uvoffset, staggered) - 0.5, "
     "size * 0.5))"},

    {"blackbody", "", "float temperature = 5000 [1000 15000]",
     "color3 out = blackbody(temperature)"},
    {"artistic_ior", "",
     "color3 reflectivity = 0.944 0.776 0.373, "
     "color3 edge_color = 0.998 0.981 0.751",
     "let color3 index = artistic_ior(reflectivity, edge_color); color3 ior = index; "
     "color3 extinction = artistic_extinction(reflectivity, index)"},
};

#undef NOISE_INPUTS
#undef FRACTAL_INPUTS
#undef ON_SURFACE
#undef IN_SPACE

} // namespace

Node_rows procedural_rows()
{
    return {rows, std::size(rows)};
}

} // namespace reference_host
