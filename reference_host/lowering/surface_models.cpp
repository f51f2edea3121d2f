#include "reference_host/lowering/surface_models.h"

#include "reference_host/library/library_scope.h"
#include "reference_host/lowering/document_values.h"
#include "reference_host/nodes/node_library.h"

#include <algorithm>

namespace reference_host
{
namespace
{

// All slots with what holds where a model does not have them.
constexpr Surface_slot slot_defaults[] = {
    {"base_color", "float3(0.8)"},
    {"diffuse_roughness", "0.0"},
    {"metalness", "0.0"},
    {"specular_color", "float3(1.0)"},
    {"specular_roughness", "0.5"},
    {"specular_ior", "1.5"},
    {"transmission", "0.0"},
    {"transmission_color", "float3(1.0)"},
    {"coat", "0.0"},
    {"coat_color", "float3(1.0)"},
    {"coat_roughness", "0.0"},
    {"coat_ior", "1.5"},
    {"sheen_color", "float3(0.0)"},
    {"sheen_roughness", "0.3"},
    {"emission", "float3(0.0)"},
    {"opacity", "1.0"},
    {"occlusion", "1.0"},
    {"normal", "normal"},
};

// Subsurface scattering becomes diffuse reflection in its colour: there is one pass and no depth.
const std::vector<Surface_model> models = {
    {"standard_surface",
     {{"base_color", "mix(base * base_color, subsurface_color, subsurface)"},
      {"diffuse_roughness", "diffuse_roughness"},
      {"metalness", "metalness"},
      {"specular_color", "specular * specular_color"},
      {"specular_roughness", "specular_roughness"},
      {"specular_ior", "specular_IOR"},
      {"transmission", "transmission"},
      {"transmission_color", "transmission_color"},
      {"coat", "coat"},
      {"coat_color", "coat_color"},
      {"coat_roughness", "coat_roughness"},
      {"coat_ior", "coat_IOR"},
      {"sheen_color", "sheen * sheen_color"},
      {"sheen_roughness", "sheen_roughness"},
      {"emission", "emission * emission_color"},
      {"opacity", "(opacity.x + opacity.y + opacity.z) / 3.0"},
      {"normal", "normal"}}},
    {"open_pbr_surface",
     {{"base_color", "mix(base_weight * base_color, subsurface_color, subsurface_weight)"},
      {"diffuse_roughness", "base_diffuse_roughness"},
      {"metalness", "base_metalness"},
      {"specular_color", "specular_weight * specular_color"},
      {"specular_roughness", "specular_roughness"},
      {"specular_ior", "specular_ior"},
      {"transmission", "transmission_weight"},
      {"transmission_color", "transmission_color"},
      {"coat", "coat_weight"},
      {"coat_color", "coat_color"},
      {"coat_roughness", "coat_roughness"},
      {"coat_ior", "coat_ior"},
      {"sheen_color", "fuzz_weight * fuzz_color"},
      {"sheen_roughness", "fuzz_roughness"},
      // A luminance of 1000 nits shows as white.
      {"emission", "emission_luminance * 0.001 * emission_color"},
      {"opacity", "geometry_opacity"},
      {"normal", "geometry_normal"}}},
    {"gltf_pbr",
     {{"base_color", "base_color"},
      {"metalness", "metallic"},
      {"specular_color", "specular * specular_color"},
      {"specular_roughness", "roughness"},
      {"specular_ior", "ior"},
      {"transmission", "transmission"},
      {"transmission_color", "base_color"},
      {"coat", "clearcoat"},
      {"coat_roughness", "clearcoat_roughness"},
      {"sheen_color", "sheen_color"},
      {"sheen_roughness", "sheen_roughness"},
      {"emission", "emissive * emissive_strength"},
      {"opacity", "alpha_mode == 0 ? 1.0 : (alpha_mode == 1 ? step(alpha_cutoff, alpha) : alpha)"},
      {"occlusion", "occlusion"},
      {"normal", "normal"}}},
    {"UsdPreviewSurface",
     {{"base_color", "diffuseColor"},
      {"metalness", "useSpecularWorkflow == 1 ? 0.0 : metallic"},
      // In the specular workflow the colour is the reflectance itself.
      {"specular_color",
       "useSpecularWorkflow == 1 ? specularColor / ior_reflectance(ior) : float3(1.0)"},
      {"specular_roughness", "roughness"},
      {"specular_ior", "ior"},
      {"coat", "clearcoat"},
      {"coat_roughness", "clearcoatRoughness"},
      {"emission", "emissiveColor"},
      {"opacity", "cut_out(opacity, opacityThreshold)"},
      {"occlusion", "occlusion"},
      {"normal", "tangent_space_normal(normal)"}}},
    {"disney_principled",
     {{"base_color", "baseColor"},
      {"metalness", "metallic"},
      {"specular_color", "mix(float3(1.0), baseColor, specularTint)"},
      {"specular_roughness", "roughness"},
      {"specular_ior", "ior"},
      {"transmission", "specTrans"},
      {"transmission_color", "baseColor"},
      {"coat", "clearcoat * 0.25"},
      {"coat_roughness", "1.0 - clearcoatGloss"},
      {"sheen_color", "sheen * mix(float3(1.0), baseColor, sheenTint)"}}},
    {"surface_unlit", {{"emission", "emission * emission_color"}, {"opacity", "opacity"}}, false},
};

// Inputs of a node as far as they are known: values, and variables for everything else.
class Known_values : public Library_scope
{
public:
    explicit Known_values(const Node& node) : m_node(node), m_definition(node.definition) {}

    Expr find_variable(const std::string& name) override
    {
        const Input_definition* defined = m_definition ? m_definition->find_input(name) : nullptr;
        if (!defined)
            return variable(Kind::float3, name);
        const Input* given = m_node.find_input(name);
        if (given && !given->value)
            return variable(shading_type(defined->type), name);
        return literal(given ? *given->value : defined->value);
    }

private:
    const Node& m_node;
    const Node_definition* m_definition;
};

bool is_default(const Input& input, const Input_definition& defined)
{
    if (!input.value)
        return false;
    return input.value->text == defined.value.text && input.value->numbers == defined.value.numbers;
}

} // namespace

const Surface_model* find_surface_model(const std::string& category)
{
    for (const Surface_model& model : models)
        if (category == model.category)
            return &model;
    return nullptr;
}

std::string slot_expression(const Surface_model& model, const std::string& slot)
{
    for (const Surface_slot& own : model.slots)
        if (slot == own.slot)
            return own.expression;
    for (const Surface_slot& fallback : slot_defaults)
        if (slot == fallback.slot)
            return fallback.expression;
    return "";
}

std::vector<std::string> inputs_without_counterpart(const Node& node, const Surface_model& model)
{
    std::vector<std::string> names;
    const Node_definition* definition = node.definition;
    for (const Input& input : node.inputs) {
        const Input_definition* defined = definition ? definition->find_input(input.name) : nullptr;
        if (!defined || is_default(input, *defined) ||
            (input.value && !defined->default_source.empty()))
            continue;
        const auto reads = [&](const Surface_slot& slot) {
            return names_word(slot.expression, input.name);
        };
        if (std::none_of(model.slots.begin(), model.slots.end(), reads))
            names.push_back(input.name);
    }
    return names;
}

bool slot_contributes(const Node& node, const Surface_model& model, const std::string& slot)
{
    Known_values values(node);
    return !is_zero(parse_expression(slot_expression(model, slot), values));
}

} // namespace reference_host
