#include "reference_host/shading/types.h"

#include <cmath>
#include <iterator>
#include <unordered_map>

namespace reference_host
{
namespace
{

struct Type_row {
    Base_type type;
    const char* word;
    int components;
};

// In the order of the enumeration.
constexpr Type_row rows[] = {
    {Base_type::none, "void", 0},
    {Base_type::boolean, "bool", 1},
    {Base_type::integer, "int", 1},
    {Base_type::natural, "uint", 1},
    {Base_type::float1, "float", 1},
    {Base_type::float2, "float2", 2},
    {Base_type::float3, "float3", 3},
    {Base_type::float4, "float4", 4},
    {Base_type::matrix3, "float3x3", 9},
    {Base_type::matrix4, "float4x4", 16},
    {Base_type::sampler_2d, "sampler2D", 0},
    {Base_type::sampler_cube, "samplerCUBE", 0},
    {Base_type::text, "text", 0},
    {Base_type::structure, "struct", 0},
};

const Type_row& row_of(Base_type type)
{
    return rows[static_cast<std::size_t>(type)];
}

} // namespace

int component_count(const Code_type& type)
{
    return row_of(type.base).components;
}

bool is_float(const Code_type& type)
{
    return type.base >= Base_type::float1 && type.base <= Base_type::float4;
}

bool is_sampler(const Code_type& type)
{
    return type.base == Base_type::sampler_2d || type.base == Base_type::sampler_cube;
}

Base_type float_type(int components)
{
    return static_cast<Base_type>(static_cast<int>(Base_type::float1) + components - 1);
}

std::uint32_t natural_number(double number)
{
    if (!(std::abs(number) < 9.0e18)) // does not fit into 64 bits
        return 0;
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(number));
}

const char* type_word(Base_type type)
{
    return row_of(type).word;
}

Base_type base_type_from_word(const std::string& word)
{
    static const auto types = [] {
        std::unordered_map<std::string, Base_type> made;
        for (const Type_row& row : rows)
            if (row.type != Base_type::text && row.type != Base_type::structure)
                made[row.word] = row.type;
        return made;
    }();
    const auto found = types.find(word);
    return found == types.end() ? Base_type::none : found->second;
}

} // namespace reference_host
