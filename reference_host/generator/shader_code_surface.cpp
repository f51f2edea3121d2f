#include "reference_host/generator/shader_code.h"

#include "reference_host/generator/shading_state.h"
#include "reference_host/generator/surface_models.h"
#include "reference_host/generator/transforms.h"

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

} // namespace

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

bool Shader_code::reads_environment() const
{
    const bool looks =
        contributes("metalness") || contributes("coat") || contributes("transmission");
    return looks && (m_request.environment || m_environment_list);
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
    Expr emission = slot(builder, "emission");
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
    Expr opacity = slot(builder, "opacity");
    if (!contributes("transmission") || reads_environment())
        return opacity;
    m_program.define("opacity", opacity);
    return parse_expression(
        "mix(opacity, saturate(max(color.x, max(color.y, color.z))), surface.transmission)",
        m_program);
}

// The normal in the internal space.
Expr Shader_code::normal(Graph_builder& builder)
{
    Expr given = slot(builder, "normal");
    const std::string expression =
        slot_expression(*find_surface_model(m_request.shader->category), "normal");
    if (!builder.reads_world_space(expression))
        return given;
    m_program.define("given_normal", given);
    return parse_expression(internal_direction("given_normal", m_internal_space, m_language),
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
    const Expr normal = this->normal(builder);
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

} // namespace reference_host
