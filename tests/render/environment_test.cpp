#include "reference_host/render/environment.h"

#include "reference_host/render/backdrop.h"
#include "reference_host/render/render.h"
#include "tests/render/test_files.h"

#include <gmock/gmock.h>

namespace reference_host
{

namespace
{

using testing::HasSubstr;

constexpr int side = 64;
constexpr int middle_texel = side / 2 * side + side / 2;

enum Face { plus_x, minus_x, plus_y, minus_y, plus_z, minus_z };

TEST(Sky, is_blue_above_and_brown_below)
{
    const Environment sky;
    const Color zenith = sky.cube_face(plus_y, side, Cube_up::y)[middle_texel];
    const Color ground = sky.cube_face(minus_y, side, Cube_up::y)[middle_texel];
    EXPECT_GT(zenith[2], zenith[0]);
    EXPECT_GT(ground[0], ground[2]);
    // The first row of a side is its upper one.
    const auto back = sky.cube_face(minus_z, side, Cube_up::y);
    EXPECT_GT(back.front()[2], back.back()[2]);
}

TEST(Sky, of_a_rotated_map_has_its_zenith_at_minus_z)
{
    const Environment sky;
    EXPECT_EQ(sky.cube_face(minus_z, 1, Cube_up::minus_z), sky.cube_face(plus_y, 1, Cube_up::y));
    EXPECT_EQ(sky.cube_face(plus_z, 1, Cube_up::minus_z), sky.cube_face(minus_y, 1, Cube_up::y));
}

TEST(Sky, has_a_window_brighter_than_white_behind_the_camera)
{
    EXPECT_GT(Environment().light({-0.55, 0.6, 0.58})[0], 3);
    EXPECT_LT(Environment().light({0.55, 0.6, 0.58})[0], 1);
}

// Columns of a map: red at its middle, green to the right of it, blue at its seam.
class Environment_image : public testing::Test
{
protected:
    void SetUp() override
    {
        Image image(8, 4);
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 8; ++x)
                image.at(x, y) = y == 0             ? Pixel{255, 255, 255, 255}
                                 : x == 3 || x == 4 ? Pixel{128, 0, 0, 255}
                                 : x == 5 || x == 6 ? Pixel{0, 128, 0, 255}
                                                    : Pixel{0, 0, 128, 255};
        ASSERT_TRUE(write_png(image, m_folder.path("map.png")));
        m_environment = Environment::read(m_folder.path("map.png"), m_reason);
        ASSERT_TRUE(m_environment) << m_reason;
    }

    Test_folder m_folder;
    std::string m_reason;
    std::shared_ptr<const Environment> m_environment;
};

TEST_F(Environment_image, has_its_middle_where_the_camera_looks_and_plus_x_right_of_it)
{
    EXPECT_NEAR(m_environment->value({0, 0, -1})[0], 128 / 255.0, 1e-4);
    EXPECT_NEAR(m_environment->value({1, 0, 0})[1], 128 / 255.0, 1e-4);
    EXPECT_NEAR(m_environment->value({0, 0, 1})[2], 128 / 255.0, 1e-4);
    EXPECT_NEAR(m_environment->value({0, 1, 0})[1], 1, 1e-4);
}

TEST_F(Environment_image, is_decoded_for_the_eye_and_left_as_it_is_for_shaders)
{
    EXPECT_NEAR(m_environment->value({0, 0, -1})[0], 0.502, 1e-3);
    EXPECT_NEAR(m_environment->light({0, 0, -1})[0], 0.216, 1e-3);
}

TEST_F(Environment_image, fills_the_cube_map_face_by_face)
{
    EXPECT_GT(m_environment->cube_face(minus_z, side, Cube_up::y)[middle_texel][0], 0.5);
    EXPECT_GT(m_environment->cube_face(plus_x, side, Cube_up::y)[middle_texel][1], 0.5);
    EXPECT_GT(m_environment->cube_face(plus_y, side, Cube_up::y)[middle_texel][0], 0.9);
}

TEST_F(Environment_image, stands_behind_the_object_where_it_is_free)
{
    Linear_picture picture(3, 3);
    picture.at(0, 0) = {0.25F, 0.25F, 0.25F, 1};
    View view;
    view.backdrop = Backdrop::environment;
    put_before_backdrop(picture, view, *m_environment);
    EXPECT_NEAR(picture.at(1, 1)[0], 0.216, 1e-3);
    EXPECT_EQ(picture.at(0, 0)[0], 0.25F);
}

TEST_F(Environment_image, that_is_no_map_of_directions_is_refused)
{
    ASSERT_TRUE(write_png(Image(8, 8), m_folder.path("square.png")));
    EXPECT_FALSE(Environment::read(m_folder.path("square.png"), m_reason));
    EXPECT_THAT(m_reason, HasSubstr("twice as wide as high"));
    EXPECT_FALSE(Environment::read(m_folder.path("missing.png"), m_reason));
    EXPECT_THAT(m_reason, HasSubstr("no PNG, JPEG or HDR image"));
}

TEST_F(Environment_image, may_be_brighter_than_white_in_a_radiance_file)
{
    // Four bytes a pixel, the last one the common exponent: 128 * 2^(131 - 136) = 4.
    std::string file = "#?RADIANCE\nFORMAT=32-bit_rle_rgbe\n\n-Y 1 +X 2\n";
    file.append(2, '\x80').append("\x40\x83").append(2, '\x80').append("\x40\x83");
    const auto environment = Environment::read(m_folder.write("sun.hdr", file), m_reason);
    ASSERT_TRUE(environment) << m_reason;
    EXPECT_NEAR(environment->light({0, 0, -1})[0], 4, 1e-4);
    EXPECT_NEAR(environment->light({0, 0, -1})[2], 2, 1e-4);
}

// Shaders find the environment in their cube maps.
class Environment_of_shader : public Environment_image
{
protected:
    Color draw_mirror(const std::string& comment)
    {
        const std::string text = "#version 130\n" + comment +
                                 "in vec3 fragment_normal;\n"
                                 "uniform samplerCube sky;\n"
                                 "out vec4 color;\n"
                                 "void main() { color = texture(sky, vec3(0.0, 0.0, -1.0)); }\n";
        m_request.shader_files = {fixture("plain_v.gl"), m_folder.write("mirror_f.gl", text)};
        m_request.size = 16;
        m_result = render(m_request);
        if (!m_result.drawn)
            return {};
        const Light_pixel pixel = m_result.picture.at(8, 8);
        return {pixel[0], pixel[1], pixel[2]};
    }

    Render_request m_request;
    Render_result m_result;
};

TEST_F(Environment_of_shader, is_the_image_that_the_shader_names)
{
    EXPECT_NEAR(draw_mirror("// texture sky: map.png\n")[0], 128 / 255.0, 0.02);
    EXPECT_GT(draw_mirror("// texture sky: other.dds\n")[2], 0.15) << "the sky";
}

TEST_F(Environment_of_shader, is_the_image_that_the_user_names)
{
    m_request.environment_file = m_folder.path("map.png");
    EXPECT_NEAR(draw_mirror("// texture sky: other.dds\n")[0], 128 / 255.0, 0.02);
    m_request.environment_file = m_folder.path("missing.png");
    draw_mirror("");
    EXPECT_THAT(m_result.error, HasSubstr("missing.png: no PNG, JPEG or HDR image"));
}

} // namespace

} // namespace reference_host
