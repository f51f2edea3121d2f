#include "reference_host/lowering/surface_models.h"

#include "reference_host/nodes/node_library.h"
#include "tests/generator/generation.h"

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
        EXPECT_TRUE(contains(text_of(category, ""), "light_response(surface, state, sun)"));
    EXPECT_FALSE(contains(text_of("surface_unlit", ""), "light_response"));
}

TEST(Surface_models, values_are_not_named_only_to_be_given_back)
{
    EXPECT_TRUE(contains(text_of("standard_surface", ""),
                         "float3 diffuse_albedo(Surface surface)\n"
                         "{\n    return surface.base_color;\n}\n"));
    EXPECT_TRUE(contains(text_of("standard_surface", float_input("metalness", "0.5")),
                         "    float3 result = surface.base_color;\n"
                         "    result *= 1.0 - surface.metalness;\n    return result;\n"));
}

TEST(Surface_models, every_input_is_read_or_listed)
{
    for (const char* category : categories) {
        reference_host::Node node;
        node.category = category;
        node.type = reference_host::Type::surfaceshader;
        const auto* definition = reference_host::find_definition(node);
        const auto* model = reference_host::find_surface_model(category);
        ASSERT_TRUE(definition && model) << category;
        for (const auto& defined : definition->inputs) {
            reference_host::Input input;
            input.name = defined.name;
            input.type = defined.type;
            input.parameter = reinterpret_cast<const reference_host::Parameter*>(&node); // not read
            node.inputs.push_back(input);
        }
        node.definition = definition;
        std::size_t read = 0;
        for (const auto& input : node.inputs)
            for (const auto& slot : model->slots)
                if (contains(slot.expression, input.name)) {
                    ++read;
                    break;
                }
        EXPECT_GE(read + inputs_without_counterpart(node, *model).size(), node.inputs.size())
            << category;
    }
}

TEST(Surface_models, parts_that_a_document_leaves_out_leave_no_trace)
{
    const std::string plain = text_of("standard_surface", "");
    const struct {
        const char *input, *trace;
    } rows[] = {{"coat", "coat"},
                {"sheen", "sheen"},
                {"metalness", "metalness"},
                {"transmission", "transmission"},
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
    EXPECT_TRUE(contains(text_of("standard_surface", float_input("specular_anisotropy", "0.5") +
                                                         float_input("thin_film_thickness", "300")),
                         "// Set in the document, without counterpart here: specular_anisotropy,\n"
                         "//     thin_film_thickness\n"));
    EXPECT_FALSE(contains(text_of("standard_surface", float_input("specular_anisotropy", "0")),
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
        EXPECT_EQ(contains(text_of(row.category, inputs), "sky("), row.reflects || row.refracts)
            << row.category << row.inputs;
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
