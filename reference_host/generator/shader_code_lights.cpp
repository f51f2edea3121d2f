#include "reference_host/generator/shader_code.h"

#include "reference_host/generator/printer.h"
#include "reference_host/generator/transforms.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace reference_host
{
namespace
{

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
    const Node_definition* definition = node.definition;
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

} // namespace

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

} // namespace reference_host
