#include "reference_host/nodes/value.h"

namespace reference_host
{
namespace
{

struct Type_row {
    Value_type type;
    const char* name;
    int components;
};

constexpr Type_row types[] = {
    {Value_type::none, "none", 0},
    {Value_type::boolean, "boolean", 1},
    {Value_type::integer, "integer", 1},
    {Value_type::float1, "float", 1},
    {Value_type::vector2, "vector2", 2},
    {Value_type::vector3, "vector3", 3},
    {Value_type::vector4, "vector4", 4},
    {Value_type::color3, "color3", 3},
    {Value_type::color4, "color4", 4},
    {Value_type::matrix33, "matrix33", 9},
    {Value_type::matrix44, "matrix44", 16},
    {Value_type::string, "string", 0},
    {Value_type::filename, "filename", 0},
    {Value_type::bsdf, "BSDF", 0},
    {Value_type::edf, "EDF", 0},
    {Value_type::vdf, "VDF", 0},
    {Value_type::surfaceshader, "surfaceshader", 0},
    {Value_type::displacementshader, "displacementshader", 0},
    {Value_type::volumeshader, "volumeshader", 0},
    {Value_type::lightshader, "lightshader", 0},
    {Value_type::material, "material", 0},
    {Value_type::multioutput, "multioutput", 0},
};

const Type_row& row_of(Value_type type)
{
    for (const Type_row& row : types) {
        if (row.type == type)
            return row;
    }
    return types[0];
}

} // namespace

const char* type_name(Value_type type)
{
    return row_of(type).name;
}

Value_type type_from_name(const std::string& name)
{
    for (const Type_row& row : types) {
        if (name == row.name)
            return row.type;
    }
    return Value_type::none;
}

int component_count(Value_type type)
{
    return row_of(type).components;
}

} // namespace reference_host
