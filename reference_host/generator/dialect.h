// What the shading languages call things: one table for types, one for intrinsic functions.
#ifndef REFERENCE_HOST_GENERATOR_DIALECT_H
#define REFERENCE_HOST_GENERATOR_DIALECT_H

#include "reference_host/generator/expression.h"

#include <string>
#include <vector>

namespace reference_host
{

enum class Language {
    cg,
    hlsl,
    glsl,        // 1.30 and later
    glsl_legacy, // 1.10 and 1.20
    cpp          // with the vector types of swrc_prelude
};

// The type of an intrinsic's result and what its arguments must be.
enum class Intrinsic_result {
    widest, // that of the widest argument; scalars are repeated to it, see keeps_scalars
    first,  // that of the first argument
    second, // that of the second argument
    scalar, // a float
    texel   // four floats
};

struct Intrinsic {
    const char* name; // in the shading notation
    int arguments;
    Intrinsic_result result;
    unsigned keeps_scalars; // bit i: argument i may stay scalar when all of these do
    // How the languages write it: a name, or a pattern with $1, $2, $3 for the arguments. Null: as
    // the language before it in this order; for Cg, GLSL and C++ as the notation.
    const char *cg, *hlsl, *glsl, *glsl_legacy, *cpp;
};

// Null when there is no such intrinsic.
const Intrinsic* find_intrinsic(const std::string& name);

// The name or pattern of an intrinsic in a language.
std::string intrinsic_text(const Intrinsic& intrinsic, Language language);

// Makes a call: checks the number of arguments and fits their types. Throws Notation_error.
Expr call_intrinsic(const Intrinsic& intrinsic, std::vector<Expr> arguments);

// "float3", "vec3", a structure's name.
std::string type_name(const Shading_type& type, Language language);

bool is_glsl(Language language);

// Whether a word means something in any of the languages, so that no variable may be called so.
bool is_reserved_word(const std::string& word);

} // namespace reference_host

#endif
