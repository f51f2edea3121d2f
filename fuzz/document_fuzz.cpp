// Any bytes as a document: read, and generated in every language when it is accepted.
#include "reference_host/document/materialx_reader.h"
#include "reference_host/generator/generator.h"
#include "reference_host/system/memory_file.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace reference_host;

namespace
{

struct Text {
    const char* target;
    Option_set options;
};

// A text of each language, with as much in it as there can be.
const Text texts[] = {
    {"FX", {{"format", "CgFX"}, {"two_sided", "true"}, {"use_oit", "true"}}},
    {"FX", {{"format", "HLSL"}, {"alpha_transparency", "true"}, {"rotate_cube_map", "true"}}},
    {"FX", {{"format", "CgFX"}, {"interfaces", "true"}}},
    {"GL", {{"glsl_version", "110"}, {"flip_tex2d_v", "true"}}},
    {"GL", {{"glsl_version", "150"}, {"shader_type", "environment"}}},
    {"Swrc", {}},
};

// The node among what its document has around it: all lights, an environment, a volume.
Option_set in_scene(const Shader_graph& graph, const Node& node)
{
    Option_set options = {{"shader_name", full_name(node)}};
    for (const auto& other : graph.nodes) {
        const std::string kind = shader_kind(*other);
        if (kind == "light" && options.count("lights") > 0)
            options["lights"] += ", " + full_name(*other);
        else if (kind != "surface")
            options[kind == "light" ? "lights" : kind] = full_name(*other);
    }
    return options;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t most_nodes = 20; // one of them is enough to find a mistake
    const Memory_file file(std::string(reinterpret_cast<const char*>(data), size));
    const Read_result result = read_materialx(file.path(), {});
    if (!result.graph)
        return 0;
    std::size_t count = 0;
    for (const auto& node : result.graph->nodes) {
        if (++count > most_nodes)
            break;
        Diagnostics diagnostics;
        Option_set scene = in_scene(*result.graph, *node);
        scene["preserve_light_loop"] = size % 2 == 0 ? "true" : "false"; // some languages have none
        const auto shader = compile_group(*result.graph, scene, {}, diagnostics);
        for (const Text& text : texts) {
            if (shader)
                shader->generate(text.target, text.options, diagnostics);
        }
    }
    return 0;
}
