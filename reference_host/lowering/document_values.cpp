#include "reference_host/lowering/document_values.h"

#include "reference_host/lowering/closures.h"

namespace reference_host
{

Code_type code_type(Value_type type)
{
    switch (type) {
    case Value_type::boolean:
        return Base_type::boolean;
    case Value_type::integer:
        return Base_type::integer;
    case Value_type::float1:
        return Base_type::float1;
    case Value_type::vector2:
        return Base_type::float2;
    case Value_type::vector3:
    case Value_type::color3:
        return Base_type::float3;
    case Value_type::vector4:
    case Value_type::color4:
        return Base_type::float4;
    case Value_type::matrix33:
        return Base_type::matrix3;
    case Value_type::matrix44:
        return Base_type::matrix4;
    case Value_type::string:
    case Value_type::filename:
        return Base_type::text;
    case Value_type::edf: // its colour
    case Value_type::vdf: // which nothing shows: there is one pass and no depth
        return Base_type::float3;
    case Value_type::bsdf:
    case Value_type::surfaceshader:
        return Code_type(type_name(type));
    default:
        return Base_type::none;
    }
}

Expr literal(const Value& value)
{
    const Code_type type = code_type(value.type);
    if (is_closure(type))
        return nothing(type);
    return type == Base_type::text ? text_literal(value.text) : literal(type, value.numbers);
}

} // namespace reference_host
