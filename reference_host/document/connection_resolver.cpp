#include "reference_host/document/connection_resolver.h"

#include "reference_host/document/document_error.h"
#include "reference_host/document/element_values.h"
#include "reference_host/nodes/units.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace reference_host
{
namespace
{

// Inputs that had other names in 1.38.
struct Renamed_input {
    const char* category;
    const char* old_name;
    const char* name;
};

constexpr Renamed_input renamed_inputs[] = {
    {"atan2", "in1", "iny"},
    {"atan2", "in2", "inx"},
};

// Inputs that 1.39 no longer has, with the value that means what 1.39 always does.
struct Dropped_input {
    const char* category;
    const char* name;
    const char* value;
};

constexpr Dropped_input dropped_inputs[] = {
    {"normalmap", "space", "tangent"},
};

// What an unconnected input with a default geometry property reads.
struct Geometry_property {
    const char* name;
    const char* category;
    Value_type type;
    const char* space; // null: the node has no input "space"
    int index;         // of the set of texture coordinates
};

constexpr Geometry_property geometry_properties[] = {
    {"Pobject", "position", Value_type::vector3, "object", 0},
    {"Nobject", "normal", Value_type::vector3, "object", 0},
    {"Tobject", "tangent", Value_type::vector3, "object", 0},
    {"Bobject", "bitangent", Value_type::vector3, "object", 0},
    {"Pworld", "position", Value_type::vector3, "world", 0},
    {"Nworld", "normal", Value_type::vector3, "world", 0},
    {"Tworld", "tangent", Value_type::vector3, "world", 0},
    {"Bworld", "bitangent", Value_type::vector3, "world", 0},
    {"UV0", "texcoord", Value_type::vector2, nullptr, 0},
    {"UV1", "texcoord", Value_type::vector2, nullptr, 1},
};

// Integer inputs that say how often a loop runs or which form of the code is meant.
constexpr const char* shaping_inputs[] = {"octaves", "index", "style", "type", "interpolation"};

bool is_connected(const Element& element)
{
    constexpr const char* keys[] = {"interfacename", "nodename", "nodegraph", "output"};
    return std::any_of(std::begin(keys), std::end(keys),
                       [&](const char* key) { return !element.attribute(key).empty(); });
}

bool is_shaping(const Input& input, const Parameter& parameter)
{
    const auto is_named = [&](const char* name) { return input.name == name; };
    return input.type == Value_type::string || !parameter.ui.enum_names.empty() ||
           (input.type == Value_type::integer &&
            std::any_of(std::begin(shaping_inputs), std::end(shaping_inputs), is_named));
}

void check_type(const Element& from, Value_type given, const std::string& giver)
{
    const Value_type wanted = declared_type(from);
    if (given == Value_type::none) // reported where it is declared
        return;
    if (wanted != given && from.attribute("channels").empty())
        throw Document_error(from.place(), describe(from) + ": wrong type: it is " +
                                               type_name(wanted) + ", but " + giver + " is " +
                                               type_name(given));
}

int channel_index(char channel)
{
    constexpr std::string_view names[] = {"rgba", "xyzw"};
    for (const std::string_view name : names) {
        const size_t index = name.find(channel);
        if (index != std::string_view::npos)
            return static_cast<int>(index);
    }
    return -1;
}

// The channels `outer` of what the channels `inner` leave. Empty channels leave everything.
std::string channels_of_channels(const std::string& outer, const std::string& inner,
                                 const Element& element)
{
    if (outer.empty() || inner.empty())
        return outer + inner;
    std::string result;
    for (const char channel : outer) {
        const int index = channel_index(channel);
        if (channel != '0' && channel != '1' &&
            (index < 0 || index >= static_cast<int>(inner.size())))
            throw Document_error(element.place(),
                                 describe(element) + ": there is no channel '" + channel + "'");
        result += index < 0 ? channel : inner[static_cast<size_t>(index)];
    }
    return result;
}

void rename_input(const Node& node, Input& input)
{
    for (const Renamed_input& row : renamed_inputs) {
        if (node.category == row.category && input.name == row.old_name)
            input.name = row.name;
    }
}

bool is_dropped(const Node& node, const Input& input)
{
    return std::any_of(std::begin(dropped_inputs), std::end(dropped_inputs),
                       [&](const Dropped_input& row) {
                           return node.category == row.category && input.name == row.name &&
                                  input.value && input.value->text == row.value;
                       });
}

// Throws Document_error when two inputs of the element have one name.
void check_input_names(const Element& element)
{
    std::set<std::string> names;
    for (const Element& child : element.children()) {
        if (child.is_input() && !names.insert(child.name()).second)
            throw Document_error(child.place(), describe(child) + " is given twice");
    }
}

} // namespace

void Connection_resolver::connect()
{
    for (const auto& scope : m_scopes.all) {
        check_interface(*scope);
        for (const auto& [node, element] : scope->nodes)
            if (is_known_category(node->category))
                add_inputs(*scope, *node, element);
        for (const auto& row : scope->outputs)
            m_problems.attempt([&] { resolve(*scope, row.second); });
    }
}

// Inputs that no node reads must be right, too.
void Connection_resolver::check_interface(const Scope& scope)
{
    if (!scope.parent)
        return;
    const Element& holder = scope.use ? scope.use : scope.graph;
    m_problems.attempt([&] { check_input_names(holder); });
    for (const Element& input : holder.children()) {
        if (input.is_input())
            m_problems.attempt([&] { check_interface_input(scope, input); });
    }
}

void Connection_resolver::check_interface_input(const Scope& scope, const Element& input)
{
    const Element declaration = scope.find_interface(input.name());
    if (!declaration)
        throw Document_error(input.place(), describe(input) + ": the definition '" +
                                                scope.definition->nodedefs.front().name() +
                                                "' has no such input");
    check_type(input, declared_type(declaration), describe(declaration));
    if (is_connected(input))
        resolve(*scope.parent, input);
    else
        value_of(input, declared_type(input));
}

void Connection_resolver::add_inputs(const Scope& scope, Node& node, const Element& element)
{
    m_problems.attempt([&] { check_input_names(element); });
    for (const Element& child : element.children()) {
        if (child.is_input())
            m_problems.attempt([&] { add_input(scope, node, child); });
    }
}

void Connection_resolver::add_input(const Scope& scope, Node& node, const Element& element)
{
    Input input;
    input.name = element.name();
    input.type = declared_type(element);
    input.color_space = color_space_of(element, input.type);
    input.ui = ui_hints_of(element, input.type);
    rename_input(node, input);
    if (is_connected(element)) {
        const Origin origin = resolve(scope, element);
        input.source = origin.node;
        input.source_output = origin.output;
        input.channels = origin.channels;
        input.parameter = origin.parameter;
        if (origin.parameter && is_shaping(input, *origin.parameter))
            origin.parameter->literal = true;
    } else {
        input.value = value_of(element, input.type);
        input.unit = element.attribute("unit");
    }
    const bool is_given = input.source || input.parameter || input.value;
    if (is_given && !is_dropped(node, input))
        node.inputs.push_back(std::move(input));
}

Connection_resolver::Origin Connection_resolver::resolve(const Scope& scope, const Element& element)
{
    std::vector<Hop> hops;
    try {
        return follow_hops({&scope, element}, hops);
    } catch (...) { // what leads here is wrong for the same reason
        for (const Hop& hop : hops) {
            Origin& origin = m_origins[{hop.scope, hop.element.id()}].emplace();
            origin.is_wrong = true;
        }
        throw;
    }
}

// `hops` are those that were made, also when it throws.
Connection_resolver::Origin Connection_resolver::follow_hops(const Hop& start,
                                                             std::vector<Hop>& hops)
{
    Origin origin;
    for (std::optional<Hop> at = start; at; at = follow(*at, origin)) {
        const auto [known, is_new] = m_origins.try_emplace({at->scope, at->element.id()});
        if (!is_new) {
            if (!known->second)
                throw Document_error(at->element.place(),
                                     describe(at->element) + ": the connections form a cycle");
            if (known->second->is_wrong)
                throw Told_already();
            origin = *known->second;
            break;
        }
        hops.push_back(*at);
    }
    for (auto hop = hops.rbegin(); hop != hops.rend(); ++hop) {
        origin.channels =
            channels_of_channels(hop->element.attribute("channels"), origin.channels, hop->element);
        m_origins[{hop->scope, hop->element.id()}] = origin;
    }
    return origin;
}

// The next hop, or nothing when the way ends here, with its end in `origin`.
std::optional<Connection_resolver::Hop> Connection_resolver::follow(const Hop& at, Origin& origin)
{
    const Element& from = at.element;
    if (!from.attribute("interfacename").empty())
        return follow_interface(at, origin);
    const std::string graph_name = from.attribute("nodegraph");
    const std::string target = graph_name.empty() ? from.attribute("nodename") : graph_name;
    if (target.empty())
        return follow_output(*at.scope, from);
    const auto member = at.scope->members.find(target);
    if (member == at.scope->members.end())
        throw Document_error(from.place(), describe(from) + ": the " +
                                               (graph_name.empty() ? "node '" : "node graph '") +
                                               target + "' is missing");
    if (member->second.scope)
        return follow_output(*member->second.scope, from);
    const Node* node = member->second.node;
    if (node->type != Value_type::multioutput && is_known_category(node->category))
        check_type(from, node->type, describe(*node));
    origin.node = node;
    origin.output = from.attribute("output");
    return std::nullopt;
}

std::optional<Connection_resolver::Hop> Connection_resolver::follow_output(const Scope& scope,
                                                                           const Element& from)
{
    const std::string name = from.attribute("output");
    const std::string place = scope.path.empty() ? "the document" : "'" + scope.path + "'";
    if (name.empty() && !is_connected(from))
        throw Document_error(from.place(), describe(from) + " is connected to nothing");
    if (name.empty() && scope.outputs.size() != 1)
        throw Document_error(from.place(), describe(from) + ": it does not say which of the " +
                                               std::to_string(scope.outputs.size()) +
                                               " outputs of " + place + " it reads");
    const auto output = name.empty() ? scope.outputs.begin() : scope.outputs.find(name);
    if (output == scope.outputs.end())
        throw Document_error(from.place(),
                             describe(from) + ": " + place + " has no output '" + name + "'");
    check_type(from, declared_type(output->second), describe(output->second));
    return Hop{&scope, output->second};
}

std::optional<Connection_resolver::Hop> Connection_resolver::follow_interface(const Hop& at,
                                                                              Origin& origin)
{
    const Scope& scope = *at.scope;
    const std::string name = at.element.attribute("interfacename");
    const Element declaration = scope.find_interface(name);
    if (!declaration)
        throw Document_error(at.element.place(),
                             describe(at.element) + ": there is no interface input '" + name + "'");
    check_type(at.element, declared_type(declaration), describe(declaration));
    const Element given = scope.use ? scope.use.find_input(name) : declaration;
    if (given && is_connected(given))
        return Hop{scope.parent ? scope.parent : &scope, given};
    origin = unconnected(scope, declaration, given);
    return std::nullopt;
}

Connection_resolver::Origin Connection_resolver::unconnected(const Scope& scope,
                                                             const Element& declaration,
                                                             const Element& given)
{
    const Value_type type = declared_type(declaration);
    const Element& holder = given && given.has("value") ? given : declaration;
    const std::optional<Value> value = value_of(holder, type);
    Origin origin;
    if (!value) {
        origin.node = geometry_node(scope, declaration);
        return origin;
    }
    Parameter*& parameter = m_parameters[{&scope, declaration.id()}];
    if (!parameter) {
        parameter = m_graph.parameters.emplace_back(std::make_unique<Parameter>()).get();
        parameter->name = declaration.name();
        parameter->owner = scope.path;
        parameter->value = *value;
        convert_unit(parameter->value, holder.attribute("unit"), "");
        parameter->ui = ui_hints_of(declaration, type);
        parameter->color_space = color_space_of(holder, type);
    }
    origin.parameter = parameter;
    return origin;
}

const Node* Connection_resolver::geometry_node(const Scope& scope, const Element& declaration)
{
    const std::string name = declaration.attribute("defaultgeomprop");
    const auto row = std::find_if(std::begin(geometry_properties), std::end(geometry_properties),
                                  [&](const Geometry_property& r) { return name == r.name; });
    if (row == std::end(geometry_properties) || row->type != declared_type(declaration))
        return nullptr;
    const Node*& known = m_geometry[{&scope, name}];
    if (known)
        return known;
    Node& node = *m_graph.nodes.emplace_back(std::make_unique<Node>());
    node.name = name;
    node.scope = scope.path;
    node.category = row->category;
    node.type = row->type;
    node.place = declaration.place();
    Input input;
    input.name = row->space ? "space" : "index";
    input.type = row->space ? Value_type::string : Value_type::integer;
    input.value =
        Value{input.type, {static_cast<double>(row->index)}, row->space ? row->space : ""};
    node.inputs.push_back(std::move(input));
    return known = &node;
}

} // namespace reference_host
