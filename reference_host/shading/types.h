// The types of values in generated code. What a document calls a type is in nodes/value.h.
#ifndef REFERENCE_HOST_SHADING_TYPES_H
#define REFERENCE_HOST_SHADING_TYPES_H

#include <cstdint>
#include <string>

namespace reference_host
{

// What a type is made of.
enum class Base_type {
    none,
    boolean,
    integer,
    natural, // of 32 bits, wraps around; only some languages have it
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

// The type of a value in generated code.
struct Code_type {
    Base_type base = Base_type::none;
    std::string structure; // the name of a structure, or of one with "[]": a list of them

    Code_type() = default;
    Code_type(Base_type base_type) : base(base_type) {}
    explicit Code_type(std::string name) : base(Base_type::structure), structure(std::move(name)) {}

    bool operator==(const Code_type& other) const
    {
        return base == other.base && structure == other.structure;
    }
    bool operator!=(const Code_type& other) const { return !(*this == other); }
};

// 1 to 4 for floats, 9 and 16 for matrices, 1 for whole numbers and boolean, 0 otherwise.
int component_count(const Code_type& type);
bool is_float(const Code_type& type); // float1 to float4
bool is_sampler(const Code_type& type);
Base_type float_type(int components); // 1 to 4

// A whole number, also a negative one, as 32 bits.
std::uint32_t natural_number(double number);

// The word of the shading notation for a type ("float3", "void"), and back; an unknown word is
// none.
const char* type_word(Base_type type);
Base_type base_type_from_word(const std::string& word);

} // namespace reference_host

#endif
