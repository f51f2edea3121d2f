// Documents that no artist makes. Each must end in a graph or in one error, soon and without a
// crash.
#include "reference_host/document/materialx_reader.h"
#include "tests/host/documents.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <random>

using namespace reference_host;
using testing::HasSubstr;

namespace
{

Read_result read_text(const std::string& text)
{
    const Temporary_folder folder;
    return read_materialx(folder.write("hostile.mtlx", text), {});
}

std::string repeat(const std::string& text, int times)
{
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

} // namespace

TEST(Hostile_documents, a_chain_of_100000_nodes_is_read)
{
    std::string elements = "<constant name='n0' type='float'/>\n";
    for (int i = 1; i < 100'000; ++i) {
        elements += "<absval name='n" + std::to_string(i) +
                    "' type='float'><input name='in' type='float' nodename='n" +
                    std::to_string(i - 1) + "'/></absval>\n";
    }
    const Read_result result = read_text(document(elements));
    ASSERT_TRUE(result.graph) << result.error();
    EXPECT_EQ(100'000u, result.graph->nodes.size());
}

TEST(Hostile_documents, the_time_for_inputs_of_one_node_graph_grows_with_their_number)
{
    const auto seconds = [](int count) {
        std::string inputs;
        std::string nodes;
        for (int i = 0; i < count; ++i) {
            const std::string name = "i" + std::to_string(i);
            inputs += "<input name='" + name + "' type='float' value='0.5'/>\n";
            nodes += "<absval name='a" + name +
                     "' type='float'><input name='in' type='float' interfacename='" + name +
                     "'/></absval>\n";
        }
        const Temporary_folder folder;
        const std::string file = folder.write(
            "inputs.mtlx", document("<nodegraph name='g'>" + inputs + nodes + "</nodegraph>\n"));
        const auto start = std::chrono::steady_clock::now();
        const Read_result result = read_materialx(file, {});
        EXPECT_TRUE(result.graph) << result.error();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    seconds(1000);
    EXPECT_LT(seconds(40'000), 4 * 2.5 * seconds(10'000));
}

TEST(Hostile_documents, a_document_of_3_gigabytes_is_refused_at_once)
{
    const Temporary_folder folder;
    const std::string file = folder.write("large.mtlx", "");
    std::filesystem::resize_file(file, std::uintmax_t{3} << 30);
    EXPECT_EQ("cannot be opened: larger than 64 MiB", read_materialx(file, {}).error());
}

TEST(Hostile_documents, includes_count_for_the_size_of_a_document)
{
    const Temporary_folder folder;
    const std::string spaces(std::size_t{40} << 20, ' ');
    for (const char* name : {"a.mtlx", "b.mtlx"})
        folder.write(name, "<materialx version='1.39'>" + spaces + "</materialx>");
    const std::string file = folder.write(
        "all.mtlx", document("<xi:include href='a.mtlx'/><xi:include href='b.mtlx'/>"));
    EXPECT_EQ("the document and the files that it includes are larger than 64 MiB",
              read_materialx(file, {}).error());
}

TEST(Hostile_documents, a_cycle_of_100000_nodes_is_one_error)
{
    std::string elements;
    for (int i = 0; i < 100'000; ++i) {
        elements += "<absval name='n" + std::to_string(i) +
                    "' type='float'><input name='in' type='float' nodename='n" +
                    std::to_string((i + 1) % 100'000) + "'/></absval>\n";
    }
    const Read_result result = read_text(document(elements));
    EXPECT_THAT(result.error(), HasSubstr("cycle"));
    EXPECT_LT(result.error().size(), 1000u);
}

TEST(Hostile_documents, a_chain_of_20000_node_graphs_that_only_pass_on_is_read)
{
    std::string elements = "<constant name='c' type='float'/>\n";
    for (int i = 0; i < 20'000; ++i) {
        const std::string from =
            i == 0 ? "nodename='c'" : "nodegraph='g" + std::to_string(i - 1) + "' output='o'";
        elements += "<nodegraph name='g" + std::to_string(i) + "'><input name='x' type='float' " +
                    from + "/><absval name='a' type='float'><input name='in' type='float' " +
                    "interfacename='x'/></absval>" +
                    "<output name='o' type='float' interfacename='x'/></nodegraph>\n";
    }
    const Read_result result = read_text(document(elements));
    ASSERT_TRUE(result.graph) << result.error();
    EXPECT_EQ("c", result.graph->find_node("g19999/a")->find_input("in")->source->name);
}

TEST(Hostile_documents, custom_nodes_that_multiply_are_refused)
{
    std::string elements;
    for (int i = 0; i < 40; ++i) {
        const std::string number = std::to_string(i);
        const std::string inner =
            i == 0 ? "<constant name='a' type='float'/><constant name='b' type='float'/>"
                   : "<n" + std::to_string(i - 1) + " name='a' type='float'/><n" +
                         std::to_string(i - 1) + " name='b' type='float'/>";
        elements += "<nodedef name='ND" + number + "' node='n" + number +
                    "'><output name='out' type='float'/></nodedef><nodegraph name='NG" + number +
                    "' nodedef='ND" + number + "'>" + inner +
                    "<output name='out' type='float' nodename='a'/></nodegraph>\n";
    }
    const Read_result result = read_text(document(elements + "<n39 name='x' type='float'/>"));
    EXPECT_THAT(result.error(), HasSubstr("more than"));
}

TEST(Hostile_documents, elements_nested_100000_deep_do_not_matter)
{
    const std::string text =
        document("<look name='l'>" + repeat("<a>", 100'000) + repeat("</a>", 100'000) + "</look>");
    EXPECT_TRUE(read_text(text).graph);
}

TEST(Hostile_documents, elements_that_never_close_are_malformed)
{
    EXPECT_THAT(read_text("<materialx>" + repeat("<a>", 100'000)).error(),
                HasSubstr("malformed XML"));
}

TEST(Hostile_documents, a_chain_of_files_that_include_the_next_ends)
{
    const Temporary_folder folder;
    for (int i = 0; i < 200; ++i)
        folder.write(std::to_string(i) + ".mtlx",
                     document("<xi:include href='" + std::to_string(i + 1) + ".mtlx'/>"));
    EXPECT_THAT(read_materialx(folder.file("0.mtlx"), {}).error(), HasSubstr("too deeply"));
}

TEST(Hostile_documents, entities_are_not_expanded)
{
    const std::string text = "<?xml version='1.0'?><!DOCTYPE m [<!ENTITY a 'aaaaaaaaaa'>"
                             "<!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'>]>" +
                             document("<constant name='&b;' type='float'/>");
    const Read_result result = read_text(text);
    ASSERT_TRUE(result.graph) << result.error();
    EXPECT_EQ("&b;", result.graph->nodes[0]->name);
}

TEST(Hostile_documents, odd_bytes_in_names_pass_unchanged)
{
    const std::string name = "\xff\xfe\xc3\x28 \xe2\x82";
    const Read_result result = read_text(document("<constant name='" + name + "' type='float'/>"));
    ASSERT_TRUE(result.graph) << result.error();
    EXPECT_EQ(name, result.graph->nodes[0]->name);
}

TEST(Hostile_documents, a_nul_byte_is_refused_with_its_line)
{
    std::string text = document("\n<constant name='c' type='float'/>");
    text[text.find("name='c'") + 6] = '\0';
    const Read_result result = read_text(text);
    EXPECT_THAT(result.error(), HasSubstr("NUL"));
    EXPECT_EQ(3, result.problems.at(0).place.line);
}

TEST(Hostile_documents, random_bytes_are_refused)
{
    std::mt19937 random(1);
    for (int round = 0; round < 200; ++round) {
        std::string bytes(1 + random() % 2000, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        EXPECT_FALSE(read_text(bytes).graph);
    }
}

TEST(Hostile_documents, a_document_with_any_byte_changed_ends_in_a_graph_or_an_error)
{
    const std::string good = read_file(SOURCE_FOLDER "/samples/marble_procedural.mtlx");
    ASSERT_FALSE(good.empty());
    std::mt19937 random(2);
    int readable = 0;
    for (int round = 0; round < 2000; ++round) {
        std::string text = good;
        for (int change = 0; change < 3; ++change)
            text[random() % text.size()] = static_cast<char>(random());
        const Read_result result = read_text(text);
        EXPECT_NE(result.graph != nullptr, !result.error().empty());
        readable += result.graph ? 1 : 0;
    }
    EXPECT_GT(readable, 0);
    EXPECT_LT(readable, 2000);
}
