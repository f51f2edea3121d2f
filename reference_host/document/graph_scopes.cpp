#include "reference_host/document/graph_scopes.h"

#include "reference_host/document/document_error.h"
#include "reference_host/nodes/node_library.h"

#include <algorithm>

namespace reference_host
{
namespace
{

// Custom nodes within custom nodes multiply; no artist's document reaches these limits.
constexpr size_t max_nodes = 500'000;
constexpr int max_custom_depth = 64;

constexpr const char* non_node_tags[] = {
    // the interface of a scope
    "input", "output", "parameter", "token",
    // declarations
    "attributedef", "geompropdef", "implementation", "nodedef", "targetdef", "typedef", "unitdef",
    "unittypedef",
    // geometry, looks and what they assign
    "collection", "geomattr", "geominfo", "geomprop", "look", "lookgroup", "lookinherit",
    "material", "materialassign", "materialinherit", "materialvar", "property", "propertyassign",
    "propertyset", "propertysetassign", "variant", "variantassign", "variantset", "visibility",
    // for the author's eyes
    "backdrop", "comment"};

bool is_node(const Element& element)
{
    const std::string tag = element.tag();
    return tag.find(':') == std::string::npos && // that others put into the document
           std::find(std::begin(non_node_tags), std::end(non_node_tags), tag) ==
               std::end(non_node_tags);
}

// What a document calls a material, and the node library a surface, is a surface: LamaSurface,
// which has no shader connected that a group could offer.
Value_type type_as_known(const std::string& category, Value_type type)
{
    const Node_definition* known = find_first_definition(category);
    const bool is_surface = known && known->outputs.front().type == Value_type::surfaceshader;
    return is_surface && type == Value_type::material ? Value_type::surfaceshader : type;
}

// Whether the node library has a definition of that form. It then counts, whatever definitions the
// document brings along: documents that include MaterialX's own bring those of all nodes.
bool fits_library(const Element& element)
{
    Node node;
    node.category = element.category();
    node.type = element.has("type")
                    ? type_as_known(node.category, type_from_name(element.attribute("type")))
                    : Value_type::multioutput;
    for (const Element& child : element.children()) {
        if (child.is_input()) {
            Input& input = node.inputs.emplace_back();
            input.name = child.name();
            input.type = type_from_name(child.attribute("type"));
        }
    }
    return find_definition(node) != nullptr;
}

// The type of a node. One of an unknown category may have an unknown type as well.
Value_type type_of(const Element& element, const std::string& category)
{
    return is_known_category(category) ? type_as_known(category, declared_type(element))
                                       : type_from_name(element.attribute("type"));
}

class Scope_maker
{
public:
    Scope_maker(Scopes& scopes, Shader_graph& graph, Document_problems& problems)
        : m_scopes(scopes), m_graph(graph), m_problems(problems)
    {
    }

    void add_document(const std::vector<Element>& elements)
    {
        add_members(open_scope(nullptr, {}), elements, 0);
    }

private:
    Scope& open_scope(Scope* parent, const std::string& name)
    {
        Scope& scope = *m_scopes.all.emplace_back(std::make_unique<Scope>());
        scope.parent = parent;
        if (parent)
            scope.path = parent->path.empty() ? name : parent->path + "/" + name;
        return scope;
    }

    void add_members(Scope& scope, const std::vector<Element>& elements, int depth)
    {
        for (const Element& element : elements)
            m_problems.attempt([&] { add_member(scope, element, depth); });
    }

    void add_member(Scope& scope, const Element& element, int depth)
    {
        if (element.tag() == "output")
            add_output(scope, element);
        else if (element.tag() == "input" && !scope.parent)
            scope.inputs.emplace(element.name(), element);
        else if (element.tag() == "nodegraph")
            add_node_graph(scope, element, depth);
        else if (is_node(element) || m_scopes.definitions.find(element))
            add_node(scope, element, depth);
    }

