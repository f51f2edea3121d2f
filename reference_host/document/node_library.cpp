#include "reference_host/document/node_library.h"

#include "reference_host/document/node_rows.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <string_view>
#include <unordered_map>

namespace reference_host
{
namespace
{

// Cuts the texts of a row into words: names, numbers, texts in quotes and single signs.
class Row_scanner
{
public:
    explicit Row_scanner(std::string_view text) : m_rest(text) { skip_blanks(); }

    bool at_end() const { return m_rest.empty(); }
    bool next_is(char sign) const { return !m_rest.empty() && m_rest[0] == sign; }

    bool accept(char sign)
    {
        if (!next_is(sign))
            return false;
        take(1);
        return true;
    }

    std::string word()
    {
        std::size_t length = 0;
        while (length < m_rest.size() &&
               (std::isalnum(static_cast<unsigned char>(m_rest[length])) ||
                std::string_view("_.-").find(m_rest[length]) != std::string_view::npos))
            ++length;
        return take(length);
    }

    // Everything up to the sign (left standing) or the end.
    std::string until(char sign)
    {
        std::string text = take(std::min(m_rest.find(sign), m_rest.size()));
        text.erase(text.find_last_not_of(' ') + 1);
        return text;
    }

private:
    std::string take(std::size_t length)
    {
        std::string taken(m_rest.substr(0, length));
        m_rest.remove_prefix(length);
        skip_blanks();
        return taken;
    }

    void skip_blanks()
    {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(' '), m_rest.size()));
    }

    std::string_view m_rest;
};

double number_of(const std::string& word)
{
    double number = 0.0;
    std::from_chars(word.data(), word.data() + word.size(), number);
    return number;
}

bool is_number(const std::string& word)
{
    return !word.empty() && (std::isdigit(static_cast<unsigned char>(word[0])) || word[0] == '-');
}

Value identity(Type type)
{
    Value value{type, {}, {}};
    const std::size_t size = type == Type::matrix33 ? 3 : 4;
    for (std::size_t i = 0; i < size; ++i)
        value.numbers[i * size + i] = 1.0;
    return value;
}

// One row's input with all its alternatives.
struct Input_pattern {
    std::vector<std::string> types;
    Input_definition definition; // without type
    std::vector<double> numbers; // of the default
    bool is_identity = false;
};

void scan_default(Row_scanner& scanner, Input_pattern& input)
{
    if (scanner.accept('"')) {
        input.definition.value.text = scanner.until('"');
        scanner.accept('"');
        return;
    }
    std::string word = scanner.word();
    if (word == "true" || word == "false") {
        input.numbers = {word == "true" ? 1.0 : 0.0};
    } else if (word == "identity") {
        input.is_identity = true;
    } else if (!is_number(word)) {
        input.definition.default_source = word;
    } else {
        for (; is_number(word); word = scanner.word())
            input.numbers.push_back(number_of(word));
    }
}

Input_pattern scan_input(Row_scanner& scanner)
{
    Input_pattern input;
    do
        input.types.push_back(scanner.word());
    while (scanner.accept('|'));
    input.definition.name = scanner.word();
    if (scanner.accept('='))
        scan_default(scanner, input);
    if (scanner.accept('[')) {
        input.definition.min = number_of(scanner.word());
        input.definition.max = number_of(scanner.word());
        scanner.accept(']');
    }
    return input;
}

std::vector<Input_pattern> scan_inputs(const char* text)
{
    std::vector<Input_pattern> inputs;
    for (Row_scanner scanner(text); !scanner.at_end(); scanner.accept(','))
        inputs.push_back(scan_input(scanner));
    return inputs;
}

Type concrete_type(const std::string& word, Type generic)
{
    return word == "T" ? generic : type_from_name(word);
}

