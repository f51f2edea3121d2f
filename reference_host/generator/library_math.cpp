#include "reference_host/generator/library.h"

#include <iterator>

namespace reference_host
{
namespace
{

constexpr const char* texts[] = {
    R"(T modulo(T x, T y)
{
    return x - y * floor(x / y);
})",
    R"(T sign_of(T x)
{
    return step(T(0.0), x) - step(x, T(0.0));
})",
    R"(T safe_power(T x, T y)
{
    return sign_of(x) * pow(abs(x), y);
})",
    R"(float triangle_wave(float x)
{
    return 1.0 - abs(2.0 * fract(x) - 1.0);
})",
    R"(T range(T x, T low, T high, T gamma, T new_low, T new_high, bool limited)
{
    T result = (x - low) / (high - low);
    result = sign_of(result) * pow(abs(result), T(1.0) / gamma);
    result = new_low + result * (new_high - new_low);
    return limited ? clamp(result, new_low, new_high) : result;
})",
    R"(float determinant3(float3x3 m)
{
    return dot(m[0], cross(m[1], m[2]));
})",
    // The rows of the inverse are the columns of the cross products.
    R"(float3x3 inverse_matrix3(float3x3 m)
{
    float3 a = cross(m[1], m[2]);
    float3 b = cross(m[2], m[0]);
    float3 c = cross(m[0], m[1]);
    float scale = 1.0 / dot(m[0], a);
    return float3x3(float3(a.x, b.x, c.x) * scale, float3(a.y, b.y, c.y) * scale,
                    float3(a.z, b.z, c.z) * scale);
})",
    // Of the rows a, b, c, d without one column: the cofactors of that column.
    R"(float4 cofactors(float3 a, float3 b, float3 c, float3 d)
{
    return float4(dot(b, cross(c, d)), -dot(a, cross(c, d)), dot(a, cross(b, d)),
                  -dot(a, cross(b, c)));
})",
    R"(float determinant4(float4x4 m)
{
    float4 minors = cofactors(m[0].yzw, m[1].yzw, m[2].yzw, m[3].yzw);
    return dot(float4(m[0].x, m[1].x, m[2].x, m[3].x), minors);
})",
    R"(float4x4 inverse_matrix4(float4x4 m)
{
    float4 x = cofactors(m[0].yzw, m[1].yzw, m[2].yzw, m[3].yzw);
    float4 y = -cofactors(m[0].xzw, m[1].xzw, m[2].xzw, m[3].xzw);
    float4 z = cofactors(m[0].xyw, m[1].xyw, m[2].xyw, m[3].xyw);
    float4 w = -cofactors(m[0].xyz, m[1].xyz, m[2].xyz, m[3].xyz);
    float scale = 1.0 / dot(float4(m[0].x, m[1].x, m[2].x, m[3].x), x);
    return float4x4(x * scale, y * scale, z * scale, w * scale);
})",
    R"(float2 rotate_2d(float2 p, float degrees)
{
    float angle = degrees * 0.017453293;
    float s = sin(angle);
    float c = cos(angle);
    return float2(c * p.x + s * p.y, c * p.y - s * p.x);
})",
    R"(float3 rotate_3d(float3 p, float degrees, float3 axis)
{
    float angle = degrees * 0.017453293;
    float3 a = normalize(axis);
    float s = sin(angle);
    float c = cos(angle);
    return p * c + cross(p, a) * s + a * (dot(a, p) * (1.0 - c));
})",
    R"(float3 from_tangent_space(float3 value, float3 normal, float3 tangent, float3 bitangent)
{
    return normalize(tangent * value.x + bitangent * value.y + normal * value.z);
})",
    R"(float2 flip_v(float2 uv)
{
    return float2(uv.x, 1.0 - uv.y);
})",
    R"(float mirrored(float x)
{
    return 1.0 - abs(2.0 * fract(x * 0.5) - 1.0);
})",
    R"(float inside_image(float2 uv)
{
    float2 inside = step(float2(0.0), uv) * step(uv, float2(1.0));
    return inside.x * inside.y;
})",
    R"(float3 y_up_to_z_up(float3 direction)
{
    return float3(direction.x, direction.z, -direction.y);
})",
    // A step that is one pixel wide where the size of a pixel is known.
    R"(float anti_aliased_step(float edge, float x)
{
    if (has_derivatives)
    {
        float width = max(abs(ddx(x)) + abs(ddy(x)), 0.00001);
        return smoothstep(edge - width, edge + width, x);
    }
    else
        return step(edge, x);
})",
    // The normal of a height field over texture coordinates, encoded as in a normal map.
    R"(float3 height_to_normal(float height, float scale, float2 uv)
{
    float2 slope = float2(ddx(height), ddy(height)) * (scale / 16.0);
    float3 along_x = float3(ddx(uv), slope.x);
    float3 along_y = float3(ddy(uv), slope.y);
    float3 normal = cross(along_x, along_y);
    normal = normal.z < 0.0 ? -normal : normal;
    return normalize(normal + float3(0.0, 0.0, 0.0000001)) * 0.5 + 0.5;
})",
    R"(float3 normal_map(float3 texel, float2 scale, float3 normal, float3 tangent,
                    float3 bitangent)
{
    float3 offset = texel * 2.0 - 1.0;
    return normalize(tangent * (offset.x * scale.x) + bitangent * (offset.y * scale.y)
                     + normal * offset.z);
})",
};

} // namespace

Library_texts math_library()
{
    return {texts, std::size(texts)};
}

} // namespace reference_host
