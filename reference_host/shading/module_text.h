// A module as text, for people and tools: what it is, its parameters and textures, then its
// functions in the shading notation.
//
//     shader surface paint;
//     source document "wood.mtlx" folder "/home/me" node "paint_surface"
//         category "standard_surface";
//     without "thin_film_thickness", "coat_rotation";
//     name paint = "paint";
//     parameter float3 tint kind "color3" label "Tint" min 0.0 max 1.0 = float3(0.9, 0.8, 0.7);
//     texture sampler2D wood_map file "wood.png" label "Wood";
//
//     library float2 flip_v(float2 uv) { return float2(uv.x, 1.0 - uv.y); }
//
//     float4 paint(State state) { ... }
//
// A name stands with the wish that it comes from; "without" lists the inputs that have no
// counterpart; parameters of the scene or not to be changed say "scene" or "constant".
//
// Reading what was printed gives the same module, but of the origins of values only those of
// refused ones.
#ifndef REFERENCE_HOST_SHADING_MODULE_TEXT_H
#define REFERENCE_HOST_SHADING_MODULE_TEXT_H

#include "reference_host/shading/module.h"
#include "reference_host/shading/shade_file.h"

#include <string>

namespace reference_host
{

std::string module_text(const Module& module);

// Throws Shade_error or Notation_error for what is not a module, with the place.
Module read_module(const Shade_text& text);

} // namespace reference_host

#endif
