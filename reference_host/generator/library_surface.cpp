#include "reference_host/generator/library.h"

#include <iterator>

namespace reference_host
{
namespace
{

// The surface model: diffuse reflection below a dielectric or metallic specular lobe, with sheen
// and a clear coat on top. Sources: GGX distribution and Smith's masking function in the form of
// Heitz, "Understanding the Masking-Shadowing Function" (2014); Fresnel term by Schlick (1994);
// diffuse roughness by Oren and Nayar in Fujii's improved form; sheen by Estevez and Kulla,
// "Production Friendly Microfacet Sheen BRDF" (2017), with Neubelt and Pettineo's visibility term.
constexpr const char* texts[] = {
    // No real surface reflects less than 2 % head-on; what is set lower is meant not to shine at
    // its edges either. Lagarde and de Rousiers, "Moving Frostbite to Physically Based Rendering".
    R"(float3 fresnel(float3 reflectance, float cosine)
{
    float edge = saturate(50.0 * max(reflectance.x, max(reflectance.y, reflectance.z)));
    return reflectance + (edge - reflectance) * pow(1.0 - cosine, 5.0);
})",
    R"(float ior_reflectance(float ior)
{
    float ratio = (ior - 1.0) / (ior + 1.0);
    return ratio * ratio;
})",
    R"(float ggx_lobe(float n_dot_l, float n_dot_v, float n_dot_h, float roughness)
{
    float a = max(roughness * roughness, 0.002);
    float a2 = a * a;
    float d = n_dot_h * n_dot_h * (a2 - 1.0) + 1.0;
    float masking = n_dot_l * sqrt(n_dot_v * n_dot_v * (1.0 - a2) + a2)
                  + n_dot_v * sqrt(n_dot_l * n_dot_l * (1.0 - a2) + a2);
    return a2 * 0.15915494 / (d * d * max(masking, 0.0001));
})",
    R"(float oren_nayar(float n_dot_l, float n_dot_v, float l_dot_v, float roughness)
{
    float s = l_dot_v - n_dot_l * n_dot_v;
    float t = s > 0.0 ? max(n_dot_l, n_dot_v) : 1.0;
    return (1.0 + roughness * s / t) / (1.0 + 0.2877934 * roughness);
})",
    R"(float sheen_lobe(float n_dot_l, float n_dot_v, float n_dot_h, float roughness)
{
    float inverse_roughness = 1.0 / max(roughness, 0.05);
    float sine = sqrt(max(1.0 - n_dot_h * n_dot_h, 0.0));
    float distribution = (2.0 + inverse_roughness) * pow(sine, inverse_roughness) * 0.15915494;
    return distribution / (4.0 * (n_dot_l + n_dot_v - n_dot_l * n_dot_v));
})",
    R"(float cut_out(float opacity, float threshold)
{
    return threshold > 0.0 ? step(threshold, opacity) : opacity;
})",
    // Reflectance of the base at normal incidence.
    R"(float3 base_reflectance(Surface surface)
{
    float3 result = surface.specular_color * ior_reflectance(surface.specular_ior);
    if (has_metalness)
        result = mix(result, surface.base_color, surface.metalness);
    return result;
})",
    R"(float3 diffuse_albedo(Surface surface)
{
    float3 result = surface.base_color;
    if (has_metalness)
        result *= 1.0 - surface.metalness;
    if (has_transmission)
        result *= 1.0 - surface.transmission;
    return result;
})",
    R"(float3 light_response(Surface surface, State state, Light_iterator light)
{
    float3 to_eye = -state.direction;
    float3 half_way = normalize(light.tsl_direction + to_eye);
    float n_dot_l = saturate(light.tsl_dot_nl);
    float n_dot_v = max(dot(state.normal, to_eye), 0.0001);
    float n_dot_h = saturate(dot(state.normal, half_way));
    float v_dot_h = saturate(dot(to_eye, half_way));

    float3 reflected = fresnel(base_reflectance(surface), v_dot_h);
    float3 diffuse = diffuse_albedo(surface) * 0.31830989;
    if (has_diffuse_roughness)
        diffuse *= oren_nayar(n_dot_l, n_dot_v, dot(light.tsl_direction, to_eye),
                              surface.diffuse_roughness);
    float3 response = diffuse * (1.0 - reflected)
                    + reflected * ggx_lobe(n_dot_l, n_dot_v, n_dot_h, surface.specular_roughness);
    if (has_sheen)
        response += surface.sheen_color * sheen_lobe(n_dot_l, n_dot_v, n_dot_h,
                                                     surface.sheen_roughness);
    if (has_coat)
    {
        float coat = surface.coat * fresnel(float3(ior_reflectance(surface.coat_ior)), v_dot_h).x;
        response *= mix(float3(1.0), surface.coat_color, surface.coat) * (1.0 - coat);
        response += coat * ggx_lobe(n_dot_l, n_dot_v, n_dot_h, surface.coat_roughness);
    }
    return response * light.tsl_contribution.xyz * n_dot_l;
})",
    // The surface's answer to what it mirrors, without the blur of a rough surface, which dims the
    // reflection instead.
    R"(float3 mirror_response(Surface surface, State state, float3 mirrored)
{
    float n_dot_v = saturate(dot(state.normal, -state.direction));
    float smoothness = 1.0 - surface.specular_roughness * 0.5;
    float3 response = fresnel(base_reflectance(surface), n_dot_v) * smoothness;
    if (has_coat)
    {
        float coat = surface.coat * fresnel(float3(ior_reflectance(surface.coat_ior)), n_dot_v).x;
        response = response * surface.coat_color * (1.0 - coat)
                 + coat * (1.0 - surface.coat_roughness * 0.5);
    }
    return response * mirrored;
})",
    R"(float3 transmission_response(Surface surface, State state, float3 seen_through)
{
    float n_dot_v = saturate(dot(state.normal, -state.direction));
    float3 passed = 1.0 - fresnel(base_reflectance(surface), n_dot_v);
    return passed * surface.transmission * surface.transmission_color * seen_through;
})",
};

} // namespace

Library_texts surface_library()
{
    return {texts, std::size(texts)};
}

} // namespace reference_host
