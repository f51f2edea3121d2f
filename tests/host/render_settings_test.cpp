#include "reference_host/document/materialx_reader.h"
#include "reference_host/host/render_settings.h"
#include "tests/host/documents.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace reference_host;

namespace
{

std::optional<Light_request> parse(const std::string& text)
{
    std::string reason;
    return parse_light(text, reason);
}

std::string reason_of(const std::string& text)
{
    std::string reason;
    EXPECT_FALSE(parse_light(text, reason)) << text;
    return reason;
}

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
    const std::optional<Light_request> light = parse("key:spot:40:5.5");
    ASSERT_TRUE(light);
    EXPECT_EQ("key", light->name);
    EXPECT_EQ(Light_kind::spot, light->kind);
    EXPECT_FLOAT_EQ(40.0f, *light->spread);
    EXPECT_FLOAT_EQ(5.5f, *light->distance_limit);
}

TEST(Light_text, leaves_open_what_it_does_not_say)
{
    const std::optional<Light_request> light = parse("key");
    ASSERT_TRUE(light);
    EXPECT_FALSE(light->kind || light->spread || light->distance_limit);
}

TEST(Light_text, takes_a_kind_by_word_and_by_code)
{
    EXPECT_EQ(Light_kind::directional, parse("k:directional")->kind);
    EXPECT_EQ(Light_kind::directional, parse("k:0")->kind);
    EXPECT_EQ(Light_kind::point, parse("k:1")->kind);
    EXPECT_EQ(Light_kind::spot, parse("k:2")->kind);
}

TEST(Light_text, is_refused_when_a_part_is_wrong)
{
    for (const char* text : {"", ":spot", "k:", "k:area", "k:3", "k:spot:x", "k:spot:-1",
                             "k:spot:361", "k:spot:1:x", "k:spot:1:2:3"})
        EXPECT_FALSE(parse(text)) << text;
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
    request.lights = {*parse("lamp:spot:30:7")};
    const Render_settings settings = make(request);
    ASSERT_EQ(2u, settings.lights.size());
    EXPECT_FLOAT_EQ(30.0f, settings.lights[1].spread);
    EXPECT_FLOAT_EQ(7.0f, settings.lights[1].distance_limit);
}

TEST_F(Render_settings_of_a_scene, get_new_lights_after_those_of_the_document)
{
    Lighting_request request;
    request.lights = {*parse("fill:point"), *parse("edge:spot")};
    const Render_settings settings = make(request);
    ASSERT_EQ(4u, settings.lights.size());
    EXPECT_EQ("point_light", settings.lights[2].node->category);
    EXPECT_EQ(m_graph->find_node("fill"), settings.lights[2].node);
    EXPECT_GT(settings.lights[3].spread, 0.0f);
}