    static void add_output(Scope& scope, const Element& element)
    {
        if (!scope.outputs.emplace(element.name(), element).second)
            throw Document_error(element.place(),
                                 "the output '" + element.name() + "' exists twice");
    }

    Member& add_name(Scope& scope, const Element& element)
    {
        const std::string name = element.name();
        if (name.empty())
            throw Document_error(element.place(),
                                 "a node '" + element.category() + "' has no name");
        const auto [member, is_new] = scope.members.try_emplace(name);
        if (!is_new)
            throw Document_error(
                element.place(),
                "the name '" + name + "' exists twice" +
                    (scope.path.empty() ? std::string() : " in '" + scope.path + "'"));
        return member->second;
    }

    void add_node_graph(Scope& scope, const Element& element, int depth)
    {
        if (scope.parent)
            throw Document_error(element.place(), "the node graph '" + element.name() +
                                                      "' stands inside another one");
        if (m_scopes.definitions.is_implementation(element))
            return;
        Member& member = add_name(scope, element);
        Scope& inner = open_scope(&scope, element.name());
        inner.graph = element;
        member.scope = &inner;
        add_members(inner, element.children(), depth);
    }

    void add_node(Scope& scope, const Element& element, int depth)
    {
        const Custom_definition* definition = m_scopes.definitions.find(element);
        if (definition && !fits_library(element)) {
            add_custom_node(scope, element, *definition, depth + 1);
            return;
        }
        const std::string category = element.category();
        count_node(element);
        Node& node = *m_graph.nodes.emplace_back(std::make_unique<Node>());
        node.name = element.name();
        node.scope = scope.path;
        node.category = category;
        node.place = element.place();
        add_name(scope, element).node = &node;
        scope.nodes.emplace_back(&node, element);
        if (element.has("type"))
            m_problems.attempt([&] { node.type = type_of(element, category); });
        else
            node.type = Value_type::multioutput;
    }

    void add_custom_node(Scope& scope, const Element& element, const Custom_definition& definition,
                         int depth)
    {
        if (depth > max_custom_depth)
            throw Document_error(element.place(),
                                 "node '" + element.name() + "': the custom node '" +
                                     element.category() + "' contains itself or nests too deeply",
                                 Document_error::Reach::document);
        count_node(element);
        Member& member = add_name(scope, element);
        Scope& inner = open_scope(&scope, element.name());
        inner.graph = definition.graph;
        inner.use = element;
        inner.definition = &definition;
        member.scope = &inner;
        add_members(inner, definition.graph.children(), depth);
    }

    void count_node(const Element& element)
    {
        if (++m_count > max_nodes)
            throw Document_error(element.place(),
                                 "the document has more than " + std::to_string(max_nodes) +
                                     " nodes",
                                 Document_error::Reach::document);
    }

    Scopes& m_scopes;
    Shader_graph& m_graph;
    Document_problems& m_problems;
    size_t m_count = 0;
};

} // namespace

Element Scope::find_interface(const std::string& name) const
{
    if (definition)
        return definition->find_input(name);
    if (parent)
        return graph.find_input(name);
    const auto found = inputs.find(name);
    return found == inputs.end() ? Element() : found->second;
}

Scopes make_scopes(const Document_files& files, Shader_graph& graph, Document_problems& problems)
{
    Scopes scopes{Node_definitions(files.elements, problems), {}};
    Scope_maker(scopes, graph, problems).add_document(files.elements);
    return scopes;
}

Value_type declared_type(const Element& element)
{
    const std::string name = element.attribute("type");
    const Value_type type = type_from_name(name);
    if (type == Value_type::none) {
        const std::string who = element.tag() + " '" + element.name() + "'";
        throw Document_error(element.place(), name.empty() ? who + " has no type"
                                                           : who + ": unknown type '" + name + "'");
    }
    return type;
}

std::string describe(const Node& node)
{
    return "node '" + full_name(node) + "' (" + node.category + ")";
}

} // namespace reference_host
