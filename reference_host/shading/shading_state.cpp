#include "reference_host/shading/shading_state.h"

#include <cstddef>
#include <unordered_map>

namespace reference_host
{
namespace
{

using Field = State_field;
using Source = State_source;

// In the order of the enumeration.
constexpr State_field_row fields[] = {
    {Field::position, "position", Base_type::float3, Source::position, Space::camera,
     Attribute::position, ""},
    {Field::normal, "normal", Base_type::float3, Source::direction, Space::camera,
     Attribute::normal, ""},
    {Field::direction, "direction", Base_type::float3, Source::derived, Space::camera,
     Attribute::none, "from the eye to the point"},
    {Field::eye_distance, "eye_distance", Base_type::float1, Source::derived, Space::camera,
     Attribute::none, ""},
    {Field::texture_tangent, "texture_tangent", Base_type::float3, Source::direction, Space::camera,
     Attribute::tangent, ""},
    {Field::texture_binormal, "texture_binormal", Base_type::float3, Source::direction,
     Space::camera, Attribute::binormal, ""},
    {Field::texture_coordinate0, "texture_coordinate0", Base_type::float2, Source::plain,
     Space::object, Attribute::texcoord0, ""},
    {Field::texture_coordinate1, "texture_coordinate1", Base_type::float2, Source::plain,
     Space::object, Attribute::texcoord1, ""},
    {Field::texture_coordinate2, "texture_coordinate2", Base_type::float2, Source::plain,
     Space::object, Attribute::texcoord2, ""},
    {Field::texture_coordinate3, "texture_coordinate3", Base_type::float2, Source::plain,
     Space::object, Attribute::texcoord3, ""},
    {Field::world_position, "world_position", Base_type::float3, Source::position, Space::world,
     Attribute::position, ""},
    {Field::object_position, "object_position", Base_type::float3, Source::position, Space::object,
     Attribute::position, ""},
    {Field::object_normal, "object_normal", Base_type::float3, Source::direction, Space::object,
     Attribute::normal, ""},
    {Field::object_tangent, "object_tangent", Base_type::float3, Source::direction, Space::object,
     Attribute::tangent, ""},
    {Field::object_binormal, "object_binormal", Base_type::float3, Source::direction, Space::object,
     Attribute::binormal, ""},
    {Field::vertex_color, "vertex_color", Base_type::float4, Source::plain, Space::object,
     Attribute::color, ""},
    {Field::light_to_surface, "light_to_surface", Base_type::float3, Source::lights, Space::camera,
     Attribute::none, "filled by lights"},
    {Field::light_distance, "light_distance", Base_type::float1, Source::lights, Space::camera,
     Attribute::none, ""},
    {Field::light_dotnl, "light_dotnl", Base_type::float1, Source::lights, Space::camera,
     Attribute::none, ""},
};

constexpr bool in_order()
{
    for (std::size_t i = 0; i < static_cast<std::size_t>(Field::none); ++i)
        if (fields[i].field != static_cast<Field>(i))
            return false;
    return sizeof fields / sizeof *fields == static_cast<std::size_t>(Field::none);
}
static_assert(in_order(), "a field of the state has no row, or one in the wrong place");

// What methods give: those of interfaces, and the length of their lists.
struct Method_row {
    const char* structure;
    const char* name;
    const char* structure_type; // null: float4
};

constexpr Method_row methods[] = {
    {"Light", "eval", "Light_iterator"},
    {"Volume", "eval", nullptr},
    {"Environment", "eval", nullptr},
};

Structure state_structure()
{
    Structure state{"State", {}};
    for (const State_field_row& row : fields)
        state.fields.push_back({row.type, row.name, row.note});
    return state;
}

} // namespace

const State_field_row& row_of(State_field field)
{
    return fields[static_cast<std::size_t>(field)];
}

Expr state_variable()
{
    static const Expr state = variable(Code_type("State"), "state");
    return state;
}

Expr state_field(State_field field)
{
    return member(state_variable(), row_of(field).name, row_of(field).type);
}

const std::vector<Structure>& shading_structures()
{
    static const std::vector<Structure> structures = {
        state_structure(),
        {"Light_iterator",
         {{Base_type::float4, "tsl_raw_contribution", ""},
          {Base_type::float4, "tsl_contribution", ""},
          {Base_type::float3, "tsl_point", ""},
          {Base_type::float1, "tsl_distance", ""},
          {Base_type::float1, "tsl_dot_nl", ""},
          {Base_type::float3, "tsl_direction", "towards the light"}}},
    };
    return structures;
}

const Structure* find_structure(const std::string& name)
{
    for (const Structure& structure : shading_structures())
        if (structure.name == name)
            return &structure;
    return nullptr;
}

Code_type member_type(const std::string& structure, const std::string& member)
{
    using Types_by_name = std::unordered_map<std::string, Code_type>;
    static const auto members = [] {
        std::unordered_map<std::string, Types_by_name> made;
        for (const Structure& known : shading_structures())
            for (const Variable_declaration& field : known.fields)
                made[known.name][field.name] = field.type;
        for (const Method_row& method : methods) {
            made[method.structure][method.name] = method.structure_type
                                                      ? Code_type(method.structure_type)
                                                      : Code_type(Base_type::float4);
            made[std::string(method.structure) + "[]"]["length"] = Base_type::integer;
        }
        return made;
    }();
    const auto known = members.find(structure);
    if (known == members.end())
        return Base_type::none;
    const auto found = known->second.find(member);
    return found == known->second.end() ? Code_type() : found->second;
}

Expr field_of(const Expr& structure, const std::string& name)
{
    return member(structure, name, member_type(structure->type.structure, name));
}

Host_value find_host_value(const std::string& name)
{
    for (const Host_value_row& row : host_values)
        if (name == row.name)
            return row.value;
    return Host_value::none;
}

Expr host_variable(Host_value value)
{
    const Host_value_row& row = row_of(value);
    return variable(row.type, row.name);
}

} // namespace reference_host
