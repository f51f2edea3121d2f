#include "reference_host/lowering/surface_lowering.h"

#include "reference_host/lowering/closures.h"
#include "reference_host/lowering/document_values.h"
#include "reference_host/lowering/light_lowering.h"
#include "reference_host/lowering/scene_values.h"
#include "reference_host/lowering/surroundings.h"
#include "reference_host/lowering/volume_lowering.h"
#include "reference_host/nodes/node_library.h"
#include "reference_host/shading/globals.h"

#include <algorithm>
#include <map>

namespace reference_host
{
namespace
{

// A lobe as the text has it: its values under names.
struct Named_lobe {
    std::string name;
    Expr state; // with the lobe's normal
    std::vector<Expr> arguments;
    Expr weight;
    Expr albedo; // where it has a name
};

Expr product(const Expr& a, const Expr& b)
{
    return binary(Operator::multiply, a, b);
}

class Surface_lowering
{
public:
    Surface_lowering(const Shader_request& request, Lowering_context& context)
        : m_request(request),
          m_context(context),
          m_builder(context, *request.shader, ""),
          m_surroundings(request, context)
    {
    }

    Statements body()
    {
        const Expr surface =
            m_builder.shader_expression(request_definition().outputs[0].implementation);
        m_surface = flattened(surface, [&](const Lobe& lobe) { return rest_of(lobe); });
        Statements filling = name_lobes();
        Statements shading = {declare(Base_type::float3, "color", own_light())};
        append(shading, environment());
        append(shading, lights());
        shading.push_back(volumes());
        append(shading, result());

        Statements body = m_builder.statements();
        for (Statements* paragraph : {&filling, &shading}) {
            body.push_back(empty_line());
            append(body, std::move(*paragraph));
        }
        return body;
    }

private:
    const Node_definition& request_definition() const
    {
        if (!m_request.shader->definition)
            throw Refusal(m_context.origin_of(*m_request.shader), "there is no such node");
        return *m_request.shader->definition;
    }

    // ---- lobes and their names ----

    Expr rest_of(const Lobe& lobe)
    {
        Expr& rest = m_rests[lobe.closure.get()];
        if (!rest)
            rest = variable(Base_type::float3,
                            m_context.names.take(m_builder.closure_name(lobe.closure) + "_rest"));
        return rest;
    }

    // A value under a name, unless it is simple.
    Expr named(const std::string& name, const Expr& value, Statements& statements)
    {
        if (is_simple(value))
            return value;
        const std::string unique = m_context.names.take(name);
        statements.push_back(declare(value->type, unique, value));
        return variable(value->type, unique);
    }

    // The normal of most lobes is that of the state; others have a state of their own.
    Statements name_lobes()
    {
        Statements values;
        Statements states;
        if (!m_surface.lobes.empty())
            m_states[printed(m_surface.lobes.front().normal)] = state_variable();
        for (const std::vector<Lobe>* lobes : {&m_surface.tops, &m_surface.lobes})
            for (const Lobe& lobe : *lobes)
                name_lobe(lobe, values, states);
        append(values, std::move(states));
        if (!m_surface.lobes.empty())
            values.push_back(
                assign(state_field(State_field::normal), m_surface.lobes.front().normal));
        add_rests(values);
        for (Lobe& lobe : m_surface.lobes) {
            Named_lobe& known = m_named[lobe.closure.get()];
            known.weight = named(known.name + "_weight", lobe.weight, values);
        }
        return values;
    }

    void name_lobe(const Lobe& lobe, Statements& values, Statements& states)
    {
        const auto [known, is_new] = m_named.try_emplace(lobe.closure.get());
        if (!is_new)
            return;
        Named_lobe& made = known->second;
        made.name = m_builder.closure_name(lobe.closure);
        for (std::size_t i = 0; i < lobe.arguments.size(); ++i)
            made.arguments.push_back(
                named(made.name + "_" + lobe.kind->parameters[i].name, lobe.arguments[i], values));
        Expr& state = m_states[printed(lobe.normal)];
        if (!state) {
            state = variable(Code_type("State"), m_context.names.take(made.name + "_state"));
            states.push_back(declare(state->type, state->name, state_variable()));
            states.push_back(assign(field_of(state, "normal"), lobe.normal));
        }
        made.state = state;
    }

    // Normals are told apart by what they are.
    static std::string printed(const Expr& value)
    {
        std::string text = std::to_string(static_cast<int>(value->op)) + value->name;
        for (const double number : value->numbers)
            text += " " + std::to_string(number);
        for (const Expr& operand : value->operands)
            text += "(" + printed(operand) + ")";
        return text;
    }

    // What lobes on top let through: the rest of what they reflect. In the order of their making,
    // which is from above to below.
    void add_rests(Statements& statements)
    {
        for (const Lobe& top : m_surface.tops) {
            Named_lobe& names = m_named[top.closure.get()];
            names.albedo =
                named(names.name + "_albedo", of_lobe(top, "albedo", names.state), statements);
            Expr albedo = names.albedo;
            if (top.kind->lets_through == Lets_through::mean_rest)
                albedo =
                    construct(Base_type::float3,
                              {call(Builtin::dot,
                                    {albedo, literal(Base_type::float3, {third, third, third})})});
            statements.push_back(let(rest_of(top)->name, binary(Operator::subtract, literal(1.0),
                                                                product(albedo, top.own_weight))));
        }
    }

