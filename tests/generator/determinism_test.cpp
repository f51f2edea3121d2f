#include "tests/generator/generation.h"

#include <gtest/gtest.h>

#include <clocale>

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

} // namespace

TEST(Generation, gives_equal_bytes_for_equal_input)
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
    bool found = false;
    for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE"})
        found = found || std::setlocale(LC_ALL, locale);
    EXPECT_EQ(all_texts(*graph), texts);
    std::setlocale(LC_ALL, "C");
    if (!found)
        GTEST_SKIP() << "no locale with a decimal comma is installed";
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
