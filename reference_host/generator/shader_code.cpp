#include "reference_host/generator/shader_code.h"

#include "reference_host/generator/printer.h"
#include "reference_host/generator/shading_state.h"
#include "reference_host/generator/surface_models.h"
#include "reference_host/generator/transforms.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace reference_host
{
namespace
{

// Fields of the structure Surface, which are also slots of the surface models.
constexpr const char* surface_fields[] = {"base_color",     "diffuse_roughness",  "metalness",
                                          "specular_color", "specular_roughness", "specular_ior",
                                          "transmission",   "transmission_color", "coat",
                                          "coat_color",     "coat_roughness",     "coat_ior",
                                          "sheen_color",    "sheen_roughness"};

// Parts of the surface model that the code has only when a slot contributes.
struct Feature {
    const char* constant; // of the library
    const char* slot;
};

constexpr Feature features[] = {
    {"has_diffuse_roughness", "diffuse_roughness"},
    {"has_metalness", "metalness"},
    {"has_transmission", "transmission"},
    {"has_coat", "coat"},
    {"has_sheen", "sheen_color"},
};

// What a light of each kind needs, and what stands for it where the node does not have it.
struct Light_input {
    const char* name;
    const char* fallback;
};

constexpr Light_input light_inputs[] = {
    {"position", "float3(0.0)"}, {"direction", "float3(0.0, 0.0, -1.0)"},
    {"decay_rate", "2.0"},       {"inner_angle", "0.4"},
    {"outer_angle", "0.5"},
};

std::string light_input(const Node& node, const std::string& name)
{
    const Node_definition* definition = find_definition(node);
    if (definition && definition->find_input(name))
        return name;
    const auto found =
        std::find_if(std::begin(light_inputs), std::end(light_inputs),
                     [&](const Light_input& candidate) { return name == candidate.name; });
    return found->fallback;
}

Light_kind kind_of(const Scene_light& light)
{
    if (light.option.kind_given)
        return light.option.kind;
    if (light.node->category == "point_light")
        return Light_kind::point;
    return light.node->category == "spot_light" ? Light_kind::spot : Light_kind::directional;
}

// The cosines of the angles from the axis where a spot light begins to fade and where it ends. A
// spread, the full cone in degrees, fades over its last fifth.
std::pair<std::string, std::string> cone_cosines(const Scene_light& light)
{
    if (light.option.spread <= 0.0)
        return {"cos(" + light_input(*light.node, "inner_angle") + ")",
                "cos(" + light_input(*light.node, "outer_angle") + ")"};
    const double half = light.option.spread / 360.0 * std::acos(-1.0);
    return {number_text(std::cos(half * 0.8)), number_text(std::cos(half))};
}

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

void append(Statements& statements, Statements more)
{
    std::move(more.begin(), more.end(), std::back_inserter(statements));
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

void Shader_code::define_features()
{
    const Surface_model& model = *find_surface_model(m_request.shader->category);
    for (const Feature& feature : features)
        m_program.define(feature.constant,
                         boolean_literal(slot_contributes(*m_request.shader, model, feature.slot)));
    m_program.define("surface", variable(Shading_type("Surface"), "surface"));
    m_program.define("color", variable(Kind::float3, "color"));
    m_program.define("shaded", m_program.find_variable("color"));
}

Statements Shader_code::parse(const std::string& text)
{
    return parse_statements(text, m_program);
}

bool Shader_code::reads_environment() const
{
    const bool looks =
        contributes("metalness") || contributes("coat") || contributes("transmission");
    return looks && (m_request.environment || m_environment_list);
}

void Shader_code::add_environment()
{
    const Node& node = *m_request.environment;
    Graph_builder builder(m_context, node, make_identifier(node.name) + "_");
    m_environment_function = m_names.take(node.name);
    const Node_definition* definition = find_definition(node);
    const Shading_type type = shading_type(definition ? definition->outputs[0].type : Type::none);
    if (!is_float(type))
        throw Refusal{&node, "its value is no colour of an environment"};
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
    const Node_definition* definition = find_definition(node);
    const Shading_type type = shading_type(definition ? definition->outputs[0].type : Type::none);
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

void Shader_code::add_surface()
{
    const Node& node = *m_request.shader;
    const Surface_model& model = *find_surface_model(node.category);
    m_without_counterpart = inputs_without_counterpart(node, model);
    define_features();
    if (reads_environment() && m_request.environment)
        add_environment();
    Graph_builder builder(m_context, node, "");
    Statements shading;
    shading.push_back(declare(Kind::float3, "color", own_light(builder)));
    if (model.lit) {
        append(shading, environment_statements(builder));
        append(shading, light_statements());
    }
    append(shading, volume_statements());
    shading.push_back(
        give_back(construct(Kind::float4, {m_program.find_variable("color"), opacity(builder)})));
    Statements filling = fill_surface(builder, shading);

    Statements body = builder.statements();
    const auto add_paragraph = [&body](Statements more) {
        if (!body.empty() && !more.empty())
            body.push_back(comment(""));
        append(body, std::move(more));
    };
    add_paragraph(std::move(filling));
    add_paragraph(std::move(shading));
    add_shader(std::move(body));
}

Expr Shader_code::slot(Graph_builder& builder, const std::string& name)
{
    return builder.shader_expression(
        slot_expression(*find_surface_model(m_request.shader->category), name));
}

bool Shader_code::contributes(const std::string& slot) const
{
    const Surface_model* model = find_surface_model(m_request.shader->category);
    return model && slot_contributes(*m_request.shader, *model, slot);
}

// What the surface sends to the eye without lights: ambient light and emission.
Expr Shader_code::own_light(Graph_builder& builder)
{
    const Expr emission = slot(builder, "emission");
    if (m_options.scene_ambient.empty() || !find_surface_model(m_request.shader->category)->lit)
        return emission;
    const Expr ambient = parse_expression("scene_ambient.xyz * surface.base_color", m_program);
    return binary("+", binary("*", ambient, slot(builder, "occlusion")), emission);
}

// Without an environment that shows through, a transmitting surface is as opaque as its highlights.
Expr Shader_code::opacity(Graph_builder& builder)
{
    if (!m_options.alpha_transparency)
        return literal(1.0);
    const Expr opacity = slot(builder, "opacity");
    if (!contributes("transmission") || reads_environment())
        return opacity;
    m_program.define("opacity", opacity);
    return parse_expression(
        "mix(opacity, saturate(max(color.x, max(color.y, color.z))), surface.transmission)",
        m_program);
}

// Declares the surface with those fields that the shading reads.
Statements Shader_code::fill_surface(Graph_builder& builder, const Statements& shading)
{
    std::set<std::string> read;
    const auto note = [&](const Expression& expression) {
        if (expression.op == Op::member && expression.operands[0]->type == Shading_type("Surface"))
            read.insert(expression.name);
    };
    visit(shading, note);
    for (const Function& function : m_program.functions())
        visit(function.body, note);

    Statements body;
    const Expr surface = m_program.find_variable("surface");
    if (!read.empty())
        body.push_back(declare(surface->type, "surface", nullptr));
    for (const char* field : surface_fields) {
        if (!read.count(field))
            continue;
        const Expr target = member(surface, field, m_program.find_member("Surface", field));
        const Expr value = slot(builder, field);
        body.push_back(assign(target, "=", construct(target->type, {value})));
    }
    const Expr normal = slot(builder, "normal");
    const Expr own = state_field("normal");
    if (!read.empty() && (normal->op != Op::member || normal->name != own->name))
        body.push_back(assign(own, "=", normal));
    return body;
}

// What the surface mirrors and lets through of the environment.
Statements Shader_code::environment_statements(Graph_builder& builder)
{
    if (!reads_environment())
        return {};
    Statements body;
    if (contributes("metalness") || contributes("coat"))
        append(body, environment_lookup("mirrored_state", "reflect(state.direction, state.normal)",
                                        "mirror_response"));
    if (contributes("transmission"))
        append(body, environment_lookup(
                         "refracted_state",
                         "refract(state.direction, state.normal, 1.0 / surface.specular_ior)",
                         "transmission_response"));
    const Expr occlusion = slot(builder, "occlusion");
    if (!is_one(occlusion))
        body.push_back(assign(m_program.find_variable("color"), "*=", occlusion));
    return body;
}

// The environment in another direction than that of the eye, by way of a state of its own.
Statements Shader_code::environment_lookup(const std::string& looking, const std::string& direction,
                                           const std::string& response)
{
    const Expr state = m_program.find_variable("state");
    const Expr other = variable(state->type, looking);
    m_program.define(looking, other);
    Statements body = {declare(state->type, looking, state)};
    append(body, parse(looking + ".direction = " + direction + ";"));
    if (m_environment_list) {
        append(body, parse("for (int i = 0; i < environments.length; i++) color += " + response +
                           "(surface, state, environments[i].eval(" + looking + ").xyz);"));
        return body;
    }
    m_program.define("environment_color", call(m_environment_function, Kind::float3, {other}));
    append(body, parse("color += " + response + "(surface, state, environment_color);"));
    return body;
}

Statements Shader_code::light_statements()
{
    if (m_lighting != Lighting::fixed)
        return parse("for (int i = 0; i < lights.length; i++)"
                     "{"
                     "    Light_iterator light = lights[i].eval(state);"
                     "    color += light_response(surface, state, light);"
                     "}");
    Statements body;
    for (const Scene_light& light : m_request.lights)
        append(body, fixed_light(light));
    return body;
}

// The call that evaluates a light, in the notation over the inputs of its node.
std::string Shader_code::light_call(const Scene_light& light) const
{
    const Node& node = *light.node;
    const std::string position = internal_position(light_input(node, "position"), m_internal_space);
    const std::string direction =
        internal_direction(light_input(node, "direction"), m_internal_space, m_language);
    const std::string decay = light_input(node, "decay_rate");
    switch (kind_of(light)) {
    case Light_kind::point:
        return "point_light(state, " + position + ", " + decay + ", color * intensity)";
    case Light_kind::spot: {
        const auto [inner, outer] = cone_cosines(light);
        return "spot_light(state, " + position + ", " + direction + ", " + decay + ", " + inner +
               ", " + outer + ", color * intensity)";
    }
    default:
        return "directional_light(state, " + direction + ", color * intensity)";
    }
}

Statements Shader_code::fixed_light(const Scene_light& light)
{
    const std::string name = m_names.take(light.node->name);
    Graph_builder builder(m_context, *light.node, name + "_");
    const Expr iterator = builder.shader_expression(light_call(light));
    Statements body = builder.statements();
    body.push_back(declare(iterator->type, name, iterator));
    m_program.define("light", variable(iterator->type, name));
    if (light.option.distance_limit > 0.0)
        append(body, parse("light.tsl_contribution *= fall_off(light.tsl_distance, " +
                           number_text(light.option.distance_limit) + ");"));
    append(body, parse("color += light_response(surface, state, light);"));
    return body;
}

Statements Shader_code::volume_statements()
{
    if (m_volume_list)
        return parse("for (int i = 0; i < volumes.length; i++)"
                     "    color *= volumes[i].eval(state).xyz;");
    if (!m_request.volume)
        return {};
    Graph_builder builder(m_context, *m_request.volume,
                          make_identifier(m_request.volume->name) + "_");
    const Expr value =
        builder.shader_expression("mix(color, shaded, fog_transmittance(state, density))");
    Statements body = builder.statements();
    body.push_back(assign(variable(Kind::float3, "color"), "=", value));
    return body;
}

// One light as the method of a structure that implements the interface.
void Shader_code::add_light()
{
    if (m_request.shader->type != Type::lightshader)
        throw Refusal{m_request.shader, "it is no light"};
    Scene_light light{m_request.shader, {}};
    Graph_builder builder(m_context, *light.node, m_name + "_");
    const Expr iterator = builder.shader_expression(light_call(light));
    Function function{
        iterator->type, "eval", {{Shading_type("State"), "state", ""}}, builder.statements()};
    function.body.push_back(give_back(iterator));
    m_program.add_function(std::move(function));
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

bool Shader_code::uses_state(const std::string& field) const
{
    return used_fields("State").count(field) != 0;
}

} // namespace reference_host
