#include "reference_host/shading/types.h"

#include <cmath>
#include <iterator>
#include <unordered_map>

namespace reference_host
{
namespace
{

struct Type_row {
    Kind kind;
    const char* word;
    int components;
};

// In the order of the enumeration.
constexpr Type_row rows[] = {
    {Kind::none, "void", 0},
    {Kind::boolean, "bool", 1},
    {Kind::integer, "int", 1},
    {Kind::natural, "uint", 1},
    {Kind::float1, "float", 1},
    {Kind::float2, "float2", 2},
    {Kind::float3, "float3", 3},
    {Kind::float4, "float4", 4},
    {Kind::matrix3, "float3x3", 9},
    {Kind::matrix4, "float4x4", 16},
    {Kind::sampler_2d, "sampler2D", 0},
    {Kind::sampler_cube, "samplerCUBE", 0},
    {Kind::text, "text", 0},
    {Kind::structure, "struct", 0},
};

const Type_row& row_of(Kind kind)
{
    return rows[static_cast<std::size_t>(kind)];
}

} // namespace

int component_count(const Shading_type& type)
{
    return row_of(type.kind).components;
}

bool is_float(const Shading_type& type)
{
    return type.kind >= Kind::float1 && type.kind <= Kind::float4;
}

bool is_sampler(const Shading_type& type)
{
    return type.kind == Kind::sampler_2d || type.kind == Kind::sampler_cube;
}

Kind float_kind(int components)
{
    return static_cast<Kind>(static_cast<int>(Kind::float1) + components - 1);
}

std::uint32_t natural_number(double number)
{
    if (!(std::abs(number) < 9.0e18)) // no 64 bits hold it
        return 0;
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(number));
}

const char* type_word(Kind kind)
{
    return row_of(kind).word;
}

Kind kind_from_word(const std::string& word)
{
    static const auto kinds = [] {
        std::unordered_map<std::string, Kind> made;
        for (const Type_row& row : rows)
            if (row.kind != Kind::text && row.kind != Kind::structure)
                made[row.word] = row.kind;
        return made;
    }();
    const auto found = kinds.find(word);
    return found == kinds.end() ? Kind::none : found->second;
}

} // namespace reference_host
