// What the first set of options (lights, environment, volume, spaces) makes of a shader.
#include "tests/generator/generation.h"

#include <gtest/gtest.h>

using namespace generation;

namespace
{

class Group_options : public testing::Test
{
protected:
    std::string text(const Option_set& group, const Option_set& options = {})
    {
        const Result result = generate(*m_graph, "FX", group, options);
        EXPECT_FALSE(result.texts.empty()) << result.messages();
        return result.text();
    }

    std::unique_ptr<Shader_graph> m_graph = graph_of(painted_scene());
};

} // namespace

TEST_F(Group_options, each_light_has_parameters_named_after_it)
{
    const std::string after = text({{"lights", "sun, bulb"}, {"resolve_unsized_arrays", "true"}});
    for (const char* part :
         {"float3 sun_direction : DIRECTION\n<", "float3 sun_color : DIFFUSE\n<",
          "float sun_intensity\n<", "float3 bulb_position : POSITION\n<",
          "string UIFolder = \"bulb\";", "Light_iterator sun = directional_light(",
          "Light_iterator bulb = point_light("})
        EXPECT_TRUE(contains(after, part)) << part;
    EXPECT_FALSE(contains(after, "[]"));
    EXPECT_FALSE(contains(after, ".length"));
}

TEST_F(Group_options, the_type_selects_the_evaluation)
{
    const struct {
        const char *type, *function;
    } rows[] = {{"0", "directional_light("}, {"1", "point_light("}, {"2", "spot_light("}};
    for (const auto& row : rows)
        EXPECT_TRUE(contains(text({{"lights", "sun"}, {"light_state0_type", row.type}}),
                             std::string("Light_iterator sun = ") + row.function))
            << row.type;
}

TEST_F(Group_options, spread_is_the_full_cone_and_becomes_cosines)
{
    const std::string after = text(
        {{"lights", "spot"}, {"light_state0_type", "2"}, {"light_state0_spread", "60.000000"}});
    EXPECT_TRUE(contains(after, "0.9135454, 0.8660254")) << after; // of 24 and 30 degrees
    EXPECT_TRUE(contains(text({{"lights", "spot"}}), "cos(spot_outer_angle)"));
}

TEST_F(Group_options, a_distance_limit_adds_a_fall_off_and_none_adds_no_line)
{
    const Option_set light = {{"lights", "bulb"}, {"light_state0_distance_limit", "0.000000"}};
    Option_set limited = light;
    limited["light_state0_distance_limit"] = "12.500000";
    EXPECT_TRUE(
        contains(text(limited), "bulb.tsl_contribution *= fall_off(bulb.tsl_distance, 12.5);"));
    EXPECT_FALSE(contains(text(light), "fall_off"));
}

TEST_F(Group_options, a_preserved_light_loop_is_a_list_without_parameters)
{
    const std::string after = text({{"preserve_light_loop", "true"}});
    EXPECT_TRUE(contains(after, "interface Light\n{\n    Light_iterator eval(State state);\n};\n\n"
                                "Light lights[];\n"));
    EXPECT_TRUE(contains(after, "for (int i = 0; i < lights.length; i++)"));
    EXPECT_TRUE(contains(after, "#ifndef __WORLD_TO_CAMERA\n#define __WORLD_TO_CAMERA\n"
                                "float4x4 __world_to_camera : View;\n#endif\n"));
    EXPECT_FALSE(contains(after, "sun_"));
}

TEST_F(Group_options, what_lights_of_a_list_need_is_in_the_state)
{
    const std::string after = text({{"preserve_light_loop", "true"}});
    const std::string state = after.substr(after.find("struct State"), 600);
    for (const char* field : {"float3 position;", "float3 normal;", "float3 light_to_surface;",
                              "float light_distance;", "float light_dotnl;"})
        EXPECT_TRUE(contains(state, field)) << field;
}

TEST_F(Group_options, a_language_without_interfaces_says_so)
{
    const Result result =
        generate(*m_graph, "FX", {{"preserve_light_loop", "true"}}, {{"format", "HLSL"}});
    EXPECT_FALSE(result.texts.empty());
    EXPECT_TRUE(contains(result.messages(), "no interfaces"));
    EXPECT_FALSE(contains(result.text(), "lights"));
}

TEST_F(Group_options, the_environment_is_looked_up_where_a_surface_mirrors)
{
    const std::string after = text({{"environment", "sky"}});
    EXPECT_TRUE(contains(after, "samplerCUBE sky_map_sampler"));
    EXPECT_TRUE(contains(after, "bent_mirror(state, "));
    EXPECT_FALSE(contains(text({}), "bent_mirror"));
}

