// Errors of a document that cannot be used: the file, the line, and what is wrong.
#include "reference_host/document/materialx_reader.h"
#include "tests/host/documents.h"

#include <gmock/gmock.h>

using namespace reference_host;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

namespace
{

struct Bad_document {
    const char* elements; // from line 2 on
    int line;
    const char* error;
};

constexpr const char* recursive_node = R"(<nodedef name="ND" node="loop">
<output name="out" type="float"/></nodedef>
<nodegraph name="NG" nodedef="ND"><loop name="l" type="float"/>
<output name="out" type="float" nodename="l"/></nodegraph>
<loop name="x" type="float"/>)";

const Bad_document bad_documents[] = {
    // XML
    {"<constant name='c'", 3, "malformed XML"},
    {"<a></b>", 2, "malformed XML"},
    {"<xi:include/>", 2, "an include names no file"},
    // names
    {"\n<absval name='f' type='flaot'/>", 3, "absval 'f': unknown type 'flaot'"},
    {"<constant type='float'/>", 2, "a node 'constant' has no name"},
    {"<constant name='c' type='float'/>\n<absval name='c' type='float'/>", 3,
     "the name 'c' exists twice"},
    {"<nodegraph name='g'><output name='o' type='float'/>\n<output name='o' "
     "type='float'/></nodegraph>",
     3, "the output 'o' exists twice"},
    {"<constant name='c' type='float'>\n<input name='value' type='float' value='1'/>\n"
     "<input name='value' type='float' value='2'/></constant>",
     4, "node 'c', input 'value' is given twice"},
    {"<nodegraph name='g'>\n<nodegraph name='h'/></nodegraph>", 3, "stands inside another one"},
    // connections
    {"<absval name='a' type='float'>\n<input name='in' type='float' nodename='none'/></absval>", 3,
     "node 'a', input 'in': the node 'none' is missing"},
    {"<absval name='a' type='float'>\n<input name='in' type='float' nodegraph='none'/></absval>", 3,
     "node 'a', input 'in': the node graph 'none' is missing"},
    {"<nodegraph name='g'><constant name='c' type='float'/>"
     "<output name='o' type='float' nodename='c'/></nodegraph>\n"
     "<absval name='a' type='float'><input name='in' type='float' nodegraph='g' "
     "output='p'/></absval>",
     3, "'g' has no output 'p'"},
    {"<nodegraph name='g'><constant name='c' type='float'/>"
     "<output name='o' type='float' nodename='c'/><output name='p' type='float' nodename='c'/>"
     "</nodegraph>\n"
     "<absval name='a' type='float'><input name='in' type='float' nodegraph='g'/></absval>",
     3, "does not say which of the 2 outputs of 'g' it reads"},
    {"<nodegraph name='g'>\n<absval name='a' type='float'>\n"
     "<input name='in' type='float' interfacename='none'/></absval></nodegraph>",
     4, "node 'a', input 'in': there is no interface input 'none'"},
    {"<absval name='a' type='float'>\n<input name='in' type='float' interfacename='x'/></absval>",
     3, "there is no interface input 'x'"},
    {"<nodegraph name='g'>\n<output name='o' type='float'/></nodegraph>", 3,
     "node graph 'g', output 'o' is connected to nothing"},
    {"<separate3 name='s' type='multioutput'><input name='in' type='color3' value='1,1,1'/>"
     "</separate3>\n<absval name='a' type='float'>"
     "<input name='in' type='float' nodename='s' output='outx'/></absval>",
     3, "has no output 'outx'"},
    // types and values
    {"<constant name='c' type='colour3'/>", 2, "unknown type 'colour3'"},
    {"<constant name='c' type='float'>\n<input name='value' value='1'/></constant>", 3,
     "input 'value' has no type"},
    {"<constant name='c' type='float'>\n<input name='value' type='float' value='one'/></constant>",
     3, "node 'c', input 'value': 'one' is not a value of type float"},
    {"<constant name='c' type='color3'>\n<input name='value' type='color3' "
     "value='1,2'/></constant>",
     3, "'1,2' is not a value of type color3"},
    {"<constant name='c' type='color3'/>\n<absval name='a' type='float'>\n"
     "<input name='in' type='float' nodename='c'/></absval>",
     4, "wrong type: it is float, but node 'c' (constant) is color3"},
    {"<constant name='c' type='color3'/>\n<nodegraph name='g'>\n"
     "<input name='x' type='float' nodename='c'/></nodegraph>",
     4, "node graph 'g', input 'x': wrong type"},
    {"<constant name='c' type='surfaceshader'/>", 2, "wrong type: no constant gives surfaceshader"},
    {"<absval name='a' type='float'><input name='inn' type='float' value='1'/></absval>", 2,
     "there is no input 'inn'"},
    {"<absval name='a' type='float'><input name='in' type='color3' value='1,1,1'/></absval>", 2,
     "wrong type: no absval gives float from in color3"},
    {"<constant name='c' type='float'/>\n<absval name='a' type='float'>"
     "<input name='in' type='float' nodename='c' channels='y'/></absval>",
     3, "has no channels 'y'"},
    {"<constant name='c' type='color3'/>\n<absval name='a' type='float'>"
     "<input name='in' type='float' nodename='c' channels='rg'/></absval>",
     3, "wrong type: it is float, but node 'c' (constant) leaves channels 'rg'"},
    // cycles
    {"<absval name='a' type='float'><input name='in' type='float' nodename='a'/></absval>", 2,
     "cycle: a -> a"},
    {"<absval name='a' type='float'><input name='in' type='float' nodename='b'/></absval>\n"
     "<absval name='b' type='float'><input name='in' type='float' nodename='a'/></absval>",
     2, "cycle: a -> b -> a"},
    {"<nodegraph name='g'><input name='x' type='float' nodegraph='g'/>\n"
     "<output name='o' type='float' interfacename='x'/></nodegraph>",
     2, "the connections form a cycle"},
    {"<nodegraph name='g'><input name='x' type='float' nodename='b'/>\n"
     "<absval name='a' type='float'><input name='in' type='float' interfacename='x'/></absval>"
     "<output name='o' type='float' nodename='a'/></nodegraph>\n"
     "<absval name='b' type='float'><input name='in' type='float' nodegraph='g'/></absval>",
     3, "cycle"},
    {recursive_node, 4, "the custom node 'loop' contains itself"},
    // custom nodes
    {"<nodegraph name='g' nodedef='ND_none'/>", 2, "the node definition 'ND_none' is missing"},
    {"<nodedef name='ND' node='n'/>\n<implementation name='i' nodedef='ND' nodegraph='none'/>", 3,
     "the node graph 'none' of an implementation is missing"},
    {"<nodedef name='ND' node='n' inherit='ND'/>\n<nodegraph name='g' nodedef='ND'/>", 3,
     "inherits from itself"},
    {"<nodedef name='ND' node='n'/>\n<nodedef name='ND' node='m'/>", 3, "exists twice"},
};

} // namespace

