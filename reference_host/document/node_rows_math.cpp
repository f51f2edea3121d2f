#include "reference_host/document/node_rows.h"

#include <iterator>

namespace reference_host
{
namespace
{

using namespace row_types;

constexpr const char* matrices = "matrix33 matrix44";

constexpr Node_row rows[] = {
    {"add", numbers, "T in1, T|float in2", "T out = in1 + in2"},
    {"add", "integer", "T in1, T in2", "T out = in1 + in2"},
    {"add", matrices, "T in1 = identity, T|float in2", "T out = in1 + in2"},
    {"subtract", numbers, "T in1, T|float in2", "T out = in1 - in2"},
    {"subtract", "integer", "T in1, T in2", "T out = in1 - in2"},
    {"subtract", matrices, "T in1 = identity, T|float in2", "T out = in1 - in2"},
    {"multiply", numbers, "T in1, T|float in2 = 1", "T out = in1 * in2"},
    {"multiply", "integer", "T in1, T in2 = 1", "T out = in1 * in2"},
    {"multiply", matrices, "T in1 = identity, T in2 = identity", "T out = row_product(in1, in2)"},
    {"divide", numbers, "T in1, T|float in2 = 1", "T out = in1 / in2"},
    {"divide", "integer", "T in1, T in2 = 1", "T out = in1 / in2"},
    {"divide", "matrix33", "T in1 = identity, T in2 = identity",
     "T out = row_product(in1, inverse_matrix3(in2))"},
    {"divide", "matrix44", "T in1 = identity, T in2 = identity",
     "T out = row_product(in1, inverse_matrix4(in2))"},
    {"modulo", numbers, "T in1, T|float in2 = 1", "T out = modulo(in1, T(in2))"},
    {"fract", numbers, "T in", "T out = fract(in)"},
    {"invert", numbers, "T in, T|float amount = 1", "T out = amount - in"},
    {"absval", numbers, "T in", "T out = abs(in)"},
    {"sign", numbers, "T in", "T out = sign_of(in)"},
    {"floor", numbers, "T in", "T out = floor(in)"},
    {"floor", "", "float in", "integer out = int(floor(in))"},
    {"ceil", numbers, "T in", "T out = ceil(in)"},
    {"ceil", "", "float in", "integer out = int(ceil(in))"},
    {"round", numbers, "T in", "T out = floor(in + 0.5)"},
    {"round", "", "float in", "integer out = int(floor(in + 0.5))"},
    {"power", numbers, "T in1, T|float in2 = 1", "T out = pow(in1, T(in2))"},
    {"safepower", numbers, "T in1, T|float in2 = 1", "T out = safe_power(in1, T(in2))"},
    {"sin", numbers, "T in", "T out = sin(in)"},
    {"cos", numbers, "T in", "T out = cos(in)"},
    {"tan", numbers, "T in", "T out = tan(in)"},
    {"asin", numbers, "T in", "T out = asin(in)"},
    {"acos", numbers, "T in = 1", "T out = acos(in)"},
    {"atan2", numbers, "T iny, T|float inx = 1", "T out = atan2(iny, T(inx))"},
    {"sqrt", numbers, "T in", "T out = sqrt(in)"},
    {"ln", numbers, "T in = 1", "T out = log(in)"},
    {"exp", numbers, "T in", "T out = exp(in)"},
    {"clamp", numbers, "T in, T|float low = 0, T|float high = 1", "T out = clamp(in, low, high)"},
    {"min", numbers, "T in1, T|float in2", "T out = min(in1, in2)"},
    {"max", numbers, "T in1, T|float in2", "T out = max(in1, in2)"},
    {"trianglewave", "", "float in", "float out = triangle_wave(in)"},

    {"normalize", "vector2 vector3 vector4", "T in", "T out = normalize(in)"},
    {"magnitude", "vector2 vector3 vector4", "T in", "float out = length(in)"},
    {"distance", "vector2 vector3 vector4", "T in1, T in2", "float out = distance(in1, in2)"},
    {"dotproduct", "vector2 vector3 vector4", "T in1, T in2", "float out = dot(in1, in2)"},
    {"crossproduct", "", "vector3 in1, vector3 in2", "vector3 out = cross(in1, in2)"},
    {"reflect", "", "vector3 in = 1 0 0, vector3 normal = normal",
     "vector3 out = reflect(in, normal)"},
    {"refract", "", "vector3 in = 1 0 0, vector3 normal = normal, float ior = 1",
     "vector3 out = refract(in, normal, ior)"},

    {"transpose", matrices, "T in = identity", "T out = transpose(in)"},
    {"determinant", "matrix33", "T in = identity", "float out = determinant3(in)"},
    {"determinant", "matrix44", "T in = identity", "float out = determinant4(in)"},
    {"invertmatrix", "matrix33", "T in = identity", "T out = inverse_matrix3(in)"},
    {"invertmatrix", "matrix44", "T in = identity", "T out = inverse_matrix4(in)"},
    {"creatematrix", "", "vector3 in1 = 1 0 0, vector3 in2 = 0 1 0, vector3 in3 = 0 0 1",
     "matrix33 out = float3x3(in1, in2, in3)"},
    {"creatematrix", "",
     "vector3 in1 = 1 0 0, vector3 in2 = 0 1 0, vector3 in3 = 0 0 1, vector3 in4 = 0 0 0",
     "matrix44 out = float4x4(float4(in1, 0.0), float4(in2, 0.0), float4(in3, 0.0), "
     "float4(in4, 1.0))"},
    {"creatematrix", "",
     "vector4 in1 = 1 0 0 0, vector4 in2 = 0 1 0 0, vector4 in3 = 0 0 1 0, vector4 in4 = 0 0 0 1",
     "matrix44 out = float4x4(in1, in2, in3, in4)"},
    {"transformmatrix", "", "vector2 in, matrix33 mat = identity",
     "vector2 out = row_transform(float3(in, 1.0), mat).xy"},
    {"transformmatrix", "", "vector3 in, matrix33 mat = identity",
     "vector3 out = row_transform(in, mat)"},
    {"transformmatrix", "", "vector3 in, matrix44 mat = identity",
     "vector3 out = row_transform(float4(in, 1.0), mat).xyz"},
    {"transformmatrix", "", "vector4 in, matrix44 mat = identity",
     "vector4 out = row_transform(in, mat)"},
};

} // namespace

Node_rows math_rows()
{
    return {rows, std::size(rows)};
}

} // namespace reference_host
