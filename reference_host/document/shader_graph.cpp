#include "reference_host/document/shader_graph.h"

namespace reference_host
{

const Input* Node::find_input(const std::string& input_name) const
{
    for (const Input& input : inputs) {
        if (input.name == input_name)
            return &input;
    }
    return nullptr;
}

std::string full_name(const Node& node)
{
    return node.scope.empty() ? node.name : node.scope + "/" + node.name;
}

const Node_definition* find_definition(const Node& node)
{
    std::vector<Given_input> given;
    for (const Input& input : node.inputs)
        given.push_back({input.name, input.type});
    return find_definition(node.category, node.type, given);
}

const Node* Shader_graph::find_node(const std::string& node_name) const
{
    for (const auto& node : nodes) {
        if (full_name(*node) == node_name)
            return node.get();
    }
    return nullptr;
}

} // namespace reference_host
