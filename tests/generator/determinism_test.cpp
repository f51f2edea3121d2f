#include "tests/generator/generation.h"

#include <gtest/gtest.h>

#include <clocale>
#include <locale>

using namespace generation;

namespace
{

const Option_set group = {
    {"lights", "sun, bulb, spot"}, {"environment", "sky"}, {"volume", "haze"}};

std::vector<std::string> all_texts(const Shader_graph& graph)
{
    std::vector<std::string> texts;
    for (const char* format : {"CgFX", "HLSL"})
        for (const std::string& text : generate(graph, "FX", group, {{"format", format}}).texts)
            texts.push_back(text);
    for (const char* target : {"GL", "Swrc"})
        for (const std::string& text : generate(graph, target, group, {}).texts)
            texts.push_back(text);
    return texts;
}

class Decimal_comma : public std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

} // namespace

TEST(Generation, makes_equal_bytes_of_equal_input)
{
    const auto graph = graph_of(painted_scene());
    const auto other = graph_of(painted_scene());
    const std::vector<std::string> texts = all_texts(*graph);
    ASSERT_EQ(texts.size(), 6U);
    EXPECT_EQ(all_texts(*graph), texts);
    EXPECT_EQ(all_texts(*other), texts);
}

TEST(Generation, does_not_listen_to_the_locale)
{
    const auto graph = graph_of(painted_scene());
    const std::vector<std::string> texts = all_texts(*graph);
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new Decimal_comma));
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE"}) // where they are installed
        std::setlocale(LC_ALL, name);
    EXPECT_EQ(all_texts(*graph), texts);
    std::locale::global(before);
}

TEST(Generation, leaves_nothing_unused)
{
    const auto graph = graph_of(painted_scene());
    const std::string text = generate(*graph, "FX", {}, {}).text();
    // Without light nothing of the surface shows: no parameter, texture or function is left.
    for (const char* part : {"tint", "wood", "noise", "Surface", "light", "coat"})
        EXPECT_FALSE(contains(text, part)) << part;
}

TEST(Generation, makes_no_texts_for_targets_that_it_does_not_know)
{
    const auto graph = graph_of(painted_scene());
    const Result result = generate(*graph, "Metal", {}, {});
    EXPECT_TRUE(result.texts.empty());
    EXPECT_TRUE(contains(result.messages(), "there is no target \"Metal\""));
}
