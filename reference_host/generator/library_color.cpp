#include "reference_host/generator/library.h"

#include <iterator>

namespace reference_host
{
namespace
{

constexpr const char* texts[] = {
    // Hue, saturation, value, all from 0 to 1.
    R"(float3 rgb_to_hsv(float3 color)
{
    float high = max(color.x, max(color.y, color.z));
    float delta = high - min(color.x, min(color.y, color.z));
    float saturation = high > 0.0 ? delta / high : 0.0;
    float3 parts = (float3(high) - color) / max(delta, 0.000001);
    float hue = color.x >= high ? parts.z - parts.y
              : (color.y >= high ? 2.0 + parts.x - parts.z : 4.0 + parts.y - parts.x);
    return float3(delta > 0.0 ? fract(hue / 6.0) : 0.0, saturation, high);
})",
    R"(float3 hsv_to_rgb(float3 hsv)
{
    float3 ramps = abs(fract(float3(hsv.x) + float3(0.0, 0.6666667, 0.3333333)) * 6.0 - 3.0) - 1.0;
    return hsv.z * mix(float3(1.0), saturate(ramps), hsv.y);
})",
    R"(float3 hsv_adjust(float3 color, float3 amount)
{
    float3 hsv = rgb_to_hsv(color);
    return hsv_to_rgb(float3(fract(hsv.x + amount.x), hsv.y * amount.y, hsv.z * amount.z));
})",
    R"(float3 color_correct(float3 color, float hue, float saturation, float gamma, float lift,
                       float gain, float contrast, float pivot, float exposure)
{
    float3 result = hsv_adjust(color, float3(hue, 1.0, 1.0));
    result = mix(float3(dot(result, float3(0.2722287, 0.6740818, 0.0536895))), result, saturation);
    result = sign_of(result) * pow(abs(result), float3(1.0 / gamma));
    result = (result * (1.0 - lift) + lift) * gain;
    result = (result - pivot) * contrast + pivot;
    return result * pow(2.0, exposure);
})",
    R"(T blend_burn(T fg, T bg)
{
    return saturate(1.0 - (1.0 - bg) / max(fg, 0.000001));
})",
    R"(T blend_dodge(T fg, T bg)
{
    return bg / max(1.0 - fg, 0.000001);
})",
    R"(T blend_overlay(T fg, T bg)
{
    T dark = 2.0 * fg * bg;
    T light = 1.0 - 2.0 * (1.0 - fg) * (1.0 - bg);
    return mix(dark, light, step(T(0.5), fg));
})",
    R"(float4 disjoint_over(float4 fg, float4 bg)
{
    float sum = fg.w + bg.w;
    float share = sum > 1.0 ? (1.0 - fg.w) / max(bg.w, 0.000001) : 1.0;
    return float4(fg.xyz + bg.xyz * share, min(sum, 1.0));
})",

    R"(T mix_corners(T a, T b, T c, float3 weights)
{
    return a * weights.x + b * weights.y + c * weights.z;
})",
    R"(float3 gooch_shade(float3 warm, float3 cool, float intensity, float shininess, float3 light,
                   float3 normal, float3 view)
{
    float3 diffuse = mix(warm, cool, (1.0 + dot(normal, light)) * 0.5);
    float highlight = max(dot(-light, reflect(view, normal)), 0.0);
    return diffuse + intensity * pow(highlight, shininess);
})",
    // The colour of a glowing body: Kim's approximation of the Planckian locus (2002) at
    // luminance 1.
    R"(float3 blackbody(float temperature)
{
    float t = 1000.0 / clamp(temperature, 1667.0, 25000.0);
    float3 powers = float3(t * t * t, t * t, t);
    float x = temperature < 4000.0
            ? dot(powers, float3(-0.2661239, -0.2343589, 0.8776956)) + 0.17991
            : dot(powers, float3(-3.0258469, 2.1070379, 0.2226347)) + 0.24039;
    float3 x_powers = float3(x * x * x, x * x, x);
    float y = temperature < 2222.0
            ? dot(x_powers, float3(-1.1063814, -1.3481102, 2.1855583)) - 0.2021968
            : (temperature < 4000.0
               ? dot(x_powers, float3(-0.9549476, -1.3741859, 2.0913702)) - 0.1674887
               : dot(x_powers, float3(3.081758, -5.8733867, 3.75113)) - 0.3700148);
    float3 xyz = float3(x / y, 1.0, (1.0 - x - y) / y);
    return max(float3(dot(xyz, float3(3.2406, -1.5372, -0.4986)),
                      dot(xyz, float3(-0.9689, 1.8758, 0.0415)),
                      dot(xyz, float3(0.0557, -0.204, 1.057))), 0.0);
})",
    // Gulbrandsen, "Artist Friendly Metallic Fresnel" (2014).
    R"(float3 artistic_ior(float3 reflectivity, float3 edge_color)
{
    float3 r = clamp(reflectivity, 0.0, 0.99);
    float3 root = sqrt(r);
    float3 lowest = (1.0 - r) / (1.0 + r);
    float3 highest = (1.0 + root) / (1.0 - root);
    return mix(highest, lowest, edge_color);
})",
    R"(float3 artistic_extinction(float3 reflectivity, float3 ior)
{
    float3 r = clamp(reflectivity, 0.0, 0.99);
    float3 above = ior + 1.0;
    float3 below = ior - 1.0;
    return sqrt(max((r * above * above - below * below) / (1.0 - r), 0.0));
})",

    // Colour spaces, each to linear Rec. 709. The matrices are those of the primaries' chromaticity
    // coordinates, adapted to D65 by Bradford's method.
    R"(float3 srgb_to_linear(float3 color)
{
    float3 dark = color / 12.92;
    float3 bright = pow(max((color + 0.055) / 1.055, 0.0), float3(2.4));
    return mix(dark, bright, step(float3(0.04045), color));
})",
    R"(float3 gamma_to_linear(float3 color, float gamma)
{
    return pow(max(color, 0.0), float3(gamma));
})",
    R"(float3 ap1_to_rec709(float3 color)
{
    return float3(dot(color, float3(1.7050510, -0.6217921, -0.0832589)),
                  dot(color, float3(-0.1302564, 1.1408047, -0.0105483)),
                  dot(color, float3(-0.0240034, -0.1289690, 1.1529724)));
})",
    R"(float3 adobe_rgb_to_rec709(float3 color)
{
    return float3(dot(color, float3(1.3983557, -0.3983557, 0.0)), color.y,
                  dot(color, float3(0.0, -0.0429290, 1.0429290)));
})",
    R"(float3 display_p3_to_rec709(float3 color)
{
    return float3(dot(color, float3(1.2249402, -0.2249402, 0.0)),
                  dot(color, float3(-0.0420570, 1.0420570, 0.0)),
                  dot(color, float3(-0.0196376, -0.0786360, 1.0982736)));
})",
};

} // namespace

Library_texts color_library()
{
    return {texts, std::size(texts)};
}

} // namespace reference_host
