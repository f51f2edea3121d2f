#include "reference_host/render/loaded_shader.h"

#include "reference_host/render/drawing_device.h"
#include "tests/render/test_files.h"

#include <gmock/gmock.h>

namespace reference_host
{

namespace
{

using testing::HasSubstr;

constexpr int size = 48;
constexpr int middle = size / 2;

Render_request small_picture()
{
    Render_request request;
    request.size = size;
    request.view.samples = 1;
    return request;
}

std::vector<Shader_source> pair()
{
    return {{"any_v.gl", fixture_text("plain_v.gl")}, {"any_f.gl", fixture_text("plain_f.gl")}};
}

// A sphere whose color is its normal in world space, 0 to 1 for -1 to 1.
std::vector<Shader_source> normals()
{
    return {{"v", "#version 130\nin vec3 vertex_position; in vec3 vertex_normal; out vec3 normal;\n"
                  "uniform mat4 world_view_projection;\nvoid main() { normal = vertex_normal;\n"
                  "gl_Position = world_view_projection * vec4(vertex_position, 1.0); }\n"},
            {"f", "#version 130\nin vec3 normal; out vec4 color;\n"
                  "void main() { color = vec4(normal * 0.5 + 0.5, 1.0); }\n"}};
}

Image picture_of(Loaded_shader& shader, const Render_request& request)
{
    const Render_result result = shader.draw(request);
    EXPECT_TRUE(result.drawn) << result.error;
    return encode(result.picture, Encoding::linear);
}

TEST(Loaded_shader, draws_texts_as_render_draws_files)
{
    Render_request request = small_picture();
    request.shader_files = {fixture("plain_v.gl"), fixture("plain_f.gl")};
    const Render_result files = render(request);
    ASSERT_TRUE(files.drawn) << files.error;
    Loaded_shader shader(pair(), small_picture());
    EXPECT_EQ(shader.draw(small_picture()).picture.pixels, files.picture.pixels);
}

TEST(Loaded_shader, takes_other_values_sizes_and_shapes_for_each_drawing)
{
    Loaded_shader shader(pair(), small_picture());
    Render_request request = small_picture();
    const Pixel before = picture_of(shader, request).at(middle, middle);
    request.uniforms["tint"] = {0.0F, 1.0F, 0.0F};
    const Pixel after = picture_of(shader, request).at(middle, middle);
    EXPECT_GT(before[0], 0);
    EXPECT_EQ(after[0], 0);
    EXPECT_GT(after[1], before[1]);
    request.size = 2 * size;
    request.view.samples = 2;
    EXPECT_EQ(picture_of(shader, request).width, 2 * size);
    const Image sphere = picture_of(shader, request);
    request.view.shape = Shape::cube;
    EXPECT_NE(picture_of(shader, request).pixels, sphere.pixels);
}

TEST(Loaded_shader, is_seen_from_where_the_camera_stands)
{
    Loaded_shader shader(normals(), small_picture());
    const struct {
        double yaw, pitch;
        Pixel middle;
    } rows[] = {{0, 0, {128, 128, 255, 255}},
                {90, 0, {255, 128, 128, 255}},
                {-90, 0, {0, 128, 128, 255}},
                {180, 0, {128, 128, 0, 255}},
                {30, 90, {128, 255, 128, 255}}};
    for (const auto& row : rows) {
        Render_request request = small_picture();
        request.view.camera.yaw = row.yaw;
        request.view.camera.pitch = row.pitch;
        const Pixel seen = picture_of(shader, request).at(middle, middle);
        for (std::size_t channel = 0; channel < 3; ++channel)
            EXPECT_NEAR(seen[channel], row.middle[channel], 6) << row.yaw << " " << row.pitch;
    }
    Render_request request = small_picture();
    request.view.background = {0, 0, 0};
    request.view.camera.distance = 8;
    EXPECT_EQ(picture_of(shader, request).at(middle, size / 4)[1], 0) << "smaller from afar";
}

TEST(Loaded_shader, moves_the_backdrop_with_the_camera)
{
    Loaded_shader shader(normals(), small_picture());
    Render_request request = small_picture();
    request.view.backdrop = Backdrop::environment;
    const Pixel level = picture_of(shader, request).at(1, middle);
    request.view.camera.pitch = 60;
    const Pixel down = picture_of(shader, request).at(1, middle);
    EXPECT_GT(level[2], down[2]) << "the ground is brown";
}

// Red, green and blue come from a number, a matrix and an array.
std::vector<Shader_source> uniforms_of_each_shape()
{
    std::vector<Shader_source> texts = normals();
    texts[1].text = "#version 130\nin vec3 normal; out vec4 color; uniform float number = 0.2;\n"
                    "uniform mat3 matrix = mat3(0.0, 0.4, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0);\n"
                    "uniform vec2 array[2] = vec2[2](vec2(0.0), vec2(0.0, 0.6));\n"
                    "void main() { color = vec4(number, matrix[0].y, array[1].y, 1.0); }\n";
    return texts;
}

TEST(Loaded_shader, starts_with_the_values_of_its_text_on_a_device_that_has_drawn_it_before)
{
    const auto device = std::make_shared<Drawing_device>();
    const Pixel usual = {51, 102, 153, 255};
    {
        Loaded_shader shader(uniforms_of_each_shape(), small_picture(), device);
        EXPECT_EQ(picture_of(shader, small_picture()).at(middle, middle), usual);
        Render_request request = small_picture();
        request.uniforms = {
            {"number", {1}}, {"matrix", std::vector<float>(9, 1.0F)}, {"array", {1, 1, 1, 1}}};
        const Pixel white = {255, 255, 255, 255};
        EXPECT_EQ(picture_of(shader, request).at(middle, middle), white);
    }
    Loaded_shader shader(uniforms_of_each_shape(), small_picture(), device);
    EXPECT_EQ(picture_of(shader, small_picture()).at(middle, middle), usual);
}

TEST(Loaded_shader, is_drawn_beside_others_of_its_device_as_it_is_alone)
{
    Loaded_shader alone(normals(), small_picture());
    const Image expected = picture_of(alone, small_picture());
    const auto device = std::make_shared<Drawing_device>();
    Loaded_shader one(normals(), small_picture(), device);
    Loaded_shader other(pair(), small_picture(), device);
    EXPECT_EQ(picture_of(one, small_picture()).pixels, expected.pixels);
    EXPECT_NE(picture_of(other, small_picture()).pixels, expected.pixels);
    EXPECT_EQ(picture_of(one, small_picture()).pixels, expected.pixels);
}

TEST(Loaded_shader, says_why_it_cannot_be_drawn)
{
    std::vector<Shader_source> texts = pair();
    texts[1].text = "#version 130\nthis is not a shader\n";
    Loaded_shader shader(texts, small_picture());
    const Render_result result = shader.draw(small_picture());
    EXPECT_FALSE(result.drawn);
    EXPECT_THAT(result.error, HasSubstr("any_f.gl"));
    Loaded_shader good(pair(), small_picture());
    Render_request near = small_picture();
    near.view.camera.distance = 1;
    EXPECT_THAT(good.draw(near).error, HasSubstr("1.2 to 8"));
}

TEST(Loaded_shader, takes_values_by_the_names_of_an_effect)
{
    if (find_cg_compiler().empty())
        GTEST_SKIP() << "cgc is absent; scripts/fetch-validators.sh brings it";
    Loaded_shader effect({{"any.cgfx", fixture_text("plain.cgfx")}}, small_picture());
    Loaded_shader glsl(pair(), small_picture());
    Render_request request = small_picture();
    request.uniforms["tint"] = {0.1F, 0.9F, 0.2F};
    request.view.camera.yaw = 40;
    request.view.camera.pitch = 20;
    const auto difference = mean_difference(picture_of(effect, request), picture_of(glsl, request));
    ASSERT_TRUE(difference);
    for (const double channel : *difference)
        EXPECT_LT(channel, 0.5);
}

} // namespace

} // namespace reference_host
