#include "reference_host/nodes/node_library.h"

#include <algorithm>
#include <unordered_map>

namespace reference_host
{
namespace
{

using Definitions_by_category =
    std::unordered_map<std::string, std::vector<const Node_definition*>>;

const Definitions_by_category& definitions_by_category()
{
    static const Definitions_by_category index = [] {
        Definitions_by_category made;
        for (const Node_definition& definition : all_definitions())
            made[definition.category].push_back(&definition);
        return made;
    }();
    return index;
}

bool output_fits(const Node_definition& definition, Value_type type)
{
    if (type == Value_type::none || type == Value_type::multioutput)
        return type == Value_type::none || definition.outputs.size() > 1;
    return definition.outputs[0].type == type;
}

} // namespace

const Input_definition* Node_definition::find_input(const std::string& name) const
{
    for (const Input_definition& input : inputs)
        if (input.name == name)
            return &input;
    return nullptr;
}

const Output_definition* Node_definition::find_output(const std::string& name) const
{
    if (name.empty())
        return &outputs.front();
    for (const Output_definition& output : outputs)
        if (output.name == name)
            return &output;
    return nullptr;
}

const std::vector<Node_definition>& all_definitions()
{
    static const std::vector<Node_definition> definitions = read_nodes(node_texts());
    return definitions;
}

bool is_known_category(const std::string& category)
{
    return definitions_by_category().count(category) != 0;
}

const Node_definition* find_first_definition(const std::string& category)
{
    const auto found = definitions_by_category().find(category);
    return found == definitions_by_category().end() ? nullptr : found->second[0];
}

const Node_definition* find_definition(const std::string& category, Value_type type,
                                       const std::vector<Given_input>& given)
{
    const auto found = definitions_by_category().find(category);
    if (found == definitions_by_category().end())
        return nullptr;
    for (const Node_definition* definition : found->second) {
        const auto has = [&](const Given_input& input) {
            const Input_definition* defined = definition->find_input(input.name);
            return defined && defined->type == input.type;
        };
        if (output_fits(*definition, type) && std::all_of(given.begin(), given.end(), has))
            return definition;
    }
    return nullptr;
}

} // namespace reference_host
