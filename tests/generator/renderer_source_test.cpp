// The renderer's C++ source and qz scene text.
#include "tests/generator/generation.h"

#include <gtest/gtest.h>

#include <cctype>

using namespace generation;

namespace
{

// A reader of qz texts: words, numbers, quoted texts and braces; comments are passed over.
std::vector<std::string> read_qz(const std::string& text)
{
    std::vector<std::string> words;
    for (std::size_t i = 0; i < text.size();) {
        if (std::isspace(static_cast<unsigned char>(text[i]))) {
            ++i;
        } else if (text[i] == '#') {
            i = std::min(text.find('\n', i), text.size());
        } else if (text[i] == '"') {
            std::string word = "\"";
            for (++i; i < text.size() && text[i] != '"'; ++i) {
                if (text[i] == '\\' && i + 1 < text.size())
                    ++i;
                word += text[i];
            }
            words.push_back(word);
            ++i;
        } else {
            const std::size_t end = std::min(text.find_first_of(" \n", i), text.size());
            words.push_back(text.substr(i, end - i));
            i = end;
        }
    }
    return words;
}

} // namespace

TEST(Renderer_source, has_a_source_and_a_scene_text)
{
    const auto graph = graph_of(painted_scene());
    const Result result = generate_node(*graph, "paint", "Swrc",
                                        {{"shader_type", "surface"}, {"shader_name", "paint"}});
    ASSERT_EQ(result.texts.size(), 2U) << result.messages();
    const std::string& source = result.texts[0];
    EXPECT_TRUE(contains(source, "float4 paint(State state, Light_list lights)"));
    EXPECT_TRUE(contains(source, "Light_iterator light = lights[i].eval(state);"));
    EXPECT_TRUE(contains(source, "float3 tint = float3(0.9f, 0.8f, 0.7f);"));
    EXPECT_TRUE(contains(source, "Sampler_2d wood_map; // wood.png"));
}

TEST(Renderer_source, scene_text_lists_parameters_and_textures)
{
    const auto graph = graph_of(painted_scene());
    const Result result = generate_node(*graph, "paint", "Swrc", {{"shader_name", "a \"b\" \\"}});
    ASSERT_EQ(result.texts.size(), 2U) << result.messages();
    const std::vector<std::string> words = read_qz(result.texts[1]);
    const std::vector<std::string> head = {"shader", "\"a_b", "{", "kind", "\"surface"};
    ASSERT_GT(words.size(), head.size());
    EXPECT_EQ(std::vector<std::string>(words.begin(), words.begin() + 5), head);
    EXPECT_EQ(words.back(), "}");
    EXPECT_TRUE(contains(result.texts[1], "    parameter \"tint\" color3 0.9 0.8 0.7\n"));
    EXPECT_TRUE(contains(result.texts[1], "    texture \"wood_map\" 2d \"wood.png\"\n"));
}

TEST(Renderer_source, lights_environments_and_volumes_have_sources_too)
{
    const auto graph = graph_of(painted_scene());
    const struct {
        const char *node, *kind, *head;
    } rows[] = {{"sun", "light", "Light_iterator sun(State state)"},
                {"sky", "environment", "float4 sky(State state)"},
                {"haze", "volume", "float4 haze(State state)"}};
    for (const auto& row : rows) {
        const Result result = generate_node(*graph, row.node, "Swrc", {{"shader_type", row.kind}});
        EXPECT_TRUE(contains(result.text(), row.head)) << row.node << result.messages();
    }
}
