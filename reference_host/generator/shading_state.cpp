#include "reference_host/generator/shading_state.h"

namespace reference_host
{
namespace
{

struct Scene_source {
    const char* name;
    const char* field; // of State
};

// Names that are the same in every internal space.
constexpr Scene_source scene_sources[] = {
    {"texcoord", "texture_coordinate0"},
    {"position", "object_position"},
    {"normal", "normal"},
    {"tangent", "texture_tangent"},
    {"bitangent", "texture_binormal"},
    {"viewdirection", "direction"},
    {"object_position", "object_position"},
    {"object_normal", "object_normal"},
    {"object_tangent", "object_tangent"},
    {"object_bitangent", "object_binormal"},
    {"vertex_color", "vertex_color"},
};

// Directions that the internal space turns.
constexpr Scene_source world_sources[] = {
    {"world_normal", "normal"},
    {"world_tangent", "texture_tangent"},
    {"world_bitangent", "texture_binormal"},
    {"world_viewdirection", "direction"},
};

constexpr Scene_source vertex_properties[] = {
    {"st", "texture_coordinate0"},    {"uv", "texture_coordinate0"},
    {"UV0", "texture_coordinate0"},   {"st0", "texture_coordinate0"},
    {"uv0", "texture_coordinate0"},   {"map1", "texture_coordinate0"},
    {"UVMap", "texture_coordinate0"}, {"st1", "texture_coordinate1"},
    {"uv1", "texture_coordinate1"},   {"UV1", "texture_coordinate1"},
    {"st2", "texture_coordinate2"},   {"UV2", "texture_coordinate2"},
    {"displayColor", "vertex_color"}, {"color", "vertex_color"},
    {"Cd", "vertex_color"},           {"COLOR_0", "vertex_color"},
    {"normals", "object_normal"},     {"Nobject", "object_normal"},
    {"Pobject", "object_position"},
};

const State_field* find_field(const std::string& name)
{
    for (const State_field& field : state_fields())
        if (name == field.name)
            return &field;
    return nullptr;
}

} // namespace

const std::vector<State_field>& state_fields()
{
    using Source = State_source;
    static const std::vector<State_field> fields = {
        {"position", Kind::float3, Source::position, Space::camera, "position", ""},
        {"normal", Kind::float3, Source::direction, Space::camera, "normal", ""},
        {"direction", Kind::float3, Source::derived, Space::camera, "",
         "from the eye to the point"},
        {"eye_distance", Kind::float1, Source::derived, Space::camera, "", ""},
        {"texture_tangent", Kind::float3, Source::direction, Space::camera, "tangent", ""},
        {"texture_binormal", Kind::float3, Source::direction, Space::camera, "binormal", ""},
        {"texture_coordinate0", Kind::float2, Source::plain, Space::object, "texcoord0", ""},
        {"texture_coordinate1", Kind::float2, Source::plain, Space::object, "texcoord1", ""},
        {"texture_coordinate2", Kind::float2, Source::plain, Space::object, "texcoord2", ""},
        {"texture_coordinate3", Kind::float2, Source::plain, Space::object, "texcoord3", ""},
        {"world_position", Kind::float3, Source::position, Space::world, "position", ""},
        {"object_position", Kind::float3, Source::position, Space::object, "position", ""},
        {"object_normal", Kind::float3, Source::direction, Space::object, "normal", ""},
        {"object_tangent", Kind::float3, Source::direction, Space::object, "tangent", ""},
        {"object_binormal", Kind::float3, Source::direction, Space::object, "binormal", ""},
        {"vertex_color", Kind::float4, Source::plain, Space::object, "color", ""},
        {"light_to_surface", Kind::float3, Source::lights, Space::camera, "", "filled by lights"},
        {"light_distance", Kind::float1, Source::lights, Space::camera, "", ""},
        {"light_dotnl", Kind::float1, Source::lights, Space::camera, "", ""},
    };
    return fields;
}

Expr state_field(const std::string& name)
{
    const State_field* field = find_field(name);
    return member(variable(Shading_type("State"), "state"), name, field->type);
}

Expr world_direction(const Expr& direction, Space internal_space, Program& program)
{
    return internal_space == Space::world
               ? direction
               : program.call("host_transform",
                              {program.find_variable("camera_rotation"), direction});
}

Expr find_scene_source(const std::string& name, Space internal_space, Program& program)
{
    for (const Scene_source& source : scene_sources)
        if (name == source.name)
            return state_field(source.field);
    for (const Scene_source& source : world_sources)
        if (name == source.name)
            return world_direction(state_field(source.field), internal_space, program);
    if (name == "world_position")
        return state_field(internal_space == Space::world ? "position" : "world_position");
    return name == "state" ? variable(Shading_type("State"), "state") : nullptr;
}

Expr find_vertex_property(const std::string& name)
{
    for (const Scene_source& property : vertex_properties)
        if (name == property.name)
            return state_field(property.field);
    return nullptr;
}

void add_shading_structures(Program& program)
{
    Structure state{"State", {}};
    for (const State_field& field : state_fields())
        state.fields.push_back({field.type, field.name, field.note});
    program.add_structure(state);
    program.add_structure({"Light_iterator",
                           {{Kind::float4, "tsl_raw_contribution", ""},
                            {Kind::float4, "tsl_contribution", ""},
                            {Kind::float3, "tsl_point", ""},
                            {Kind::float1, "tsl_distance", ""},
                            {Kind::float1, "tsl_dot_nl", ""},
                            {Kind::float3, "tsl_direction", "towards the light"}}});
    program.add_structure({"Surface",
                           {{Kind::float3, "base_color", ""},
                            {Kind::float1, "diffuse_roughness", ""},
                            {Kind::float1, "metalness", ""},
                            {Kind::float3, "specular_color", ""},
                            {Kind::float1, "specular_roughness", ""},
                            {Kind::float1, "specular_ior", ""},
                            {Kind::float1, "transmission", ""},
                            {Kind::float3, "transmission_color", ""},
                            {Kind::float1, "coat", ""},
                            {Kind::float3, "coat_color", ""},
                            {Kind::float1, "coat_roughness", ""},
                            {Kind::float1, "coat_ior", ""},
                            {Kind::float3, "sheen_color", "times its weight"},
                            {Kind::float1, "sheen_roughness", ""}}});
}

} // namespace reference_host
