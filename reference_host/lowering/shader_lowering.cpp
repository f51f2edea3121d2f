#include "reference_host/lowering/shader_lowering.h"

#include "reference_host/lowering/document_values.h"
#include "reference_host/lowering/light_lowering.h"
#include "reference_host/lowering/surface_lowering.h"
#include "reference_host/lowering/volume_lowering.h"
#include "reference_host/nodes/node_library.h"
#include "reference_host/shading/verifier.h"

#include <algorithm>

namespace reference_host
{
namespace
{

Shader_role role_of(const Node& shader)
{
    if (shader.type == Value_type::lightshader)
        return Shader_role::light;
    if (shader.type == Value_type::volumeshader)
        return Shader_role::volume;
    return shader.type == Value_type::surfaceshader ? Shader_role::surface : Shader_role::pattern;
}

// Where a module comes from, as texts tell it.
void tell_source(const Shader_request& request, Module& module)
{
    const std::string scope = request.shader->scope.empty() ? "" : request.shader->scope + "/";
    module.document = request.graph->document;
    module.folder = request.graph->folder;
    module.node = scope + request.shader->name;
    module.category = request.shader->category;
}

Statements pattern_body(const Node& node, Lowering_context& context)
{
    const Node_definition* definition = node.definition;
    if (!definition)
        throw Refusal(context.origin_of(node), "there is no such node");
    const Code_type type = code_type(definition->outputs[0].type);
    if (component_count(type) == 0 || component_count(type) > 4)
        throw Refusal(context.origin_of(node), "cannot be exported: its output is not a colour");
    Graph_builder builder(context, node, "");
    Expr value = builder.shader_expression(definition->outputs[0].implementation);
    if (component_count(type) == 1)
        value = construct(Base_type::float3, {construct(Base_type::float1, {value})});
    else if (component_count(type) == 2)
        value = construct(Base_type::float3, {value, literal(0.0)});
    const Expr alpha = type == Base_type::float4 ? choose(switch_variable(Switch::has_alpha),
                                                          swizzle(value, "w"), literal(1.0))
                                                 : literal(1.0);
    Statements body = builder.statements();
    body.push_back(return_value(construct(Base_type::float4, {swizzle(value, "xyz"), alpha})));
    return body;
}

// What all volumes of a list do to a colour is eval's result.
Statements volume_body(const Node& node, const std::string& prefix, Lowering_context& context)
{
    Graph_builder builder(context, node, prefix);
    const auto [color, passed] = volume_effect(node, builder, context);
    const Expr white = literal(Base_type::float3, {1.0, 1.0, 1.0});
    Statements body = builder.statements();
    body.push_back(return_value(
        construct(Base_type::float4, {call(Builtin::mix, {color, white, passed}), literal(1.0)})));
    return body;
}

Function entry(const Shader_request& request, Lowering_context& context)
{
    const Module& module = context.module;
    Function function{Base_type::float4, module.name, {{Code_type("State"), "state", ""}}, {}};
    switch (module.role) {
    case Shader_role::light:
        function.name = "eval";
        function.type = Code_type("Light_iterator");
        function.body = light_body(*request.shader, module.name + "_", context);
        break;
    case Shader_role::volume:
        function.name = "eval";
        function.body = volume_body(*request.shader, module.name + "_", context);
        break;
    case Shader_role::surface:
        function.body = surface_body(request, context);
        break;
    default:
        function.body = pattern_body(*request.shader, context);
    }
    return function;
}

// What the document decides before any text is made.
Switch_values known_switches(const Shader_request& request, Shader_role role)
{
    Switch_values known;
    const auto limited = [](const Scene_light& light) { return light.option.distance_limit > 0.0; };
    known[Switch::has_distance_limit] =
        std::any_of(request.lights.begin(), request.lights.end(), limited);
    if (role == Shader_role::light)
        known[Switch::light_list] = true;
    return known;
}

} // namespace

Lowered_shader lower(const Shader_request& request)
{
    Lowering_context context(request.options.ignore_literal);
    Module& module = context.module;
    tell_source(request, module);
    module.role = role_of(*request.shader);
    module.name = context.names.take(request.selected->name);
    context.add_function(entry(request, context));
    module.origins = context.origins;
    verify(module, Verified::all_but_library);
    return {std::move(module), known_switches(request, module.role), std::move(context.warnings)};
}

} // namespace reference_host
