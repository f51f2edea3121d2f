#include "tests/evaluator/probe_values.h"

#include "reference_host/shading/shading_state.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace probing
{
namespace
{

// Numbers from 0 to 1 that look random: of a place in a value of a set, by its name.
double random_number(const std::string& name, std::size_t set, int place)
{
    std::uint32_t hash = 2166136261U;
    const auto add = [&](unsigned char byte) { hash = (hash ^ byte) * 16777619U; };
    for (const char sign : name)
        add(static_cast<unsigned char>(sign));
    add(static_cast<unsigned char>(set));
    add(static_cast<unsigned char>(place));
    hash ^= hash >> 15;
    hash *= 2246822519U;
    hash ^= hash >> 13;
    return static_cast<double>(hash >> 8) / 16777216.0;
}

struct Interval {
    double low, high;
};

// Small, of both signs, above zero.
constexpr Interval usual[set_count] = {{0.1, 0.9}, {0.05, 0.95}, {-2.0, 2.0}, {0.5, 4.0}};

Interval interval_of(const Input_definition& input, const std::string& name, std::size_t set)
{
    if (input.min && input.max)
        return {*input.min, *input.max};
    if (name == "p_color" || name == "p_roughness") // no surface reflects more
        return {0.0, 1.0};
    return usual[set];
}

double as_float(double number)
{
    return static_cast<double>(static_cast<float>(number));
}

Shading_value random_value(const Code_type& type, const std::string& name, std::size_t set,
                           const Interval& interval)
{
    constexpr int most_whole = 4; // loops run so often
    Shading_value value(type);
    for (int i = 0; i < value.size(); ++i) {
        const double random = random_number(name, set, i);
        double number = interval.low + random * (interval.high - interval.low);
        if (type == Base_type::integer)
            number = std::floor(random * most_whole) +
                     std::min(std::max(std::floor(interval.low), 0.0), 1.0);
        else if (type == Base_type::boolean)
            number = random < 0.5 ? 0.0 : 1.0;
        value.numbers[static_cast<std::size_t>(i)] = as_float(number);
    }
    // Matrices that have an inverse.
    const std::size_t rows = type == Base_type::matrix3 ? 3 : 4;
    for (std::size_t i = 0; i < rows && value.size() > 4; ++i)
        value.numbers[i * rows + i] += 3.0;
    return value;
}

Shading_value unit_vector(const std::string& name, std::size_t set)
{
    Shading_value value = random_value(Base_type::float3, name, set, {-1.0, 1.0});
    const auto& n = value.numbers;
    const double length = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    for (double& number : value.numbers)
        number = as_float(number / length);
    return value;
}

bool is_direction(const std::string& name)
{
    const std::string ends[] = {"normal", "tangent", "bitangent", "binormal", "direction"};
    return std::any_of(std::begin(ends), std::end(ends), [&](const std::string& end) {
        return name.size() >= end.size() &&
               name.compare(name.size() - end.size(), end.size(), end) == 0;
    });
}

// Corners of a lattice, and what they are hashed to: noise is made for whole numbers alone, and
// goes up and down too steeply between them.
bool is_of_lattice(const std::string& name)
{
    return name == "p_cell" || name == "p_corner" || name == "p_hash";
}

Values values_of(const std::function<Shading_value(std::size_t set)>& value)
{
    Values values;
    for (std::size_t set = 0; set < set_count; ++set)
        values[set] = value(set);
    return values;
}

bool is_zero(const Shading_value& value)
{
    return std::all_of(value.numbers.begin(), value.numbers.end(),
                       [](double number) { return number == 0.0; });
}

} // namespace

Values values_for(const Module_parameter& parameter, const Input_definition& input)
{
    const Code_type type = parameter.value->type;
    return values_of([&](std::size_t set) {
        Shading_value usual_value(type);
        for (std::size_t i = 0; i < parameter.value->numbers.size(); ++i)
            usual_value.numbers[i] = as_float(parameter.value->numbers[i]);
        const bool has_default = !is_zero(usual_value) || type == Base_type::integer;
        if (set == 0 && has_default)
            return usual_value;
        if (type == Base_type::float3 && is_direction(parameter.name))
            return unit_vector(parameter.name, set);
        Shading_value value =
            random_value(type, parameter.name, set, interval_of(input, parameter.name, set));
        for (double& number : value.numbers)
            number = is_of_lattice(parameter.name) ? std::floor(number * 10.0) : number;
        return value;
    });
}

Expr add_parameter(Module& module, const Code_type& type, const std::string& name)
{
    Module_parameter parameter;
    parameter.name = name;
    parameter.value = literal(type, {});
    module.parameters.push_back(parameter);
    return variable(type, name);
}

Switch_values all_switches()
{
    Switch_values switches;
    for (int i = 0; i < static_cast<int>(Switch::none); ++i)
        switches[static_cast<Switch>(i)] = true;
    switches[Switch::has_derivatives] = false;
    return switches;
}

const std::map<std::string, Values>& state_fields()
{
    static const std::map<std::string, Values> fields = [] {
        std::map<std::string, Values> made;
        for (const Variable_declaration& field : find_structure("State")->fields) {
            const std::string name = "state_" + field.name;
            made[field.name] = values_of([&](std::size_t set) {
                return field.type == Base_type::float3 && is_direction(name)
                           ? unit_vector(name, set)
                           : random_value(field.type, name, set, usual[set]);
            });
        }
        return made;
    }();
    return fields;
}

const std::map<std::string, Shading_value>& host_values()
{
    static const std::map<std::string, Shading_value> values = [] {
        std::map<std::string, Shading_value> made;
        for (int i = 0; i < static_cast<int>(Host_value::none); ++i) {
            const Expr value = host_variable(static_cast<Host_value>(i));
            made[value->name] = random_value(value->type, value->name, 0, {-1.0, 1.0});
        }
        return made;
    }();
    return values;
}

Shading_value texel_at(const Shading_value& place)
{
    const auto& p = place.numbers; // of a direction: also z
    return {Base_type::float4,
            {0.5 + 0.25 * std::sin(p[0]), 0.5 + 0.25 * std::cos(p[1]),
             0.5 + 0.25 * std::sin(p[0] + p[1]) + 0.125 * std::sin(p[2]),
             0.75 + 0.125 * std::cos(p[0])}};
}

} // namespace probing
