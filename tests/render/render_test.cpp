#include "reference_host/render/render.h"

#include "reference_host/render/image.h"
#include "tests/render/test_files.h"

#include <cerrno>
#include <cstdlib>
#include <gmock/gmock.h>
#include <optional>

#include <sys/stat.h>
#include <sys/wait.h>

namespace reference_host
{

namespace
{

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int picture_size = 64;
constexpr int middle = picture_size / 2;
constexpr Pixel background = {51, 51, 56, 255}; // as the fixture asks for

// Draws files into memory.
class Render : public testing::Test
{
protected:
    // Fails the test when nothing is drawn.
    Image draw(const std::vector<std::string>& files)
    {
        m_request.shader_files = files;
        m_request.picture_file = m_folder.path("picture.png");
        m_request.size = picture_size;
        m_request.encoding = Encoding::linear;
        m_request.view.samples = 1;
        m_request.view.camera.field_of_view = 40;
        m_request.view.background = {0.2F, 0.2F, 0.22F};
        m_result = render(m_request);
        EXPECT_TRUE(m_result.drawn) << m_result.error;
        const auto image = read_image(m_request.picture_file);
        EXPECT_TRUE(image);
        return image.value_or(Image(picture_size, picture_size));
    }

    // Draws the plain vertex shader with a fragment shader whose main is `body`.
    Image draw_body(const std::string& body)
    {
        const std::string text = "#version 130\n"
                                 "in vec3 fragment_normal;\n"
                                 "in vec3 fragment_position;\n"
                                 "in vec4 fragment_texcoord0;\n"
                                 "out vec4 color;\n"
                                 "void main() { " +
                                 body + " }\n";
        return draw({fixture("plain_v.gl"), m_folder.write("body_f.gl", text)});
    }

    // Draws an effect whose fragment program returns `expression`.
    Image draw_effect(const std::string& parameters, const std::string& expression)
    {
        const std::string text = parameters +
                                 "float4x4 world_view_projection : WORLDVIEWPROJECTION;\n"
                                 "float4 v(float3 position : POSITION) : POSITION\n"
                                 "{ return mul(world_view_projection, float4(position, 1.0)); }\n"
                                 "float4 f() : COLOR { return " +
                                 expression +
                                 "; }\n"
                                 "technique T0 { pass P0 { VertexProgram = compile vp40 v();\n"
                                 "FragmentProgram = compile fp40 f(); } }\n";
        return draw({m_folder.write("effect.cgfx", text)});
    }

