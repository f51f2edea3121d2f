#include "reference_host/shading/builtin.h"

#include <unordered_map>

namespace reference_host
{
namespace
{

using Result = Builtin_result;

// In the order of the enumeration.
constexpr Builtin_row rows[] = {
    {Builtin::abs, "abs", 1, Result::widest, 0},
    {Builtin::floor, "floor", 1, Result::widest, 0},
    {Builtin::ceil, "ceil", 1, Result::widest, 0},
    {Builtin::fract, "fract", 1, Result::widest, 0},
    {Builtin::sin, "sin", 1, Result::widest, 0},
    {Builtin::cos, "cos", 1, Result::widest, 0},
    {Builtin::tan, "tan", 1, Result::widest, 0},
    {Builtin::asin, "asin", 1, Result::widest, 0},
    {Builtin::acos, "acos", 1, Result::widest, 0},
    {Builtin::atan2, "atan2", 2, Result::widest, 0},
    {Builtin::exp, "exp", 1, Result::widest, 0},
    {Builtin::log, "log", 1, Result::widest, 0},
    {Builtin::sqrt, "sqrt", 1, Result::widest, 0},
    {Builtin::pow, "pow", 2, Result::widest, 0},
    {Builtin::min, "min", 2, Result::widest, 0b10},
    {Builtin::max, "max", 2, Result::widest, 0b10},
    {Builtin::clamp, "clamp", 3, Result::widest, 0b110},
    {Builtin::saturate, "saturate", 1, Result::widest, 0},
    {Builtin::mix, "mix", 3, Result::widest, 0b100},
    {Builtin::step, "step", 2, Result::widest, 0b01},
    {Builtin::smoothstep, "smoothstep", 3, Result::widest, 0b011},
    {Builtin::length, "length", 1, Result::scalar, 0},
    {Builtin::distance, "distance", 2, Result::scalar, 0},
    {Builtin::dot, "dot", 2, Result::scalar, 0},
    {Builtin::cross, "cross", 2, Result::widest, 0},
    {Builtin::normalize, "normalize", 1, Result::widest, 0},
    {Builtin::faceforward, "faceforward", 3, Result::widest, 0},
    {Builtin::reflect, "reflect", 2, Result::first, 0},
    {Builtin::refract, "refract", 3, Result::first, 0},
    {Builtin::ddx, "ddx", 1, Result::widest, 0},
    {Builtin::ddy, "ddy", 1, Result::widest, 0},
    {Builtin::transpose, "transpose", 1, Result::first, 0},
    {Builtin::row_transform, "row_transform", 2, Result::first, 0},
    {Builtin::row_product, "row_product", 2, Result::first, 0},
    {Builtin::host_transform, "host_transform", 2, Result::second, 0},
    {Builtin::host_untransform, "host_untransform", 2, Result::second, 0},
    {Builtin::camera_to_world, "camera_to_world", 1, Result::first, 0},
    {Builtin::world_to_camera, "world_to_camera", 1, Result::first, 0},
    {Builtin::world_to_camera_at, "world_to_camera_at", 1, Result::first, 0},
    {Builtin::texture_2d, "texture_2d", 2, Result::texel, 0},
    {Builtin::texture_cube, "texture_cube", 2, Result::texel, 0},
    {Builtin::texture_cube_wide, "texture_cube_wide", 4, Result::texel, 0},
    {Builtin::texture_cube_bias, "texture_cube_bias", 3, Result::texel, 0},
};

constexpr bool in_order()
{
    for (std::size_t i = 0; i < static_cast<std::size_t>(Builtin::none); ++i)
        if (rows[i].builtin != static_cast<Builtin>(i))
            return false;
    return sizeof rows / sizeof *rows == static_cast<std::size_t>(Builtin::none);
}
static_assert(in_order(), "a builtin has no row, or one in the wrong place");

} // namespace

const Builtin_row& row_of(Builtin builtin)
{
    return rows[static_cast<std::size_t>(builtin)];
}

Builtin find_builtin(const std::string& name)
{
    static const auto by_name = [] {
        std::unordered_map<std::string, Builtin> made;
        for (const Builtin_row& row : rows)
            made[row.name] = row.builtin;
        return made;
    }();
    const auto found = by_name.find(name);
    return found == by_name.end() ? Builtin::none : found->second;
}

} // namespace reference_host
