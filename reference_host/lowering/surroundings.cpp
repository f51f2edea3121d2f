#include "reference_host/lowering/surroundings.h"

#include "reference_host/lowering/document_values.h"
#include "reference_host/lowering/graph_builder.h"
#include "reference_host/lowering/light_lowering.h"

namespace reference_host
{
namespace
{

// Diffuse reflection sees the smaller copy of a cube map that has four texels to a face. It keeps
// more of the difference between opposite sides than light from all around a normal has: the part
// of the other side makes up for it.
constexpr double diffuse_blur = 0.38;
constexpr double other_side = 0.1;

// For the first part of a parameter's name, "sky_": a reserved word does no harm there.
const Reserved_names& no_names()
{
    static const Reserved_names none;
    return none;
}

} // namespace

Surroundings::Surroundings(const Shader_request& request, Lowering_context& context)
    : m_environment(request.environment), m_context(context)
{
    if (m_environment)
        add_environment();
}

Expr Surroundings::seen(const std::string& name, const Expr& state, const Expr& direction,
                        const Expr& blur, Statements& statements)
{
    const Expr looking = variable(Code_type("State"), m_context.names.take(name + "_state"));
    const Expr color = variable(Base_type::float3, m_context.names.take(name));
    statements.push_back(declare(looking->type, looking->name, state));
    statements.push_back(assign(field_of(looking, "direction"), direction));
    if (are_known()) {
        statements.push_back(declare(color->type, color->name,
                                     call(m_function, Base_type::float3, {looking, blur})));
        return color;
    }
    statements.push_back(declare(color->type, color->name, literal(Base_type::float3, {})));
    statements.push_back(
        loop_over("Environment", "environments", [&](const Expr& element) -> Statements {
            return {assign(color, Operator::add,
                           swizzle(method(element, "eval", Base_type::float4, {looking}), "xyz"))};
        }));
    return color;
}

Expr Surroundings::irradiance(const std::string& name, const Expr& state, const Expr& normal,
                              Statements& statements)
{
    const Expr blur = literal(diffuse_blur);
    const Expr front = seen(name, state, normal, blur, statements);
    const Expr back = seen(name + "_behind", state, negate(normal), blur, statements);
    return call(Builtin::mix, {front, back, literal(other_side)});
}

void Surroundings::add_environment()
{
    const Node& node = *m_environment;
    Graph_builder builder(m_context, node, make_identifier(node.name, no_names()) + "_");
    const Expr blur = variable(Base_type::float1, "blur");
    builder.set_blur(blur);
    m_function = m_context.names.take(node.name);
    const Node_definition* definition = node.definition;
    if (!definition)
        throw Refusal(m_context.origin_of(node), "there is no such node");
    const Code_type type = code_type(definition->outputs[0].type);
    if (!is_float(type))
        throw Refusal(m_context.origin_of(node),
                      "cannot be an environment: its output is not a colour");
    const Expr value = builder.shader_expression(definition->outputs[0].implementation);
    Function function{Base_type::float3,
                      m_function,
                      {{Code_type("State"), "state", ""}, {Base_type::float1, blur->name, ""}},
                      builder.statements()};
    function.body.push_back(return_value(
        component_count(type) >= 3 ? swizzle(value, "xyz")
                                   : construct(Base_type::float3, {swizzle(value, "x")})));
    m_context.add_function(std::move(function));
}

} // namespace reference_host
