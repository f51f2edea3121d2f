#include "reference_host/nodes/value.h"

namespace reference_host
{
namespace
{

struct Type_row {
    Type type;
    const char* name;
    int components;
};

constexpr Type_row types[] = {
    {Type::none, "none", 0},
    {Type::boolean, "boolean", 1},
    {Type::integer, "integer", 1},
    {Type::float1, "float", 1},
    {Type::vector2, "vector2", 2},
    {Type::vector3, "vector3", 3},
    {Type::vector4, "vector4", 4},
    {Type::color3, "color3", 3},
    {Type::color4, "color4", 4},
    {Type::matrix33, "matrix33", 9},
    {Type::matrix44, "matrix44", 16},
    {Type::string, "string", 0},
    {Type::filename, "filename", 0},
    {Type::bsdf, "BSDF", 0},
    {Type::edf, "EDF", 0},
    {Type::vdf, "VDF", 0},
    {Type::surfaceshader, "surfaceshader", 0},
    {Type::displacementshader, "displacementshader", 0},
    {Type::volumeshader, "volumeshader", 0},
    {Type::lightshader, "lightshader", 0},
    {Type::material, "material", 0},
    {Type::multioutput, "multioutput", 0},
};

const Type_row& row_of(Type type)
{
    for (const Type_row& row : types) {
        if (row.type == type)
            return row;
    }
    return types[0];
}

} // namespace

const char* type_name(Type type)
{
    return row_of(type).name;
}

Type type_from_name(const std::string& name)
{
    for (const Type_row& row : types) {
        if (name == row.name)
            return row.type;
    }
    return Type::none;
}

int component_count(Type type)
{
    return row_of(type).components;
}

} // namespace reference_host
