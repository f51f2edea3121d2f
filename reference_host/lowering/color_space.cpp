#include "reference_host/lowering/color_space.h"

#include "reference_host/evaluator/evaluator.h"
#include "reference_host/library/library_scope.h"
#include "reference_host/lowering/document_values.h"

namespace reference_host
{
namespace
{

// The curve between encoded and linear numbers; a number is the exponent of a plain power.
constexpr double linear = 1.0;
constexpr double srgb_curve = 0.0;

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

const Color_space* find_color_space(const std::string& name)
{
    for (const Color_space& space : color_spaces)
        if (name == space.name)
            return &space;
    return nullptr;
}

// What the expression comes to, which calls functions of the library alone.
Shading_value value_of(const Expr& expression, const Library_scope& scope)
{
    Module module;
    for (const Library_instance* used : scope.used())
        add_with_callees(*used, module.functions);
    module.functions.push_back({expression->type, "value", {}, {return_value(expression)}});
    return evaluate(module, {});
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
    return color->type == Base_type::float4
               ? construct(Base_type::float4, {converted, swizzle(color, "w")})
               : converted;
}

Value to_working_space(const Value& color, const std::string& color_space)
{
    if (color.type != Value_type::color3 && color.type != Value_type::color4)
        return color;
    const Expr given = literal(color);
    Library_scope scope;
    const Expr converted = to_working_space(given, color_space, scope);
    if (converted == given)
        return color;
    Value result = color;
    result.numbers = value_of(converted, scope).numbers;
    return result;
}

} // namespace reference_host
