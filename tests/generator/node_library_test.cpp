// Every definition of the node library generates in every language, and the library is sane.
#include "reference_host/nodes/node_library.h"

#include "reference_host/generator/generator.h"
#include "reference_host/lowering/document_values.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <sstream>

using namespace reference_host;

namespace
{

// A graph with one node whose inputs are all exposed, so that nothing is known at generation.
struct Single_node_graph {
    Shader_graph graph;
    const Node* node = nullptr;
};

Value odd_value(const Input_definition& defined, Value_type output)
{
    Value value = defined.value;
    if (defined.type == Value_type::filename)
        value.text = "image.png";
    if (defined.name == "channels")
        value.text = std::string(static_cast<std::size_t>(component_count(output)), 'x');
    if (defined.name == "geomprop" || defined.name == "varname")
        value.text = "st";
    return value;
}

std::unique_ptr<Single_node_graph> graph_with(const Node_definition& definition)
{
    auto made = std::make_unique<Single_node_graph>();
    auto node = std::make_unique<Node>();
    node->name = "single";
    node->category = definition.category;
    node->type =
        definition.outputs.size() > 1 ? Value_type::multioutput : definition.outputs[0].type;
    for (const Input_definition& defined : definition.inputs) {
        if (!defined.default_source.empty())
            continue;
        auto parameter = std::make_unique<Parameter>();
        parameter->name = "p_" + defined.name;
        parameter->value = odd_value(defined, definition.outputs[0].type);
        Input input;
        input.name = defined.name;
        input.type = defined.type;
        if (defined.type == Value_type::integer)
            input.value = defined.value;
        else
            input.parameter = parameter.get();
        node->inputs.push_back(input);
        made->graph.parameters.push_back(std::move(parameter));
    }
    node->definition = &definition;
    made->node = node.get();
    made->graph.nodes.push_back(std::move(node));
    return made;
}

bool is_refused(const Node_definition& definition)
{
    return definition.outputs[0].implementation.text.find("refused(") != std::string::npos;
}

// Whether the value could be the colour of a surface.
bool is_shown(const Node_definition& definition)
{
    const int count = component_count(definition.outputs[0].type);
    return count > 0 && count <= 4 && !is_refused(definition);
}

std::string described(const Node_definition& definition)
{
    std::string text = definition.category + " -> " + type_name(definition.outputs[0].type) + " (";
    for (const Input_definition& input : definition.inputs)
        text += std::string(type_name(input.type)) + " " + input.name + ", ";
    return text + ")";
}

} // namespace

TEST(Node_library, generate_in_every_language)
{
    const struct {
        const char *target, *format;
    } targets[] = {{"FX", "CgFX"}, {"FX", "HLSL"}, {"GL", "CgFX"}};
    for (const Node_definition& definition : all_definitions()) {
        if (!is_shown(definition))
            continue;
        const auto made = graph_with(definition);
        for (const auto& target : targets) {
            Diagnostics diagnostics;
            const auto compiled = compile_node(made->graph, *made->node, {}, diagnostics);
            ASSERT_TRUE(compiled) << described(definition) << diagnostics[0].text;
            EXPECT_FALSE(
                compiled->generate(target.target, {{"format", target.format}}, diagnostics).empty())
                << described(definition) << (diagnostics.empty() ? "" : diagnostics[0].text);
        }
    }
}

TEST(Node_library, generate_renderer_sources_or_say_what_is_missing)
{
    for (const Node_definition& definition : all_definitions()) {
        if (!is_shown(definition))
            continue;
        const auto made = graph_with(definition);
        Diagnostics diagnostics;
        const auto compiled = compile_node(made->graph, *made->node, {}, diagnostics);
        ASSERT_TRUE(compiled);
        if (compiled->generate("Swrc", {}, diagnostics).empty()) {
            ASSERT_FALSE(diagnostics.empty()) << described(definition);
            EXPECT_NE(diagnostics[0].text.find("node \"single\" (" + definition.category + ")"),
                      std::string::npos)
                << diagnostics[0].text;
        }
    }
}

TEST(Node_library, that_no_target_can_express_are_refused_with_the_reason)
{
    for (const Node_definition& definition : all_definitions()) {
        if (!is_refused(definition))
            continue;
        const auto made = graph_with(definition);
        Diagnostics diagnostics;
        EXPECT_FALSE(compile_node(made->graph, *made->node, {}, diagnostics));
        ASSERT_FALSE(diagnostics.empty()) << described(definition);
        const std::string head = "node \"single\" (" + definition.category + "): ";
        EXPECT_EQ(diagnostics[0].text.find(head), 0U) << diagnostics[0].text;
        EXPECT_GT(diagnostics[0].text.size(), head.size());
    }
}

TEST(Node_library, no_signature_stands_twice)
{
    std::set<std::string> signatures;
    for (const Node_definition& definition : all_definitions())
        EXPECT_TRUE(signatures.insert(described(definition)).second) << described(definition);
}

