#include "reference_host/render/render_command.h"

#include "reference_host/render/image.h"
#include "tests/render/test_files.h"

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>

namespace reference_host
{

namespace
{

using testing::HasSubstr;

struct Outcome {
    int status = -1; // what the command left; -1 when none ran
    bool parsed = false;
    std::string output;
    std::string errors;
};

Outcome run(std::vector<std::string> arguments)
{
    CLI::App app;
    Outcome outcome;
    add_render_commands(app, outcome.status);
    std::reverse(arguments.begin(), arguments.end()); // as CLI11 wants it
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    try {
        app.parse(arguments);
        outcome.parsed = true;
    } catch (const CLI::ParseError&) {
        outcome.parsed = false;
    }
    outcome.output = testing::internal::GetCapturedStdout();
    outcome.errors = testing::internal::GetCapturedStderr();
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
