#include "reference_host/generator/generator.h"

#include "reference_host/document/shader_graph.h"
#include "reference_host/lowering/shader_lowering.h"
#include "reference_host/lowering/surface_lowering.h"
#include "reference_host/options/options.h"
#include "reference_host/passes/uses.h"
#include "reference_host/targets/effect_writer.h"
#include "reference_host/targets/glsl_writer.h"
#include "reference_host/targets/source_writer.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <set>
#include <stdexcept>

namespace reference_host
{
namespace
{

constexpr const char* after_lowering = "lower";

void report(Diagnostics& diagnostics, const Node& node, const std::string& reason)
{
    diagnostics.push_back({Severity::error, described(node) + ": " + reason, node.place});
}

void report(Diagnostics& diagnostics, const std::string& reason)
{
    diagnostics.push_back({Severity::error, reason, {}});
}

void report(Diagnostics& diagnostics, const Refusal& refusal, const Node& shader)
{
    const Origin& origin = refusal.origin;
    if (origin.name.empty())
        report(diagnostics, shader, refusal.what());
    else
        diagnostics.push_back({Severity::error, origin.name + ": " + refusal.what(), origin.place});
}

// The one place where what goes wrong below becomes a diagnostic.
template<class Action>
bool guarded(const Node& shader, Diagnostics& diagnostics, const Action& action)
{
    try {
        action();
        return !has_errors(diagnostics);
    } catch (const Refusal& refusal) {
        report(diagnostics, refusal, shader);
    } catch (const std::exception& error) {
        report(diagnostics, shader, error.what());
    }
    return false;
}

// The shader that a material has connected; the node itself when it is not a material.
const Node* shader_below(const Node& node, Diagnostics& diagnostics)
{
    if (node.type != Value_type::material)
        return &node;
    const char* input = node.category == "volumematerial" ? "volumeshader" : "surfaceshader";
    const Input* connected = node.find_input(input);
    if (connected && connected->source)
        return connected->source;
    report(diagnostics, node, std::string("no ") + input + " is connected");
    return nullptr;
}

bool is_light(const Node& node)
{
    return node.type == Value_type::lightshader;
}

bool is_volume(const Node& node)
{
    return node.type == Value_type::volumeshader || node.category == "volumematerial";
}

Language language_of(const std::string& target, const Text_options& options)
{
    constexpr int modern_version = 130; // of GLSL: from here on it has in and out
    if (target == "FX")
        return options.format == Effect_format::hlsl ? Language::hlsl : Language::cg;
    if (target == "GL")
        return options.glsl_version >= modern_version ? Language::glsl : Language::glsl_legacy;
    if (target == "Swrc")
        return Language::cpp;
    throw std::invalid_argument("there is no target \"" + target + "\"");
}

std::vector<std::string> write(const Module& module, const Text_plan& plan,
                               Diagnostics& diagnostics)
{
    switch (plan.dialect.language) {
    case Language::cpp:
        return write_source(module, plan);
    case Language::glsl:
    case Language::glsl_legacy:
        return write_glsl(module, plan);
    default:
        return {write_effect(module, plan, diagnostics)};
    }
}

class Compiled_graph : public Compiled_shader
{
public:
    // The request must have a graph and a shader.
    Compiled_graph(const Shader_request& request, const Generator_settings& settings)
        : m_shader(*request.shader), m_options(request.options), m_settings(settings)
    {
    }

    // False when it fails.
    bool lower_to_module(const Shader_request& request, Diagnostics& diagnostics)
    {
        return guarded(m_shader, diagnostics, [&] {
            Lowered_shader lowered = lower(request);
            m_module = std::move(lowered.module);
            m_known = std::move(lowered.known);
            m_warnings = std::move(lowered.warnings);
            warn_of_inputs_without_counterpart();
            if (m_module.has_refusals)
                read_by_default();
        });
    }

    std::vector<std::string> generate(const std::string& target, const Option_set& options,
                                      Diagnostics& diagnostics) const override
    {
        std::vector<std::string> texts;
        const bool good =
            with_plan(target, options, diagnostics, [&](const Text_plan& plan, Diagnostics& found) {
                texts = write(planned(m_module, plan), plan, found);
            });
        return good ? texts : std::vector<std::string>();
    }

    std::unique_ptr<Module> module_after(const std::string& phase, const std::string& target,
                                         const Option_set& options,
                                         Diagnostics& diagnostics) const override
    {
        auto module = std::make_unique<Module>(m_module);
        const bool good =
            with_plan(target, options, diagnostics, [&](const Text_plan& plan, Diagnostics&) {
                if (phase != after_lowering)
                    run_passes(*module, plan.passes, phase);
            });
        return good ? std::move(module) : nullptr;
    }

    bool uses_state(const std::string& name) const override
    {
        if (name == "tangent_space")
            return uses_state("texture_tangent") || uses_state("texture_binormal");
        const std::set<std::string>& fields = read_by_default();
        return std::any_of(fields.begin(), fields.end(), [&](const std::string& field) {
            return field == name ||
                   (name == "texture_coordinate" && field.compare(0, name.size(), name) == 0);
        });
    }

private:
    // Calls `action` with the plan of a text. False when something fails.
    template<class Action>
    bool with_plan(const std::string& target, const Option_set& options, Diagnostics& diagnostics,
                   const Action& action) const
    {
        Diagnostics found;
        const Text_options read = read_text_options(options, found);
        const bool good = !has_errors(found) && guarded(m_shader, found, [&] {
            const Text_plan plan = planned_text(language_of(target, read), read, found);
            found.insert(found.end(), m_warnings.begin(), m_warnings.end());
            action(plan, found);
        });
        diagnostics.insert(diagnostics.end(), found.begin(), found.end());
        return good;
    }

