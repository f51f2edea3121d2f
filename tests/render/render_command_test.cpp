#include "reference_host/render/render_command.h"

#include "reference_host/render/contact_sheet.h"
#include "reference_host/render/image.h"
#include "tests/render/test_files.h"

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>

#include <functional>

namespace reference_host
{

namespace
{

using testing::HasSubstr;

struct Outcome {
    int status = -1; // what the command returned; -1 when none ran
    bool parsed = false;
    std::string output;
    std::string errors;
};

// A command that throws std::invalid_argument leaves 1, as in the program.
Outcome run(std::vector<std::string> arguments, const Document_exporter& exporter = {})
{
    CLI::App app;
    Outcome outcome;
    std::function<int()> action;
    add_render_commands(app, exporter, action);
    std::reverse(arguments.begin(), arguments.end()); // as CLI11 wants it
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    try {
        app.parse(arguments);
        outcome.parsed = true;
        outcome.status = action();
    } catch (const CLI::ParseError&) {
        outcome.parsed = false;
    } catch (const std::invalid_argument& refused) {
        outcome.status = 1;
        outcome.errors = refused.what();
    }
    outcome.output = testing::internal::GetCapturedStdout();
    outcome.errors += testing::internal::GetCapturedStderr();
    return outcome;
}

TEST(Render_command, draws_a_pair_into_a_picture_of_the_given_size)
{
    const Test_folder folder;
    const Outcome outcome = run({"render", fixture("plain_v.gl"), fixture("plain_f.gl"), "-o",
                                 folder.path("a.png"), "--size", "24"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("note: stripes.png"));
    const auto image = read_image(folder.path("a.png"));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 24);
}

TEST(Render_command, failure_is_status_1_with_the_reason)
{
    const Test_folder folder;
    const Outcome outcome =
        run({"render", fixture("plain_f.gl"), fixture("plain_f.gl"), "-o", folder.path("a.png")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("plain_f.gl"));
    EXPECT_FALSE(read_image(folder.path("a.png")));
}

// Exports nothing, but names shaders that are there, the last one failed.
class Render_document : public testing::Test
{
protected:
    Outcome render(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), "render");
        arguments.insert(arguments.end(), {"-o", picture(), "--size", "40"});
        return run(arguments, [this](const Document_request& request, const std::string& folder) {
            m_request = request;
            EXPECT_NE("", folder);
            return m_shaders;
        });
    }

    std::string picture() const { return m_folder.path("a.png"); }

