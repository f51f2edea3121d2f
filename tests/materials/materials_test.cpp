// How much light materials send back, in scenes whose answers are known: pictures of their GLSL
// under one light and in the white furnace, where light of radiance 1 comes from everywhere.
#include "reference_host/render/render.h"
#include "tests/generator/generation.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

using namespace generation;
using namespace reference_host;

namespace
{

std::string input(const std::string& name, const std::string& type, const std::string& value)
{
    return "<input name=\"" + name + "\" type=\"" + type + "\" value=\"" + value + "\"/>";
}

std::string number(const std::string& name, const std::string& value)
{
    return input(name, "float", value);
}

std::string color(const std::string& name, const std::string& value)
{
    return input(name, "color3", value);
}

std::string surface(const std::string& category, const std::string& inputs)
{
    return "<" + category + " name=\"s\" type=\"surfaceshader\">" + inputs + "</" + category + ">";
}

// What is seen of a surface.
struct Seen {
    double mean = 0;
    double lowest = 1e9;
    double highest = -1e9;
    Light_pixel middle = {};
    Light_pixel edge = {}; // of the upper right
};

Seen seen_in(const Linear_picture& picture)
{
    Seen seen;
    double count = 0;
    for (const Light_pixel& pixel : picture.pixels) {
        if (pixel[3] == 0)
            continue;
        ++count;
        seen.mean += pixel[1];
        seen.lowest = std::min<double>(seen.lowest, pixel[1]);
        seen.highest = std::max<double>(seen.highest, pixel[1]);
    }
    seen.mean /= count;
    seen.middle = picture.at(picture.width / 2, picture.height / 2);
    seen.edge = picture.at(picture.width / 2, 1);
    return seen;
}

class Materials : public testing::Test
{
protected:
    // Nodes of a document with a surface "s".
    void make(const std::string& nodes, const std::string& alpha = "false")
    {
        const auto graph = graph_of(
            nodes + "<surfacematerial name=\"m\" type=\"material\"><input name=\"surfaceshader\" "
                    "type=\"surfaceshader\" nodename=\"s\"/></surfacematerial>"
                    "<directional_light name=\"sun\" type=\"lightshader\"/>"
                    "<environment_map name=\"sky\" type=\"color3\"><input name=\"file\" "
                    "type=\"filename\" value=\"sky.png\"/></environment_map>");
        const Result result = generate(
            *graph, "GL", {{"shader_name", "m"}, {"lights", "sun"}, {"environment", "sky"}},
            {{"alpha_transparency", alpha}});
        ASSERT_EQ(result.texts.size(), 2U) << result.messages();
        m_files = {m_folder.write("v.gl", result.texts[0]),
                   m_folder.write("f.gl", result.texts[1])};
    }

    Seen draw(float intensity, float horizon, float rise, std::vector<float> direction = {0, 0, -1})
    {
        Render_request request;
        request.shader_files = m_files;
        request.size = 48;
        request.view.samples = 1;
        request.view.camera.field_of_view = 40;
        request.view.background = {};
        request.uniforms["sun_intensity"] = {intensity};
        request.uniforms["sun_direction"] = std::move(direction);
        request.environment = std::make_shared<Environment>(Environment::gradient(horizon, rise));
        const Render_result result = render(request);
        EXPECT_TRUE(result.drawn) << result.error;
        return seen_in(result.picture);
    }

    Seen lit(const std::string& nodes)
    {
        make(nodes);
        return draw(1, 0, 0);
    }

    Seen in_furnace(const std::string& nodes)
    {
        make(nodes);
        return draw(0, 1, 0);
    }

    QZ::TEST::Temporary_folder m_folder;
    std::vector<std::string> m_files;
};

const std::string white_metal =
    number("metalness", "1") + color("base_color", "1,1,1") + color("specular_color", "1,1,1");
const std::string white_paint = color("base_color", "1,1,1");

} // namespace

