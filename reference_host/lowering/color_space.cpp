#include "reference_host/lowering/color_space.h"

#include <array>
#include <cmath>

namespace reference_host
{
namespace
{

// The curve between encoded and linear numbers; a number is the exponent of a plain power.
constexpr double linear = 1.0;
constexpr double srgb_curve = 0.0;

using Matrix = std::array<std::array<double, 3>, 3>;

struct Color_space {
    const char* name;
    double curve;
    const char* matrix_function; // null: the primaries are those of Rec. 709
};

constexpr Color_space color_spaces[] = {
    {"lin_rec709", linear, nullptr},
    {"srgb_texture", srgb_curve, nullptr},
    {"gamma18", 1.8, nullptr},
    {"gamma22", 2.2, nullptr},
    {"gamma24", 2.4, nullptr},
    {"rec709_display", 2.4, nullptr},
    {"g18_rec709", 1.8, nullptr},
    {"g22_rec709", 2.2, nullptr},
    {"lin_rec709_scene", linear, nullptr},
    {"srgb_rec709_scene", srgb_curve, nullptr},
    {"g18_rec709_scene", 1.8, nullptr},
    {"g22_rec709_scene", 2.2, nullptr},
    {"lin_ap1_scene", linear, "ap1_to_rec709"},
    {"g22_ap1_scene", 2.2, "ap1_to_rec709"},
    {"lin_adobergb_scene", linear, "adobe_rgb_to_rec709"},
    {"g22_adobergb_scene", 2.19921875, "adobe_rgb_to_rec709"},
    {"lin_p3d65_scene", linear, "display_p3_to_rec709"},
    {"srgb_p3d65_scene", srgb_curve, "display_p3_to_rec709"},
    {"acescg", linear, "ap1_to_rec709"},
    {"lin_ap1", linear, "ap1_to_rec709"},
    {"g22_ap1", 2.2, "ap1_to_rec709"},
    {"adobergb", 2.19921875, "adobe_rgb_to_rec709"},
    {"lin_adobergb", linear, "adobe_rgb_to_rec709"},
    {"srgb_displayp3", srgb_curve, "display_p3_to_rec709"},
    {"lin_displayp3", linear, "display_p3_to_rec709"},
};

struct Named_matrix {
    const char* function;
    Matrix rows;
};

// The same numbers as in the functions of library_color.cpp.
constexpr Named_matrix matrices[] = {
    {"ap1_to_rec709",
     {{{1.7050510, -0.6217921, -0.0832589},
       {-0.1302564, 1.1408047, -0.0105483},
       {-0.0240034, -0.1289690, 1.1529724}}}},
    {"adobe_rgb_to_rec709",
     {{{1.3983557, -0.3983557, 0.0}, {0.0, 1.0, 0.0}, {0.0, -0.0429290, 1.0429290}}}},
    {"display_p3_to_rec709",
     {{{1.2249402, -0.2249402, 0.0},
       {-0.0420570, 1.0420570, 0.0},
       {-0.0196376, -0.0786360, 1.0982736}}}},
};

const Color_space* find_color_space(const std::string& name)
{
    for (const Color_space& space : color_spaces)
        if (name == space.name)
            return &space;
    return nullptr;
}

double decoded(double number, double curve)
{
    if (curve == linear)
        return number;
    if (curve == srgb_curve)
        return number <= 0.04045 ? number / 12.92 : std::pow((number + 0.055) / 1.055, 2.4);
    return std::pow(std::fmax(number, 0.0), curve);
}

} // namespace

bool is_known_color_space(const std::string& name)
{
    return name.empty() || find_color_space(name);
}

Expr to_working_space(const Expr& color, const std::string& color_space, Notation_scope& scope)
{
    const Color_space* space = find_color_space(color_space);
    if (!space || (space->curve == linear && !space->matrix_function))
        return color;
    Expr converted = swizzle(color, "xyz");
    if (space->curve == srgb_curve)
        converted = scope.call("srgb_to_linear", {converted});
    else if (space->curve != linear)
        converted = scope.call("gamma_to_linear", {converted, literal(space->curve)});
    if (space->matrix_function)
        converted = scope.call(space->matrix_function, {converted});
    return color->type == Kind::float4 ? construct(Kind::float4, {converted, swizzle(color, "w")})
                                       : converted;
}

Value to_working_space(const Value& color, const std::string& color_space)
{
    const Color_space* space = find_color_space(color_space);
    if (!space || (color.type != Type::color3 && color.type != Type::color4))
        return color;
    Value converted = color;
    for (std::size_t i = 0; i < 3; ++i)
        converted.numbers[i] = decoded(color.numbers[i], space->curve);
    if (!space->matrix_function)
        return converted;
    const std::array<double, 16> decoded_numbers = converted.numbers;
    for (const Named_matrix& matrix : matrices)
        if (matrix.function == std::string(space->matrix_function))
            for (std::size_t row = 0; row < 3; ++row)
                converted.numbers[row] = matrix.rows[row][0] * decoded_numbers[0] +
                                         matrix.rows[row][1] * decoded_numbers[1] +
                                         matrix.rows[row][2] * decoded_numbers[2];
    return converted;
}

} // namespace reference_host