    // A function of the lobe, with what comes before its parameters.
    template<class... Before>
    Expr of_lobe(const Lobe& lobe, const std::string& function, const Before&... before)
    {
        std::vector<Expr> arguments = {before...};
        const std::vector<Expr>& own = m_named[lobe.closure.get()].arguments;
        arguments.insert(arguments.end(), own.begin(), own.end());
        return m_context.library.call(std::string(lobe.kind->name) + "_" + function,
                                      std::move(arguments));
    }

    Expr weighted(const Lobe& lobe, const Expr& light)
    {
        return product(m_named[lobe.closure.get()].weight, light);
    }

    // ---- what the surface sends to the eye ----

    // Without lights: ambient light on diffuse lobes, and emission.
    Expr own_light()
    {
        Expr reflected = literal(Base_type::float3, {});
        for (const Lobe& lobe : m_surface.lobes)
            if (lobe.kind->looks == Looks::around)
                reflected = binary(Operator::add, reflected, m_named[lobe.closure.get()].weight);
        if (is_zero(reflected))
            return m_surface.emission;
        const Expr ambient = swizzle(find_global("scene_ambient"), "xyz");
        return choose(switch_variable(Switch::has_ambient),
                      binary(Operator::add, product(ambient, reflected), m_surface.emission),
                      m_surface.emission);
    }

    Statements result()
    {
        const Expr has_alpha = switch_variable(Switch::has_alpha);
        const Statement plain = return_value(construct(
            Base_type::float4, {m_color, choose(has_alpha, m_surface.opacity, literal(1.0))}));
        const auto transmits = [](const Lobe& lobe) {
            return lobe.kind->looks == Looks::through || lobe.kind->looks == Looks::ahead;
        };
        const auto through =
            std::find_if(m_surface.lobes.begin(), m_surface.lobes.end(), transmits);
        if (through == m_surface.lobes.end() || m_surroundings.are_known())
            return {plain};
        const Expr has_list = switch_variable(Switch::environment_list);
        Statement choice = condition(binary(Operator::both, has_alpha, logical_not(has_list)),
                                     seen_through(through->own_weight));
        choice.otherwise = {plain};
        return {choice};
    }

    // Without an environment, a transmitting surface is as opaque as its highlights. Blending
    // multiplies by that, so that they are divided by it before.
    Statements seen_through(const Expr& transmission)
    {
        const Expr highest = call(
            Builtin::max, {swizzle(m_color, "x"),
                           call(Builtin::max, {swizzle(m_color, "y"), swizzle(m_color, "z")})});
        const Expr shown = variable(Base_type::float1, m_context.names.take("shown"));
        return {declare(shown->type, shown->name,
                        call(Builtin::mix,
                             {literal(1.0), call(Builtin::saturate, {highest}), transmission})),
                assign(m_color, Operator::divide, call(Builtin::max, {shown, literal(0.0001)})),
                return_value(
                    construct(Base_type::float4, {m_color, product(shown, m_surface.opacity)}))};
    }

    // The value of a lobe's parameter; null when it has none of that name.
    Expr argument(const Lobe& lobe, const std::string& name)
    {
        const std::vector<Expr>& values = m_named[lobe.closure.get()].arguments;
        for (std::size_t i = 0; i < values.size(); ++i)
            if (name == lobe.kind->parameters[i].name)
                return values[i];
        return nullptr;
    }

    Expr alpha(const Lobe& lobe)
    {
        if (const Expr both = argument(lobe, "alphas"))
            return m_context.library.call("mean_alpha", {both});
        const Expr one = argument(lobe, "alpha");
        return one ? one : literal(0.0);
    }

    // Where a lobe looks.
    Expr direction(const Lobe& lobe)
    {
        const Expr& state = m_named[lobe.closure.get()].state;
        if (lobe.kind->looks == Looks::mirrored)
            return m_context.library.call("bent_mirror", {state, alpha(lobe)});
        if (lobe.kind->looks == Looks::through)
            return m_context.library.call("through_ball", {state, argument(lobe, "ior")});
        return field_of(state, "direction");
    }

    // What of its surroundings the surface shows.
    Statements environment()
    {
        Statements body;
        std::map<std::string, Expr> irradiances; // by the name of the state and the side
        for (const Lobe& lobe : m_surface.lobes) {
            const Named_lobe& names = m_named[lobe.closure.get()];
            Expr light;
            if (lobe.kind->looks == Looks::around || lobe.kind->looks == Looks::behind) {
                const bool behind = lobe.kind->looks == Looks::behind;
                Expr& known = irradiances[names.state->name + (behind ? " behind" : "")];
                const Expr normal = field_of(names.state, "normal");
                if (!known)
                    known = named("irradiance",
                                  m_surroundings.irradiance("around", names.state,
                                                            behind ? negate(normal) : normal, body),
                                  body);
                light = known;
            } else {
                light = m_surroundings.seen(names.name + "_seen", names.state, direction(lobe),
                                            alpha(lobe), body);
            }
            if (lobe.kind->has_albedo())
                light = product(names.albedo ? names.albedo : of_lobe(lobe, "albedo", names.state),
                                light);
            body.push_back(assign(m_color, Operator::add, weighted(lobe, light)));
        }
        if (m_surroundings.are_known() || body.empty())
            return body;
        return {condition(switch_variable(Switch::environment_list), std::move(body))};
    }