TEST_F(Materials, a_white_diffuse_surface_vanishes_in_the_furnace)
{
    const Seen seen =
        in_furnace(surface("standard_surface", white_paint + number("specular", "0")));
    EXPECT_NEAR(seen.lowest, 1.0, 0.02);
    EXPECT_NEAR(seen.highest, 1.0, 0.02);
}

TEST_F(Materials, white_metal_keeps_its_light_however_rough_it_is)
{
    for (const char* roughness : {"0", "0.5", "1"}) {
        const Seen seen = in_furnace(
            surface("standard_surface", white_metal + number("specular_roughness", roughness)));
        EXPECT_GE(seen.mean, 0.97) << roughness;
        EXPECT_LE(seen.highest, 1.01) << roughness;
    }
}

TEST_F(Materials, dielectrics_over_white_keep_their_light)
{
    for (const char* roughness : {"0", "0.3", "1"}) {
        const Seen seen = in_furnace(
            surface("standard_surface", white_paint + number("specular_roughness", roughness)));
        EXPECT_GE(seen.mean, 0.97) << roughness;
        EXPECT_LE(seen.highest, 1.01) << roughness;
    }
}

TEST_F(Materials, no_layer_makes_light)
{
    const std::string rows[] = {
        surface("standard_surface", white_paint + number("sheen", "1")),
        surface("standard_surface",
                white_paint + number("sheen", "1") + number("sheen_roughness", "1")),
        surface("standard_surface", white_paint + number("coat", "1")),
        surface("standard_surface", white_metal + number("coat", "1")),
        surface("standard_surface", white_paint + number("thin_film_thickness", "400")),
        surface("standard_surface", white_metal + number("thin_film_thickness", "400")),
        surface("open_pbr_surface", white_paint + number("fuzz_weight", "1")),
        surface("open_pbr_surface", white_paint + number("coat_weight", "1")),
        surface("open_pbr_surface", white_paint + number("base_diffuse_roughness", "1")),
        surface("gltf_pbr", color("base_color", "1,1,1") + number("metallic", "0.5") +
                                number("clearcoat", "1")),
    };
    for (const std::string& row : rows) {
        const Seen seen = in_furnace(row);
        EXPECT_LE(seen.highest, 1.01) << row;
        EXPECT_GT(seen.lowest, 0.0) << row;
    }
}

TEST_F(Materials, lights_from_all_sides_together_give_no_more_than_the_furnace)
{
    constexpr int count = 24;
    for (const std::string& inputs :
         {white_metal + number("specular_roughness", "1"), white_paint}) {
        make(surface("standard_surface", inputs));
        double sum = 0;
        for (int i = 0; i < count; ++i) {
            const double y = 1 - (2 * i + 1.0) / count;
            const double around = i * 2.399963;
            const double flat = std::sqrt(1 - y * y);
            sum += draw(1, 0, 0,
                        {static_cast<float>(flat * std::cos(around)), static_cast<float>(y),
                         static_cast<float>(flat * std::sin(around))})
                       .mean;
        }
        EXPECT_LE(4 * sum / count, 1.01) << inputs;
        EXPECT_GE(4 * sum / count, 0.95) << inputs;
    }
}

TEST_F(Materials, a_rough_white_metal_is_as_bright_as_white_metals_are)
{
    EXPECT_NEAR(lit(surface("gltf_pbr", "")).mean, 0.70, 0.02);
}

TEST_F(Materials, what_is_half_a_metal_is_the_mean_of_both)
{
    const std::string paint =
        color("base_color", "0.8,0.8,0.8") + number("specular_roughness", "0.5");
    const double none = lit(surface("standard_surface", paint)).mean;
    const double all = lit(surface("standard_surface", paint + number("metalness", "1"))).mean;
    const double half = lit(surface("standard_surface", paint + number("metalness", "0.5"))).mean;
    EXPECT_NEAR(half, (none + all) / 2, 0.002);
}

TEST_F(Materials, rough_reflections_are_blurred)
{
    const auto contrast = [&](const char* roughness) {
        make(surface("standard_surface", white_metal + number("specular_roughness", roughness)));
        const Seen seen = draw(0, 0.5F, 0.5F);
        return seen.highest - seen.lowest;
    };
    EXPECT_GT(contrast("0"), 0.9);
    EXPECT_LT(contrast("1"), 0.7);
}

