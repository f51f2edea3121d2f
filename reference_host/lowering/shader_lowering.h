// Turns a document's shader, and what lights it, into one module without any language in it.
#ifndef REFERENCE_HOST_LOWERING_SHADER_LOWERING_H
#define REFERENCE_HOST_LOWERING_SHADER_LOWERING_H

#include "reference_host/lowering/lowering_context.h"
#include "reference_host/options/options.h"
#include "reference_host/shading/switches.h"

#include <vector>

namespace reference_host
{

struct Scene_light {
    const Node* node;
    Light_option option;
};

// What compile_group found: the shader below a material, and what lights it.
struct Shader_request {
    const Shader_graph* graph = nullptr;
    const Node* selected = nullptr; // the node that was asked for
    const Node* shader = nullptr;   // the same, or the shader below a material
    std::vector<Scene_light> lights;
    const Node* environment = nullptr;
    const Node* volume = nullptr;
    Group_options options;
};

struct Lowered_shader {
    Module module;
    Switch_values known; // what the document decides
    Diagnostics warnings;
};

// Throws Refusal when there is nothing that could be a shader. What only a part of the shader
// cannot do is left in the module, as a value that is refused.
Lowered_shader lower(const Shader_request& request);

} // namespace reference_host

#endif