    Test_folder m_folder;
    Render_request m_request;
    Render_result m_result;
};

// Draws effects; skipped where the compiler is absent.
class Render_effect : public Render
{
protected:
    void SetUp() override
    {
        if (find_cg_compiler().empty())
            GTEST_SKIP() << "cgc is absent; scripts/fetch-validators.sh brings it";
    }
};

void expect_near(const Pixel& pixel, const Pixel& expected, int tolerance)
{
    for (std::size_t channel = 0; channel < 3; ++channel)
        EXPECT_NEAR(pixel[channel], expected[channel], tolerance) << "channel " << channel;
}

// ---- the scene --------------------------------------------------------------

TEST_F(Render, the_sphere_stands_upright_in_the_middle_and_faces_the_camera)
{
    const Image image = draw_body("color = vec4(fragment_normal * 0.5 + 0.5, 1.0);");
    expect_near(image.at(middle, middle), {128, 128, 255, 255}, 4);
    EXPECT_GT(image.at(middle + 20, middle)[0], 170); // x to the right
    EXPECT_GT(image.at(middle, middle - 20)[1], 170); // y up
    expect_near(image.at(0, 0), background, 0);
}

TEST_F(Render, texture_coordinates_run_right_and_up_around_the_middle_of_the_texture)
{
    const Image image = draw_body("color = vec4(fract(fragment_texcoord0.xy), 0.0, 1.0);");
    expect_near(image.at(middle, middle), {128, 128, 0, 255}, 8);
    EXPECT_GT(image.at(middle + 15, middle)[0], 150);
    EXPECT_GT(image.at(middle, middle - 15)[1], 150);
}

TEST_F(Render, transparent_shaders_show_the_background)
{
    expect_near(draw_body("color = vec4(1.0, 0.0, 0.0, 0.0);").at(middle, middle), background, 0);
    expect_near(draw_body("color = vec4(1.0, 0.0, 0.0, 1.0);").at(middle, middle), {255, 0, 0, 255},
                0);
}

TEST_F(Render, a_shader_that_covers_the_screen_sees_sky_above_and_ground_below)
{
    const Image image = draw({fixture("screen_v.gl"), fixture("screen_f.gl")});
    EXPECT_GT(image.at(0, 0)[2], image.at(0, 0)[0]);
    EXPECT_GT(image.at(0, picture_size - 1)[0], image.at(0, picture_size - 1)[2]);
    EXPECT_THAT(m_result.notes, IsEmpty());
}

TEST_F(Render, every_glsl_version_from_110_to_450_is_drawn)
{
    for (const std::string version : {"110", "120", "130", "140", "150", "330", "400", "450"}) {
        const bool is_old = version < "130";
        const std::string vertex = "#version " + version +
                                   "\nuniform mat4 world_view_projection;\n" +
                                   (is_old ? "attribute" : "in") +
                                   " vec3 vertex_position;\n"
                                   "void main() { gl_Position = world_view_projection * "
                                   "vec4(vertex_position, 1.0); }\n";
        const std::string fragment =
            "#version " + version +
            (is_old ? "\nvoid main() { gl_FragColor = vec4(0.0, 1.0, 0.0, 1.0); }\n"
                    : "\nout vec4 color;\nvoid main() { color = vec4(0.0, 1.0, 0.0, 1.0); }\n");
        const Image image = draw({m_folder.write("v", vertex), m_folder.write("f", fragment)});
        expect_near(image.at(middle, middle), {0, 255, 0, 255}, 0);
    }
}

// ---- textures ---------------------------------------------------------------

class Render_textures : public Render
{
protected:
    // An image whose upper half is red and whose lower half is blue.
    void write_stripes(const std::string& file)
    {
        Image stripes(8, 8);
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 8; ++x)
                stripes.at(x, y) = y < 4 ? Pixel{255, 0, 0, 255} : Pixel{0, 0, 255, 255};
        ASSERT_TRUE(write_png(stripes, file));
    }