TEST(Node_library, have_types_names_and_defaults_that_are_known)
{
    for (const Node_definition& definition : all_definitions()) {
        ASSERT_FALSE(definition.outputs.empty()) << definition.category;
        std::set<std::string> names;
        for (const Input_definition& input : definition.inputs) {
            EXPECT_NE(input.type, Value_type::none) << described(definition);
            EXPECT_FALSE(input.name.empty()) << described(definition);
            EXPECT_TRUE(names.insert(input.name).second) << described(definition);
            EXPECT_EQ(input.value.type, input.type) << described(definition);
            EXPECT_EQ(input.min.has_value(), input.max.has_value()) << described(definition);
        }
        for (const Output_definition& output : definition.outputs) {
            EXPECT_NE(output.type, Value_type::none) << described(definition);
            EXPECT_EQ(output.implementation.text.empty(), code_type(output.type) == Code_type())
                << described(definition);
        }
    }
}

TEST(Node_library, cover_the_groups_of_the_standard_library)
{
    std::istringstream categories(
        "image tiledimage hextiledimage hextilednormalmap triplanarprojection latlongimage ramplr "
        "ramptb ramp4 ramp ramp_gradient splitlr splittb constant noise2d noise3d fractal2d "
        "fractal3d cellnoise2d cellnoise3d worleynoise2d worleynoise3d unifiednoise2d "
        "unifiednoise3d randomfloat randomcolor checkerboard line circle cloverleaf hexagon grid "
        "crosshatch tiledcircles tiledcloverleafs tiledhexagons add subtract multiply divide "
        "modulo "
        "fract invert absval sign floor ceil round power safepower sin cos tan asin acos atan2 "
        "sqrt "
        "ln exp clamp min max trianglewave normalize magnitude distance dotproduct crossproduct "
        "reflect refract transpose determinant invertmatrix creatematrix transformmatrix "
        "transformpoint transformvector transformnormal rotate2d rotate3d place2d remap range "
        "smoothstep contrast luminance rgbtohsv hsvtorgb hsvadjust saturate colorcorrect mix plus "
        "minus difference burn dodge screen overlay in out over disjointover mask matte inside "
        "outside premult unpremult ifgreater ifgreatereq ifequal switch and or xor not convert "
        "combine2 combine3 combine4 separate2 separate3 separate4 extract swizzle position normal "
        "tangent bitangent texcoord geomcolor geompropvalue viewdirection time frame facingratio "
        "gooch_shade normalmap heighttonormal bump blackbody artistic_ior dot gltf_image "
        "gltf_colorimage gltf_normalmap gltf_iridescence_thickness UsdUVTexture UsdPrimvarReader "
        "UsdTransform2d standard_surface open_pbr_surface gltf_pbr UsdPreviewSurface "
        "disney_principled surface_unlit surface layer oren_nayar_diffuse_bsdf burley_diffuse_bsdf "
        "translucent_bsdf subsurface_bsdf sheen_bsdf dielectric_bsdf conductor_bsdf "
        "generalized_schlick_bsdf uniform_edf conical_edf measured_edf generalized_schlick_edf "
        "absorption_vdf anisotropic_vdf roughness_anisotropy roughness_dual "
        "glossiness_anisotropy surfacematerial volumematerial directional_light "
        "point_light spot_light environment_map fog mincomponent maxcomponent flake2d flake3d "
        "thin_film_bsdf chiang_hair_bsdf chiang_hair_roughness chiang_hair_absorption_from_color "
        "deon_hair_absorption_from_melanin volume light displacement "
        "standard_surface_to_UsdPreviewSurface standard_surface_to_gltf_pbr "
        "standard_surface_to_open_pbr_surface open_pbr_surface_to_standard_surface "
        "srgb_texture_to_lin_rec709 acescg_to_lin_rec709 LamaDiffuse LamaTranslucent LamaSSS "
        "LamaSheen LamaConductor LamaDielectric LamaGeneralizedSchlick LamaIridescence "
        "LamaEmission LamaLayer LamaMix LamaAdd LamaSurface");
    for (std::string category; categories >> category;)
        EXPECT_TRUE(is_known_category(category)) << category;
    EXPECT_FALSE(is_known_category("no_such_node"));
    EXPECT_FALSE(is_known_category(""));
}

TEST(Node_library, definitions_are_found_by_the_types_that_a_node_gives)
{
    Node node;
    node.category = "multiply";
    node.type = Value_type::color3;
    node.inputs.resize(1);
    node.inputs[0].name = "in2";
    node.inputs[0].type = Value_type::float1;
    const Node_definition* definition = find_definition(node);
    ASSERT_TRUE(definition);
    EXPECT_EQ(definition->find_input("in1")->type, Value_type::color3);
    EXPECT_EQ(definition->find_input("in2")->type, Value_type::float1);
    EXPECT_EQ(definition->find_input("in2")->value.numbers[0], 1.0);
    node.inputs[0].type = Value_type::vector2;
    EXPECT_FALSE(find_definition(node));
    node.inputs[0].name = "in7";
    EXPECT_FALSE(find_definition(node));
}
