#include "reference_host/generator/library.h"

#include <iterator>

namespace reference_host
{
namespace
{

// Shader model 3 has no integers to speak of, so lattice points are hashed by the permutation
// polynomial (34 x + 1) x modulo 289, whose values are exact in single precision. Everything below
// gives the same picture on every compiler.
constexpr const char* texts[] = {
    R"(float wrap_289(float x)
{
    return x - floor(x / 289.0) * 289.0;
})",
    R"(float permute(float x)
{
    return wrap_289((x * 34.0 + 1.0) * x);
})",
    // Of a lattice point, a whole number from 0 to 288. Its remainder by 17 is that of the sum of
    // the coordinates, so nothing may depend on that alone.
    R"(float hash_2d(float2 cell)
{
    return permute(permute(wrap_289(cell.x)) + wrap_289(cell.y));
})",
    R"(float hash_3d(float3 cell)
{
    return permute(permute(permute(wrap_289(cell.x)) + wrap_289(cell.y)) + wrap_289(cell.z));
})",
    R"(float gradient_2d(float2 cell, float2 offset)
{
    float angle = hash_2d(cell) * 0.021741125;
    return cos(angle) * offset.x + sin(angle) * offset.y;
})",
    // The gradient's height and angle come from one hash, split by 7.
    R"(float gradient_3d(float3 cell, float3 offset)
{
    float hash = (hash_3d(cell) + 0.5) / 7.0;
    float angle = floor(hash) * 0.15218788;
    float height = fract(hash) * 2.0 - 1.0;
    float radius = sqrt(max(1.0 - height * height, 0.0));
    return radius * (cos(angle) * offset.x + sin(angle) * offset.y) + height * offset.z;
})",
    // Perlin's gradient noise, from -1 to 1.
    R"(float noise_2d(float2 p)
{
    float2 cell = floor(p);
    float2 f = p - cell;
    float2 w = f * f * f * (f * (f * 6.0 - 15.0) + 10.0);
    float low = mix(gradient_2d(cell, f),
                    gradient_2d(cell + float2(1.0, 0.0), f - float2(1.0, 0.0)), w.x);
    float high = mix(gradient_2d(cell + float2(0.0, 1.0), f - float2(0.0, 1.0)),
                     gradient_2d(cell + float2(1.0, 1.0), f - float2(1.0, 1.0)), w.x);
    return mix(low, high, w.y) * 1.4;
})",
    R"(float noise_3d_plane(float3 cell, float3 f, float2 w)
{
    float low = mix(gradient_3d(cell, f),
                    gradient_3d(cell + float3(1.0, 0.0, 0.0), f - float3(1.0, 0.0, 0.0)), w.x);
    float high = mix(gradient_3d(cell + float3(0.0, 1.0, 0.0), f - float3(0.0, 1.0, 0.0)),
                     gradient_3d(cell + float3(1.0, 1.0, 0.0), f - float3(1.0, 1.0, 0.0)), w.x);
    return mix(low, high, w.y);
})",
    R"(float noise_3d(float3 p)
{
    float3 cell = floor(p);
    float3 f = p - cell;
    float3 w = f * f * f * (f * (f * 6.0 - 15.0) + 10.0);
    float front = noise_3d_plane(cell, f, w.xy);
    float back = noise_3d_plane(cell + float3(0.0, 0.0, 1.0), f - float3(0.0, 0.0, 1.0), w.xy);
    return mix(front, back, w.z) * 1.3;
})",
    R"(float fractal_2d(float2 p, int octaves, float lacunarity, float diminish)
{
    float result = 0.0;
    float2 position = p;
    float amplitude = 1.0;
    for (int i = 0; i < octaves; i++)
    {
        result += amplitude * noise_2d(position);
        amplitude *= diminish;
        position *= lacunarity;
    }
    return result;
})",
    R"(float fractal_3d(float3 p, int octaves, float lacunarity, float diminish)
{
    float result = 0.0;
    float3 position = p;
    float amplitude = 1.0;
    for (int i = 0; i < octaves; i++)
    {
        result += amplitude * noise_3d(position);
        amplitude *= diminish;
        position *= lacunarity;
    }
    return result;
})",
    // Four channels of noise that have nothing to do with each other.
    R"(float4 noises_2d(float2 p)
{
    return float4(noise_2d(p), noise_2d(p + float2(19.0, 193.0)), noise_2d(p + float2(71.0, 47.0)),
                  noise_2d(p + float2(139.0, 101.0)));
})",
    R"(float4 noises_3d(float3 p)
{
    return float4(noise_3d(p), noise_3d(p + float3(19.0, 193.0, 17.0)),
                  noise_3d(p + float3(71.0, 47.0, 113.0)),
                  noise_3d(p + float3(139.0, 101.0, 59.0)));
})",
    R"(float4 fractals_2d(float2 p, int octaves, float lacunarity, float diminish)
{
    float4 result = float4(0.0);
    float2 position = p;
    float amplitude = 1.0;
    for (int i = 0; i < octaves; i++)
    {
        result += amplitude * noises_2d(position);
        amplitude *= diminish;
        position *= lacunarity;
    }
    return result;
})",
    R"(float4 fractals_3d(float3 p, int octaves, float lacunarity, float diminish)
{
    float4 result = float4(0.0);
    float3 position = p;
    float amplitude = 1.0;
    for (int i = 0; i < octaves; i++)
    {
        result += amplitude * noises_3d(position);
        amplitude *= diminish;
        position *= lacunarity;
    }
    return result;
})",
    // From 0 to 1.
    R"(float random_number(float value, float seed)
{
    return hash_2d(floor(float2(value * 4096.0, seed))) / 288.0;
})",
    R"(float3 random_point(float hash)
{
    float next = permute(hash + 7.0);
    return float3(hash, next, permute(next + 7.0)) / 288.0;
})",
    // The three smallest of four distances, in order.
    R"(float3 with_distance(float3 nearest, float distance)
{
    return float3(min(nearest.x, distance), min(nearest.y, max(nearest.x, distance)),
                  min(nearest.z, max(nearest.y, distance)));
})",
    // Distances to the three nearest of points that are scattered one to a cell.
    R"(float3 worley_2d(float2 p, float jitter)
{
    float2 cell = floor(p);
    float3 nearest = float3(10.0);
    for (int i = 0; i < 3; i++)
    {
        for (int j = 0; j < 3; j++)
        {
            float2 near_cell = cell + float2(float(i), float(j)) - 1.0;
            float2 point = near_cell + 0.5 + (random_point(hash_2d(near_cell)).xy - 0.5) * jitter;
            nearest = with_distance(nearest, distance(point, p));
        }
    }
    return nearest;
})",
    // The random numbers of the cell whose point is nearest.
    R"(float3 worley_cell_2d(float2 p, float jitter)
{
    float2 cell = floor(p);
    float nearest = 10.0;
    float3 result = float3(0.0);
    for (int i = 0; i < 3; i++)
    {
        for (int j = 0; j < 3; j++)
        {
            float2 near_cell = cell + float2(float(i), float(j)) - 1.0;
            float3 random = random_point(hash_2d(near_cell));
            float away = distance(near_cell + 0.5 + (random.xy - 0.5) * jitter, p);
            result = away < nearest ? random : result;
            nearest = min(nearest, away);
        }
    }
    return result;
})",
    // In space the eight cells around the nearest corner are searched: programs are short of
    // instructions, and points beyond them are hardly ever among the nearest.
    R"(float3 worley_3d(float3 p, float jitter)
{
    float3 cell = floor(p - 0.5);
    float3 nearest = float3(10.0);
    for (int i = 0; i < 2; i++)
    {
        for (int j = 0; j < 2; j++)
        {
            for (int k = 0; k < 2; k++)
            {
                float3 near_cell = cell + float3(float(i), float(j), float(k));
                float3 point = near_cell + 0.5 + (random_point(hash_3d(near_cell)) - 0.5) * jitter;
                nearest = with_distance(nearest, distance(point, p));
            }
        }
    }
    return nearest;
})",
    R"(float3 worley_cell_3d(float3 p, float jitter)
{
    float3 cell = floor(p - 0.5);
    float nearest = 10.0;
    float3 result = float3(0.0);
    for (int i = 0; i < 2; i++)
    {
        for (int j = 0; j < 2; j++)
        {
            for (int k = 0; k < 2; k++)
            {
                float3 near_cell = cell + float3(float(i), float(j), float(k));
                float3 random = random_point(hash_3d(near_cell));
                float away = distance(near_cell + 0.5 + (random - 0.5) * jitter, p);
                result = away < nearest ? random : result;
                nearest = min(nearest, away);
            }
        }
    }
    return result;
})",
    R"(float fit_noise(float noise, float low, float high, bool limited)
{
    float result = mix(low, high, noise);
    return limited ? clamp(result, low, high) : result;
})",
};

} // namespace

Library_texts noise_library()
{
    return {texts, std::size(texts)};
}

} // namespace reference_host
