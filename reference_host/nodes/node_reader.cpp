#include "reference_host/nodes/node_library.h"

#include <algorithm>
#include <map>

namespace reference_host
{
namespace
{

// One input with all its alternatives.
struct Input_pattern {
    std::vector<std::string> types;
    Input_definition definition; // without type
    std::vector<double> numbers; // of the default
    bool is_identity = false;
    Place place;
};

using Input_patterns = std::vector<Input_pattern>;

void scan_default(Shade_scanner& scanner, Input_pattern& input)
{
    if (scanner.next_is("\"")) {
        input.definition.value.text = scanner.quoted("a default");
        return;
    }
    while (scanner.next_is_number())
        input.numbers.push_back(scanner.number());
    if (!input.numbers.empty())
        return;
    const std::string word = scanner.name("a default");
    if (word == "true" || word == "false")
        input.numbers = {word == "true" ? 1.0 : 0.0};
    else if (word == "identity")
        input.is_identity = true;
    else
        input.definition.default_source = word;
}

Input_pattern scan_input(Shade_scanner& scanner)
{
    Input_pattern input;
    input.place = scanner.place();
    do
        input.types.push_back(scanner.name("the type of an input"));
    while (scanner.accept("|"));
    input.definition.name = scanner.name("the name of an input");
    if (scanner.accept("="))
        scan_default(scanner, input);
    if (scanner.accept("[")) {
        input.definition.min = scanner.number();
        input.definition.max = scanner.number();
        scanner.expect("]");
    }
    if (scanner.accept("in"))
        input.definition.unit = scanner.name("a unit");
    return input;
}

Value identity(Value_type type)
{
    Value value{type, {}, {}};
    const std::size_t size = type == Value_type::matrix33 ? 3 : 4;
    for (std::size_t i = 0; i < size; ++i)
        value.numbers[i * size + i] = 1.0;
    return value;
}

// One number stands for all numbers of a value.
Value default_value(const Input_pattern& input, Value_type type)
{
    if (input.is_identity)
        return identity(type);
    Value value{type, {}, input.definition.value.text};
    const std::size_t count = static_cast<std::size_t>(component_count(type));
    const std::size_t given = input.numbers.size();
    if (given > 1 && given != count)
        throw Shade_error(input.place, "the default of \"" + input.definition.name + "\" has " +
                                           std::to_string(given) + " numbers and its type, " +
                                           type_name(type) + ", " + std::to_string(count));
    for (std::size_t i = 0; i < count && given > 0; ++i)
        value.numbers[i] = input.numbers[std::min(i, given - 1)];
    return value;
}

Value_type concrete_type(const std::string& word, Value_type generic, const Place& place)
{
    const Value_type type = word == "T" ? generic : type_from_name(word);
    if (type == Value_type::none)
        throw Shade_error(place, "unknown type \"" + word + "\"");
    return type;
}

bool same_inputs(const Node_definition& a, const Node_definition& b)
{
    return std::equal(a.inputs.begin(), a.inputs.end(), b.inputs.begin(), b.inputs.end(),
                      [](const Input_definition& x, const Input_definition& y) {
                          return x.type == y.type && x.name == y.name;
                      });
}

class Node_reader
{
public:
    void read(const Shade_text& file)
    {
        for (const Shade_item& item : shade_items(file)) {
            Shade_scanner scanner(item.whole);
            if (item.kind == Item_kind::types)
                read_types(scanner);
            else if (item.kind == Item_kind::inputs)
                read_inputs(scanner);
            else if (item.kind == Item_kind::node)
                read_node(scanner);
        }
    }

    std::vector<Node_definition> definitions;

private:
    void read_types(Shade_scanner& scanner)
    {
        std::vector<Value_type>& list = m_types[scanner.name("the name of a list of types")];
        scanner.expect("=");
        while (!scanner.accept(";"))
            add_type(scanner, list);
    }

