// Turns the programs of a CgFX or HLSL effect into GLSL, with the Cg compiler.
#ifndef REFERENCE_HOST_RENDER_EFFECT_TRANSLATION_H
#define REFERENCE_HOST_RENDER_EFFECT_TRANSLATION_H

#include "reference_host/render/drawing.h"

#include <map>
#include <optional>
#include <string>

namespace reference_host
{

struct Translated_effect {
    Drawing drawing; // texts, parameters and their values, labels; no textures yet
    // Image files by uniform of the GLSL text, and those of cube maps.
    std::map<std::string, std::string> texture_files;
    std::map<std::string, std::string> cube_files;
};

// `file` is the effect's name for messages, `text` its contents, `compiler` the program cgc. Every
// unsized list of an interface gets one element of each struct that implements it; the parameters
// of lights that have no value in the text get those of one light of each kind. Nothing on failure,
// with the reason in `error`.
std::optional<Translated_effect> translate_effect(const std::string& file, const std::string& text,
                                                  const std::string& compiler, std::string& error);

} // namespace reference_host

#endif
