#include "reference_host/lowering/color_space.h"

#include "reference_host/library/library_scope.h"
#include "reference_host/targets/printer.h"
#include "tests/generator/generation.h"

#include <gtest/gtest.h>

using namespace reference_host;

namespace
{

Value color(double r, double g, double b)
{
    return {Value_type::color3, {r, g, b}, ""};
}

} // namespace

TEST(Color_spaces, values_are_converted_when_the_text_is_made)
{
    EXPECT_NEAR(to_working_space(color(0.5, 0, 1), "srgb_texture").numbers[0], 0.2140411, 1e-6);
    EXPECT_NEAR(to_working_space(color(0.5, 0, 1), "gamma22").numbers[0], 0.2176376, 1e-6);
    EXPECT_NEAR(to_working_space(color(0.5, 0, 1), "lin_rec709").numbers[0], 0.5, 1e-12);
}

TEST(Color_spaces, white_stays_white)
{
    for (const char* space : {"lin_rec709",
                              "srgb_texture",
                              "gamma18",
                              "gamma22",
                              "gamma24",
                              "acescg",
                              "lin_ap1",
                              "g22_ap1",
                              "adobergb",
                              "lin_adobergb",
                              "rec709_display",
                              "srgb_displayp3",
                              "lin_displayp3",
                              "g18_rec709",
                              "g22_rec709",
                              "lin_rec709_scene",
                              "srgb_rec709_scene",
                              "g18_rec709_scene",
                              "g22_rec709_scene",
                              "lin_ap1_scene",
                              "g22_ap1_scene",
                              "lin_adobergb_scene",
                              "g22_adobergb_scene",
                              "lin_p3d65_scene",
                              "srgb_p3d65_scene",
                              ""}) {
        EXPECT_TRUE(is_known_color_space(space)) << space;
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(
                to_working_space(color(1, 1, 1), space).numbers[static_cast<std::size_t>(i)], 1.0,
                1e-5)
                << space;
    }
    EXPECT_FALSE(is_known_color_space("mystery"));
}

TEST(Color_spaces, vectors_and_numbers_are_left_alone)
{
    const Value vector{Value_type::vector3, {0.5, 0.5, 0.5}, ""};
    EXPECT_EQ(to_working_space(vector, "srgb_texture").numbers, vector.numbers);
}

TEST(Color_spaces, textures_are_converted_in_the_shader)
{
    const struct {
        const char *space, *text;
    } rows[] = {{"srgb_texture", "srgb_to_linear(c)"},
                {"gamma22", "gamma_to_linear(c, 2.2)"},
                {"g22_rec709", "gamma_to_linear(c, 2.2)"},
                {"g18_rec709_scene", "gamma_to_linear(c, 1.8)"},
                {"srgb_rec709_scene", "srgb_to_linear(c)"},
                {"acescg", "ap1_to_rec709(c)"},
                {"lin_ap1_scene", "ap1_to_rec709(c)"},
                {"g22_ap1", "ap1_to_rec709(gamma_to_linear(c, 2.2))"},
                {"srgb_displayp3", "display_p3_to_rec709(srgb_to_linear(c))"},
                {"lin_rec709", "c"},
                {"", "c"}};
    for (const auto& row : rows) {
        Library_scope scope;
        const Expr converted = to_working_space(variable(Base_type::float3, "c"), row.space, scope);
        EXPECT_EQ(Printer(Language::cg).expression(converted), row.text);
    }
}

TEST(Color_spaces, alpha_is_not_converted)
{
    Library_scope scope;
    EXPECT_EQ(
        Printer(Language::cg)
            .expression(to_working_space(variable(Base_type::float4, "c"), "srgb_texture", scope)),
        "float4(srgb_to_linear(c.xyz), c.w)");
}
