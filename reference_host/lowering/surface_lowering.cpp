#include "reference_host/lowering/surface_lowering.h"

#include "reference_host/lowering/document_values.h"
#include "reference_host/lowering/light_lowering.h"
#include "reference_host/lowering/scene_values.h"
#include "reference_host/lowering/surface_models.h"
#include "reference_host/nodes/node_library.h"
#include "reference_host/shading/globals.h"

namespace reference_host
{
namespace
{

// Parts of the surface model that the code has only when a slot contributes.
struct Feature {
    Switch which;
    const char* slot;
};

constexpr Feature features[] = {
    {Switch::has_diffuse_roughness, "diffuse_roughness"},
    {Switch::has_metalness, "metalness"},
    {Switch::has_transmission, "transmission"},
    {Switch::has_coat, "coat"},
    {Switch::has_sheen, "sheen_color"},
};

class Surface_lowering
{
public:
    Surface_lowering(const Shader_request& request, Lowering_context& context)
        : m_request(request),
          m_context(context),
          m_model(*find_surface_model(request.shader->category)),
          m_builder(context, *request.shader, "")
    {
    }

    Statements body()
    {
        if (m_request.environment && looks_around())
            add_environment();
        Statements shading = {declare(Kind::float3, "color", own_light())};
        if (m_model.lit) {
            // The order of the text; the functions of what is certain are declared first.
            Statements lighting = m_request.environment ? Statements() : lights();
            append(shading, environment());
            append(shading, m_request.environment ? lights() : std::move(lighting));
        }
        shading.push_back(volumes());
        shading.push_back(give_back(construct(Kind::float4, {m_color, opacity()})));
        Statements filling = fill_surface();

        Statements body = m_builder.statements();
        for (Statements* paragraph : {&filling, &shading}) {
            body.push_back(empty_line());
            append(body, std::move(*paragraph));
        }
        return body;
    }

private:
    Expr slot(const std::string& name)
    {
        return m_builder.shader_expression(slot_expression(m_model, name));
    }

    bool contributes(const char* slot) const
    {
        return slot_contributes(*m_request.shader, m_model, slot);
    }

    bool looks_around() const
    {
        return contributes("metalness") || contributes("coat") || contributes("transmission");
    }

    // What the surface sends to the eye without lights: ambient light and emission.
    Expr own_light()
    {
        const Expr emission = slot("emission");
        if (!m_model.lit)
            return emission;
        const Expr ambient =
            binary(Operator::multiply, swizzle(find_global("scene_ambient"), "xyz"),
                   field_of(m_surface, "base_color"));
        const Expr reflected = binary(Operator::multiply, ambient, slot("occlusion"));
        return choose(switch_variable(Switch::has_ambient),
                      binary(Operator::add, reflected, emission), emission);
    }

    // Without an environment that shows through, a transmitting surface is as opaque as its
    // highlights.
    Expr opacity()
    {
        Expr opacity = slot("opacity");
        if (contributes("transmission") && !m_request.environment) {
            const auto part = [&](const char* name) { return swizzle(m_color, name); };
            const Expr highest =
                call(Builtin::max, {part("x"), call(Builtin::max, {part("y"), part("z")})});
            const Expr highlights = call(Builtin::mix, {opacity, call(Builtin::saturate, {highest}),
                                                        field_of(m_surface, "transmission")});
            opacity = choose(switch_variable(Switch::environment_list), opacity, highlights);
        }
        return choose(switch_variable(Switch::has_alpha), opacity, literal(1.0));
    }

    // The normal in the internal space.
    Expr normal()
    {
        const Expr given = slot("normal");
        return m_builder.reads_world_space(slot_expression(m_model, "normal"))
                   ? internal_direction(given)
                   : given;
    }

    // Fields that the shading does not read go with the pass "prune".
    Statements fill_surface()
    {
        Statements body = {declare(m_surface->type, "surface", nullptr)};
        for (const Variable_declaration& field : find_structure("Surface")->fields)
            body.push_back(
                assign(field_of(m_surface, field.name), construct(field.type, {slot(field.name)})));
        body.push_back(assign(state_field(State_field::normal), normal()));
        return body;
    }

