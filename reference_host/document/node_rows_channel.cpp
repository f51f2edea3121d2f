#include "reference_host/document/node_rows.h"

#include <iterator>

namespace reference_host
{
namespace
{

using namespace row_types;

constexpr const char* any = "float color3 color4 vector2 vector3 vector4 matrix33 matrix44 integer";
constexpr const char* scalars = "float integer boolean";

// What a conditional node compares, and the two inputs that it chooses from.
constexpr const char* compared = "float|integer value1 = 1, float|integer value2 = 0, T in1, T in2";
constexpr const char* equated =
    "float|integer|boolean value1 = 0, float|integer|boolean value2 = 0, T in1, T in2";
constexpr const char* switched =
    "T in1, T in2, T in3, T in4, T in5, T in6, T in7, T in8, T in9, T in10, "
    "float|integer which = 0";

constexpr Node_row rows[] = {
    {"dot", any, "T in, string note", "T out = in"},
    {"dot", "boolean string filename", "T in, string note", "T out = in"},
    {"constant", any, "T value", "T out = value"},
    {"constant", "boolean string filename", "T value", "T out = value"},

    {"convert", scalars, "T in", "float out = float(in)"},
    {"convert", scalars, "T in", "integer out = int(in)"},
    {"convert", "float integer", "T in", "boolean out = float(in) != 0.0"},
    {"convert", scalars, "T in", "color3 out = float3(float(in))"},
    {"convert", scalars, "T in", "vector2 out = float2(float(in))"},
    {"convert", scalars, "T in", "vector3 out = float3(float(in))"},
    {"convert", scalars, "T in", "vector4 out = float4(float(in))"},
    {"convert", scalars, "T in", "color4 out = float4(float3(float(in)), 1.0)"},
    {"convert", "vector2", "T in", "vector3 out = float3(in, 0.0)"},
    {"convert", "color3 color4 vector3 vector4", "T in", "vector2 out = in.xy"},
    {"convert", "color3 color4 vector4", "T in", "vector3 out = in.xyz"},
    {"convert", "color4 vector3 vector4", "T in", "color3 out = in.xyz"},
    {"convert", "color3 vector3", "T in", "vector4 out = float4(in, 1.0)"},
    {"convert", "color3 vector3", "T in", "color4 out = float4(in, 1.0)"},
    {"convert", "color4", "T in", "vector4 out = in"},
    {"convert", "vector4", "T in", "color4 out = in"},

    {"combine2", "", "float in1, float in2", "vector2 out = float2(in1, in2)"},
    {"combine2", "", "color3 in1, float in2 = 1", "color4 out = float4(in1, in2)"},
    {"combine2", "", "vector3 in1, float in2", "vector4 out = float4(in1, in2)"},
    {"combine2", "", "vector2 in1, vector2 in2", "vector4 out = float4(in1, in2)"},
    {"combine3", "", "float in1, float in2, float in3", "color3 out = float3(in1, in2, in3)"},
    {"combine3", "", "float in1, float in2, float in3", "vector3 out = float3(in1, in2, in3)"},
    {"combine4", "", "float in1, float in2, float in3, float in4 = 1",
     "color4 out = float4(in1, in2, in3, in4)"},
    {"combine4", "", "float in1, float in2, float in3, float in4",
     "vector4 out = float4(in1, in2, in3, in4)"},
    {"separate2", "vector2", "T in", "float outx = in.x; float outy = in.y"},
    {"separate3", "color3", "T in", "float outr = in.x; float outg = in.y; float outb = in.z"},
    {"separate3", "vector3", "T in", "float outx = in.x; float outy = in.y; float outz = in.z"},
    {"separate4", "color4", "T in",
     "float outr = in.x; float outg = in.y; float outb = in.z; float outa = in.w"},
    {"separate4", "vector4", "T in",
     "float outx = in.x; float outy = in.y; float outz = in.z; float outw = in.w"},
    {"extract", "vector2", "T in, integer index", "float out = index == 0 ? in.x : in.y"},
    {"extract", "color3 vector3", "T in, integer index",
     "float out = index == 0 ? in.x : (index == 1 ? in.y : in.z)"},
    {"extract", "color4 vector4", "T in, integer index",
     "float out = index == 0 ? in.x : (index == 1 ? in.y : (index == 2 ? in.z : in.w))"},
    {"swizzle", numbers, "T in, string channels", "float out = channels_of(in, channels)"},
    {"swizzle", numbers, "T in, string channels", "color3 out = channels_of(in, channels)"},
    {"swizzle", numbers, "T in, string channels", "color4 out = channels_of(in, channels)"},
    {"swizzle", numbers, "T in, string channels", "vector2 out = channels_of(in, channels)"},
    {"swizzle", numbers, "T in, string channels", "vector3 out = channels_of(in, channels)"},
    {"swizzle", numbers, "T in, string channels", "vector4 out = channels_of(in, channels)"},

    {"ifgreater", any, compared, "T out = value1 > value2 ? in1 : in2"},
    {"ifgreatereq", any, compared, "T out = value1 >= value2 ? in1 : in2"},
    {"ifequal", any, equated, "T out = value1 == value2 ? in1 : in2"},
    {"ifgreater", "", "float|integer value1 = 1, float|integer value2 = 0",
     "boolean out = value1 > value2"},
    {"ifgreatereq", "", "float|integer value1 = 1, float|integer value2 = 0",
     "boolean out = value1 >= value2"},
    {"ifequal", "", "float|integer|boolean value1, float|integer|boolean value2",
     "boolean out = value1 == value2"},
    {"switch", any, switched,
     "T out = which < 1 ? in1 : (which < 2 ? in2 : (which < 3 ? in3 : (which < 4 ? in4 : "
     "(which < 5 ? in5 : (which < 6 ? in6 : (which < 7 ? in7 : (which < 8 ? in8 : "
     "(which < 9 ? in9 : in10))))))))"},
    {"and", "", "boolean in1, boolean in2", "boolean out = in1 && in2"},
    {"or", "", "boolean in1, boolean in2", "boolean out = in1 || in2"},
    {"xor", "", "boolean in1, boolean in2", "boolean out = in1 != in2"},
    {"not", "", "boolean in", "boolean out = !in"},
};

} // namespace

Node_rows channel_rows()
{
    return {rows, std::size(rows)};
}

} // namespace reference_host