    Test_folder m_folder;
    std::vector<Exported_shader> m_shaders = {
        {"first", {fixture("plain_v.gl"), fixture("plain_f.gl")}},
        {"second", {fixture("plain_v.gl"), fixture("plain_f.gl")}},
        {"third", {}}};
    Document_request m_request;
};

TEST_F(Render_document, is_exported_as_asked_for_and_drawn)
{
    const Outcome outcome = render({"scene.mtlx", "--node", "Wood", "--as", "cgfx", "--light", "a",
                                    "--light", "b:spot:cone=20", "--search-path", "images"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(m_request.document, "scene.mtlx");
    EXPECT_EQ(m_request.node, "Wood");
    EXPECT_EQ(m_request.target, "cgfx");
    EXPECT_FALSE(m_request.all);
    EXPECT_EQ(m_request.lights, (std::vector<std::string>{"a", "b:spot:cone=20"}));
    EXPECT_EQ(m_request.search_path, std::vector<std::string>{"images"});
    EXPECT_EQ(read_image(picture())->width, 40);
}

TEST_F(Render_document, is_not_drawn_when_its_export_failed)
{
    m_shaders = {{"only", {}}};
    EXPECT_EQ(render({"scene.mtlx"}).status, 1);
    EXPECT_FALSE(read_image(picture()));
}

TEST_F(Render_document, shows_all_materials_on_a_sheet_but_those_that_failed)
{
    EXPECT_EQ(render({"scene.mtlx", "--all"}).status, 1) << "the third one failed";
    EXPECT_TRUE(m_request.all);
    const auto two = read_image(picture());
    ASSERT_TRUE(two);
    EXPECT_GT(two->width, 80);
    EXPECT_LT(two->height, 80);
    m_shaders.pop_back();
    EXPECT_EQ(render({"scene.mtlx", "--all"}).status, 0);
}

TEST_F(Render_document, alone_takes_nodes_and_lights)
{
    for (const std::vector<std::string>& option :
         std::vector<std::vector<std::string>>{{"--all"}, {"--node", "a"}, {"--light", "a"}}) {
        std::vector<std::string> arguments = {fixture("plain_v.gl"), fixture("plain_f.gl")};
        arguments.insert(arguments.end(), option.begin(), option.end());
        const Outcome outcome = render(arguments);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.errors, HasSubstr("are for documents"));
    }
}

TEST(Contact_sheet, has_a_column_for_each_row_and_a_name_under_each_picture)
{
    Image red(40, 40);
    std::fill(red.pixels.begin(), red.pixels.end(), Pixel{255, 0, 0, 255});
    const Image sheet = contact_sheet({{"AB", red}, {"", red}, {"C", red}});
    EXPECT_EQ(sheet.width, 2 * (40 + 8) + 8);
    EXPECT_EQ(sheet.height, 2 * (40 + 26) + 8);
    EXPECT_EQ(sheet.at(8, 8), (Pixel{255, 0, 0, 255}));
    const auto is_drawn_on = [&sheet](int left) {
        for (int y = 48; y < 74; ++y)
            for (int x = left; x < left + 40; ++x)
                if (sheet.at(x, y)[0] > 200)
                    return true;
        return false;
    };
    EXPECT_TRUE(is_drawn_on(8));
    EXPECT_FALSE(is_drawn_on(56)) << "no name, no text";
}

TEST(Render_command, missing_arguments_are_usage_errors)
{
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"render"}, {"render", "a"}, {"render", "-o", "a.png"}, {"compare", "a.png"}}) {
        const Outcome outcome = run(arguments);
        EXPECT_FALSE(outcome.parsed);
        EXPECT_EQ(outcome.status, -1);
    }
}

class Compare_command : public testing::Test
{
protected:
    // A picture of one color, except for two pixels that are the same in all.
    std::string picture(const std::string& name, int width, Pixel color) const
    {
        Image image(width, 4);
        for (Pixel& pixel : image.pixels)
            pixel = color;
        image.at(0, 0) = {1, 1, 1, 255};
        image.at(1, 0) = {2, 2, 2, 255};
        EXPECT_TRUE(write_png(image, m_folder.path(name)));
        return m_folder.path(name);
    }

    Test_folder m_folder;
};

TEST_F(Compare_command, pictures_within_the_limit_are_the_same)
{
    const std::string a = picture("a.png", 4, {10, 20, 30, 255});
    const std::string b = picture("b.png", 4, {10, 22, 30, 255});
    const std::string c = picture("c.png", 4, {10, 20, 34, 255});
    EXPECT_EQ(run({"compare", a, b}).status, 0);
    EXPECT_EQ(run({"compare", a, c}).status, 1);
    EXPECT_EQ(run({"compare", a, c, "--limit", "3.5"}).status, 0);
    EXPECT_EQ(run({"compare", a, c}).output,
              "mean difference of 255: red 0.000, green 0.000, blue 3.500\n");
}

TEST_F(Compare_command, two_flat_pictures_prove_nothing)
{
    ASSERT_TRUE(write_png(Image(4, 4), m_folder.path("flat.png")));
    const std::string flat = m_folder.path("flat.png");
    EXPECT_EQ(run({"compare", flat, flat}).status, 1);
    EXPECT_THAT(run({"compare", flat, flat}).errors, HasSubstr("flat color"));
    EXPECT_EQ(run({"compare", flat, flat, "--allow-flat"}).status, 0);
}

TEST_F(Compare_command, pictures_that_cannot_be_compared_fail)
{
    const std::string a = picture("a.png", 4, {10, 20, 30, 255});
    const std::string wide = picture("wide.png", 8, {10, 20, 30, 255});
    EXPECT_EQ(run({"compare", a, wide}).status, 1);
    EXPECT_THAT(run({"compare", a, wide}).errors, HasSubstr("size"));
    EXPECT_EQ(run({"compare", a, m_folder.path("missing.png")}).status, 1);
}

} // namespace

} // namespace reference_host
