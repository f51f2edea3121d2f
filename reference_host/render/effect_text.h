// What the renderer must know of an effect file's text, without a compiler.
#ifndef REFERENCE_HOST_RENDER_EFFECT_TEXT_H
#define REFERENCE_HOST_RENDER_EFFECT_TEXT_H

#include <map>
#include <string>
#include <vector>

namespace reference_host
{

struct Effect_description {
    std::string vertex_entry;   // function of the first pass; empty when there is none
    std::string fragment_entry; // likewise
    bool direct3d = false;      // HLSL: matrices are filled for row vectors

    // File names by sampler, as the annotation ResourceName of the sampler or its texture says.
    std::map<std::string, std::string> texture_files;

    // The unsized lists by name, each with the structs that implement its interface.
    std::map<std::string, std::vector<std::string>> unsized_lists;
};

Effect_description describe_effect(const std::string& text);

// The same text with spaces in place of the semantics of global parameters, those of matrices
// excepted. The GLSL profiles of the Cg compiler take a parameter with a semantic of vertex data,
// such as the POSITION of a light, for vertex data, which a fragment program does not have.
std::string without_parameter_semantics(const std::string& text);

// File names by sampler, from comments of a GLSL text: "// texture NAME: FILE".
std::map<std::string, std::string> texture_comments(const std::string& text);

// A uniform that a GLSL text declares.
struct Glsl_uniform {
    std::string type;
    std::string name;
    bool has_value;
};

std::vector<Glsl_uniform> glsl_uniforms(const std::string& text);

} // namespace reference_host

#endif
