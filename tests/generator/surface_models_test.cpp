#include "reference_host/lowering/surface_lowering.h"

#include "reference_host/nodes/node_library.h"
#include "tests/generator/generation.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace generation;

namespace
{

const char* const categories[] = {"standard_surface", "open_pbr_surface", "gltf_pbr",
                                  "UsdPreviewSurface", "disney_principled"};

std::string document(const std::string& category, const std::string& inputs)
{
    return "<" + category + " name=\"s\" type=\"surfaceshader\">" + inputs + "</" + category +
           "><surfacematerial name=\"paint\" type=\"material\"><input name=\"surfaceshader\" "
           "type=\"surfaceshader\" nodename=\"s\"/></surfacematerial>"
           "<directional_light name=\"sun\" type=\"lightshader\"/>"
           "<environment_map name=\"sky\" type=\"color3\"><input name=\"file\" type=\"filename\" "
           "value=\"sky.dds\"/></environment_map>";
}

std::string text_of(const std::string& category, const std::string& inputs)
{
    const Result result = generate(*graph_of(document(category, inputs)), "FX",
                                   {{"lights", "sun"}, {"environment", "sky"}}, {});
    EXPECT_FALSE(result.texts.empty()) << category << result.messages();
    return result.text();
}

std::string float_input(const std::string& name, const std::string& value)
{
    return "<input name=\"" + name + "\" type=\"float\" value=\"" + value + "\"/>";
}

} // namespace

TEST(Surface_models, all_generate_with_their_defaults)
{
    for (const char* category : categories)
        EXPECT_TRUE(contains(text_of(category, ""), "_lit(state, sun"));
    EXPECT_FALSE(contains(text_of("surface_unlit", ""), "_lit("));
}

TEST(Surface_models, every_input_is_named_or_listed)
{
    for (const char* category : categories) {
        reference_host::Node node;
        node.category = category;
        node.type = reference_host::Value_type::surfaceshader;
        node.definition = reference_host::find_definition(node);
        ASSERT_TRUE(node.definition) << category;
        for (const auto& defined : node.definition->inputs) {
            reference_host::Input input;
            input.name = defined.name;
            input.type = defined.type;
            input.parameter = reinterpret_cast<const reference_host::Parameter*>(&node); // not read
            node.inputs.push_back(input);
        }
        std::string texts;
        for (const auto& shared : node.definition->shared)
            texts += std::string(shared.implementation.text) + " ";
        texts += node.definition->outputs[0].implementation.text;
        const auto listed = inputs_without_counterpart(node);
        for (const auto& input : node.inputs)
            EXPECT_NE(reference_host::names_word(texts, input.name),
                      std::count(listed.begin(), listed.end(), input.name) > 0)
                << category << " " << input.name;
    }
}

TEST(Surface_models, parts_that_a_document_leaves_out_leave_no_trace)
{
    const std::string plain = text_of("standard_surface", "");
    const struct {
        const char *input, *trace;
    } rows[] = {{"coat", "clear_"},
                {"sheen", "sheen"},
                {"metalness", "metal_"},
                {"transmission", "transmi"},
                {"thin_film_thickness", "film_"},
                {"specular_anisotropy", "brushed"},
                {"diffuse_roughness", "oren_nayar"}};
    for (const auto& row : rows) {
        EXPECT_FALSE(contains(plain, row.trace)) << row.trace;
        EXPECT_TRUE(contains(text_of("standard_surface", float_input(row.input, "0.5")), row.trace))
            << row.trace;
        EXPECT_FALSE(contains(text_of("standard_surface", float_input(row.input, "0")), row.trace))
            << row.trace;
    }
}

TEST(Surface_models, inputs_without_counterpart_are_listed_in_the_head)
{
    EXPECT_TRUE(contains(text_of("standard_surface", float_input("transmission_depth", "0.5") +
                                                         float_input("subsurface_anisotropy", "1")),
                         "// Set in the document, without counterpart here: transmission_depth,\n"
                         "//     subsurface_anisotropy\n"));
    EXPECT_FALSE(contains(text_of("standard_surface", float_input("transmission_depth", "0")),
                          "without counterpart"));
}

