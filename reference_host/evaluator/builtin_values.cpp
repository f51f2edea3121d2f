#include "reference_host/evaluator/builtin_values.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace reference_host
{
namespace
{

constexpr double undefined = std::numeric_limits<double>::quiet_NaN();

double clamped(double x, double low, double high)
{
    return low > high ? undefined : std::min(std::max(x, low), high);
}

double smooth_step(double low, double high, double x)
{
    if (low >= high)
        return undefined;
    const double share = clamped((x - low) / (high - low), 0.0, 1.0);
    return share * share * (3.0 - 2.0 * share);
}

// Builtins that treat each component by itself. Arguments that are missing are zero.
struct Component_row {
    Builtin builtin;
    double (*value)(double a, double b, double c);
};

constexpr Component_row component_rows[] = {
    {Builtin::abs, [](double a, double, double) { return std::abs(a); }},
    {Builtin::floor, [](double a, double, double) { return std::floor(a); }},
    {Builtin::ceil, [](double a, double, double) { return std::ceil(a); }},
    {Builtin::fract, [](double a, double, double) { return a - std::floor(a); }},
    {Builtin::sin, [](double a, double, double) { return std::sin(a); }},
    {Builtin::cos, [](double a, double, double) { return std::cos(a); }},
    {Builtin::tan, [](double a, double, double) { return std::tan(a); }},
    {Builtin::asin, [](double a, double, double) { return std::asin(a); }},
    {Builtin::acos, [](double a, double, double) { return std::acos(a); }},
    {Builtin::atan2, [](double a, double b,
                        double) { return a == 0.0 && b == 0.0 ? undefined : std::atan2(a, b); }},
    {Builtin::exp, [](double a, double, double) { return std::exp(a); }},
    {Builtin::log, [](double a, double, double) { return std::log(a); }},
    {Builtin::sqrt, [](double a, double, double) { return std::sqrt(a); }},
    {Builtin::pow,
     [](double a, double b, double) {
         return a < 0.0 || (a == 0.0 && b <= 0.0) ? undefined : std::pow(a, b);
     }},
    {Builtin::min, [](double a, double b, double) { return b < a ? b : a; }},
    {Builtin::max, [](double a, double b, double) { return a < b ? b : a; }},
    {Builtin::clamp, clamped},
    {Builtin::saturate, [](double a, double, double) { return clamped(a, 0.0, 1.0); }},
    {Builtin::mix, [](double a, double b, double c) { return a + (b - a) * c; }},
    {Builtin::step, [](double a, double b, double) { return b < a ? 0.0 : 1.0; }},
    {Builtin::smoothstep, smooth_step},
};

double number_of(const Shading_value& value, int component)
{
    return value.numbers[value.size() == 1 ? 0 : static_cast<std::size_t>(component)];
}

Shading_value by_components(const Component_row& row, const std::vector<Shading_value>& arguments)
{
    Shading_value result = *std::max_element(
        arguments.begin(), arguments.end(),
        [](const Shading_value& a, const Shading_value& b) { return a.size() < b.size(); });
    for (int i = 0; i < result.size(); ++i) {
        double numbers[3] = {};
        for (std::size_t k = 0; k < arguments.size(); ++k)
            numbers[k] = number_of(arguments[k], i);
        result.numbers[static_cast<std::size_t>(i)] = row.value(numbers[0], numbers[1], numbers[2]);
    }
    return result;
}

double dot(const Shading_value& a, const Shading_value& b)
{
    double sum = 0.0;
    for (int i = 0; i < a.size(); ++i)
        sum += number_of(a, i) * number_of(b, i);
    return sum;
}

// a * x + b * y
Shading_value sum(double x, const Shading_value& a, double y, const Shading_value& b)
{
    Shading_value result(a.type);
    for (std::size_t i = 0; i < a.numbers.size(); ++i)
        result.numbers[i] = x * a.numbers[i] + y * b.numbers[i];
    return result;
}

Shading_value scalar(double number)
{
    return {Base_type::float1, {number}};
}

Shading_value cross(const Shading_value& a, const Shading_value& b)
{
    const auto& x = a.numbers;
    const auto& y = b.numbers;
    return {Base_type::float3,
            {x[1] * y[2] - x[2] * y[1], x[2] * y[0] - x[0] * y[2], x[0] * y[1] - x[1] * y[0]}};
}

Shading_value refract(const Shading_value& a, const Shading_value& normal, double ratio)
{
    const double cosine = dot(a, normal);
    const double rest = 1.0 - ratio * ratio * (1.0 - cosine * cosine);
    return rest < 0.0 ? Shading_value(a.type)
                      : sum(ratio, a, -(ratio * cosine + std::sqrt(rest)), normal);
}

Shading_value normalized(const Shading_value& a)
{
    const double length = std::sqrt(dot(a, a));
    return sum(length > 0.0 ? 1.0 / length : undefined, a, 0.0, a);
}

std::size_t rows_of(const Shading_value& matrix)
{
    return matrix.type == Base_type::matrix3 ? 3 : 4;
}

Shading_value transposed(const Shading_value& matrix)
{
    Shading_value result(matrix.type);
    const std::size_t rows = rows_of(matrix);
    for (std::size_t i = 0; i < rows; ++i)
        for (std::size_t k = 0; k < rows; ++k)
            result.numbers[i * rows + k] = matrix.numbers[k * rows + i];
    return result;
}

Shading_value product(const Shading_value& a, const Shading_value& b)
{
    Shading_value result(a.type);
    const std::size_t rows = rows_of(a);
    for (std::size_t i = 0; i < rows; ++i)
        for (std::size_t k = 0; k < rows; ++k)
            for (std::size_t j = 0; j < rows; ++j)
                result.numbers[i * rows + k] += a.numbers[i * rows + j] * b.numbers[j * rows + k];
    return result;
}

} // namespace

Shading_value matrix_times_vector(const Shading_value& matrix, const Shading_value& vector)
{
    Shading_value result(vector.type);
    const std::size_t rows = rows_of(matrix);
    for (std::size_t i = 0; i < rows; ++i)
        for (std::size_t k = 0; k < rows; ++k)
            result.numbers[i] += matrix.numbers[i * rows + k] * vector.numbers[k];
    return result;
}

Shading_value upper_left(const Shading_value& matrix)
{
    Shading_value result(Base_type::matrix3);
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            result.numbers[i * 3 + k] = matrix.numbers[i * 4 + k];
    return result;
}

Shading_value builtin_value(Builtin builtin, const std::vector<Shading_value>& arguments)
{
    for (const Component_row& row : component_rows)
        if (row.builtin == builtin)
            return by_components(row, arguments);
    const Shading_value& a = arguments[0];
    const Shading_value& b = arguments[std::min<std::size_t>(1, arguments.size() - 1)];
    switch (builtin) {
    case Builtin::length:
        return scalar(std::sqrt(dot(a, a)));
    case Builtin::distance: {
        const Shading_value way = sum(1.0, a, -1.0, b);
        return scalar(std::sqrt(dot(way, way)));
    }
    case Builtin::dot:
        return scalar(dot(a, b));
    case Builtin::cross:
        return cross(a, b);
    case Builtin::normalize:
        return normalized(a);
    case Builtin::faceforward:
        return dot(arguments[2], b) < 0.0 ? a : sum(-1.0, a, 0.0, a);
    case Builtin::reflect:
        return sum(1.0, a, -2.0 * dot(a, b), b);
    case Builtin::refract:
        return refract(a, b, arguments[2].numbers[0]);
    case Builtin::transpose:
        return transposed(a);
    case Builtin::row_transform:
        return matrix_times_vector(transposed(b), a);
    case Builtin::row_product:
        return product(a, b);
    case Builtin::host_untransform:
        return matrix_times_vector(transposed(a), b);
    default: // host_transform
        return matrix_times_vector(a, b);
    }
}

} // namespace reference_host
