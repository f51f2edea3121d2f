// The shading languages, one record each: how they spell things, what they can do, and which names
// they keep for themselves. Nothing outside this folder knows a language.
#ifndef REFERENCE_HOST_TARGETS_DIALECT_H
#define REFERENCE_HOST_TARGETS_DIALECT_H

#include "reference_host/shading/expression.h"
#include "reference_host/shading/names.h"

#include <cstddef>
#include <string>

namespace reference_host
{

enum class Language {
    cg,
    hlsl,
    glsl,        // 1.30 and later
    glsl_legacy, // 1.10 and 1.20
    cpp          // with the vector types of the source prelude
};

// Where a light list, an environment list and a volume list come from.
enum class Lists {
    none,
    interfaces, // unsized lists of an interface
    arguments   // the list of lights that the renderer hands over; no other lists
};

struct Dialect {
    Language language;

    // Expressions and statements.
    const char* const* type_names;    // by Base_type
    bool spreads_by_swizzle;          // "x.xxx" makes a vector of a scalar
    bool repeats_one_component;       // "vec3(0.0)" is a constant
    bool casts_matrices;              // "(float3x3)m" is the upper left of a matrix
    bool swizzles_by_template;        // "swizzle<0, 1>(v)"
    bool has_clip;                    // else: if (x < 0.0) discard
    const char* sampler_parameter[2]; // around the type of a function's parameter
    const char* number_suffix;        // of a float

    // Programs.
    const char* vertex_prefix;   // of what comes in with a vertex
    const char* result_prefix;   // of what the vertex program hands over
    const char* fragment_prefix; // of the same in the fragment program
    const char* clip_position;
    const char* vertex_profile;   // the usual ones of effects
    const char* fragment_profile; // likewise; null: the language has no profiles
    std::size_t interpolators;    // values of up to four floats that are handed over
    std::size_t varying_floats;   // all their floats; zero: as many as the values have
    bool binds_semantics;         // two attributes cannot have one
    bool splits_textures;         // into a texture and its sampler
    bool passes_rotations;        // as matrices of their own
    bool depth_from_zero;         // to one, and textures begin at the top
    bool has_derivatives;
    bool has_integers;
    bool has_wide_lookups;
    bool shades_in_world; // always
    Lists lists;

    // Names.
    const char* keywords; // separated by spaces
    const char* taken;    // by the skeleton of a text, likewise
    const char* prefixes; // of names in the skeleton, likewise
};

const Dialect& dialect_of(Language language);

// The name or pattern ("$1 * $2") of a builtin.
const char* spelling(Builtin builtin, Language language);

// "float3", "vec3", a structure's name. Throws Notation_error for types that have no name.
std::string type_name(const Code_type& type, const Dialect& dialect);

// What no text of any language may call its own: a shader's parameters have the same names in all
// its files.
const Reserved_names& reserved_names();

} // namespace reference_host

#endif