    // A type, or all of a list.
    void add_type(Shade_scanner& scanner, std::vector<Value_type>& list) const
    {
        const Place place = scanner.place();
        const std::string word = scanner.name("a type");
        const auto named = m_types.find(word);
        if (named == m_types.end())
            list.push_back(concrete_type(word, Value_type::none, place));
        else
            list.insert(list.end(), named->second.begin(), named->second.end());
    }

    void read_inputs(Shade_scanner& scanner)
    {
        const std::string name = scanner.name("the name of a list of inputs");
        scanner.expect("=");
        m_inputs[name] = input_list(scanner, ";");
    }

    Input_patterns input_list(Shade_scanner& scanner, const std::string& end) const
    {
        Input_patterns list;
        while (!scanner.accept(end)) {
            if (!list.empty())
                scanner.expect(",");
            if (!scanner.accept("...")) {
                list.push_back(scan_input(scanner));
                continue;
            }
            const std::string name = scanner.name("the name of a list of inputs");
            const auto named = m_inputs.find(name);
            if (named == m_inputs.end())
                scanner.fail("unknown list of inputs \"" + name + "\"");
            list.insert(list.end(), named->second.begin(), named->second.end());
        }
        return list;
    }

    void read_node(Shade_scanner& scanner)
    {
        const std::string category = scanner.name("the category of a node");
        std::vector<Value_type> types;
        if (scanner.accept("<"))
            while (!scanner.accept(">"))
                add_type(scanner, types);
        if (types.empty())
            types.push_back(Value_type::none);
        scanner.expect("(");
        const Input_patterns inputs = input_list(scanner, ")");
        scanner.expect("{");
        std::size_t alternatives = 1;
        for (const Input_pattern& input : inputs)
            alternatives = std::max(alternatives, input.types.size());
        for (const Value_type generic : types)
            for (std::size_t alternative = 0; alternative < alternatives; ++alternative) {
                Node_definition made{category, generic, {}, {}, {}};
                add_inputs(inputs, alternative, made);
                // "T|float" gives the same signature twice when T is float.
                if (alternative > 0 && same_inputs(made, definitions.back()))
                    continue;
                add_outputs(scanner, made);
                definitions.push_back(std::move(made));
            }
    }

    static void add_inputs(const Input_patterns& inputs, std::size_t alternative,
                           Node_definition& made)
    {
        for (const Input_pattern& pattern : inputs) {
            if (made.find_input(pattern.definition.name))
                throw Shade_error(pattern.place,
                                  "the input \"" + pattern.definition.name + "\" exists twice");
            Input_definition input = pattern.definition;
            const std::size_t chosen = std::min(alternative, pattern.types.size() - 1);
            input.type = concrete_type(pattern.types[chosen], made.generic, pattern.place);
            input.value = default_value(pattern, input.type);
            made.inputs.push_back(std::move(input));
        }
    }

    // `scanner` is a copy: the body is read again for each signature.
    static void add_outputs(Shade_scanner scanner, Node_definition& made)
    {
        while (!scanner.accept("}")) {
            const Place place = scanner.place();
            std::string type = scanner.name("the type of an output");
            const bool is_shared = type == "let";
            if (is_shared)
                type = scanner.name("the type of a value");
            Output_definition output;
            output.place = place;
            output.type = concrete_type(type, made.generic, place);
            output.name = scanner.name("the name of an output");
            if (scanner.accept("="))
                output.implementation = scanner.until(';');
            scanner.expect(";");
            (is_shared ? made.shared : made.outputs).push_back(std::move(output));
        }
        if (made.outputs.empty())
            scanner.fail("the node \"" + made.category + "\" has no output");
    }

    std::map<std::string, std::vector<Value_type>> m_types;
    std::map<std::string, Input_patterns> m_inputs;
};

} // namespace

std::vector<Node_definition> read_nodes(const std::vector<Shade_text>& files)
{
    Node_reader reader;
    for (const Shade_text& file : files)
        reader.read(file);
    return std::move(reader.definitions);
}

} // namespace reference_host
