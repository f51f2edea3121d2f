// The renderer's C++ source and qz scene text.
#include "reference_host/system/process.h"
#include "tests/generator/generation.h"
#include "tests/support/temporary_folder.h"

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

// The object is stretched to the double along its x, turned around z by 90 degrees and moved.
TEST(Renderer_source, takes_the_matrices_of_the_object_from_the_renderer)
{
    const struct {
        const char *category, *from, *to, *in, *value;
    } rows[] = {{"transformpoint", "object", "world", "1, 1, 0", "4 2 7"},
                {"transformpoint", "world", "object", "4, 2, 7", "1 1 0"},
                {"transformvector", "object", "world", "1, 1, 0", "-1 2 0"},
                {"transformvector", "world", "object", "-1, 2, 0", "1 1 0"},
                {"transformnormal", "object", "world", "0.6, 0.4, 0", "-0.8 0.6 0"},
                {"transformnormal", "world", "object", "-0.8, 0.6, 0", "0.83205 0.5547 0"}};
    const std::pair<const char*, const char*> matrices[] = {
        {"world", "0.f,2.f,0.f,0.f, -1.f,0.f,0.f,0.f, 0.f,0.f,1.f,0.f, 5.f,0.f,7.f,1.f"},
        {"world_inverse", "0.f,-1.f,0.f,0.f, .5f,0.f,0.f,0.f, 0.f,0.f,1.f,0.f, 0.f,5.f,-7.f,1.f"},
        {"world_it", "0.f,.5f,0.f,0.f, -1.f,0.f,0.f,5.f, 0.f,0.f,1.f,-7.f, 0.f,0.f,0.f,1.f"}};
    std::string text;
    std::string calls;
    std::string expected;
    for (const auto& row : rows) {
        const std::string name = "moved" + std::to_string(&row - rows);
        const auto graph = graph_of("<" + std::string(row.category) + " name='" + name +
                                    "' type='vector3'><input name='in' type='vector3' value='" +
                                    row.in + "'/><input name='fromspace' type='string' value='" +
                                    row.from + "'/><input name='tospace' type='string' value='" +
                                    row.to + "'/></" + row.category + ">");
        const Result result = generate_node(*graph, name, "Swrc", {});
        const std::string scope = name + "_shader::";
        for (const auto& [matrix, numbers] : matrices)
            if (contains(result.text(), "float4x4 " + std::string(matrix) + " = "))
                calls += scope + matrix + " = " + scope + "float4x4(" + numbers + ");\n";
        calls +=
            "{ auto v = " + scope + name + "(); std::printf(\"%g %g %g\\n\", v.x, v.y, v.z); }\n";
        text += result.text();
        expected += std::string(row.value) + "\n";
    }
    const QZ::TEST::Temporary_folder folder;
    const std::string program = folder.file("moved");
    const std::string source =
        folder.write("moved.cpp", text + "#include <cstdio>\nint main()\n{\n" + calls + "}\n");
    const auto compiled =
        reference_host::run_program({CXX_COMPILER, "-std=c++17", "-w", source, "-o", program});
    ASSERT_EQ(compiled.status, 0) << compiled.output;
    EXPECT_EQ(reference_host::run_program({program}).output, expected);
}
