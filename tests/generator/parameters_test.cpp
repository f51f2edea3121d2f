// Parameters, textures and their annotations as the artist sees them.
#include "tests/generator/generation.h"

#include <gtest/gtest.h>

using namespace generation;

namespace
{

std::string lit_text(const std::string& inputs, const std::string& nodes = "")
{
    const auto graph = graph_of(nodes + R"(
<standard_surface name="paint_surface" type="surfaceshader">)" +
                                inputs + R"(</standard_surface>
<surfacematerial name="paint" type="material">
  <input name="surfaceshader" type="surfaceshader" nodename="paint_surface"/>
</surfacematerial>
<directional_light name="sun" type="lightshader"/>)");
    const Result result = generate(*graph, "FX", {{"lights", "sun"}}, {});
    EXPECT_FALSE(result.texts.empty()) << result.messages();
    return result.text();
}

} // namespace

TEST(Parameters, values_of_the_surface_are_editable)
{
    const std::string text =
        lit_text(R"(<input name="specular_roughness" type="float" value="0.25"/>
                    <input name="base_color" type="color3" value="0.1, 0.2, 0.3"/>)");
    EXPECT_TRUE(contains(text, "float specular_roughness\n<\n"
                               "    string UIName = \"Specular roughness\";\n"
                               "    string UIWidget = \"Slider\";\n"
                               "    float UIMin = 0.0;\n    float UIMax = 1.0;\n"
                               "    float UIStep = 0.01;\n> = 0.25;\n"))
        << text;
    EXPECT_TRUE(contains(text, "float3 base_color\n<\n    string UIName = \"Base color\";\n"
                               "    string UIWidget = \"Color\";\n> = float3(0.1, 0.2, 0.3);\n"));
}

TEST(Parameters, of_lights_say_what_of_a_light_of_the_scene_they_are)
{
    const auto graph = graph_of(painted_scene());
    const std::string text = generate(*graph, "FX", {{"lights", "sun, bulb, spot"}}, {}).text();
    const auto marked = [&](const std::string& parameter, const std::string& object,
                            const std::string& space) {
        return contains(text, "float3 " + parameter + "\n<\n    string Object = \"" + object +
                                  "\";\n" + space + "    string UIName");
    };
    const std::string world = "    string Space = \"World\";\n";
    EXPECT_TRUE(marked("sun_direction : DIRECTION", "DirectionalLight", world)) << text;
    EXPECT_TRUE(marked("sun_color : DIFFUSE", "DirectionalLight", ""));
    EXPECT_TRUE(marked("bulb_position : POSITION", "PointLight", world));
    EXPECT_TRUE(marked("spot_position : POSITION", "SpotLight", world));
    EXPECT_TRUE(marked("spot_direction : DIRECTION", "SpotLight", world));
}

TEST(Parameters, what_the_document_does_not_set_is_a_constant)
{
    EXPECT_TRUE(contains(lit_text(""), "dielectric_albedo(state, 1.5, 0.04,"));
}

TEST(Parameters, hints_of_the_document_win_over_those_of_the_node)
{
    const std::string text = lit_text(
        R"(<input name="specular_IOR" type="float" value="1.6" uiname="Bending" uimin="1.2"
            uisoftmax="2.2" uistep="0.1" uifolder="Glass/Look"/>)");
    for (const char* part :
         {"string UIName = \"Bending\";", "float UIMin = 1.2;", "float UIMax = 2.2;",
          "float UIStep = 0.1;", "string UIFolder = \"Glass/Look\";"})
        EXPECT_TRUE(contains(text, part)) << part;
}

TEST(Parameters, steps_are_powers_of_ten_and_need_a_range)
{
    const struct {
        const char *min, *max, *lines;
    } rows[] = {{"0", "1", "UIMax = 1.0;\n    float UIStep = 0.01;\n>"},
                {"1", "20", "UIMax = 20.0;\n    float UIStep = 0.1;\n>"},
                {"0", "8", "UIMax = 8.0;\n    float UIStep = 0.01;\n>"},
                {"0", "5000", "UIMax = 5000.0;\n    float UIStep = 10.0;\n>"},
                {"1", "1", "UIMax = 1.0;\n>"},
                {"2", "1", "UIMax = 1.0;\n>"}};
    for (const auto& row : rows)
        EXPECT_TRUE(contains(
            lit_text(std::string(R"(<input name="specular_IOR" type="float" value="1" uimin=")") +
                     row.min + "\" uimax=\"" + row.max + "\"/>"),
            row.lines))
            << row.min << " " << row.max;
}

TEST(Parameters, texts_of_annotations_are_escaped)
{
    EXPECT_TRUE(contains(lit_text(R"(<input name="base" type="float" value="1"
                                      uiname="a &quot;b&quot; \ &#10; c"/>)"),
                         R"(string UIName = "a \"b\" \\   c";)"));
}

TEST(Parameters, one_that_several_inputs_share_is_declared_once)
{
    const auto graph = graph_of(painted_scene());
    const std::string text = generate(*graph, "FX", {{"lights", "sun"}}, {}).text();
    EXPECT_EQ(text.find("float3 tint\n"), text.rfind("float3 tint\n"));
}

TEST(Textures, file_names_go_through_the_settings)
{
    const auto graph = graph_of(painted_scene());
    reference_host::Generator_settings settings;
    settings.texture_path = [](const std::string& file) { return "maps\\" + file; };
    Diagnostics diagnostics;
    const auto compiled = reference_host::compile_group(
        *graph, {{"shader_name", "paint"}, {"lights", "sun"}}, settings, diagnostics);
    ASSERT_TRUE(compiled);
    EXPECT_TRUE(contains(compiled->generate("FX", {}, diagnostics).at(0),
                         R"(string ResourceName = "maps\\wood.png";)"));
    EXPECT_TRUE(contains(compiled->generate("GL", {}, diagnostics).at(1),
                         "// texture wood_map: maps\\wood.png\n"));
}

TEST(Textures, address_modes_are_in_the_shader)
{
    const struct {
        const char *mode, *part;
    } rows[] = {{"clamp", "saturate(state.texture_coordinate0.x)"},
                {"mirror", "mirrored(state.texture_coordinate0.x)"},
                {"constant", "inside_image(state.texture_coordinate0)"},
                {"periodic", "tex2D(i_map_sampler, state.texture_coordinate0)"}};
    for (const auto& row : rows)
        EXPECT_TRUE(contains(
            lit_text(R"(<input name="base_color" type="color3" nodename="i"/>)",
                     std::string(R"(<image name="i" type="color3"><input name="file" type="filename"
                        value="x.png"/><input name="uaddressmode" type="string" value=")") +
                         row.mode + "\"/></image>"),
            row.part))
            << row.mode;
}

TEST(Textures, an_image_without_a_file_is_its_default)
{
    const std::string text = lit_text(R"(<input name="base_color" type="color3" nodename="i"/>)",
                                      R"(<image name="i" type="color3">
        <input name="default" type="color3" value="0.5, 0.25, 0.125"/></image>)");
    EXPECT_TRUE(contains(text, "float3(0.5, 0.25, 0.125)"));
    EXPECT_FALSE(contains(text, "texture"));
}
