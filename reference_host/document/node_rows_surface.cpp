#include "reference_host/document/node_rows.h"

#include <iterator>

namespace reference_host
{
namespace
{

// The outputs have no expression: generator/surface_models.cpp says which input feeds which part of
// the generator's own surface model.
constexpr Node_row rows[] = {
    {"standard_surface", "",
     "float base = 1 [0 1], color3 base_color = 0.8, float diffuse_roughness = 0 [0 1], "
     "float metalness = 0 [0 1], float specular = 1 [0 1], color3 specular_color = 1, "
     "float specular_roughness = 0.2 [0 1], float specular_IOR = 1.5 [1 3], "
     "float specular_anisotropy = 0 [0 1], float specular_rotation = 0 [0 1], "
     "float transmission = 0 [0 1], color3 transmission_color = 1, "
     "float transmission_depth = 0 [0 10], color3 transmission_scatter = 0, "
     "float transmission_scatter_anisotropy = 0 [-1 1], float transmission_dispersion = 0 [0 100], "
     "float transmission_extra_roughness = 0 [-1 1], float subsurface = 0 [0 1], "
     "color3 subsurface_color = 1, color3 subsurface_radius = 1, float subsurface_scale = 1 [0 "
     "10], "
     "float subsurface_anisotropy = 0 [-1 1], float sheen = 0 [0 1], color3 sheen_color = 1, "
     "float sheen_roughness = 0.3 [0 1], float coat = 0 [0 1], color3 coat_color = 1, "
     "float coat_roughness = 0.1 [0 1], float coat_anisotropy = 0 [0 1], "
     "float coat_rotation = 0 [0 1], float coat_IOR = 1.5 [1 3], vector3 coat_normal = normal, "
     "float coat_affect_color = 0 [0 1], float coat_affect_roughness = 0 [0 1], "
     "float thin_film_thickness = 0 [0 2000], float thin_film_IOR = 1.5 [1 3], "
     "float emission = 0 [0 1], color3 emission_color = 1, color3 opacity = 1, "
     "boolean thin_walled = false, vector3 normal = normal, vector3 tangent = tangent",
     "surfaceshader out"},

    {"open_pbr_surface", "",
     "float base_weight = 1 [0 1], color3 base_color = 0.8, float base_diffuse_roughness = 0 [0 "
     "1], "
     "float base_metalness = 0 [0 1], float specular_weight = 1 [0 1], color3 specular_color = 1, "
     "float specular_roughness = 0.3 [0 1], float specular_ior = 1.5 [1 3], "
     "float specular_roughness_anisotropy = 0 [0 1], float transmission_weight = 0 [0 1], "
     "color3 transmission_color = 1, float transmission_depth = 0 [0 1], "
     "color3 transmission_scatter = 0, float transmission_scatter_anisotropy = 0 [-1 1], "
     "float transmission_dispersion_scale = 0 [0 1], "
     "float transmission_dispersion_abbe_number = 20 [9 91], float subsurface_weight = 0 [0 1], "
     "color3 subsurface_color = 0.8, float subsurface_radius = 1 [0 1], "
     "color3 subsurface_radius_scale = 1 0.5 0.25, "
     "float subsurface_scatter_anisotropy = 0 [-1 1], float fuzz_weight = 0 [0 1], "
     "color3 fuzz_color = 1, float fuzz_roughness = 0.5 [0 1], float coat_weight = 0 [0 1], "
     "color3 coat_color = 1, float coat_roughness = 0 [0 1], "
     "float coat_roughness_anisotropy = 0 [0 1], float coat_ior = 1.6 [1 3], "
     "float coat_darkening = 1 [0 1], float thin_film_weight = 0 [0 1], "
     "float thin_film_thickness = 0.5 [0 1], float thin_film_ior = 1.4 [1 3], "
     "float emission_luminance = 0 [0 1000], color3 emission_color = 1, "
     "float geometry_opacity = 1 [0 1], boolean geometry_thin_walled = false, "
     "vector3 geometry_normal = normal, vector3 geometry_coat_normal = normal, "
     "vector3 geometry_tangent = tangent, vector3 geometry_coat_tangent = tangent",
     "surfaceshader out"},

    {"gltf_pbr", "",
     "color3 base_color = 1, float metallic = 1 [0 1], float roughness = 1 [0 1], "
     "vector3 normal = normal, vector3 tangent = tangent, float occlusion = 1 [0 1], "
     "float transmission = 0 [0 1], float specular = 1 [0 1], color3 specular_color = 1, "
     "float ior = 1.5 [1 3], float alpha = 1 [0 1], integer alpha_mode = 0 [0 2], "
     "float alpha_cutoff = 0.5 [0 1], float iridescence = 0 [0 1], "
     "float iridescence_ior = 1.3 [1 3], float iridescence_thickness = 100 [100 400], "
     "color3 sheen_color = 0, float sheen_roughness = 0 [0 1], float clearcoat = 0 [0 1], "
     "float clearcoat_roughness = 0 [0 1], vector3 clearcoat_normal = normal, color3 emissive = 0, "
     "float emissive_strength = 1 [0 10], float thickness = 0 [0 10], "
     "float attenuation_distance = 0 [0 100], color3 attenuation_color = 1, "
     "float anisotropy_strength = 0 [0 1], float anisotropy_rotation = 0 [0 6.2832], "
     "float dispersion = 0 [0 1]",
     "surfaceshader out"},

    {"UsdPreviewSurface", "",
     "color3 diffuseColor = 0.18, color3 emissiveColor = 0, integer useSpecularWorkflow = 0 [0 1], "
     "color3 specularColor = 0, float metallic = 0 [0 1], float roughness = 0.5 [0 1], "
     "float clearcoat = 0 [0 1], float clearcoatRoughness = 0.01 [0 1], float opacity = 1 [0 1], "
     "integer|string opacityMode = 0, float opacityThreshold = 0 [0 1], float ior = 1.5 [1 3], "
     "vector3 normal = 0 0 1, float displacement = 0 [-1 1], float occlusion = 1 [0 1]",
     "surfaceshader out"},

    {"disney_principled", "",
     "color3 baseColor = 0.16, float metallic = 0 [0 1], float roughness = 0.5 [0 1], "
     "float anisotropic = 0 [0 1], float specularTint = 0 [0 1], float sheen = 0 [0 1], "
     "float sheenTint = 0.5 [0 1], float clearcoat = 0 [0 1], float clearcoatGloss = 1 [0 1], "
     "float specTrans = 0 [0 1], float ior = 1.5 [1 3], float subsurface = 0 [0 1], "
     "color3 subsurfaceDistance = 1",
     "surfaceshader out"},

    {"surface_unlit", "",
     "float emission = 1 [0 1], color3 emission_color = 1, float transmission = 0 [0 1], "
     "color3 transmission_color = 1, float opacity = 1 [0 1]",
     "surfaceshader out"},
};

} // namespace

Node_rows surface_rows()
{
    return {rows, std::size(rows)};
}

} // namespace reference_host