    Image draw_stripes(const std::string& comment = "")
    {
        const std::string text =
            "#version 130\n" + comment +
            "// texture stripes: stripes.png\n"
            "uniform sampler2D stripes;\n"
            "in vec4 fragment_texcoord0;\n"
            "out vec4 color;\n"
            "void main() { color = texture(stripes, fragment_texcoord0.xy); }\n";
        return draw({fixture("plain_v.gl"), m_folder.write("stripes_f.gl", text)});
    }
};

TEST_F(Render_textures, stand_upright_when_found_beside_the_shader)
{
    write_stripes(m_folder.path("stripes.png"));
    const Image image = draw_stripes();
    EXPECT_THAT(m_result.notes, IsEmpty());
    expect_near(image.at(middle, middle - 15), {255, 0, 0, 255}, 8);
    expect_near(image.at(middle, middle + 15), {0, 0, 255, 255}, 8);
}

TEST_F(Render_textures, stand_on_their_heads_for_flipped_lookups)
{
    write_stripes(m_folder.path("stripes.png"));
    expect_near(draw_stripes("// Conventions: flipped textures\n").at(middle, middle - 15),
                {0, 0, 255, 255}, 8);
}

TEST_F(Render_textures, stand_on_their_heads_on_a_flipped_mesh_and_upright_with_both)
{
    write_stripes(m_folder.path("stripes.png"));
    expect_near(draw_stripes("// Conventions: flipped mesh\n").at(middle, middle - 15),
                {0, 0, 255, 255}, 8);
    expect_near(
        draw_stripes("// Conventions: flipped textures, flipped mesh\n").at(middle, middle - 15),
        {255, 0, 0, 255}, 8);
}

TEST_F(Render_textures, are_found_in_a_search_path)
{
    const Test_folder images;
    write_stripes(images.path("stripes.png"));
    m_request.search_paths = {"/nonexistent", images.path()};
    expect_near(draw_stripes().at(middle, middle - 15), {255, 0, 0, 255}, 8);
}

TEST_F(Render_textures, are_missed_with_the_folders_that_were_searched)
{
    m_request.search_paths = {"/nonexistent/images"};
    draw_stripes();
    const std::string folder = m_folder.path("x").substr(0, m_folder.path("x").rfind('/'));
    EXPECT_THAT(m_result.notes, Contains("stripes.png: no such PNG or JPEG image in '" + folder +
                                         "', '/nonexistent/images'; a checker stands in"));
}

TEST_F(Render_textures, are_read_once_however_many_samplers_name_them)
{
    write_stripes(m_folder.path("stripes.png"));
    const std::string text =
        "#version 130\n"
        "// texture first: stripes.png\n"
        "// texture second: stripes.png\n"
        "uniform sampler2D first, second;\n"
        "in vec4 fragment_texcoord0;\n"
        "out vec4 color;\n"
        "void main() { color = 0.5 * texture(first, fragment_texcoord0.xy)\n"
        "                   + 0.5 * texture(second, fragment_texcoord0.xy); }\n";
    const Image image = draw({fixture("plain_v.gl"), m_folder.write("stripes_f.gl", text)});
    expect_near(image.at(middle, middle - 15), {255, 0, 0, 255}, 8);
    m_folder.write("stripes.png", "no image");
    draw({fixture("plain_v.gl"), m_folder.path("stripes_f.gl")});
    EXPECT_EQ(1U, m_result.notes.size()) << "one file, one note";
}

TEST_F(Render_textures, are_not_waited_for)
{
    ASSERT_EQ(0, mkfifo(m_folder.path("stripes.png").c_str(), 0600));
    draw_stripes();
    EXPECT_THAT(m_result.notes, Contains(HasSubstr("not a regular file but a pipe")));
}

TEST_F(Render_textures, become_a_checker_with_a_note_when_they_are_not_found)
{
    const Image image = draw_stripes();
    EXPECT_THAT(m_result.notes, Contains(HasSubstr("stripes.png")));
    EXPECT_NE(image.at(middle, middle - 15)[0], 255);
    EXPECT_FALSE(image.at(middle, middle - 15) == background);
}

// ---- refusals ---------------------------------------------------------------

struct Refusal {
    const char* fixture; // the one of the plain pair that is changed
    const char* old_text;
    const char* new_text;
    const char* message;
};

TEST_F(Render, broken_shaders_are_refused_with_the_reason)
{
    const Refusal refusals[] = {
        {"plain_v.gl", "fragment_normal = world_view_it * vertex_normal;", "", "not written"},
        {"plain_f.gl", "vec3 tint", "float3 tint", "syntax error"},
        {"plain_f.gl", "texture(base_map", "tex2D(base_map", "tex2D"},
        {"plain_f.gl", "in vec3 fragment_normal", "in vec4 fragment_normal", "dot(vec4, vec3)"},
        {"plain_f.gl", "void main()", "void other()", "main"},
        {"plain_v.gl", "#version 130", "#version 999", "9.99"},
    };
    for (const Refusal& row : refusals) {
        const std::string changed =
            m_folder.write(row.fixture, changed_fixture(row.fixture, row.old_text, row.new_text));
        const bool is_vertex = std::string(row.fixture) == "plain_v.gl";
        m_request.shader_files = {is_vertex ? changed : fixture("plain_v.gl"),
                                  is_vertex ? fixture("plain_f.gl") : changed};
        const Render_result result = render(m_request);
        EXPECT_FALSE(result.drawn) << row.new_text;
        EXPECT_THAT(result.error, HasSubstr(row.message)) << row.new_text;
        EXPECT_THAT(result.error, HasSubstr(row.fixture));
    }
}

TEST_F(Render, impossible_requests_are_refused)
{
    const auto error_of = [](const Render_request& request) {
        const Render_result result = render(request);
        EXPECT_FALSE(result.drawn);
        return result.error;
    };
    const std::vector<std::string> pair = {fixture("plain_v.gl"), fixture("plain_f.gl")};
    Render_request request;
    EXPECT_THAT(error_of(request), HasSubstr("needed"));
    request.shader_files = {pair[0], pair[1], pair[1]};
    EXPECT_THAT(error_of(request), HasSubstr("needed"));
    request.shader_files = {pair[0], "/nonexistent/f.gl"};
    EXPECT_THAT(error_of(request), HasSubstr("/nonexistent/f.gl: cannot be read"));
    request.shader_files = {fixture("")};
    EXPECT_THAT(error_of(request), HasSubstr("cannot be read"));
    request.shader_files = pair;
    request.size = 0;
    EXPECT_THAT(error_of(request), HasSubstr("pixels"));
    request.size = 4097;
    EXPECT_THAT(error_of(request), HasSubstr("pixels"));
    request.size = 16;
    request.picture_file = "/nonexistent/picture.png";
    EXPECT_THAT(error_of(request), HasSubstr("/nonexistent/picture.png: cannot be written"));
    request.picture_file = m_folder.path("pipe");
    ASSERT_EQ(0, mkfifo(request.picture_file.c_str(), 0600));
    EXPECT_THAT(error_of(request), HasSubstr("pipe: cannot be written: not a regular file"));
    request.shader_files = {pair[0], request.picture_file};
    EXPECT_THAT(error_of(request), HasSubstr("pipe: cannot be read: not a regular file"));
}

TEST_F(Render, uniforms_without_value_are_noted)
{
    const std::string changed = changed_fixture("plain_f.gl", " = vec3(0.9, 0.8, 0.7)", "");
    draw({fixture("plain_v.gl"), m_folder.write("plain_f.gl", changed)});
    EXPECT_THAT(m_result.notes, Contains(HasSubstr("tint has no value")));
}

TEST_F(Render, an_effect_without_compiler_or_programs_is_refused)
{
    m_request.shader_files = {fixture("plain.cgfx")};
    m_request.cg_compiler = "/nonexistent/cgc";
    EXPECT_THAT(render(m_request).error,
                HasSubstr("the compiler '/nonexistent/cgc' did not start"));
    m_request.shader_files = {m_folder.write("empty.cgfx", "float a;\n")};
    EXPECT_THAT(render(m_request).error, HasSubstr("no pass"));
}

// Sets an environment variable until the end of the test.
class Environment_variable
{
public:
    Environment_variable(const char* name, const char* value) : m_name(name)
    {
        if (const char* const old_value = std::getenv(name))
            m_old_value = old_value;
        setenv(name, value, 1);
    }
    ~Environment_variable()
    {
        if (m_old_value)
            setenv(m_name, m_old_value->c_str(), 1);
        else
            unsetenv(m_name);
    }
    Environment_variable(const Environment_variable&) = delete;
    Environment_variable& operator=(const Environment_variable&) = delete;

private:
    const char* m_name;
    std::optional<std::string> m_old_value;
};

TEST_F(Render, an_absent_compiler_is_said_to_be_fetched_by_the_script)
{
    const Environment_variable validators("TOVIRAEXPORT_VALIDATORS", "/nonexistent");
    m_request.shader_files = {fixture("plain.cgfx")};
    EXPECT_THAT(render(m_request).error, HasSubstr("scripts/fetch-validators.sh brings it"));
}

// ---- effects ----------------------------------------------------------------

TEST_F(Render_effect, one_material_looks_the_same_as_cgfx_hlsl_and_glsl)
{
    const Image glsl = draw({fixture("plain_v.gl"), fixture("plain_f.gl")});
    for (const char* effect : {"plain.cgfx", "plain.fx"}) {
        const auto difference = mean_difference(glsl, draw({fixture(effect)}));
        ASSERT_TRUE(difference);
        for (const double channel : *difference)
            EXPECT_LT(channel, 0.5) << effect;
    }
    EXPECT_GT(glsl.at(middle + 8, middle - 8)[0], glsl.at(middle - 15, middle + 15)[0])
        << "the lamp is above to the right";
}

TEST_F(Render_effect, parameters_have_their_default_values)
{
    const struct {
        const char* parameters;
        const char* expression;
        Pixel expected;
    } cases[] = {
        {"float3 c = {0.2, 0.4, 0.6};", "float4(c, 1.0)", {51, 102, 153, 255}},
        {"bool b = true; int n = 3;",
         "b ? float4(n * 0.2, 0.0, 0.0, 1.0) : float4(0, 0, 0, 1)",
         {153, 0, 0, 255}},
        {"float3x3 m = {0.2, 0.0, 0.0, 0.0, 0.4, 0.0, 0.0, 0.2, 0.0};",
         "float4(mul(m, float3(1.0, 1.0, 1.0)), 1.0)",
         {51, 102, 51, 255}},
        {"float a[3] = {0.2, 0.4, 0.6};", "float4(a[2], a[1], a[0], 1.0)", {153, 102, 51, 255}},
        {"struct L { float3 c; }; L l[2] = {{{0.2, 0.2, 0.2}}, {{0.6, 0.4, 0.2}}};",
         "float4(l[1].c, 1.0) + 0.0 * l[0].c.xyzz",
         {153, 102, 51, 255}},
    };
    for (const auto& row : cases)
        expect_near(
            draw_effect(std::string(row.parameters) + "\n", row.expression).at(middle, middle),
            row.expected, 1);
}

TEST_F(Render_effect, unbound_lights_get_one_light_of_each_kind)
{
    const Image image = draw({fixture("lights.cgfx")});
    const auto difference = mean_difference(image, Image(picture_size, picture_size));
    ASSERT_TRUE(difference);
    EXPECT_GT((*difference)[0], 90); // far above the ambient light alone
}

TEST_F(Render_effect, macros_that_double_end_in_an_error_and_leave_no_compiler_behind)
{
    std::string macros = "#define M0 x;x;x;x\n";
    for (int i = 1; i < 60; ++i)
        macros += "#define M" + std::to_string(i) + " M" + std::to_string(i - 1) + " M" +
                  std::to_string(i - 1) + "\n";
    m_request.shader_files = {m_folder.write(
        "bomb.cgfx", macros + "void f() { float x = 1; M59 }\n" + fixture_text("plain.cgfx"))};
    const Render_result result = render(m_request);
    EXPECT_FALSE(result.drawn);
    EXPECT_THAT(result.error, HasSubstr("bomb.cgfx"));
    EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG));
    EXPECT_EQ(ECHILD, errno);
}

TEST_F(Render_effect, messages_of_the_compiler_name_the_effect)
{
    const std::string file =
        m_folder.write("wrong.cgfx", changed_fixture("plain.cgfx", "* tint", "* tant"));
    m_request.shader_files = {file};
    const Render_result result = render(m_request);
    EXPECT_FALSE(result.drawn);
    EXPECT_THAT(result.error, HasSubstr(file + "("));
    EXPECT_THAT(result.error, HasSubstr("tant"));
}

} // namespace

} // namespace reference_host
