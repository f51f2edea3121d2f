#include "reference_host/generator/shader_code.h"

#include "reference_host/generator/shading_state.h"
#include "reference_host/generator/surface_models.h"
#include "reference_host/generator/transforms.h"

#include <algorithm>

namespace reference_host
{
namespace
{

// Renderers and passes that cover the screen work in world space.
Space internal_space_of(const Shader_request& request, const Text_options& options,
                        Language language)
{
    if (language == Language::cpp || covers_screen(options))
        return Space::world;
    return options.internal_space.value_or(request.options.internal_space);
}

// Effects have textures and samplers, with two names.
std::string sampler_suffix(const Text_options& options, Language language)
{
    const bool effect = language == Language::cg || language == Language::hlsl;
    return effect && options.generate_texture_parameters ? "_sampler" : "";
}

} // namespace

Shader_code::Shader_code(const Shader_request& request, const Text_options& options,
                         Language language, Diagnostics& diagnostics)
    : m_request(request),
      m_options(options),
      m_language(language),
      m_internal_space(internal_space_of(request, options, language)),
      m_context{options,
                m_internal_space,
                sampler_suffix(options, language),
                request.options.ignore_literal,
                m_program,
                m_names,
                m_uniforms,
                diagnostics}
{
    const std::string& given =
        options.shader_name.empty() ? request.selected->name : options.shader_name;
    m_name = m_names.take(given);
    choose_lighting(options, language, diagnostics);
    define_scene(language);
    const std::string& type = options.shader_type;
    if (type == "light")
        add_light();
    else if (type == "volume")
        add_volume();
    else if (find_surface_model(request.shader->category) && type == "surface")
        add_surface();
    else
        add_pattern();
}

void Shader_code::choose_lighting(const Text_options& options, Language language,
                                  Diagnostics& diagnostics)
{
    const Group_options& group = m_request.options;
    if (language == Language::cpp) {
        m_lighting = Lighting::renderer;
        return;
    }
    const bool wanted = options.interfaces || group.preserve_light_loop;
    if (!wanted || group.resolve_unsized_arrays)
        return;
    if (language != Language::cg) {
        diagnostics.push_back({Severity::warning,
                               "the language has no interfaces: the shader gets the lights of the "
                               "scene in place of a list",
                               {}});
        return;
    }
    m_lighting = Lighting::list;
    const bool all = options.interfaces && !options.light_interfaces_only;
    m_volume_list = all && options.eval_volume;
    m_environment_list = all && !m_request.environment;
}

void Shader_code::define_scene(Language language)
{
    add_shading_structures(m_program);
    define_transforms(m_program, language, m_lighting == Lighting::list);
    m_program.define("state", variable(Shading_type("State"), "state"));
    m_program.define("scene_ambient", variable(Kind::float4, "scene_ambient"));
    const bool list = m_lighting != Lighting::fixed;
    m_program.define("light_list", boolean_literal(list || m_options.shader_type == "light"));
    const auto limited = [](const Scene_light& light) { return light.option.distance_limit > 0.0; };
    m_program.define(
        "has_distance_limit",
        boolean_literal(std::any_of(m_request.lights.begin(), m_request.lights.end(), limited)));
    if (!list)
        return;
    const std::string list_name =
        m_lighting == Lighting::list ? m_options.light_list_name : "lights";
    m_names.reserve(m_options.light_interface_name);
    m_names.reserve(list_name);
    m_program.define("lights",
                     variable(Shading_type(m_options.light_interface_name + "[]"), list_name));
    m_program.add_method(m_options.light_interface_name, "eval", Shading_type("Light_iterator"));
    m_program.define("volumes", variable(Shading_type("Volume[]"), "volumes"));
    m_program.add_method("Volume", "eval", Kind::float4);
    m_program.define("environments", variable(Shading_type("Environment[]"), "environments"));
    m_program.add_method("Environment", "eval", Kind::float4);
}

Statements Shader_code::parse(const std::string& text)
{
    return parse_statements(text, m_program);
}

void Shader_code::add_environment()
{
    const Node& node = *m_request.environment;
    Graph_builder builder(m_context, node, make_identifier(node.name) + "_");
    m_environment_function = m_names.take(node.name);
    const Node_definition* definition = node.definition;
    if (!definition)
        throw unknown_node(node);
    if (!is_float(shading_type(definition->outputs[0].type)))
        throw Refusal{&node, "its value is no colour of an environment"};
    const Shading_type type = shading_type(definition->outputs[0].type);
    const Expr value = builder.shader_expression(definition->outputs[0].implementation);
    Function function{Kind::float3,
                      m_environment_function,
                      {{Shading_type("State"), "state", ""}},
                      builder.statements()};
    function.body.push_back(give_back(component_count(type) >= 3
                                          ? swizzle(value, "xyz")
                                          : construct(Kind::float3, {swizzle(value, "x")})));
    remove_unused(function.body);
    m_program.add_function(std::move(function));
}

// The shader function: its parameters are the state and, for a renderer, the lights.
void Shader_code::add_shader(Statements body)
{
    remove_unused(body);
    std::set<std::string> read;
    visit(body, [&](const Expression& expression) {
        if (expression.op == Op::variable)
            read.insert(expression.name);
    });
    Function function{Kind::float4, m_name, {}, {}};
    if (read.count("state"))
        function.parameters.push_back({Shading_type("State"), "state", ""});
    if (m_lighting == Lighting::renderer && read.count("lights"))
        function.parameters.push_back({Shading_type("Light_list"), "lights", ""});
    function.body = std::move(body);
    m_program.add_function(std::move(function));
}

void Shader_code::add_pattern()
{
    const Node& node = *m_request.shader;
    const Node_definition* definition = node.definition;
    if (!definition)
        throw unknown_node(node);
    const Shading_type type = shading_type(definition->outputs[0].type);
    if (component_count(type) == 0 || component_count(type) > 4)
        throw Refusal{&node, "its value is no colour that could be shown"};
    Graph_builder builder(m_context, node, "");
    Expr value = builder.shader_expression(definition->outputs[0].implementation);
    if (component_count(type) == 1)
        value = construct(Kind::float3, {construct(Kind::float1, {value})});
    else if (component_count(type) == 2)
        value = construct(Kind::float3, {value, literal(0.0)});
    const Expr alpha =
        type == Kind::float4 && m_options.alpha_transparency ? swizzle(value, "w") : literal(1.0);
    Statements body = builder.statements();
    body.push_back(give_back(construct(Kind::float4, {swizzle(value, "xyz"), alpha})));
    add_shader(std::move(body));
}

void Shader_code::add_volume()
{
    if (m_request.shader->type != Type::volumeshader)
        throw Refusal{m_request.shader, "it is no volume"};
    Graph_builder builder(m_context, *m_request.shader, m_name + "_");
    const Expr passed = builder.shader_expression(
        "float4(mix(color, float3(1.0), fog_transmittance(state, density)), 1.0)");
    Function function{
        Kind::float4, "eval", {{Shading_type("State"), "state", ""}}, builder.statements()};
    function.body.push_back(give_back(passed));
    m_program.add_function(std::move(function));
}

std::vector<const Function*> Shader_code::used_functions() const
{
    const auto same = [](const Function& function, const Expression& call) {
        return function.name == call.name &&
               std::equal(call.operands.begin(), call.operands.end(), function.parameters.begin(),
                          function.parameters.end(),
                          [](const Expr& argument, const Variable_declaration& parameter) {
                              return argument->type == parameter.type;
                          });
    };
    // Callers stand after what they call, so one walk from the last function backwards is enough.
    const auto& functions = m_program.functions();
    std::set<const Function*> used = {&functions.back()};
    std::vector<const Function*> ordered;
    for (auto caller = functions.rbegin(); caller != functions.rend(); ++caller) {
        if (!used.count(&*caller))
            continue;
        ordered.insert(ordered.begin(), &*caller);
        visit(caller->body, [&](const Expression& expression) {
            for (const Function& function : functions)
                if (expression.op == Op::call && same(function, expression))
                    used.insert(&function);
        });
    }
    return ordered;
}

std::set<std::string> Shader_code::used_variables() const
{
    std::set<std::string> names;
    for (const Function* function : used_functions())
        visit(function->body, [&](const Expression& expression) {
            if (expression.op == Op::variable)
                names.insert(expression.name);
        });
    return names;
}

std::set<std::string> Shader_code::used_fields(const std::string& structure) const
{
    std::set<std::string> names;
    for (const Function* function : used_functions())
        visit(function->body, [&](const Expression& expression) {
            if (expression.op == Op::member &&
                expression.operands[0]->type == Shading_type(structure))
                names.insert(expression.name);
        });
    return names;
}

} // namespace reference_host
