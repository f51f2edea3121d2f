#include "reference_host/document/value_parser.h"

#include <charconv>
#include <cmath>
#include <cstdint>

namespace reference_host
{
namespace
{

constexpr std::string_view spaces = " \t\r\n";

std::string_view without_spaces(std::string_view text)
{
    const size_t first = text.find_first_not_of(spaces);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(spaces) - first + 1);
}

// Cuts the text before the next separator off `rest`. A comma separates once, however many spaces
// stand around it.
std::string_view take_word(std::string_view& rest)
{
    const size_t end = std::min(rest.find_first_of(", \t\r\n"), rest.size());
    const std::string_view word = rest.substr(0, end);
    rest.remove_prefix(end);
    rest.remove_prefix(std::min(rest.find_first_not_of(spaces), rest.size()));
    if (!rest.empty() && rest.front() == ',') {
        rest.remove_prefix(1);
        rest.remove_prefix(std::min(rest.find_first_not_of(spaces), rest.size()));
        if (rest.empty())
            rest = ","; // nothing follows the comma: leaves a word that is not a number
    }
    return word;
}

template<typename Number>
std::optional<Number> parse_number(std::string_view word)
{
    if (word.size() > 1 && word.front() == '+' && word[1] != '-')
        word.remove_prefix(1);
    Number number{};
    const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (failure != std::errc() || end != word.data() + word.size())
        return std::nullopt;
    return number;
}

std::optional<double> parse_component(Value_type type, std::string_view word)
{
    if (type == Value_type::boolean) {
        if (word == "true")
            return 1.0;
        return word == "false" ? std::optional<double>(0.0) : std::nullopt;
    }
    if (type == Value_type::integer)
        return parse_number<std::int32_t>(word);
    const std::optional<double> number = parse_number<double>(word);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

} // namespace

std::optional<Value> parse_value(Value_type type, std::string_view text)
{
    Value value;
    value.type = type;
    if (type == Value_type::string || type == Value_type::filename) {
        value.text = std::string(text);
        return value;
    }
    const int count = component_count(type);
    if (count == 0)
        return std::nullopt;
    std::string_view rest = without_spaces(text);
    for (int i = 0; i < count; ++i) {
        const std::optional<double> number = parse_component(type, take_word(rest));
        if (!number)
            return std::nullopt;
        value.numbers[i] = *number;
    }
    return rest.empty() ? std::optional<Value>(value) : std::nullopt;
}

} // namespace reference_host