TEST_F(Render_settings_of_a_scene, refuse_a_light_whose_name_another_node_has)
{
    Lighting_request request;
    request.lights = {*parse("shader:point")};
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

TEST(Light_text, has_values_by_key_in_any_order)
{
    const auto light =
        parse("key:spot:cone=40,position=1,-2,3.5,color=1, 0.5,0,limit=9,intensity=20,"
              "direction=0,-1,0");
    ASSERT_TRUE(light);
    EXPECT_EQ(Light_kind::spot, light->kind);
    EXPECT_FLOAT_EQ(40.0f, *light->spread);
    EXPECT_FLOAT_EQ(9.0f, *light->distance_limit);
    using Inputs = std::map<std::string, std::vector<double>>;
    EXPECT_EQ((Inputs{{"color", {1, 0.5, 0}},
                      {"direction", {0, -1, 0}},
                      {"intensity", {20}},
                      {"position", {1, -2, 3.5}}}),
              light->inputs);
}

TEST(Light_text, is_refused_with_the_wrong_part_and_what_fits)
{
    EXPECT_EQ(
        "'positon' is not a part of a light: position, direction, color, intensity, cone, limit",
        reason_of("key:spot:positon=1,2,3"));
    EXPECT_EQ("the position '1,2' is not three numbers", reason_of("key:point:position=1,2"));
    EXPECT_EQ("the intensity 'x' is not a number", reason_of("key:point:intensity=x"));
    EXPECT_EQ("a light of this type has no position", reason_of("key:directional:position=1,2,3"));
    EXPECT_EQ("a light of this type has no cone", reason_of("key:point:cone=20"));
    EXPECT_EQ("the cone '361' is not an angle of 0 to 360 degrees", reason_of("key:spot:cone=361"));
    EXPECT_EQ("the direction '0,0,0' leads nowhere", reason_of("key:directional:direction=0,0,0"));
    EXPECT_EQ("'sphere' is not a type of light: directional, point, spot or 0 to 2",
              reason_of("key:sphere"));
    EXPECT_EQ("a light needs a name", reason_of(":spot"));
}

using Numbers = std::vector<double>;

Numbers numbers_of(const Render_light& light, const std::string& name)
{
    const Input* const input = light.node->find_input(name);
    if (!input || !input->value)
        return {};
    const auto begin = input->value->numbers.begin();
    return {begin, begin + component_count(input->type)};
}

TEST_F(Render_settings_of_a_scene, give_lights_the_values_that_are_asked_for)
{
    Lighting_request request;
    request.lights = {*parse("sun:directional:direction=0,-1,0,color=1,0,0"),
                      *parse("fill:point:position=1,2,2")};
    const Render_settings settings = make(request);
    EXPECT_EQ((Numbers{0, -1, 0}), numbers_of(settings.lights[0], "direction"));
    EXPECT_EQ((Numbers{1, 0, 0}), numbers_of(settings.lights[0], "color"));
    EXPECT_EQ((Numbers{1, 2, 2}), numbers_of(settings.lights[2], "position"));
    EXPECT_EQ((Numbers{9}), numbers_of(settings.lights[2], "intensity"))
        << "as bright at the origin as at distance 1";
}

TEST_F(Render_settings_of_a_scene, put_new_lights_where_they_light_the_object)
{
    Lighting_request request;
    request.lights = {*parse("a:point"), *parse("b:spot"), *parse("c:directional")};
    const Render_settings settings = make(request);
    const Numbers first = numbers_of(settings.lights[2], "position");
    const Numbers second = numbers_of(settings.lights[3], "position");
    ASSERT_EQ(3u, first.size());
    ASSERT_EQ(3u, second.size());
    EXPECT_LT(first[0], 0) << "from the left";
    EXPECT_GT(second[0], 0) << "from the right";
    EXPECT_GT(second[2], 1) << "from the front";
    EXPECT_EQ((Numbers{-second[0], -second[1], -second[2]}),
              numbers_of(settings.lights[3], "direction"));
    EXPECT_EQ(3u, numbers_of(settings.lights[4], "direction").size());
}

TEST_F(Render_settings_of_a_scene, make_a_light_of_the_document_one_of_another_kind)
{
    Lighting_request request;
    request.lights = {*parse("sun:point:position=1,2,3"), *parse("lamp:directional")};
    const Render_settings settings = make(request);
    EXPECT_EQ("point_light", settings.lights[0].node->category);
    EXPECT_EQ((Numbers{1, 2, 3}), numbers_of(settings.lights[0], "position"));
    EXPECT_EQ("directional_light", settings.lights[1].node->category);
    EXPECT_FALSE(settings.lights[1].node->find_input("outer_angle"));
}

TEST_F(Render_settings_of_a_scene, make_an_environment_of_an_image)
{
    Lighting_request request;
    request.environment = "studio:images/studio.png";
    const Input* const encoded = make(request).environment->find_input("file");
    EXPECT_EQ("images/studio.png", encoded->value->text);
    EXPECT_EQ("srgb_texture", encoded->color_space);
    request.environment = "studio:C:/studio.hdr";
    const Input* const linear = make(request).environment->find_input("file");
    EXPECT_EQ("C:/studio.hdr", linear->value->text);
    EXPECT_EQ("", linear->color_space);
    request.environment = "shader:studio.png";
    EXPECT_THROW(make(request), std::invalid_argument);
}