TEST(Surface_models, usage_is_what_the_text_needs)
{
    const struct {
        const char *category, *inputs;
        bool reflects, refracts;
    } rows[] = {{"standard_surface", "", false, false},
                {"standard_surface", "metalness", true, false},
                {"standard_surface", "coat", true, false},
                {"standard_surface", "transmission", false, true},
                {"gltf_pbr", "", true, false}, // metallic by default
                {"UsdPreviewSurface", "clearcoat", true, false},
                {"disney_principled", "specTrans", false, true},
                {"open_pbr_surface", "base_metalness", true, false}};
    for (const auto& row : rows) {
        const std::string inputs = *row.inputs ? float_input(row.inputs, "0.5") : "";
        const auto graph = graph_of(document(row.category, inputs));
        const auto usage = reference_host::shader_usage(*graph->find_node("s"));
        EXPECT_TRUE(usage.lights_parameter && usage.direct_light);
        EXPECT_EQ(usage.reflect_environment, row.reflects) << row.category << row.inputs;
        EXPECT_EQ(usage.refract_environment, row.refracts) << row.category << row.inputs;
        EXPECT_TRUE(usage.trace_environment) << row.category << row.inputs;
        EXPECT_TRUE(contains(text_of(row.category, inputs), "sky(")) << row.category << row.inputs;
    }
    const auto graph = graph_of(painted_scene());
    EXPECT_FALSE(reference_host::shader_usage(*graph->find_node("paint")).direct_light);
}

TEST(Surface_models, a_normal_that_names_world_space_comes_into_the_internal_one)
{
    const auto text = [](const std::string& space, const std::string& internal) {
        const auto graph =
            graph_of("<normal name=\"n\" type=\"vector3\"><input name=\"space\" "
                     "type=\"string\" value=\"" +
                     space + "\"/></normal>" +
                     document("standard_surface", "<input name=\"normal\" type=\"vector3\" "
                                                  "nodename=\"n\"/>"));
        return generate(*graph, "FX", {{"lights", "sun"}}, {{"internal_space", internal}}).text();
    };
    EXPECT_TRUE(contains(text("world", "camera"), "state.normal = mul((float3x3)view_matrix, n);"));
    EXPECT_FALSE(contains(text("world", "world"), "view_matrix"));
    EXPECT_TRUE(contains(text("object", "camera"), "state.normal = state.object_normal;"));
}

TEST(Surface_models, kinds_of_nodes_are_those_that_exporters_ask_for)
{
    const auto graph = graph_of(painted_scene());
    const struct {
        const char *node, *kind;
    } rows[] = {{"paint", "surface"}, {"paint_surface", "surface"}, {"sun", "light"},
                {"haze", "volume"},   {"sky", "environment"},       {"pattern/wood", "surface"}};
    for (const auto& row : rows)
        EXPECT_STREQ(reference_host::shader_kind(*graph->find_node(row.node)), row.kind)
            << row.node;
}

namespace
{

// The surface of one Lama lobe, called a material as documents do.
std::string lama_text(const std::string& lobe, const std::string& inputs)
{
    const auto graph =
        graph_of("<" + lobe + " name=\"lobe\" type=\"BSDF\">" + inputs + "</" + lobe +
                 "><LamaSurface name=\"paint\" type=\"material\"><input name=\"materialFront\" "
                 "type=\"BSDF\" nodename=\"lobe\"/></LamaSurface>"
                 "<directional_light name=\"sun\" type=\"lightshader\"/>");
    const Result result = generate(*graph, "FX", {{"lights", "sun"}}, {});
    EXPECT_FALSE(result.texts.empty()) << lobe << result.messages();
    return result.texts.empty() ? std::string() : result.text();
}

} // namespace

TEST(Surface_models, lama_surfaces_show_their_lobes)
{
    EXPECT_TRUE(contains(lama_text("LamaDiffuse", ""), "lambert_lit(state, sun"));
    EXPECT_TRUE(contains(lama_text("LamaDiffuse", float_input("roughness", "0.5")),
                         "oren_nayar_lit(state, sun"));
    EXPECT_TRUE(contains(lama_text("LamaSheen", ""), "sheen_lit(state, sun"));
    EXPECT_TRUE(contains(lama_text("LamaConductor", ""), "glossy_metal_lit(state, sun"));
    EXPECT_TRUE(contains(lama_text("LamaConductor", float_input("anisotropy", "0.5")),
                         "brushed_lit(state, sun"));
    EXPECT_TRUE(contains(lama_text("LamaIridescence", ""), "filmed_lit(state, sun"));
    EXPECT_TRUE(contains(lama_text("LamaDielectric", ""), "dielectric_lit(state, sun"));
}