TEST_F(Materials, a_coat_tints_as_far_as_it_covers)
{
    const auto blue = [&](const char* coat) {
        return in_furnace(surface("standard_surface", white_paint + color("coat_color", "1,1,0") +
                                                          number("coat", coat)))
            .middle[2];
    };
    EXPECT_GT(blue("0"), 0.97);
    EXPECT_NEAR(blue("0.5"), (blue("0") + blue("1")) / 2, 0.02);
    EXPECT_LT(blue("1"), 0.06);
}

TEST_F(Materials, the_edge_of_a_metal_takes_the_specular_color)
{
    const Seen seen = in_furnace(
        surface("standard_surface", number("metalness", "1") + color("base_color", "0.5,0.5,0.5") +
                                        color("specular_color", "1,0,0") +
                                        number("specular_roughness", "0")));
    EXPECT_NEAR(seen.middle[0], 0.5, 0.02);
    EXPECT_GT(seen.edge[0], seen.edge[1] + 0.02);
}

TEST_F(Materials, what_is_not_opaque_at_all_is_not_there)
{
    make(surface("standard_surface", color("opacity", "0,0,0")), "true");
    EXPECT_EQ(draw(1, 1, 0).middle[3], 0);
}

// Drawn over black, as blending does it.
TEST_F(Materials, highlights_of_glass_are_as_bright_blended_as_they_are)
{
    const auto graph =
        graph_of(surface("standard_surface", number("transmission", "1") + number("base", "0") +
                                                 number("specular_roughness", "0.6")) +
                 "<directional_light name=\"sun\" type=\"lightshader\"/>");
    const auto highlight = [&](const char* alpha) {
        const Result result = generate(*graph, "GL", {{"shader_name", "s"}, {"lights", "sun"}},
                                       {{"alpha_transparency", alpha}});
        m_files = {m_folder.write("v.gl", result.texts.at(0)),
                   m_folder.write("f.gl", result.texts.at(1))};
        return draw(1, 0, 0).middle[1];
    };
    const float opaque = highlight("false");
    EXPECT_GT(opaque, 0.05F);
    EXPECT_NEAR(highlight("true"), opaque, 0.001);
}

TEST_F(Materials, glass_reflects_and_shows_what_is_behind)
{
    const Seen seen = in_furnace(surface(
        "standard_surface", number("transmission", "1") + number("specular_roughness", "0")));
    EXPECT_NEAR(seen.middle[1], 0.96, 0.02);
    EXPECT_GT(seen.lowest, 0.5);
}

TEST_F(Materials, an_unlit_surface_is_what_it_emits)
{
    const Seen seen = in_furnace(surface("surface_unlit", color("emission_color", "0.25,0.5,1")));
    EXPECT_NEAR(seen.lowest, 0.5, 0.001);
    EXPECT_NEAR(seen.highest, 0.5, 0.001);
}

TEST_F(Materials, a_value_is_a_surface_that_glows)
{
    const Seen seen = in_furnace("<convert name=\"s\" type=\"surfaceshader\">" +
                                 color("in", "0.2,0.4,0.6") + "</convert>");
    EXPECT_NEAR(seen.lowest, 0.4, 1e-3);
    EXPECT_NEAR(seen.highest, 0.4, 1e-3);
}

