// The functions that every target has a word or a formula for.
//
// A row of the table in builtin.cpp says what a builtin takes and returns; the targets say in one
// row each how they spell it.
#ifndef REFERENCE_HOST_SHADING_BUILTIN_H
#define REFERENCE_HOST_SHADING_BUILTIN_H

#include <string>

namespace reference_host
{

enum class Builtin {
    abs,
    floor,
    ceil,
    fract,
    sin,
    cos,
    tan,
    asin,
    acos,
    atan2,
    exp,
    log,
    sqrt,
    pow,
    min,
    max,
    clamp,
    saturate,
    mix,
    step,
    smoothstep,
    length,
    distance,
    dot,
    cross,
    normalize,
    faceforward,
    reflect,
    refract,
    ddx,
    ddy,
    transpose,
    row_transform,      // a row vector times a matrix of the document
    row_product,        // of two matrices of the document
    host_transform,     // a vector through a matrix of the host
    host_untransform,   // a vector through the transposed matrix
    camera_to_world,    // a direction of camera space in world space
    world_to_camera,    // a direction of world space in camera space
    world_to_camera_at, // a position of world space in camera space
    texture_2d,
    texture_cube,
    texture_cube_wide, // of the smaller copy for a place so wide, by two derivatives
    texture_cube_bias, // of the copy so many steps smaller than usual
    none
};

// The type of a builtin's result and what its arguments must be.
enum class Builtin_result {
    widest, // that of the widest argument; scalars are repeated to it, see keeps_scalars
    first,  // that of the first argument
    second, // that of the second argument
    scalar, // a float
    texel   // four floats
};

struct Builtin_row {
    Builtin builtin;
    const char* name; // in the shading notation
    int arguments;
    Builtin_result result;
    unsigned keeps_scalars; // bit i: argument i may stay scalar when all of these do
};

const Builtin_row& row_of(Builtin builtin);

// Builtin::none when there is none of that name.
Builtin find_builtin(const std::string& name);

} // namespace reference_host

#endif
