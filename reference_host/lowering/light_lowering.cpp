#include "reference_host/lowering/light_lowering.h"

#include "reference_host/lowering/document_values.h"
#include "reference_host/lowering/scene_values.h"
#include "reference_host/nodes/node_library.h"
#include "reference_host/shading/globals.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace reference_host
{
namespace
{

// What a light of each kind needs, and what stands for it where the node does not have it.
struct Light_input {
    const char* name;
    Base_type type;
    std::array<double, 16> fallback;
};

constexpr Light_input light_inputs[] = {
    {"position", Base_type::float3, {0.0, 0.0, 0.0}},
    {"direction", Base_type::float3, {0.0, 0.0, -1.0}},
    {"decay_rate", Base_type::float1, {2.0}},
    {"inner_angle", Base_type::float1, {0.4}},
    {"outer_angle", Base_type::float1, {0.5}},
};

Expr light_input(Graph_builder& builder, const Node& node, const std::string& name)
{
    const Node_definition* definition = node.definition;
    if (definition && definition->find_input(name))
        return builder.shader_input(name);
    const auto found =
        std::find_if(std::begin(light_inputs), std::end(light_inputs),
                     [&](const Light_input& candidate) { return name == candidate.name; });
    return literal(found->type, found->fallback);
}

Light_kind kind_of(const Scene_light& light)
{
    const Light_kind_row* usual = find_light_category(light.node->category);
    return light.option.kind_given || !usual ? light.option.kind : usual->kind;
}

// The cosines of the angles from the axis where a spot light begins to fade and where it ends. A
// spread, the full cone in degrees, fades over its last fifth.
void add_cone_cosines(const Scene_light& light, Graph_builder& builder,
                      std::vector<Expr>& arguments)
{
    if (light.option.spread > 0.0) {
        const double half = light.option.spread / 360.0 * std::acos(-1.0);
        arguments.push_back(literal(std::cos(half * 0.8)));
        arguments.push_back(literal(std::cos(half)));
        return;
    }
    for (const char* angle : {"inner_angle", "outer_angle"})
        arguments.push_back(call(Builtin::cos, {light_input(builder, *light.node, angle)}));
}

// Notes which parameters of a surface's lights a target may fill from a light of its own scene.
Expr noted(const Expr& value, const Scene_light& light, const char* aspect,
           Lowering_context& context)
{
    for (Module_parameter& parameter : context.module.parameters)
        if (context.module.role == Shader_role::surface && parameter.of_scene &&
            value->op == Op::variable && value->name == parameter.name) {
            parameter.light = row_of(kind_of(light)).category;
            parameter.aspect = aspect;
        }
    return value;
}

// The standard's general light has the colour of its distribution, and an exposure in stops.
Expr light_color(const Scene_light& light, Graph_builder& builder, Lowering_context& context)
{
    const Node& node = *light.node;
    const bool is_general = node.definition && node.definition->find_input("edf");
    if (!is_general && !(node.definition && node.definition->find_input("intensity")))
        throw Refusal(context.origin_of(node), "no text can be made of such a light");
    const Expr color = is_general ? builder.shader_input("edf")
                                  : noted(builder.shader_input("color"), light, "color", context);
    const Expr bright = binary(Operator::multiply, color, builder.shader_input("intensity"));
    if (!is_general)
        return bright;
    const Expr stops = call(Builtin::pow, {literal(2.0), builder.shader_input("exposure")});
    return binary(Operator::multiply, bright, stops);
}

// What a light sends to the state's point.
Expr light_value(const Scene_light& light, Graph_builder& builder, Lowering_context& context)
{
    const Node& node = *light.node;
    const auto input = [&](const char* name) { return light_input(builder, node, name); };
    std::vector<Expr> arguments = {state_variable()};
    const Light_kind kind = kind_of(light);
    if (kind != Light_kind::directional)
        arguments.push_back(
            internal_position(noted(input("position"), light, "position", context)));
    if (kind != Light_kind::point)
        arguments.push_back(
            internal_direction(noted(input("direction"), light, "direction", context)));
    if (kind != Light_kind::directional)
        arguments.push_back(input("decay_rate"));
    if (kind == Light_kind::spot)
        add_cone_cosines(light, builder, arguments);
    arguments.push_back(light_color(light, builder, context));
    return context.library.call(row_of(kind).category, std::move(arguments));
}

} // namespace

Statements light_body(const Node& light, const std::string& prefix, Lowering_context& context)
{
    Graph_builder builder(context, light, prefix);
    const Expr value = light_value({&light, {}}, builder, context);
    Statements body = builder.statements();
    body.push_back(return_value(value));
    return body;
}

Statements lit_by(const Scene_light& light, const Response& response, Lowering_context& context)
{
    const std::string name = context.names.take(light.node->name);
    Graph_builder builder(context, *light.node, name + "_");
    const Expr value = light_value(light, builder, context);
    const Expr arriving = variable(value->type, name);
    Statements body = builder.statements();
    body.push_back(declare(value->type, name, value));
    if (light.option.distance_limit > 0.0) {
        const Expr distance = field_of(arriving, "tsl_distance");
        body.push_back(assign(
            field_of(arriving, "tsl_contribution"), Operator::multiply,
            context.library.call("fall_off", {distance, literal(light.option.distance_limit)})));
    }
    append(body, response(arriving));
    return body;
}

Statement loop_over(const std::string& interface, const std::string& list,
                    const std::function<Statements(const Expr& element)>& body)
{
    const Expr elements = find_global(list);
    const Expr element = index(elements, variable(Base_type::integer, "i"), Code_type(interface));
    Statement loop;
    loop.kind = Statement::Kind::loop;
    loop.name = "i";
    loop.value = field_of(elements, "length");
    loop.body = body(element);
    return loop;
}

Statements lit_by_list(const Response& response)
{
    const Code_type type("Light_iterator");
    return {loop_over("Light", "lights", [&](const Expr& element) -> Statements {
        Statements body = {
            declare(type, "light", method(element, "eval", type, {state_variable()}))};
        append(body, response(variable(type, "light")));
        return body;
    })};
}

} // namespace reference_host
