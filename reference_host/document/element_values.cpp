#include "reference_host/document/element_values.h"

#include "reference_host/document/document_error.h"
#include "reference_host/document/value_parser.h"

#include <algorithm>

namespace reference_host
{
namespace
{

bool is_text(Value_type type)
{
    return type == Value_type::string || type == Value_type::filename;
}

std::string file_name_of(const Element& element, const std::string& text)
{
    if (text.empty())
        return text;
    const std::string name = element.file_prefix() + text;
    const std::string& folder = element.file().folder;
    return folder.empty() || name.front() == '/' ? name : folder + "/" + name;
}

std::optional<Value> hint(const Element& element, const char* key, Value_type type)
{
    if (!element.has(key) || component_count(type) == 0)
        return std::nullopt;
    const std::string text = element.attribute(key);
    if (std::optional<Value> value = parse_value(type, text))
        return value;
    std::optional<Value> value = parse_value(Value_type::float1, text);
    if (value) {
        value->type = type;
        std::fill_n(value->numbers.begin(), component_count(type), value->numbers[0]);
    }
    return value;
}

std::vector<std::string> split_at_commas(const std::string& text)
{
    std::vector<std::string> words;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find(',', start), text.size());
        const size_t first = text.find_first_not_of(" \t\r\n", start);
        if (first < end) {
            const size_t last = text.find_last_not_of(" \t\r\n", end - 1);
            words.push_back(text.substr(first, last - first + 1));
        }
        start = end + 1;
    }
    return words;
}

} // namespace

std::string describe(const Element& element)
{
    std::string own = element.tag() + " '" + element.name() + "'";
    const Element parent = element.parent();
    if (parent.tag() == "materialx")
        return own;
    const std::string kind = parent.tag() == "nodegraph" ? "node graph" : "node";
    return kind + " '" + parent.name() + "', " + own;
}

std::optional<Value> value_of(const Element& element, Value_type type)
{
    if (!element.has("value"))
        return std::nullopt;
    const std::string text = element.attribute("value");
    if (text.empty() && component_count(type) == 0 && !is_text(type))
        return std::nullopt; // a shader input that is left open
    std::optional<Value> value = parse_value(type, text);
    if (!value)
        throw Document_error(element.place(), describe(element) + ": '" + text.substr(0, 60) +
                                                  "' is not a value of type " + type_name(type));
    if (type == Value_type::filename)
        value->text = file_name_of(element, value->text);
    return value;
}

std::string color_space_of(const Element& element, Value_type type)
{
    if (type != Value_type::color3 && type != Value_type::color4 && type != Value_type::filename)
        return {};
    const std::string space = element.color_space();
    return space == "none" || space == "raw" || space == "Raw" ? std::string() : space;
}

Ui_hints ui_hints_of(const Element& element, Value_type type)
{
    Ui_hints hints;
    hints.name = element.attribute("uiname");
    hints.folder = element.attribute("uifolder");
    hints.description = element.attribute("doc");
    hints.min = hint(element, "uimin", type);
    hints.max = hint(element, "uimax", type);
    hints.soft_min = hint(element, "uisoftmin", type);
    hints.soft_max = hint(element, "uisoftmax", type);
    hints.step = hint(element, "uistep", type);
    hints.enum_names = split_at_commas(element.attribute("enum"));
    return hints;
}

} // namespace reference_host