TEST(Reader_errors, tell_the_line_and_what_is_wrong)
{
    const Temporary_folder folder;
    for (const Bad_document& row : bad_documents) {
        const std::string file = folder.write("bad.mtlx", document(row.elements));
        const Read_result result = read_materialx(file, {});
        EXPECT_FALSE(result.graph) << row.elements;
        EXPECT_THAT(result.error(), HasSubstr(row.error)) << row.elements;
        EXPECT_EQ(row.line, result.problems.at(0).place.line) << row.elements << "\n"
                                                              << result.error();
        EXPECT_EQ(file, result.problems.at(0).place.file) << row.elements;
        EXPECT_EQ(std::string::npos, result.error().find('\n')) << row.elements;
    }
}

TEST(Reader_errors, are_all_reported_at_once_and_each_only_where_it_is_made)
{
    const Temporary_folder folder;
    const std::string file = folder.write("bad.mtlx", document(R"(<absval name="a" type="flaot"/>
<absval name="reads_a" type="float"><input name="in" type="float" nodename="a"/></absval>
<nodegraph name="g">
<input name="x" type="float" nodename="none"/>
<absval name="b" type="float"><input name="in" type="float" interfacename="x"/></absval>
<absval name="c" type="float"><input name="in" type="float" value="one"/></absval>
<output name="o" type="float" nodename="b"/></nodegraph>
<absval name="d" type="float"><input name="in" type="float" nodegraph="g"/></absval>
<absval name="e" type="float"><input name="in" type="color3" value="1,1,1"/></absval>
<absval name="f" type="float"><input name="in" type="float" nodename="f"/></absval>
<constant name="e" type="float"/>)"));
    const Read_result result = read_materialx(file, {});
    EXPECT_FALSE(result.graph);
    std::vector<std::string> problems;
    for (const Document_problem& problem : result.problems) {
        EXPECT_EQ(file, problem.place.file);
        problems.push_back(std::to_string(problem.place.line) + ": " + problem.text);
    }
    EXPECT_THAT(problems,
                UnorderedElementsAre(
                    "2: absval 'a': unknown type 'flaot'",
                    "5: node graph 'g', input 'x': the node 'none' is missing",
                    "7: node 'c', input 'in': 'one' is not a value of type float",
                    "10: node 'e' (absval): wrong type: no absval gives float from in color3",
                    "11: node 'f' (absval): the connections form a cycle: f -> f",
                    "12: the name 'e' exists twice"));
}

TEST(Reader_errors, of_several_files_are_reported_before_names_are_looked_at)
{
    const Temporary_folder folder;
    folder.write("broken.mtlx", "no XML");
    const Read_result result =
        read_materialx(folder.write("main.mtlx", document("<xi:include href='broken.mtlx'/>\n"
                                                          "<xi:include href='none.mtlx'/>\n"
                                                          "<absval name='n' type='nonsense'/>")),
                       {});
    ASSERT_EQ(2u, result.problems.size());
    EXPECT_THAT(result.problems[0].place.file, HasSubstr("broken.mtlx"));
    EXPECT_THAT(result.problems[1].text, HasSubstr("'none.mtlx' is missing"));
}

TEST(Reader_errors, end_when_nobody_would_read_more)
{
    const Temporary_folder folder;
    std::string elements;
    for (int i = 0; i < 1000; ++i)
        elements += "<absval name='n" + std::to_string(i) + "' type='nonsense'/>\n";
    const Read_result result = read_materialx(folder.write("bad.mtlx", document(elements)), {});
    ASSERT_EQ(101u, result.problems.size());
    EXPECT_EQ("further errors are not reported", result.problems.back().text);
}

TEST(Reader_errors, name_the_included_file_that_is_wrong)
{
    const Temporary_folder folder;
    const std::string part =
        folder.write("part.mtlx", document("<absval name='n' type='nonsense'/>"));
    const std::string main = folder.write("main.mtlx", document("<xi:include href='part.mtlx'/>"));
    const Read_result result = read_materialx(main, {});
    EXPECT_EQ(part, result.problems.at(0).place.file);
    EXPECT_EQ(2, result.problems.at(0).place.line);
}

TEST(Reader_errors, refuse_files_that_are_not_materialx_documents)
{
    const Temporary_folder folder;
    const struct {
        const char* content;
        const char* error;
    } rows[] = {
        {"<scene/>", "its outermost element is 'scene'"},
        {"<materialx version='2.0'/>", "version '2.0'"},
        {"", "the file is empty"},
        {"  \n", "the file is empty"},
    };
    for (const auto& row : rows) {
        const Read_result result = read_materialx(folder.write("x.mtlx", row.content), {});
        EXPECT_FALSE(result.graph) << row.content;
        EXPECT_THAT(result.error(), HasSubstr(row.error)) << row.content;
    }
}

TEST(Reader_errors, refuse_files_that_cannot_be_read)
{
    const Temporary_folder folder;
    EXPECT_THAT(read_materialx(folder.file("none.mtlx"), {}).error(), HasSubstr("no such file"));
    EXPECT_THAT(read_materialx(folder.path(), {}).error(), HasSubstr("not a regular file"));
    EXPECT_THAT(read_materialx("", {}).error(), HasSubstr("no such file"));
}