    // What the surface mirrors and lets through of the environment.
    Statements environment()
    {
        if (!looks_around())
            return {};
        Statements body;
        const Expr direction = state_field(State_field::direction);
        const Expr normal = state_field(State_field::normal);
        if (contributes("metalness") || contributes("coat"))
            append(body, lookup("mirrored_state", call(Builtin::reflect, {direction, normal}),
                                "mirror_response"));
        if (contributes("transmission")) {
            const Expr ratio =
                binary(Operator::divide, literal(1.0), field_of(m_surface, "specular_ior"));
            append(body,
                   lookup("refracted_state", call(Builtin::refract, {direction, normal, ratio}),
                          "transmission_response"));
        }
        const Expr occlusion = slot("occlusion");
        if (!is_one(occlusion))
            body.push_back(assign(m_color, Operator::multiply, occlusion));
        if (m_request.environment)
            return body;
        return {condition(switch_variable(Switch::environment_list), std::move(body))};
    }

    // The environment in another direction than that of the eye, by way of a state of its own.
    Statements lookup(const std::string& name, const Expr& direction, const std::string& response)
    {
        const Expr looking = variable(Shading_type("State"), name);
        const auto add = [&](const Expr& seen) {
            return assign(m_color, Operator::add,
                          m_context.library.call(response, {m_surface, state_variable(), seen}));
        };
        Statements body = {declare(looking->type, name, state_variable()),
                           assign(field_of(looking, "direction"), direction)};
        if (m_request.environment)
            body.push_back(add(call(m_environment_function, Kind::float3, {looking})));
        else
            body.push_back(
                loop_over("Environment", "environments", [&](const Expr& element) -> Statements {
                    return {add(swizzle(method(element, "eval", Kind::float4, {looking}), "xyz"))};
                }));
        return body;
    }

    Statements lights()
    {
        Statements each;
        for (const Scene_light& light : m_request.lights)
            append(each, lit_by(light, m_surface, m_color, m_context));
        Statement choice = condition(switch_variable(Switch::light_list),
                                     lit_by_list(m_surface, m_color, m_context));
        choice.otherwise = std::move(each);
        return {choice};
    }

    Statement volumes()
    {
        Statement choice = condition(
            switch_variable(Switch::volume_list),
            {loop_over("Volume", "volumes", [&](const Expr& element) -> Statements {
                return {assign(
                    m_color, Operator::multiply,
                    swizzle(method(element, "eval", Kind::float4, {state_variable()}), "xyz"))};
            })});
        if (m_request.volume)
            choice.otherwise = volume(*m_request.volume);
        return choice;
    }

    Statements volume(const Node& node)
    {
        Graph_builder builder(m_context, node, make_identifier(node.name, library_prefix()) + "_");
        const Expr color = builder.shader_input("color");
        const Expr density = builder.shader_input("density");
        const Expr passed =
            m_context.library.call("fog_transmittance", {state_variable(), density});
        Statements body = builder.statements();
        body.push_back(assign(m_color, call(Builtin::mix, {color, m_color, passed})));
        return body;
    }

    void add_environment()
    {
        const Node& node = *m_request.environment;
        Graph_builder builder(m_context, node, make_identifier(node.name, library_prefix()) + "_");
        m_environment_function = m_context.names.take(node.name);
        const Node_definition* definition = node.definition;
        if (!definition)
            throw Refusal(m_context.origin_of(node), "there is no such node");
        const Shading_type type = shading_type(definition->outputs[0].type);
        if (!is_float(type))
            throw Refusal(m_context.origin_of(node), "its value is no colour of an environment");
        const Expr value = builder.shader_expression(definition->outputs[0].implementation);
        Function function{Kind::float3,
                          m_environment_function,
                          {{Shading_type("State"), "state", ""}},
                          builder.statements()};
        function.body.push_back(give_back(component_count(type) >= 3
                                              ? swizzle(value, "xyz")
                                              : construct(Kind::float3, {swizzle(value, "x")})));
        m_context.add_function(std::move(function));
    }

    // The names of parameters begin with that of their node, whatever it means by itself.
    static const Reserved_names& library_prefix()
    {
        static const Reserved_names none;
        return none;
    }

    const Shader_request& m_request;
    Lowering_context& m_context;
    const Surface_model& m_model;
    Graph_builder m_builder;
    const Expr m_surface = variable(Shading_type("Surface"), "surface");
    const Expr m_color = variable(Kind::float3, "color");
    std::string m_environment_function;
};

} // namespace

Statements surface_body(const Shader_request& request, Lowering_context& context)
{
    const Surface_model& model = *find_surface_model(request.shader->category);
    context.module.without_counterpart = inputs_without_counterpart(*request.shader, model);
    return Surface_lowering(request, context).body();
}

void add_features(const Node& shader, Switch_values& known)
{
    const Surface_model& model = *find_surface_model(shader.category);
    for (const Feature& feature : features)
        known[feature.which] = slot_contributes(shader, model, feature.slot);
}

} // namespace reference_host
