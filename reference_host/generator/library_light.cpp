#include "reference_host/generator/library.h"

#include <iterator>

namespace reference_host
{
namespace
{

// A light of intensity 1 that shines straight down on a white surface makes it white: the factor pi
// makes up for the division by pi in the diffuse reflection.
//
// light_list: the shader takes its lights from a list of an interface, whose result has all fields.
constexpr const char* texts[] = {
    R"(Light_iterator light_from(State state, float3 to_surface, float distance, float3 color)
{
    Light_iterator light;
    light.tsl_contribution = float4(color * 3.1415927, 1.0);
    light.tsl_direction = -to_surface;
    light.tsl_dot_nl = dot(state.normal, -to_surface);
    if (has_distance_limit)
        light.tsl_distance = distance;
    if (light_list)
    {
        light.tsl_raw_contribution = light.tsl_contribution;
        light.tsl_point = state.position - to_surface * distance;
        light.tsl_distance = distance;
    }
    return light;
})",
    R"(Light_iterator directional_light(State state, float3 direction, float3 color)
{
    return light_from(state, normalize(direction), 0.0, color);
})",
    R"(Light_iterator point_light(State state, float3 position, float decay_rate, float3 color)
{
    float3 to_surface = state.position - position;
    float distance = max(length(to_surface), 0.0001);
    return light_from(state, to_surface / distance, distance, color / pow(distance, decay_rate));
})",
    // The cosines are those of the angles from the axis where the light begins to fade and where it
    // ends.
    R"(Light_iterator spot_light(State state, float3 position, float3 direction, float decay_rate,
                          float inner_cosine, float outer_cosine, float3 color)
{
    float3 to_surface = state.position - position;
    float distance = max(length(to_surface), 0.0001);
    to_surface /= distance;
    float cone = smoothstep(outer_cosine, inner_cosine, dot(to_surface, normalize(direction)));
    return light_from(state, to_surface, distance, color * (cone / pow(distance, decay_rate)));
})",
    R"(float fall_off(float distance, float limit)
{
    return saturate(1.0 - distance / limit);
})",
    // The share of light that passes a fog between the eye and the surface.
    R"(float fog_transmittance(State state, float density)
{
    return exp(-density * state.eye_distance);
})",
};

} // namespace

Library_texts light_library()
{
    return {texts, std::size(texts)};
}

} // namespace reference_host
