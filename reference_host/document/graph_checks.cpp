#include "reference_host/document/graph_checks.h"

#include "reference_host/document/document_error.h"
#include "reference_host/document/graph_scopes.h"
#include "reference_host/nodes/node_library.h"
#include "reference_host/system/suggestion.h"

#include <algorithm>
#include <unordered_map>

namespace reference_host
{
namespace
{

std::string describe(const Node& node, const Input& input)
{
    return describe(node) + ", input '" + input.name + "'";
}

std::vector<std::string> input_names(const Node_definition& definition)
{
    std::vector<std::string> names;
    for (const Input_definition& input : definition.inputs)
        names.push_back(input.name);
    return names;
}

// Why no definition fits the node, as well as can be told.
std::string misfit(const Node& node)
{
    Node bare;
    bare.category = node.category;
    bare.type = node.type;
    const Node_definition* nearest = find_definition(bare);
    if (!nearest)
        return "wrong type: no " + node.category + " gives " + type_name(node.type);
    for (const Input& input : node.inputs) {
        if (!nearest->find_input(input.name))
            return "there is no input '" + input.name + "'" +
                   suggestion(input.name, input_names(*nearest));
    }
    std::string types;
    for (const Input& input : node.inputs)
        types += (types.empty() ? "" : ", ") + input.name + " " + type_name(input.type);
    return "wrong type: no " + node.category + " gives " + type_name(node.type) + " from " + types;
}

const Output_definition& output_of(const Node& node, const Input& input)
{
    const Node_definition* definition = input.source->definition;
    if (!definition || definition->outputs.empty())
        throw Document_error(input.source->place,
                             describe(*input.source) + ": " + misfit(*input.source));
    const std::vector<Output_definition>& outputs = definition->outputs;
    if (outputs.size() == 1)
        return outputs.front();
    const auto output = std::find_if(outputs.begin(), outputs.end(), [&](const auto& candidate) {
        return candidate.name == input.source_output;
    });
    if (output != outputs.end())
        return *output;
    throw Document_error(node.place, describe(node, input) + ": " + describe(*input.source) +
                                         (input.source_output.empty()
                                              ? " has several outputs, and none is named"
                                              : " has no output '" + input.source_output + "'"));
}

bool has_channels(const std::string& channels, int available)
{
    return std::all_of(channels.begin(), channels.end(), [&](char channel) {
        const size_t index =
            std::min(std::string("rgba").find(channel), std::string("xyzw").find(channel));
        return channel == '0' || channel == '1' || index < static_cast<size_t>(available);
    });
}

void check_connection(const Node& node, const Input& input, Value_type given,
                      const std::string& giver)
{
    const int available = component_count(given);
    if (!input.channels.empty() && !has_channels(input.channels, available))
        throw Document_error(node.place, describe(node, input) + ": " + giver +
                                             " has no channels '" + input.channels + "'");
    const bool fits = input.channels.empty()
                          ? given == input.type
                          : component_count(input.type) == static_cast<int>(input.channels.size());
    if (!fits)
        throw Document_error(node.place, describe(node, input) + ": wrong type: it is " +
                                             type_name(input.type) + ", but " + giver +
                                             (input.channels.empty()
                                                  ? std::string(" gives ") + type_name(given)
                                                  : " leaves channels '" + input.channels + "'"));
}

bool is_checked(const Node& node)
{
    return node.type != Value_type::none && is_known_category(node.category);
}

void check_input(const Node& node, const Input& input)
{
    if (input.source && is_checked(*input.source))
        check_connection(node, input, output_of(node, input).type, describe(*input.source));
    else if (input.parameter)
        check_connection(node, input, input.parameter->value.type,
                         "'" + input.parameter->name + "'");
}

void check_node(const Node& node, Document_problems& problems)
{
    if (!is_checked(node))
        return;
    if (!node.definition)
        return problems.add({node.place, describe(node) + ": " + misfit(node)});
    for (const Input& input : node.inputs)
        problems.attempt([&] { check_input(node, input); });
}

// A walk along the connections, depth first. The path is kept in a list: graphs may be deeper than
// the call stack.
class Cycle_search
{
public:
    explicit Cycle_search(Document_problems& problems) : m_problems(problems) {}

    void walk_from(const Node& start)
    {
        enter(start);
        while (!m_path.empty()) {
            Step& step = m_path.back();
            if (step.next == step.node->inputs.size()) {
                m_is_open[step.node] = false;
                m_path.pop_back();
            } else if (const Node* source = step.node->inputs[step.next++].source) {
                enter(*source);
            }
        }
    }

private:
    struct Step {
        const Node* node;
        size_t next;
    };

    void enter(const Node& node)
    {
        const auto [state, is_new] = m_is_open.try_emplace(&node, true);
        if (is_new)
            m_path.push_back({&node, 0});
        else if (state->second)
            m_problems.add(
                {node.place, describe(node) + ": the connections form a cycle: " + cycle(node)});
    }

    std::string cycle(const Node& node) const
    {
        constexpr size_t max_names = 8;
        auto step = m_path.rbegin();
        std::string text = node.name;
        for (size_t names = 0; step != m_path.rend() && step->node != &node; ++step) {
            if (++names < max_names)
                text.insert(0, step->node->name + " -> ");
        }
        return node.name + " -> " + text;
    }

    Document_problems& m_problems;
    std::vector<Step> m_path;
    std::unordered_map<const Node*, bool> m_is_open; // false: left, nothing below it leads back
};

} // namespace

void check_graph(const Shader_graph& graph, Document_problems& problems)
{
    for (const auto& node : graph.nodes)
        check_node(*node, problems);
    Cycle_search search(problems);
    for (const auto& node : graph.nodes)
        search.walk_from(*node);
}

} // namespace reference_host
