// The front door of the stand-in's compiler: shader graph in, source texts out.
//
// Life of one generation:
//   1. compile_group or compile_node lowers the graph below the shader, as the first set of options
//      says (lights, environment, volume, internal space, ...), to a module without any language in
//      it, and keeps that. The result refers to the graph, which must outlive it.
//   2. Compiled_shader::generate makes the texts for a target as the second set of options says: a
//      copy of the module goes through the passes and to the target's printer. It may be called any
//      number of times; equal options give equal bytes.
// Everything that goes wrong becomes a diagnostic; nothing throws.
#ifndef REFERENCE_HOST_GENERATOR_GENERATOR_H
#define REFERENCE_HOST_GENERATOR_GENERATOR_H

#include "reference_host/options/generation.h"

#include <memory>
#include <string>
#include <vector>

namespace reference_host
{

struct Module;

// What the shader of a node asks of its scene. The declaration of the node answers has_parameter
// and uses_function from this.
struct Shader_usage {
    bool lights_parameter = false;    // has_parameter("lights")
    bool direct_light = false;        // uses_function("direct_light")
    bool reflect_environment = false; // metal, coat: without an environment much is missing
    bool refract_environment = false; // transmission: likewise
    bool trace_environment = false;   // the text reads an environment when the scene has one
};

// About the node itself, not about what is connected to it.
Shader_usage shader_usage(const Node& node);

// The kind of a node as the plug-in asks for it: "surface", "environment", "lens", "light",
// "volume". Pattern nodes count as "surface".
const char* shader_kind(const Node& node);

class Compiled_shader
{
public:
    virtual ~Compiled_shader() = default;

    // Makes the source texts for a target: "FX" one effect; "GL" vertex and fragment shader; "Swrc"
    // C++ source and qz scene text. Returns no text when it fails; `diagnostics` then says why. An
    // unknown option or an impossible value is a warning or an error there, never silence.
    virtual std::vector<std::string> generate(const std::string& target, const Option_set& options,
                                              Diagnostics& diagnostics) const = 0;

    // The module as it is after a phase (see phase_names) on the way to a text for the target. Null
    // when something fails before.
    virtual std::unique_ptr<Module> module_after(const std::string& phase,
                                                 const std::string& target,
                                                 const Option_set& options,
                                                 Diagnostics& diagnostics) const = 0;

    // Whether the shader reads the named field of the shading state: "texture_tangent",
    // "texture_binormal", "tangent_space", "position", "normal", "texture_coordinate", ...
    virtual bool uses_state(const std::string& name) const = 0;
};

// The phases after which a module can be looked at: "lower", then the passes.
std::vector<std::string> phase_names();

// Compiles the node that the option "shader_name" names, together with the lights, environment and
// volume that `options` names. Null on failure, with the reasons in `diagnostics`.
std::unique_ptr<Compiled_shader> compile_group(const Shader_graph& graph, const Option_set& options,
                                               const Generator_settings& settings,
                                               Diagnostics& diagnostics);

// Compiles one node by itself, without lights, environment or volume.
std::unique_ptr<Compiled_shader> compile_node(const Shader_graph& graph, const Node& node,
                                              const Generator_settings& settings,
                                              Diagnostics& diagnostics);

} // namespace reference_host

#endif
