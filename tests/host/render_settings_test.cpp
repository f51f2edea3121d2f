#include "reference_host/document/materialx_reader.h"
#include "reference_host/host/render_settings.h"
#include "tests/host/documents.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace reference_host;

namespace
{

class Render_settings_of_a_scene : public testing::Test
{
protected:
    Render_settings make(const Lighting_request& request)
    {
        const Temporary_folder folder;
        m_graph = read_materialx(folder.write("scene.mtlx", document(R"(
            <directional_light name="sun" type="lightshader"/>
            <spot_light name="lamp" type="lightshader">
              <input name="outer_angle" type="float" value="0.5"/>
            </spot_light>
            <standard_surface name="shader" type="surfaceshader"/>)")),
                                 {})
                      .graph;
        return make_render_settings(*m_graph, request);
    }

    std::unique_ptr<Shader_graph> m_graph;
};

} // namespace

TEST(Light_text, gives_name_kind_spread_and_limit)
{
    const std::optional<Light_request> light = parse_light("key:spot:40:5.5");
    ASSERT_TRUE(light);
    EXPECT_EQ("key", light->name);
    EXPECT_EQ(Light_kind::spot, light->kind);
    EXPECT_FLOAT_EQ(40.0f, *light->spread);
    EXPECT_FLOAT_EQ(5.5f, *light->distance_limit);
}

TEST(Light_text, leaves_open_what_it_does_not_say)
{
    const std::optional<Light_request> light = parse_light("key");
    ASSERT_TRUE(light);
    EXPECT_FALSE(light->kind || light->spread || light->distance_limit);
}

TEST(Light_text, takes_a_kind_by_word_and_by_code)
{
    EXPECT_EQ(Light_kind::directional, parse_light("k:directional")->kind);
    EXPECT_EQ(Light_kind::directional, parse_light("k:0")->kind);
    EXPECT_EQ(Light_kind::point, parse_light("k:1")->kind);
    EXPECT_EQ(Light_kind::spot, parse_light("k:2")->kind);
}

TEST(Light_text, is_refused_when_a_part_is_wrong)
{
    for (const char* text : {"", ":spot", "k:", "k:area", "k:3", "k:spot:x", "k:spot:-1",
                             "k:spot:361", "k:spot:1:x", "k:spot:1:2:3"})
        EXPECT_FALSE(parse_light(text)) << text;
}

TEST_F(Render_settings_of_a_scene, hold_the_lights_of_the_document_in_its_order)
{
    const Render_settings settings = make({});
    ASSERT_EQ(2u, settings.lights.size());
    EXPECT_EQ("sun", settings.lights[0].node->name);
    EXPECT_EQ(Light_kind::directional, settings.lights[0].kind);
    EXPECT_EQ("lamp", settings.lights[1].node->name);
    EXPECT_EQ(Light_kind::spot, settings.lights[1].kind);
    EXPECT_EQ(nullptr, settings.environment);
    EXPECT_EQ(nullptr, settings.volume);
}

TEST_F(Render_settings_of_a_scene, give_the_spread_as_the_full_cone_in_degrees)
{
    EXPECT_NEAR(57.2958, make({}).lights[1].spread, 1e-3); // twice half a radian
}

TEST_F(Render_settings_of_a_scene, change_a_light_of_the_document_that_is_requested)
{
    Lighting_request request;
    request.lights = {*parse_light("lamp:spot:30:7")};
    const Render_settings settings = make(request);
    ASSERT_EQ(2u, settings.lights.size());
    EXPECT_FLOAT_EQ(30.0f, settings.lights[1].spread);
    EXPECT_FLOAT_EQ(7.0f, settings.lights[1].distance_limit);
}

TEST_F(Render_settings_of_a_scene, get_new_lights_after_those_of_the_document)
{
    Lighting_request request;
    request.lights = {*parse_light("fill:point"), *parse_light("edge:spot")};
    const Render_settings settings = make(request);
    ASSERT_EQ(4u, settings.lights.size());
    EXPECT_EQ("point_light", settings.lights[2].node->category);
    EXPECT_EQ(m_graph->find_node("fill"), settings.lights[2].node);
    EXPECT_GT(settings.lights[3].spread, 0.0f);
}

TEST_F(Render_settings_of_a_scene, refuse_a_light_whose_name_another_node_has)
{
    Lighting_request request;
    request.lights = {*parse_light("shader:point")};
    EXPECT_THROW(make(request), std::invalid_argument);
}

TEST_F(Render_settings_of_a_scene, make_the_environment_and_volume_that_the_document_lacks)
{
    Lighting_request request;
    request.environment = "sky";
    request.volume = "haze";
    const Render_settings settings = make(request);
    EXPECT_EQ("environment_map", settings.environment->category);
    EXPECT_EQ("sky.dds", settings.environment->find_input("file")->value->text);
    EXPECT_EQ("fog", settings.volume->category);
}

TEST_F(Render_settings_of_a_scene, use_the_environment_that_the_document_has)
{
    Lighting_request request;
    request.environment = "shader";
    EXPECT_EQ("standard_surface", make(request).environment->category);
}
