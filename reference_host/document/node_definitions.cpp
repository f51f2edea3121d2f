#include "reference_host/document/node_definitions.h"

#include "reference_host/document/document_error.h"

#include <algorithm>

namespace reference_host
{
namespace
{

constexpr size_t max_inheritance = 16;

std::string output_type(const Element& nodedef)
{
    std::string type;
    for (const Element& child : nodedef.children()) {
        if (child.tag() != "output")
            continue;
        if (!type.empty())
            return type_name(Value_type::multioutput);
        type = child.attribute("type");
    }
    return type.empty() ? nodedef.attribute("type") : type;
}

} // namespace

Element Custom_definition::find_input(const std::string& name) const
{
    for (const Element& nodedef : nodedefs) {
        if (const Element input = nodedef.find_input(name))
            return input;
    }
    return graph.find_input(name);
}

Node_definitions::Node_definitions(const std::vector<Element>& document,
                                   Document_problems& problems)
{
    std::unordered_map<std::string, Element> graphs;
    for (const Element& element : document) {
        if (element.tag() == "nodegraph")
            graphs.emplace(element.name(), element);
        else if (element.tag() == "nodedef" && !m_nodedefs.emplace(element.name(), element).second)
            problems.add(
                {element.place(), "the node definition '" + element.name() + "' exists twice"});
    }
    for (const Element& element : document)
        problems.attempt([&] { add_implementation(element, graphs); });
}

void Node_definitions::add_implementation(const Element& element,
                                          const std::unordered_map<std::string, Element>& graphs)
{
    if (element.tag() == "nodegraph" && element.has("nodedef")) {
        add(element.attribute("nodedef"), element, element);
    } else if (element.tag() == "implementation" && element.has("nodegraph")) {
        const auto graph = graphs.find(element.attribute("nodegraph"));
        if (graph == graphs.end())
            throw Document_error(element.place(), "the node graph '" +
                                                      element.attribute("nodegraph") +
                                                      "' of an implementation is missing");
        add(element.attribute("nodedef"), graph->second, element);
    }
}

void Node_definitions::add(const std::string& nodedef, const Element& graph, const Element& user)
{
    m_graphs.insert(graph.id());
    Custom_definition definition;
    definition.graph = graph;
    for (std::string name = nodedef; !name.empty();) {
        const auto found = m_nodedefs.find(name);
        if (found == m_nodedefs.end())
            throw Document_error(user.place(), "the node definition '" + name + "' is missing");
        definition.nodedefs.push_back(found->second);
        if (definition.nodedefs.size() > max_inheritance)
            throw Document_error(user.place(),
                                 "the node definition '" + nodedef + "' inherits from itself");
        name = found->second.attribute("inherit");
    }
    if (definition.nodedefs.empty())
        return;
    const Element& first = definition.nodedefs.front();
    const std::string category = first.attribute("node");
    m_by_category[category].push_back(definition);
    if (!first.name_space().empty())
        m_by_category[first.name_space() + ":" + category].push_back(definition);
}

bool Node_definitions::fits(const Custom_definition& definition, const Element& node) const
{
    const std::string type = node.attribute("type");
    const std::string defined = output_type(definition.nodedefs.front());
    if (type != defined && !(type.empty() && defined == type_name(Value_type::multioutput)))
        return false;
    const std::vector<Element> children = node.children();
    return std::all_of(children.begin(), children.end(), [&](const Element& child) {
        if (!child.is_input())
            return true;
        const Element input = definition.find_input(child.name());
        return input && input.attribute("type") == child.attribute("type");
    });
}

const Custom_definition* Node_definitions::find(const Element& node) const
{
    const auto candidates = m_by_category.find(node.category());
    if (candidates == m_by_category.end())
        return nullptr;
    for (const Custom_definition& definition : candidates->second) {
        if (node.has("nodedef") ? node.attribute("nodedef") == definition.nodedefs.front().name()
                                : fits(definition, node))
            return &definition;
    }
    return nullptr;
}

} // namespace reference_host
