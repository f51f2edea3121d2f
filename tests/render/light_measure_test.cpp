// Whether pictures hold the light that shaders return, in scenes whose answers are known.
#include "reference_host/render/render.h"

#include "tests/render/test_files.h"

#include <cmath>
#include <gmock/gmock.h>

namespace reference_host
{

namespace
{

// The sphere fills the picture: one sample in the middle of each pixel, nothing behind.
class Light_measure : public testing::Test
{
protected:
    Light_measure()
    {
        m_request.size = 128;
        m_request.view.samples = 1;
        m_request.view.camera.field_of_view = 40;
        m_request.view.background = {};
    }

    Linear_picture draw_body(const std::string& body)
    {
        const std::string text = "#version 130\n"
                                 "in vec3 fragment_normal;\n"
                                 "in vec3 fragment_position;\n"
                                 "out vec4 color;\n"
                                 "void main() { vec3 n = normalize(fragment_normal); " +
                                 body + " }\n";
        m_request.shader_files = {fixture("plain_v.gl"), m_folder.write("body_f.gl", text)};
        Render_result result = render(m_request);
        EXPECT_TRUE(result.drawn) << result.error;
        return std::move(result.picture);
    }

    Test_folder m_folder;
    Render_request m_request;
};

// The mean over the pixels of the sphere.
Light_pixel mean_of_sphere(const Linear_picture& picture)
{
    Light_pixel mean = {};
    double count = 0;
    for (const Light_pixel& pixel : picture.pixels) {
        if (pixel[3] != 1)
            continue;
        ++count;
        for (std::size_t i = 0; i < mean.size(); ++i)
            mean[i] += pixel[i];
    }
    for (float& channel : mean)
        channel = static_cast<float>(channel / count);
    return mean;
}

TEST_F(Light_measure, the_sphere_covers_12136_of_128_by_128_pixels)
{
    const Linear_picture picture = draw_body("color = vec4(1.0);");
    const auto covered = std::count_if(picture.pixels.begin(), picture.pixels.end(),
                                       [](const Light_pixel& pixel) { return pixel[3] == 1; });
    EXPECT_EQ(covered, 12136);
}

TEST_F(Light_measure, white_lambert_under_a_light_from_the_eye_has_the_mean_0_8088)
{
    const Linear_picture picture = draw_body("color = vec4(vec3(max(n.z, 0.0)), 1.0);");
    EXPECT_NEAR(mean_of_sphere(picture)[1], 0.8088, 0.0005);
}

TEST_F(Light_measure, light_beyond_white_is_kept)
{
    const Linear_picture picture = draw_body("color = vec4(7.5, -1.0, 0.0, 1.0);");
    EXPECT_EQ(picture.at(64, 64), (Light_pixel{7.5F, -1.0F, 0.0F, 1.0F}));
}

TEST_F(Light_measure, the_background_shows_through_by_what_alpha_leaves)
{
    m_request.view.background = {0.5F, 0.25F, 0.0F};
    const Linear_picture picture = draw_body("color = vec4(1.0, 1.0, 1.0, 0.25);");
    EXPECT_EQ(picture.at(64, 64), (Light_pixel{0.625F, 0.4375F, 0.25F, 0.25F}));
    EXPECT_EQ(picture.at(0, 0), (Light_pixel{0.5F, 0.25F, 0.0F, 0.0F}));
}

TEST_F(Light_measure, pixels_that_hold_no_numbers_are_noted_and_black)
{
    m_request.picture_file = m_folder.path("picture.png");
    draw_body("color = vec4(vec3(n.x > 0.0 ? 0.0 / (n.x - n.x) : 1.0), 1.0);");
    const Render_result result = render(m_request);
    EXPECT_THAT(result.notes, testing::Contains(testing::HasSubstr("no finite numbers")));
    EXPECT_EQ(read_image(m_request.picture_file)->at(96, 64)[0], 0);
}

TEST_F(Light_measure, many_samples_for_a_pixel_smooth_the_edge_and_nothing_else)
{
    m_request.size = 400; // several tiles
    const auto edge_pixels = [this](int samples) {
        m_request.view.samples = samples;
        const Linear_picture picture = draw_body("color = vec4(n, 1.0);");
        EXPECT_NEAR(picture.at(200, 200)[2], 1, 0.001);
        EXPECT_NEAR(picture.at(300, 200)[0], picture.at(200, 99)[1], 0.01);
        return std::count_if(
            picture.pixels.begin(), picture.pixels.end(),
            [](const Light_pixel& pixel) { return pixel[3] > 0 && pixel[3] < 0.999F; });
    };
    EXPECT_EQ(edge_pixels(1), 0);
    EXPECT_GT(edge_pixels(3), 800);
    EXPECT_GT(edge_pixels(4), 800);
}

TEST_F(Light_measure, the_usual_view_leaves_a_margin_around_the_sphere)
{
    m_request.view = View();
    const Linear_picture picture = draw_body("color = vec4(1.0);");
    EXPECT_EQ(picture.at(4, 64)[3], 0);
    EXPECT_EQ(picture.at(64, 4)[3], 0);
    EXPECT_EQ(picture.at(14, 64)[3], 1);
}

TEST(Encoding, a_picture_holds_the_srgb_curve_of_the_light)
{
    Linear_picture picture(1, 1);
    picture.at(0, 0) = {0.5F, 0.002F, 3.0F, 1.0F};
    EXPECT_EQ(encode(picture, Encoding::srgb).at(0, 0), (Pixel{188, 7, 255, 255}));
    EXPECT_EQ(encode(picture, Encoding::linear).at(0, 0), (Pixel{128, 1, 255, 255}));
    for (const float value : {0.0F, 0.01F, 0.04F, 0.05F, 0.5F, 1.0F})
        EXPECT_NEAR(srgb_encoded(srgb_decoded(value)), value, 1e-5);
}

} // namespace

} // namespace reference_host