TEST_F(Group_options, the_volume_stands_at_the_end)
{
    EXPECT_TRUE(
        contains(text({{"volume", "haze"}}),
                 "    color = lerp(haze_color, color, fog_transmittance(state, haze_density));\n"
                 "    return "));
}

TEST_F(Group_options, literals_are_constants_unless_ignored)
{
    EXPECT_TRUE(contains(text({}, {{"scene_ambient", "float4(1,1,1,1)"}}),
                         "static const int octaves = 2;\n"));
    EXPECT_TRUE(contains(text({{"ignore_literal", "true"}}, {{"scene_ambient", "float4(1,1,1,1)"}}),
                         "int octaves\n<\n    string UIName = \"Octaves\";"));
}

TEST_F(Group_options, names_that_the_document_has_not_are_errors)
{
    const struct {
        const char *option, *value, *message;
    } rows[] = {{"shader_name", "nobody", "there is no node \"nobody\""},
                {"lights", "sun, moon", "there is no node \"moon\" for the light"},
                {"environment", "moon", "there is no node \"moon\" for the environment"},
                {"volume", "sun", "it cannot be the volume"},
                {"light_state0_type", "7", "option \"light_state0_type\" cannot be \"7\""},
                {"light_state0_spread", "wide", "light_state0_spread"},
                {"internal_space", "object", "internal_space"}};
    for (const auto& row : rows) {
        Option_set group = {{"lights", "sun"}};
        group[row.option] = row.value;
        const Result result = generate(*m_graph, "FX", group, {});
        EXPECT_TRUE(result.texts.empty()) << row.option;
        EXPECT_TRUE(contains(result.messages(), row.message)) << result.messages();
    }
}

TEST_F(Group_options, states_of_lights_that_are_not_listed_are_passed_over)
{
    EXPECT_FALSE(contains(text({{"light_state3_type", "1"}}), "point_light"));
}

TEST_F(Group_options, empty_names_mean_none)
{
    EXPECT_EQ(text({{"environment", ""}, {"volume", ""}}), text({}));
}

TEST_F(Group_options, a_light_by_itself_is_a_structure_of_the_interface)
{
    const Result result =
        generate_node(*m_graph, "bulb", "FX", {{"shader_type", "light"}, {"interfaces", "true"}});
    EXPECT_TRUE(
        contains(result.text(), "struct bulb : Light\n{\n    Light_iterator eval(State state)"))
        << result.messages();
    EXPECT_FALSE(contains(result.text(), "technique"));
}

TEST_F(Group_options, a_volume_by_itself_is_a_structure_of_the_interface)
{
    const Result result =
        generate_node(*m_graph, "haze", "FX", {{"shader_type", "volume"}, {"interfaces", "true"}});
    EXPECT_TRUE(contains(result.text(), "struct haze : Volume\n")) << result.messages();
    EXPECT_FALSE(contains(result.text(), "technique"));
}

TEST_F(Group_options, an_environment_by_itself_covers_the_screen)
{
    for (const char* kind : {"environment", "lens"}) {
        const Result result = generate_node(*m_graph, "sky", "FX", {{"shader_type", kind}});
        EXPECT_TRUE(contains(result.text(), "result.hposition = float4(position.xy, 1.0, 1.0);"));
        EXPECT_TRUE(contains(result.text(), "float4x4 view_projection_inverse : "
                                            "VIEWPROJECTIONINVERSE"));
    }
}

TEST_F(Group_options, the_state_in_use_is_known_before_a_text_is_made)
{
    Diagnostics diagnostics;
    const auto paint =
        reference_host::compile_group(*m_graph, {{"shader_name", "paint"}}, {}, diagnostics);
    ASSERT_TRUE(paint);
    EXPECT_FALSE(paint->uses_state("vertex_color"));
    const auto sun =
        reference_host::compile_node(*m_graph, *m_graph->find_node("sun"), {}, diagnostics);
    ASSERT_TRUE(sun);
    EXPECT_FALSE(sun->uses_state("tangent_space"));
    const auto lit = reference_host::compile_group(
        *m_graph, {{"shader_name", "paint"}, {"lights", "sun"}}, {}, diagnostics);
    ASSERT_TRUE(lit);
    for (const char* name : {"texture_tangent", "texture_binormal", "tangent_space", "normal",
                             "direction", "texture_coordinate", "texture_coordinate0"})
        EXPECT_TRUE(lit->uses_state(name)) << name;
}