    void warn_of_inputs_without_counterpart()
    {
        std::string names;
        for (const std::string& input : m_module.without_counterpart)
            names += (names.empty() ? "" : ", ") + input;
        if (!names.empty())
            m_warnings.push_back({Severity::warning,
                                  described(m_shader) + ": without counterpart here: " + names,
                                  m_shader.place});
    }

    Text_plan planned_text(Language language, const Text_options& options,
                           Diagnostics& diagnostics) const
    {
        Text_plan plan = make_plan(language, m_options, options, m_settings, diagnostics);
        for (const auto& [which, value] : m_known)
            plan.passes.switches[which] = value;
        return plan;
    }

    // The fields of the state that the text of default options reads. It costs half as much as a
    // text, so it waits for the first question. Throws Refusal, at the first time.
    const std::set<std::string>& read_by_default() const
    {
        if (!m_state) {
            const Text_options options;
            Diagnostics warnings_of_defaults;
            Module module = m_module;
            run_passes(module, planned_text(Language::cg, options, warnings_of_defaults).passes,
                       "check");
            m_state = collect_uses(module).fields_of("State");
        }
        return *m_state;
    }

    const Node& m_shader;
    Group_options m_options;
    Generator_settings m_settings;
    Module m_module;       // with all switches left open
    Switch_values m_known; // what the document decides of them
    Diagnostics m_warnings;
    mutable std::optional<std::set<std::string>> m_state;
};

std::unique_ptr<Compiled_shader>
compile(const Shader_request& request, const Generator_settings& settings, Diagnostics& diagnostics)
{
    auto compiled = std::make_unique<Compiled_graph>(request, settings);
    if (!compiled->lower_to_module(request, diagnostics))
        return nullptr;
    return compiled;
}

// A node that an option names; null with an error when it is missing or of another kind.
const Node* named_node(const Shader_graph& graph, const std::string& name, const char* what,
                       bool (*fits)(const Node&), Diagnostics& diagnostics)
{
    const Node* node = graph.find_node(name);
    if (!node)
        report(diagnostics, std::string("there is no node \"") + name + "\" for the " + what);
    else if (!fits(*node))
        report(diagnostics, *node, std::string("it cannot be the ") + what);
    else
        return node;
    return nullptr;
}

bool is_colour(const Node& node)
{
    return component_count(node.type) > 0 && !is_light(node);
}

void find_scene(const Shader_graph& graph, Shader_request& request, Diagnostics& diagnostics)
{
    const Group_options& options = request.options;
    for (const Light_option& light : options.lights)
        if (const Node* node = named_node(graph, light.name, "light", is_light, diagnostics))
            request.lights.push_back({node, light});
    if (!options.environment.empty())
        request.environment =
            named_node(graph, options.environment, "environment", is_colour, diagnostics);
    if (!options.volume.empty())
        request.volume = named_node(graph, options.volume, "volume", is_volume, diagnostics);
    if (request.volume)
        request.volume = shader_below(*request.volume, diagnostics);
}

} // namespace

Shader_usage shader_usage(const Node& node)
{
    Shader_usage usage;
    if (node.type != Value_type::surfaceshader)
        return usage;
    const Surface_usage surface = surface_usage(node);
    usage.lights_parameter = surface.is_lit;
    usage.direct_light = surface.is_lit;
    usage.reflect_environment = surface.mirrors;
    usage.refract_environment = surface.refracts;
    usage.trace_environment = surface.looks_around;
    return usage;
}

const char* shader_kind(const Node& node)
{
    if (is_light(node))
        return "light";
    if (is_volume(node))
        return "volume";
    return node.category == "environment_map" ? "environment" : "surface";
}

std::vector<std::string> phase_names()
{
    std::vector<std::string> names = {after_lowering};
    for (const Pass& pass : passes())
        names.emplace_back(pass.name);
    return names;
}

std::unique_ptr<Compiled_shader> compile_group(const Shader_graph& graph, const Option_set& options,
                                               const Generator_settings& settings,
                                               Diagnostics& diagnostics)
{
    Diagnostics found;
    Shader_request request;
    request.graph = &graph;
    request.options = read_group_options(options, found);
    request.selected = graph.find_node(request.options.shader_name);
    if (!request.selected)
        report(found, "there is no node \"" + request.options.shader_name + "\"");
    else
        request.shader = shader_below(*request.selected, found);
    find_scene(graph, request, found);
    std::unique_ptr<Compiled_shader> compiled;
    if (!has_errors(found))
        compiled = compile(request, settings, found);
    diagnostics.insert(diagnostics.end(), found.begin(), found.end());
    return compiled;
}

std::unique_ptr<Compiled_shader> compile_node(const Shader_graph& graph, const Node& node,
                                              const Generator_settings& settings,
                                              Diagnostics& diagnostics)
{
    Diagnostics found;
    Shader_request request;
    request.graph = &graph;
    request.selected = &node;
    request.shader = shader_below(node, found);
    std::unique_ptr<Compiled_shader> compiled;
    if (request.shader)
        compiled = compile(request, settings, found);
    diagnostics.insert(diagnostics.end(), found.begin(), found.end());
    return compiled;
}

} // namespace reference_host
