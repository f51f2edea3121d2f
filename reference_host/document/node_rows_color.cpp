#include "reference_host/document/node_rows.h"

#include <iterator>

namespace reference_host
{
namespace
{

using namespace row_types;

constexpr const char* blended = "float color3 color4";
constexpr const char* blend_inputs = "T fg, T bg, float mix = 1 [0 1]";
constexpr const char* luma = "T in, color3 lumacoeffs = 0.2722287 0.6740818 0.0536895";
constexpr const char* corrections =
    "T in, float hue, float saturation = 1, float gamma = 1, float lift, float gain = 1, "
    "float contrast = 1, float contrastpivot = 0.5, float exposure";
constexpr Node_row rows[] = {
    // Adjustment.
    {"contrast", numbers, "T in, T|float amount = 1, T|float pivot = 0.5",
     "T out = (in - pivot) * amount + pivot"},
    {"remap", numbers,
     "T in, T|float inlow = 0, T|float inhigh = 1, T|float outlow = 0, T|float outhigh = 1",
     "T out = outlow + (in - inlow) * (outhigh - outlow) / (inhigh - inlow)"},
    {"range", numbers,
     "T in, T|float inlow = 0, T|float inhigh = 1, T|float gamma = 1, T|float outlow = 0, "
     "T|float outhigh = 1, boolean doclamp = false",
     "T out = range(in, T(inlow), T(inhigh), T(gamma), T(outlow), T(outhigh), doclamp)"},
    {"smoothstep", numbers, "T in, T|float low = 0, T|float high = 1",
     "T out = smoothstep(low, high, in)"},
    {"luminance", "color3", luma, "T out = float3(dot(in, lumacoeffs))"},
    {"luminance", "color4", luma, "T out = float4(float3(dot(in.xyz, lumacoeffs)), in.w)"},
    {"rgbtohsv", "color3", "T in", "T out = rgb_to_hsv(in)"},
    {"rgbtohsv", "color4", "T in", "T out = float4(rgb_to_hsv(in.xyz), in.w)"},
    {"hsvtorgb", "color3", "T in", "T out = hsv_to_rgb(in)"},
    {"hsvtorgb", "color4", "T in", "T out = float4(hsv_to_rgb(in.xyz), in.w)"},
    {"hsvadjust", "color3", "T in, vector3 amount = 0 1 1", "T out = hsv_adjust(in, amount)"},
    {"hsvadjust", "color4", "T in, vector3 amount = 0 1 1",
     "T out = float4(hsv_adjust(in.xyz, amount), in.w)"},
    {"saturate", "color3",
     "T in, float amount = 1, color3 lumacoeffs = 0.2722287 0.6740818 0.0536895",
     "T out = mix(float3(dot(in, lumacoeffs)), in, amount)"},
    {"saturate", "color4",
     "T in, float amount = 1, color3 lumacoeffs = 0.2722287 0.6740818 0.0536895",
     "T out = float4(mix(float3(dot(in.xyz, lumacoeffs)), in.xyz, amount), in.w)"},
    {"colorcorrect", "color3", corrections,
     "T out = color_correct(in, hue, saturation, gamma, lift, gain, contrast, contrastpivot, "
     "exposure)"},
    {"colorcorrect", "color4", corrections,
     "T out = float4(color_correct(in.xyz, hue, saturation, gamma, lift, gain, contrast, "
     "contrastpivot, exposure), in.w)"},

    // Compositing.
    {"mix", numbers, "T fg, T bg, float|T mix = 0 [0 1]", "T out = mix(bg, fg, mix)"},
    {"plus", blended, blend_inputs, "T out = mix(bg, bg + fg, mix)"},
    {"minus", blended, blend_inputs, "T out = mix(bg, bg - fg, mix)"},
    {"difference", blended, blend_inputs, "T out = mix(bg, abs(bg - fg), mix)"},
    {"burn", blended, blend_inputs, "T out = mix(bg, blend_burn(fg, bg), mix)"},
    {"dodge", blended, blend_inputs, "T out = mix(bg, blend_dodge(fg, bg), mix)"},
    {"screen", blended, blend_inputs,
     "T out = mix(bg, T(1.0) - (T(1.0) - fg) * (T(1.0) - bg), mix)"},
    {"overlay", blended, blend_inputs, "T out = mix(bg, blend_overlay(fg, bg), mix)"},
    {"premult", "color4", "T in = 0 0 0 1", "T out = float4(in.xyz * in.w, in.w)"},
    {"unpremult", "color4", "T in = 0 0 0 1",
     "T out = float4(in.w == 0.0 ? in.xyz : in.xyz / in.w, in.w)"},
    {"in", "color4", blend_inputs, "T out = mix(bg, fg * bg.w, mix)"},
    {"out", "color4", blend_inputs, "T out = mix(bg, fg * (1.0 - bg.w), mix)"},
    {"mask", "color4", blend_inputs, "T out = mix(bg, bg * fg.w, mix)"},
    {"matte", "color4", blend_inputs,
     "T out = mix(bg, float4(mix(bg.xyz, fg.xyz, fg.w), fg.w + bg.w * (1.0 - fg.w)), mix)"},
    {"over", "color4", blend_inputs, "T out = mix(bg, fg + bg * (1.0 - fg.w), mix)"},
    {"disjointover", "color4", blend_inputs, "T out = mix(bg, disjoint_over(fg, bg), mix)"},
    {"inside", blended, "T in, float mask = 1 [0 1]", "T out = in * mask"},
    {"outside", blended, "T in, float mask = 0 [0 1]", "T out = in * (1.0 - mask)"},
};

} // namespace

Node_rows color_rows()
{
    return {rows, std::size(rows)};
}

} // namespace reference_host
