#include "reference_host/generator/library.h"

#include <iterator>

namespace reference_host
{
namespace
{

// Placement of images and flat patterns. Shapes are 1 inside and 0 outside.
constexpr const char* texts[] = {
    R"(float2 gltf_place(float2 uv, float2 pivot, float2 scale, float degrees, float2 offset)
{
    return rotate_2d((uv - pivot) * scale, -degrees) - offset * float2(-1.0, 1.0) + pivot;
})",
    R"(float2 latlong_place(float3 direction, float degrees)
{
    float3 d = normalize(direction);
    float u = atan2(d.x, -d.z) * 0.15915494 + 0.5 + degrees / 360.0;
    return float2(u, asin(clamp(d.y, -1.0, 1.0)) * 0.31830989 + 0.5);
})",
    R"(float3 triplanar_weights(float3 normal, float blend)
{
    float3 n = abs(normal);
    float3 weights = pow(n, float3(1.0 / max(blend, 0.01)));
    return weights / max(weights.x + weights.y + weights.z, 0.00001);
})",

    // Tiling by hexagons: each point lies in a triangle of three of their centers. Mikkelsen,
    // "Practical Real-Time Hex-Tiling" (2022).
    R"(float2 hex_skewed(float2 uv)
{
    return float2(uv.x * 3.4641016 - uv.y * 2.0, uv.y * 4.0);
})",
    // One of the three centers as column and row, and its share. A center has one number in all the
    // triangles around it: neighbouring pixels read the same image under the same number, so that
    // mipmaps show no seams, and what another center takes over has no share there.
    R"(float3 hex_corner(float2 uv, float number)
{
    float2 skewed = hex_skewed(uv);
    float2 base = floor(skewed);
    float2 f = skewed - base;
    float upper = step(1.0, f.x + f.y);
    float turn = modulo(number - base.x + base.y + 0.5, 3.0);
    float2 shares = mix(f, 1.0 - f.yx, upper);
    float3 first = float3(base + upper, abs(1.0 - f.x - f.y));
    float3 second = float3(base + float2(1.0, 0.0), shares.x);
    float3 third = float3(base + float2(0.0, 1.0), shares.y);
    return turn < 1.0 ? first : (turn < 2.0 ? second : third);
})",
    R"(float hex_angle(float3 corner, float rotation, float2 range)
{
    return mix(range.x, range.y, random_point(hash_2d(corner.xy)).x * rotation);
})",
    // Texture coordinates of the image that belongs to a center: turned, scaled and moved at
    // random.
    R"(float2 hex_place(float2 uv, float3 corner, float rotation, float2 rotations, float scale,
                 float2 scales, float offset, float2 offsets)
{
    float3 random = random_point(hash_2d(corner.xy));
    float2 center = float2((corner.x + corner.y * 0.5) * 0.28867513, corner.y * 0.25);
    float2 turned = rotate_2d(uv - center, hex_angle(corner, rotation, rotations));
    return turned / mix(1.0, mix(scales.x, scales.y, random.y), scale) + center
         + mix(float2(offsets.x), float2(offsets.y), random.xz * offset);
})",
    // The normal of an image that hex_place turned.
    R"(float3 hex_normal(float3 texel, float degrees, bool flip_g)
{
    float3 normal = texel * 2.0 - 1.0;
    float2 slope = float2(normal.x, flip_g ? -normal.y : normal.y);
    return float3(rotate_2d(slope, -degrees), normal.z) * 0.5 + 0.5;
})",
    // Schlick, "Fast Alternatives to Perlin's Bias and Gain Functions", Graphics Gems IV.
    R"(float schlick_gain(float x, float amount)
{
    float bend = (1.0 / clamp(amount, 0.001, 0.999) - 2.0) * (1.0 - 2.0 * x);
    return x < 0.5 ? x / (bend + 1.0) : (bend - x) / (bend - 1.0);
})",
    R"(float3 hex_weights(float3 shares, float falloff)
{
    float3 weights = pow(max(shares, 0.00001), float3(7.0));
    weights /= weights.x + weights.y + weights.z;
    weights = float3(schlick_gain(weights.x, falloff), schlick_gain(weights.y, falloff),
                     schlick_gain(weights.z, falloff));
    return weights / (weights.x + weights.y + weights.z);
})",
    // Bright images push dark ones back.
    R"(float3 hex_contrast(float3 weights, float3 luminances, float contrast)
{
    float3 changed = weights * mix(float3(1.0), max(luminances, 0.00001), contrast);
    return changed / (changed.x + changed.y + changed.z);
})",

    R"(float checker(float2 p)
{
    float2 cell = floor(p);
    return modulo(cell.x + cell.y, 2.0);
})",
    R"(float segment_distance(float2 p, float2 a, float2 b)
{
    float2 along = b - a;
    float share = saturate(dot(p - a, along) / dot(along, along));
    return distance(p - a, along * share);
})",
    R"(float circle(float2 p, float radius)
{
    return step(length(p), radius);
})",
    R"(float cloverleaf(float2 p, float radius)
{
    float2 q = abs(p);
    float leaf = radius * 0.5;
    return max(step(distance(q, float2(leaf, 0.0)), leaf),
               step(distance(q, float2(0.0, leaf)), leaf));
})",
    R"(float hexagon(float2 p, float radius)
{
    float2 q = abs(p);
    return step(max(q.x * 0.8660254 + q.y * 0.5, q.y), radius * 0.8660254);
})",
    // The place within its tile; staggered rows are moved by half a tile.
    R"(float2 pattern_tile(float2 p, bool staggered)
{
    float shift = staggered ? modulo(floor(p.y), 2.0) * 0.5 : 0.0;
    return fract(float2(p.x + shift, p.y));
})",
    R"(float grid(float2 tile, float thickness)
{
    float2 border = step(float2(1.0 - thickness), abs(tile * 2.0 - 1.0));
    return max(border.x, border.y);
})",
    R"(float crosshatch(float2 tile, float thickness)
{
    float2 diagonals = abs(float2(tile.x - tile.y, tile.x + tile.y - 1.0));
    return step(min(diagonals.x, diagonals.y), thickness);
})",

    // One interval of a ramp: linear, smooth or in steps. What lies before it stays as it was.
    R"(float4 ramp_step(float x, float low, float high, float4 color1, float4 color2,
                 int interpolation, float4 before)
{
    float share = saturate((x - low) / max(high - low, 0.00001));
    float smooth_share = share * share * (3.0 - 2.0 * share);
    float step_share = step(1.0, share);
    float chosen = interpolation == 0 ? share : (interpolation == 1 ? smooth_share : step_share);
    return x < low ? before : mix(color1, color2, chosen);
})",
    R"(float ramp_place(int type, float2 uv)
{
    float2 p = uv - 0.5;
    float around = atan2(p.y, p.x) * 0.15915494 + 0.5;
    float box = max(abs(p.x), abs(p.y)) * 2.0;
    return saturate(type == 0 ? uv.x : (type == 1 ? around : (type == 2 ? length(p) * 2.0 : box)));
})",
    R"(float4 ramp_10(int type, float2 uv, int interpolation, int intervals,
               float i1, float4 c1, float i2, float4 c2, float i3, float4 c3, float i4, float4 c4,
               float i5, float4 c5, float i6, float4 c6, float i7, float4 c7, float i8, float4 c8,
               float i9, float4 c9, float i10, float4 c10)
{
    float x = ramp_place(type, uv);
    float4 result = ramp_step(x, i1, i2, c1, c2, interpolation, c1);
    if (intervals > 2)
        result = ramp_step(x, i2, i3, c2, c3, interpolation, result);
    if (intervals > 3)
        result = ramp_step(x, i3, i4, c3, c4, interpolation, result);
    if (intervals > 4)
        result = ramp_step(x, i4, i5, c4, c5, interpolation, result);
    if (intervals > 5)
        result = ramp_step(x, i5, i6, c5, c6, interpolation, result);
    if (intervals > 6)
        result = ramp_step(x, i6, i7, c6, c7, interpolation, result);
    if (intervals > 7)
        result = ramp_step(x, i7, i8, c7, c8, interpolation, result);
    if (intervals > 8)
        result = ramp_step(x, i8, i9, c8, c9, interpolation, result);
    if (intervals > 9)
        result = ramp_step(x, i9, i10, c9, c10, interpolation, result);
    return result;
})",
};

} // namespace

Library_texts pattern_library()
{
    return {texts, std::size(texts)};
}

} // namespace reference_host
