#include "reference_host/nodes/units.h"

#include <algorithm>
#include <iterator>

namespace reference_host
{
namespace
{

enum class Measure { distance, angle };

struct Unit {
    const char* name;
    Measure measure;
    double scale; // in metres or degrees
};

constexpr Unit units[] = {
    {"nanometer", Measure::distance, 1e-9},
    {"micron", Measure::distance, 1e-6},
    {"micrometer", Measure::distance, 1e-6},
    {"millimeter", Measure::distance, 1e-3},
    {"centimeter", Measure::distance, 1e-2},
    {"inch", Measure::distance, 0.0254},
    {"foot", Measure::distance, 0.3048},
    {"yard", Measure::distance, 0.9144},
    {"meter", Measure::distance, 1},
    {"kilometer", Measure::distance, 1000},
    {"mile", Measure::distance, 1609.344},
    {"degree", Measure::angle, 1},
    {"radian", Measure::angle, 57.295779513082321},
};

const Unit* find_unit(const std::string& name)
{
    const auto* const found = std::find_if(std::begin(units), std::end(units),
                                           [&](const Unit& unit) { return name == unit.name; });
    return found == std::end(units) ? nullptr : found;
}

bool has_units(Value_type type)
{
    return type == Value_type::float1 || type == Value_type::vector2 ||
           type == Value_type::vector3 || type == Value_type::vector4;
}

} // namespace

double unit_scale(const std::string& from, const std::string& to)
{
    const Unit* unit = find_unit(from);
    if (!unit)
        return 1;
    if (to.empty())
        return unit->scale;
    const Unit* wanted = find_unit(to);
    return wanted && wanted->measure == unit->measure ? unit->scale / wanted->scale : 1;
}

void convert_unit(Value& value, const std::string& from, const std::string& to)
{
    if (!has_units(value.type))
        return;
    const double scale = unit_scale(from, to);
    for (double& number : value.numbers)
        number *= scale;
}

} // namespace reference_host