TEST_F(Materials, a_film_on_a_layer_colors_what_it_reflects)
{
    const std::string roughness = "<input name=\"roughness\" type=\"vector2\" value=\"0.1,0.1\"/>";
    const std::string film = "<thin_film_bsdf name=\"f\" type=\"BSDF\">" +
                             number("thickness", "400") + number("ior", "1.8") +
                             "</thin_film_bsdf><dielectric_bsdf name=\"g\" type=\"BSDF\">" +
                             roughness +
                             "</dielectric_bsdf><layer name=\"l\" type=\"BSDF\">"
                             "<input name=\"top\" type=\"BSDF\" nodename=\"f\"/>"
                             "<input name=\"base\" type=\"BSDF\" nodename=\"g\"/></layer>";
    const std::string own = "<dielectric_bsdf name=\"l\" type=\"BSDF\">" + roughness +
                            number("thinfilm_thickness", "400") + number("thinfilm_ior", "1.8") +
                            "</dielectric_bsdf>";
    const std::string made =
        surface("surface", "<input name=\"bsdf\" type=\"BSDF\" nodename=\"l\"/>");
    const Seen layered = in_furnace(film + made);
    const Seen single = in_furnace(own + made);
    EXPECT_GT(single.mean, 0.05);
    EXPECT_NEAR(layered.mean, single.mean, 1e-4);
    EXPECT_NEAR(layered.middle[0], single.middle[0], 1e-4);
    EXPECT_NE(layered.middle[0], layered.middle[2]);
}

TEST_F(Materials, reflection_rises_towards_the_edge_as_its_exponent_says)
{
    const auto seen = [&](const char* exponent) {
        return in_furnace(
            "<generalized_schlick_bsdf name=\"l\" type=\"BSDF\">" +
            color("color0", "0.04,0.04,0.04") + number("exponent", exponent) +
            "<input name=\"roughness\" type=\"vector2\" value=\"0.01,0.01\"/>"
            "</generalized_schlick_bsdf>" +
            surface("surface", "<input name=\"bsdf\" type=\"BSDF\" nodename=\"l\"/>"));
    };
    const double usual = seen("5").mean;
    EXPECT_NEAR(seen("5.001").mean, usual, 0.01);
    // Of a sphere in a furnace: 0.04 + 0.96 * 2 / ((n + 1) * (n + 2)).
    EXPECT_NEAR(seen("2").mean, 0.2, 0.02);
    EXPECT_NEAR(seen("1").mean, 0.36, 0.02);
    EXPECT_LT(seen("9").mean, usual);
}

TEST_F(Materials, graphs_of_closures_are_surfaces)
{
    const std::string connected =
        "<oren_nayar_diffuse_bsdf name=\"d\" type=\"BSDF\">" + color("color", "1,1,1") +
        "</oren_nayar_diffuse_bsdf><dielectric_bsdf name=\"g\" type=\"BSDF\"/>"
        "<layer name=\"l\" type=\"BSDF\"><input name=\"top\" type=\"BSDF\" nodename=\"g\"/>"
        "<input name=\"base\" type=\"BSDF\" nodename=\"d\"/></layer>";
    const std::string made = "<input name=\"bsdf\" type=\"BSDF\" nodename=\"l\"/>";
    const Seen seen = in_furnace(connected + surface("surface", made));
    EXPECT_GE(seen.mean, 0.97);
    EXPECT_LE(seen.highest, 1.01);
}

TEST_F(Materials, a_usd_surface_lets_light_through_fades_or_is_cut_out)
{
    const auto middle = [&](const std::string& inputs, const char* opacity = "0.25") {
        make(surface("UsdPreviewSurface", number("opacity", opacity) + inputs), "true");
        return draw(1, 0, 0).middle;
    };
    const std::string mode = "opacityMode";
    const double opaque = middle("", "1")[1];
    EXPECT_GT(opaque, 0.1);
    const double glassy = middle(input(mode, "string", "transparent"))[1];
    EXPECT_LT(glassy, opaque * 0.8); // its gloss stays
    EXPECT_GT(glassy, opaque * 0.3);
    EXPECT_NEAR(middle(input(mode, "integer", "0"))[3], 1.0, 0.001);
    for (const std::string& presence :
         {input(mode, "string", "presence"), input(mode, "integer", "1")}) {
        EXPECT_NEAR(middle(presence)[1], opaque * 0.25, 0.001);
        EXPECT_NEAR(middle(presence)[3], 0.25, 0.001);
    }
    EXPECT_EQ(middle(number("opacityThreshold", "0.3"))[3], 0.0);
    EXPECT_NEAR(middle(number("opacityThreshold", "0.2"))[1], opaque, 0.001);
}