Value default_value(const Input_pattern& input, Type type)
{
    if (input.is_identity)
        return identity(type);
    Value value{type, {}, input.definition.value.text};
    const int count = component_count(type);
    for (int i = 0; i < count && !input.numbers.empty(); ++i) {
        const std::size_t last = input.numbers.size() - 1;
        value.numbers[static_cast<std::size_t>(i)] =
            input.numbers[std::min(static_cast<std::size_t>(i), last)];
    }
    return value;
}

void scan_outputs(const char* text, Node_definition& definition)
{
    for (Row_scanner scanner(text); !scanner.at_end(); scanner.accept(';')) {
        Output_definition output;
        std::string type = scanner.word();
        const bool is_shared = type == "let";
        if (is_shared)
            type = scanner.word();
        output.type = concrete_type(type, definition.generic);
        output.name = scanner.word();
        if (scanner.accept('='))
            output.implementation = scanner.until(';');
        (is_shared ? definition.shared : definition.outputs).push_back(std::move(output));
    }
}

Node_definition instantiate(const Node_row& row, const std::vector<Input_pattern>& inputs,
                            Type generic, std::size_t alternative)
{
    Node_definition definition{row.category, generic, {}, {}, {}};
    scan_outputs(row.outputs, definition);
    for (const Input_pattern& pattern : inputs) {
        Input_definition input = pattern.definition;
        const std::size_t chosen = std::min(alternative, pattern.types.size() - 1);
        input.type = concrete_type(pattern.types[chosen], generic);
        input.value = default_value(pattern, input.type);
        definition.inputs.push_back(std::move(input));
    }
    return definition;
}

bool same_inputs(const Node_definition& a, const Node_definition& b)
{
    return std::equal(a.inputs.begin(), a.inputs.end(), b.inputs.begin(), b.inputs.end(),
                      [](const Input_definition& x, const Input_definition& y) {
                          return x.type == y.type && x.name == y.name;
                      });
}

void add_definitions(const Node_row& row, std::vector<Node_definition>& definitions)
{
    const std::vector<Input_pattern> inputs = scan_inputs(row.inputs);
    std::size_t alternatives = 1;
    for (const Input_pattern& input : inputs)
        alternatives = std::max(alternatives, input.types.size());
    Row_scanner types(row.types);
    do {
        const Type generic = type_from_name(types.word());
        for (std::size_t alternative = 0; alternative < alternatives; ++alternative) {
            Node_definition definition = instantiate(row, inputs, generic, alternative);
            // "T|float" gives the same signature twice when T is float.
            if (alternative == 0 || !same_inputs(definition, definitions.back()))
                definitions.push_back(std::move(definition));
        }
    } while (!types.at_end());
}

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

bool output_fits(const Node_definition& definition, Type type)
{
    if (type == Type::none || type == Type::multioutput)
        return type == Type::none || definition.outputs.size() > 1;
    return definition.outputs[0].type == type;
}

bool fits(const Node_definition& definition, const Node& node)
{
    return output_fits(definition, node.type) &&
           std::all_of(node.inputs.begin(), node.inputs.end(), [&](const Input& input) {
               const Input_definition* defined = definition.find_input(input.name);
               return defined && defined->type == input.type;
           });
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
    static const std::vector<Node_definition> definitions = [] {
        std::vector<Node_definition> made;
        for (const Node_rows& group :
             {math_rows(), channel_rows(), color_rows(), geometry_rows(), texture_rows(),
              procedural_rows(), foreign_rows(), surface_rows(), scene_rows()})
            for (std::size_t i = 0; i < group.count; ++i)
                add_definitions(group.rows[i], made);
        return made;
    }();
    return definitions;
}

bool is_known_category(const std::string& category)
{
    return definitions_by_category().count(category) != 0;
}

const Node_definition* find_definition(const Node& node)
{
    const auto found = definitions_by_category().find(node.category);
    if (found == definitions_by_category().end())
        return nullptr;
    for (const Node_definition* definition : found->second)
        if (fits(*definition, node))
            return definition;
    return nullptr;
}

} // namespace reference_host
