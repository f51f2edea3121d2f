#include "reference_host/render/effect_parameters.h"

#include "reference_host/render/effect_declarations.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <map>

namespace reference_host
{

namespace
{

// What effects call the same annotation: plainly, or by the standard annotations and semantics.
struct Annotation_names {
    const char* plain;
    const char* standard;
};
constexpr Annotation_names label_names = {"UIName", "SasUiLabel"};
constexpr Annotation_names folder_names = {"UIFolder", "SasUiFolder"};
constexpr Annotation_names widget_names = {"UIWidget", "SasUiControl"};
constexpr Annotation_names min_names = {"UIMin", "SasUiMin"};
constexpr Annotation_names max_names = {"UIMax", "SasUiMax"};
constexpr Annotation_names step_names = {"UIStep", "SasUiStride"};

struct Widget_name {
    std::string_view name;
    Parameter_widget widget;
};
constexpr Widget_name widgets[] = {
    {"Slider", Parameter_widget::slider},
    {"Color", Parameter_widget::color},
    {"ColorPicker", Parameter_widget::color},
    {"CheckBox", Parameter_widget::check_box},
};

struct Number_type {
    std::string_view name;
    std::size_t count;
    bool is_whole;
};
constexpr Number_type number_types[] = {
    {"float", 1, false},  {"float1", 1, false}, {"float2", 2, false}, {"float3", 3, false},
    {"float4", 4, false}, {"half", 1, false},   {"half2", 2, false},  {"half3", 3, false},
    {"half4", 4, false},  {"int", 1, true},     {"bool", 1, true},
};

bool is_hidden(std::string_view widget)
{
    return widget == "None" || widget == "none";
}

bool begins_word(char character)
{
    return std::isalpha(static_cast<unsigned char>(character)) || character == '_';
}

// The numbers of "float3(1.0, -0.5, 1e-3)", "{ 1, 2 }" or "true".
std::vector<float> numbers_in(std::string_view text)
{
    std::vector<float> numbers;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at < end) {
        float number = 0;
        if (!begins_word(*at)) {
            const auto [after, problem] = std::from_chars(at, end, number);
            if (problem == std::errc())
                numbers.push_back(number);
            at = std::max(after, at + 1);
            continue;
        }
        const char* const word = at;
        at = std::find_if_not(at, end, is_word_character);
        const std::string_view name(word, static_cast<std::size_t>(at - word));
        if (name == "true" || name == "false")
            numbers.push_back(name == "true" ? 1.0F : 0.0F);
    }
    return numbers;
}

std::string unescaped(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        i += text[i] == '\\' && i + 1 < text.size() ? 1 : 0;
        result += text[i];
    }
    return result;
}

// What stands from one token up to another one.
std::string_view text_between(const Tokens& tokens, std::size_t first, std::size_t end)
{
    const char* const begin = tokens[first].text.data();
    return {begin, static_cast<std::size_t>(tokens[end].text.data() - begin)};
}

// The annotations of a declaration by name, and where its value begins.
struct Description {
    std::map<std::string_view, std::string> annotations;
    std::size_t value = 0; // index of the token after "="; 0: there is no value

    std::string of(const Annotation_names& names) const
    {
        const auto plain = annotations.find(names.plain);
        const auto found = plain == annotations.end() ? annotations.find(names.standard) : plain;
        return found == annotations.end() ? std::string() : found->second;
    }

    std::optional<float> number_of(const Annotation_names& names) const
    {
        const std::vector<float> numbers = numbers_in(of(names));
        return numbers.empty() ? std::nullopt : std::optional<float>(numbers[0]);
    }
};

Description describe(const Tokens& tokens, const Declaration& declaration)
{
    Description description;
    bool is_inside = false;
    for (std::size_t i = declaration.begin; i < declaration.end; ++i) {
        const std::string_view text = tokens[i].text;
        if (tokens[i].kind == Token_kind::sign && (text == "<" || text == ">"))
            is_inside = text == "<";
        if (text != "=" || i + 1 >= declaration.end)
            continue;
        if (!is_inside) {
            description.value = i + 1;
            return description;
        }
        std::size_t end = i + 1;
        while (end < declaration.end && tokens[end].text != ";")
            ++end;
        description.annotations[tokens[i - 1].text] =
            tokens[i + 1].kind == Token_kind::text ? unescaped(tokens[i + 1].text)
                                                   : std::string(text_between(tokens, i + 1, end));
        i = end;
    }
    return description;
}

Parameter_widget widget_named(const std::string& name, std::string_view type)
{
    for (const Widget_name& row : widgets)
        if (name == row.name)
            return row.widget;
    return type == "bool" ? Parameter_widget::check_box : Parameter_widget::numbers;
}

// Nothing when it is not a parameter for artists.
std::optional<Effect_parameter> parameter_of(const Tokens& tokens, const Declaration& declaration)
{
    const auto type =
        std::find_if(std::begin(number_types), std::end(number_types),
                     [&](const Number_type& row) { return row.name == declaration.type; });
    if (type == std::end(number_types) || declaration.end >= tokens.size() ||
        text_at(tokens, declaration.begin) == "[")
        return std::nullopt;
    const Description description = describe(tokens, declaration);
    const std::string label = description.of(label_names);
    const std::string widget = description.of(widget_names);
    if (label.empty() || is_hidden(widget) || description.value == 0)
        return std::nullopt;
    std::vector<float> value = numbers_in(text_between(tokens, description.value, declaration.end));
    if (value.size() == 1)
        value.resize(type->count, value[0]); // float3(1.0)
    if (value.size() != type->count)
        return std::nullopt;
    return Effect_parameter{std::string(declaration.name),
                            label,
                            description.of(folder_names),
                            widget_named(widget, declaration.type),
                            type->is_whole,
                            description.number_of(min_names),
                            description.number_of(max_names),
                            description.number_of(step_names),
                            std::move(value)};
}

} // namespace

std::vector<Effect_parameter> effect_parameters(const std::string& text)
{
    const Tokens tokens = tokens_of(text);
    std::vector<Effect_parameter> parameters;
    for (const Declaration& declaration : global_declarations(tokens))
        if (auto parameter = parameter_of(tokens, declaration))
            parameters.push_back(std::move(*parameter));
    return parameters;
}

} // namespace reference_host