    Statements response(const Expr& light)
    {
        Statements body;
        for (const Lobe& lobe : m_surface.lobes)
            if (lobe.kind->is_lit())
                body.push_back(
                    assign(m_color, Operator::add,
                           weighted(lobe, of_lobe(lobe, "lit", m_named[lobe.closure.get()].state,
                                                  light))));
        return body;
    }

    Statements lights()
    {
        const auto is_lit = [](const Lobe& lobe) { return lobe.kind->is_lit(); };
        if (std::none_of(m_surface.lobes.begin(), m_surface.lobes.end(), is_lit))
            return {};
        const Response to_light = [&](const Expr& light) { return response(light); };
        Statements each;
        for (const Scene_light& light : m_request.lights)
            append(each, lit_by(light, to_light, m_context));
        Statement choice = condition(switch_variable(Switch::light_list), lit_by_list(to_light));
        choice.otherwise = std::move(each);
        return {choice};
    }

    Statement volumes()
    {
        Statement choice = condition(
            switch_variable(Switch::volume_list),
            {loop_over("Volume", "volumes", [&](const Expr& element) -> Statements {
                return {
                    assign(m_color, Operator::multiply,
                           swizzle(method(element, "eval", Base_type::float4, {state_variable()}),
                                   "xyz"))};
            })});
        if (m_request.volume)
            choice.otherwise = volume(*m_request.volume);
        return choice;
    }

    Statements volume(const Node& node)
    {
        static const Reserved_names none;
        Graph_builder builder(m_context, node, make_identifier(node.name, none) + "_");
        const auto [color, passed] = volume_effect(node, builder, m_context);
        Statements body = builder.statements();
        body.push_back(assign(m_color, call(Builtin::mix, {color, m_color, passed})));
        return body;
    }

    static constexpr double third = 1.0 / 3.0;

    const Shader_request& m_request;
    Lowering_context& m_context;
    Graph_builder m_builder;
    Surroundings m_surroundings;
    const Expr m_color = variable(Base_type::float3, "color");
    Flat_surface m_surface;
    std::map<const Expression*, Expr> m_rests; // by closure
    std::map<const Expression*, Named_lobe> m_named;
    std::map<std::string, Expr> m_states; // by normal
};

bool is_default(const Input& input, const Input_definition& defined)
{
    return input.value && input.value->text == defined.value.text &&
           input.value->numbers == defined.value.numbers;
}

bool names_input(const Node_definition& definition, const std::string& name)
{
    const auto reads = [&](const Output_definition& value) {
        return names_word(value.implementation.text, name);
    };
    return std::any_of(definition.shared.begin(), definition.shared.end(), reads) ||
           std::any_of(definition.outputs.begin(), definition.outputs.end(), reads);
}

} // namespace

Statements surface_body(const Shader_request& request, Lowering_context& context)
{
    context.module.without_counterpart = inputs_without_counterpart(*request.shader);
    return Surface_lowering(request, context).body();
}

Surface_usage surface_usage(const Node& shader)
{
    Surface_usage usage;
    if (!shader.definition)
        return usage;
    Lowering_context context(false);
    Graph_builder builder(context, shader, "");
    const Expr rest = variable(Base_type::float3, "rest");
    const Flat_surface surface =
        flattened(builder.shader_expression(shader.definition->outputs[0].implementation),
                  [&](const Lobe&) { return rest; });
    const auto looking = [&](Looks looks) {
        return std::count_if(surface.lobes.begin(), surface.lobes.end(),
                             [&](const Lobe& lobe) { return lobe.kind->looks == looks; });
    };
    usage.is_lit = std::any_of(surface.lobes.begin(), surface.lobes.end(),
                               [](const Lobe& lobe) { return lobe.kind->is_lit(); });
    usage.looks_around = !surface.lobes.empty();
    usage.refracts = looking(Looks::through) + looking(Looks::ahead) > 0;
    usage.mirrors = looking(Looks::mirrored) > (looking(Looks::around) > 0 ? 1 : 0);
    return usage;
}

std::vector<std::string> inputs_without_counterpart(const Node& node)
{
    std::vector<std::string> names;
    const Node_definition* definition = node.definition;
    for (const Input& input : node.inputs) {
        const Input_definition* defined = definition ? definition->find_input(input.name) : nullptr;
        if (!defined || is_default(input, *defined) ||
            (input.value && !defined->default_source.empty()))
            continue;
        if (!names_input(*definition, input.name))
            names.push_back(input.name);
    }
    return names;
}

} // namespace reference_host
