#include "reference_host/lowering/document_values.h"

#include "reference_host/lowering/closures.h"

namespace reference_host
{

Shading_type shading_type(Type type)
{
    switch (type) {
    case Type::boolean:
        return Kind::boolean;
    case Type::integer:
        return Kind::integer;
    case Type::float1:
        return Kind::float1;
    case Type::vector2:
        return Kind::float2;
    case Type::vector3:
    case Type::color3:
        return Kind::float3;
    case Type::vector4:
    case Type::color4:
        return Kind::float4;
    case Type::matrix33:
        return Kind::matrix3;
    case Type::matrix44:
        return Kind::matrix4;
    case Type::string:
    case Type::filename:
        return Kind::text;
    case Type::edf: // its colour
    case Type::vdf: // which nothing shows: there is one pass and no depth
        return Kind::float3;
    case Type::bsdf:
    case Type::surfaceshader:
        return Shading_type(type_name(type));
    default:
        return Kind::none;
    }
}

Expr literal(const Value& value)
{
    const Shading_type type = shading_type(value.type);
    if (is_closure(type))
        return nothing(type);
    return type == Kind::text ? text_literal(value.text) : literal(type, value.numbers);
}

} // namespace reference_host
