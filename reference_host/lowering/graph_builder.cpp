#include "reference_host/lowering/graph_builder.h"

#include "reference_host/lowering/closures.h"
#include "reference_host/lowering/color_space.h"
#include "reference_host/lowering/document_values.h"
#include "reference_host/lowering/scene_values.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace reference_host
{
namespace
{

constexpr const char* no_such_node = "there is no such node"; // of a node without a definition

// Whether a node gives a direction in the world space that it names.
bool gives_world_space(const Node& node)
{
    for (const char* name : {"space", "tospace"}) {
        const Input* space = node.find_input(name);
        if (space && space->value && space->value->text == "world")
            return node.category != "position" && node.category != "normalmap";
    }
    return false;
}

// Whether an input is a direction in which a surface lies.
bool is_turned(const Node& node, const Input_definition& defined)
{
    return !defined.default_source.empty() && defined.type == Value_type::vector3 &&
           node.definition && is_closure(code_type(node.definition->outputs[0].type));
}

// Fits a value to the type that the document says it has.
Expr as_type(const Expr& value, const Code_type& type)
{
    return value->type != type && component_count(value->type) == 1 && component_count(type) > 0
               ? construct(type, {value})
               : value;
}

} // namespace

Graph_builder::Graph_builder(Lowering_context& context, const Node& shader,
                             const std::string& prefix)
    : m_context(context), m_shader(shader), m_prefix(prefix)
{
}

void Graph_builder::make_current(const Node& node)
{
    m_current = &node;
    m_origin = m_context.origin_of(node);
}

Expr Graph_builder::noted_refusal(const Code_type& type, const std::string& reason)
{
    m_context.module.has_refusals = true;
    return with_origin(refused(type, reason), m_origin);
}

// Evaluates what is connected to the inputs that the texts name, and makes the shader current.
void Graph_builder::begin_shader(const std::string& texts)
{
    make_current(m_shader);
    const Node_definition* definition = m_shader.definition;
    if (!definition)
        throw Refusal(m_origin, no_such_node);
    for (const Input& given : m_shader.inputs)
        if (given.source && names_word(texts, given.name))
            evaluate(*given.source);
    make_current(m_shader);
    m_definition = definition;
}

Expr Graph_builder::shader_expression(const std::string& text)
{
    return shader_expression(Shade_text{text, {}});
}

Expr Graph_builder::shader_expression(const Shade_text& text)
{
    std::string texts(text.text);
    if (m_shader.definition)
        for (const Output_definition& shared : m_shader.definition->shared)
            texts.append(" ").append(shared.implementation.text);
    begin_shader(texts);
    for (const Output_definition& shared : m_definition->shared)
        if (!m_shared.count(shared.name))
            m_shared[shared.name] = compute(shared, shared.name);
    return parsed(text);
}

Expr Graph_builder::shader_input(const std::string& name)
{
    begin_shader(name);
    return input(m_shader, *m_definition->find_input(name));
}

// Whether a direction is in world space proper: a node names that space, where the shading's own
// directions are in the internal one.
bool Graph_builder::in_world_space(const Node& root) const
{
    std::vector<const Node*> open = {&root};
    std::unordered_set<const Node*> seen = {&root};
    while (!open.empty()) {
        const Node& node = *open.back();
        open.pop_back();
        if (gives_world_space(node))
            return true;
        for (const Input& given : node.inputs)
            if (given.source && given.type == Value_type::vector3 &&
                seen.insert(given.source).second)
                open.push_back(given.source);
    }
    return false;
}

void Graph_builder::evaluate(const Node& root)
{
    std::vector<Open_node> open = {{&root, 0}};
    while (!open.empty()) {
        const Node& node = *open.back().node;
        const Node* source = nullptr;
        while (!source && open.back().next_input < node.inputs.size())
            source = node.inputs[open.back().next_input++].source;
        if (m_values.count(&node)) {
            open.pop_back();
        } else if (source) {
            if (!m_values.count(source))
                open.push_back({source, 0});
        } else {
            compute(node);
            open.pop_back();
        }
    }
}

void Graph_builder::compute(const Node& node)
{
    make_current(node);
    m_definition = node.definition;
    if (!m_definition) {
        m_values[&node] = {noted_refusal(code_type(node.type), no_such_node)};
        return;
    }
    for (const Output_definition& shared : m_definition->shared)
        m_shared[shared.name] = compute(shared, node.name + "_" + shared.name);
    const bool single = m_definition->outputs.size() == 1;
    std::vector<Expr> values;
    for (const Output_definition& output : m_definition->outputs)
        values.push_back(compute(output, single ? node.name : node.name + "_" + output.name));
    m_shared.clear();
    m_values[&node] = std::move(values);
}

// What cannot be expressed is refused only where a text needs it.
Expr Graph_builder::compute(const Output_definition& output, const std::string& name)
{
    const std::string outer_name = std::exchange(m_name, name);
    const Code_type type = code_type(output.type);
    Expr value;
    try {
        if (output.implementation.text.empty())
            throw Refusal(m_origin, "a shader cannot be an input of a pattern");
        value = as_type(parsed(output.implementation), type);
    } catch (const Refusal& refusal) {
        value = noted_refusal(type, refusal.what());
    }
    m_name = outer_name;
    if (is_closure(type))
        name_closure(value, name);
    if (is_simple(value) || is_closure(type))
        return value;
    const std::string unique = m_context.names.take(name);
    m_lets[unique] = value;
    m_statements.push_back(let(unique, with_origin(value, m_origin)));
    m_statements.back().type = type;
    return variable(type, unique);
}

// What the notation cannot do is a refusal of the node that asks for it.
Expr Graph_builder::parsed(const Shade_text& implementation)
{
    try {
        return parse_expression(implementation, *this);
    } catch (const Notation_error& error) {
        throw Refusal(m_origin, error.what());
    }
}

Expr Graph_builder::find_variable(const std::string& name)
{
    if (const Input_definition* defined = m_definition->find_input(name))
        return m_bound ? bound_input(*defined) : input(*m_current, *defined);
    const auto shared = m_shared.find(name);
    if (shared != m_shared.end())
        return shared->second;
    if (name == "blur")
        return m_blur ? m_blur : literal(0.0);
    if (Expr source = find_scene_value(name))
        return source;
    const Expr known = m_context.library.find_variable(name);
    return known ? with_origin(known, m_origin) : nullptr;
}

Code_type Graph_builder::find_type(const std::string& name)
{
    return name == "T" ? code_type(m_definition->generic) : m_context.library.find_type(name);
}

Code_type Graph_builder::find_member(const std::string& structure, const std::string& member)
{
    return m_context.library.find_member(structure, member);
}

Expr Graph_builder::input(const Node& node, const Input_definition& defined)
{
    const Input* given = node.find_input(defined.name);
    if (!given)
        return absent_value(node, defined);
    if (given->source) {
        const Expr value = as_type(connected(*given), code_type(defined.type));
        return is_turned(node, defined) && in_world_space(*given->source)
                   ? internal_direction(value)
                   : value;
    }
    if (given->parameter) {
        const Value_type type = given->parameter->value.type;
        return code_type(type) == Base_type::text
                   ? text_literal(given->parameter->value.text)
                   : m_context.uniforms.exposed(*given->parameter, given->parameter->literal &&
                                                                       !m_context.ignores_literal);
    }
    return given_value(node, *given, defined);
}

Expr Graph_builder::connected(const Input& input)
{
    const Node_definition* definition = input.source->definition;
    const Output_definition* output =
        definition ? definition->find_output(input.source_output) : nullptr;
    const auto values = m_values.find(input.source);
    if (!definition && values != m_values.end())
        return values->second[0];
    if (!output || values == m_values.end())
        throw Refusal(m_origin, "input \"" + input.name + "\" is connected to no value");
    const Expr value =
        values->second[static_cast<std::size_t>(output - definition->outputs.data())];
    return input.channels.empty() ? value : channels_of({value, text_literal(input.channels)});
}

Expr Graph_builder::given_value(const Node& node, const Input& input,
                                const Input_definition& defined)
{
    const Value value =
        to_working_space(input.value ? *input.value : defined.value, input.color_space);
    Expr constant = literal(value);
    // A document may spell out the default normal; read it as the geometric normal.
    if ((&node == &m_shader || is_turned(node, defined)) && !defined.default_source.empty())
        return find_scene_value(defined.default_source);
    const bool steers =
        component_count(constant->type) == 0 || constant->type == Base_type::integer;
    // A weight that is left at zero adds nothing to a surface, and artists do not edit vectors.
    const bool idle = m_prefix.empty() && (value.type == Value_type::vector3 ||
                                           (is_zero(constant) && is_zero(literal(defined.value))));
    return &node != &m_shader || steers || idle ? constant : editable(defined, value, input.ui);
}

Expr Graph_builder::absent_value(const Node& node, const Input_definition& defined)
{
    if (!defined.default_source.empty())
        return find_scene_value(defined.default_source);
    // Lights and the like show all that they have; surfaces what the document sets.
    Expr constant = literal(defined.value);
    return &node != &m_shader || m_prefix.empty() || !is_float(constant->type)
               ? constant
               : editable(defined, defined.value, {});
}

Expr Graph_builder::editable(const Input_definition& defined, const Value& value, Ui_hints ui)
{
    const bool of_scene = !m_prefix.empty();
    if (of_scene && ui.folder.empty())
        ui.folder = m_shader.name;
    Expr& made = m_editable[defined.name];
    if (!made)
        made = m_context.uniforms.editable(m_prefix + defined.name, value, ui,
                                           {defined.min, defined.max}, of_scene);
    return made;
}

// An input of a node in a node.
Expr Graph_builder::bound_input(const Input_definition& defined)
{
    const auto bound = m_bound->find(defined.name);
    if (bound != m_bound->end())
        return as_type(bound->second, code_type(defined.type));
    return defined.default_source.empty() ? literal(defined.value)
                                          : find_scene_value(defined.default_source);
}

// The values that its outputs share are named after the value that the node is in.
Expr Graph_builder::node(const std::string& category, Named_values inputs)
{
    const Node_definition* definition = find_first_definition(category);
    if (!definition)
        throw Notation_error("there is no node \"" + category + "\"");
    std::unordered_map<std::string, Expr> bound;
    for (auto& [name, value] : inputs)
        bound[name] = std::move(value);
    const auto* const outer_definition = std::exchange(m_definition, definition);
    const auto* const outer_bound = std::exchange(m_bound, &bound);
    auto outer_shared = std::exchange(m_shared, {});
    for (const Output_definition& shared : definition->shared)
        m_shared[shared.name] = compute(shared, m_name + "_" + shared.name);
    const Output_definition& output = definition->outputs[0];
    const Expr value = as_type(parsed(output.implementation), code_type(output.type));
    m_definition = outer_definition;
    m_bound = outer_bound;
    m_shared = std::move(outer_shared);
    return value;
}

// Values that pass on a closure rename it.
void Graph_builder::name_closure(const Expr& closure, const std::string& name)
{
    m_closure_names[closure.get()] = name;
    if (closure->name == "opaque")
        name_closure(closure->operands[0], name);
}

std::string Graph_builder::closure_name(const Expr& closure) const
{
    const auto known = m_closure_names.find(closure.get());
    return known == m_closure_names.end() ? closure->name : known->second;
}

Expr Graph_builder::let_value(const Expr& value) const
{
    const auto known = value->op == Op::variable ? m_lets.find(value->name) : m_lets.end();
    return known == m_lets.end() ? value : known->second;
}

// known_zero(value): whether it is certain, when code is generated, that the value is zero.
Expr Graph_builder::known_zero(const std::vector<Expr>& arguments)
{
    return boolean_literal(is_zero(arguments.at(0)));
}

// known_round(value): whether it is certain that the two components are the same.
Expr Graph_builder::known_round(const std::vector<Expr>& arguments)
{
    const Expr value = let_value(arguments.at(0));
    if (is_literal(value))
        return boolean_literal(value->numbers.at(0) == value->numbers.at(1));
    return boolean_literal(value->op == Op::construct && value->operands.size() == 1);
}

Expr Graph_builder::call(const std::string& function, std::vector<Expr> arguments)
{
    using Special = Expr (Graph_builder::*)(const std::vector<Expr>&);
    static const std::unordered_map<std::string, Special> specials = {
        {"image", &Graph_builder::image},
        {"color_image", &Graph_builder::color_image},
        {"stored_image", &Graph_builder::stored_image},
        {"decoded", &Graph_builder::decoded},
        {"transform_names", &Graph_builder::transform_names},
        {"cube_image", &Graph_builder::cube_image},
        {"texture_set", &Graph_builder::texture_set},
        {"channels_of", &Graph_builder::channels_of},
        {"vertex_property", &Graph_builder::vertex_property},
        {"tangent_space_normal", &Graph_builder::tangent_space_normal},
        {"known_zero", &Graph_builder::known_zero},
        {"known_round", &Graph_builder::known_round},
        {"refused", &Graph_builder::refuse},
    };
    const auto special = specials.find(function);
    if (special != specials.end())
        return (this->*special->second)(arguments);
    if (is_closure_function(function))
        return with_origin(closure_call(function, std::move(arguments)), m_origin);
    return with_origin(m_context.library.call(function, std::move(arguments)), m_origin);
}

} // namespace reference_host
