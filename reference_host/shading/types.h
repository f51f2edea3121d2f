// The types of values in generated code.
#ifndef REFERENCE_HOST_SHADING_TYPES_H
#define REFERENCE_HOST_SHADING_TYPES_H

#include <cstdint>
#include <string>

namespace reference_host
{

enum class Kind {
    none,
    boolean,
    integer,
    natural, // of 32 bits, beyond which it begins again; only some languages have it
    float1,
    float2,
    float3,
    float4,
    matrix3,
    matrix4,
    sampler_2d,
    sampler_cube,
    text, // known at generation, never printed
    structure
};

struct Shading_type {
    Kind kind = Kind::none;
    std::string structure; // the name of a structure, or of one with "[]": a list of them

    Shading_type() = default;
    Shading_type(Kind type_kind) : kind(type_kind) {}
    explicit Shading_type(std::string name) : kind(Kind::structure), structure(std::move(name)) {}

    bool operator==(const Shading_type& other) const
    {
        return kind == other.kind && structure == other.structure;
    }
    bool operator!=(const Shading_type& other) const { return !(*this == other); }
};

// 1 to 4 for floats, 9 and 16 for matrices, 1 for whole numbers and boolean, 0 otherwise.
int component_count(const Shading_type& type);
bool is_float(const Shading_type& type); // float1 to float4
bool is_sampler(const Shading_type& type);
Kind float_kind(int components); // 1 to 4

// A whole number, also a negative one, as 32 bits.
std::uint32_t natural_number(double number);

// The word of the shading notation for a type ("float3", "void"), and back; an unknown word is
// none.
const char* type_word(Kind kind);
Kind kind_from_word(const std::string& word);

} // namespace reference_host

#endif
