#include "reference_host/document/materialx_reader.h"
#include "tests/host/documents.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

using namespace reference_host;

namespace
{

// Reads the elements as a document and looks nodes and inputs up by name.
class Reader : public testing::Test
{
protected:
    void read(const std::string& elements)
    {
        read_file(m_folder.write("d.mtlx", document(elements)));
    }

    void read_file(const std::string& file, const std::vector<std::string>& search_path = {})
    {
        Read_result result = read_materialx(file, search_path);
        ASSERT_TRUE(result.graph) << result.error();
        m_graph = std::move(result.graph);
    }

    const Node& node(const std::string& name)
    {
        const Node* found = m_graph->find_node(name);
        if (!found)
            throw std::runtime_error("no node " + name);
        return *found;
    }

    const Input& input(const std::string& node_name, const std::string& name)
    {
        const Input* found = node(node_name).find_input(name);
        if (!found)
            throw std::runtime_error("no input " + name);
        return *found;
    }

    Temporary_folder m_folder;
    std::unique_ptr<Shader_graph> m_graph;
};

constexpr const char* custom_node = R"(
    <nodedef name="ND_tint" node="tint">
      <input name="in" type="color3" value="1, 1, 1" uiname="In"/>
      <input name="amount" type="float" value="0.5"/>
      <output name="out" type="color3"/>
    </nodedef>
    <nodegraph name="NG_tint" nodedef="ND_tint">
      <multiply name="product" type="color3">
        <input name="in1" type="color3" interfacename="in"/>
        <input name="in2" type="float" interfacename="amount"/>
      </multiply>
      <output name="out" type="color3" nodename="product"/>
    </nodegraph>)";

} // namespace

TEST_F(Reader, names_of_an_included_file_with_a_namespace_have_it_before_them)
{
    m_folder.write("lib.mtlx",
                   "<?xml version='1.0'?><materialx version='1.39' namespace='lib'>"
                   "<nodedef name='ND_gain' node='gain'><input name='in' type='color3' "
                   "value='0.5,0.5,0.5'/><output name='out' type='color3'/></nodedef>"
                   "<nodegraph name='NG_gain' nodedef='ND_gain'><multiply name='m' type='color3'>"
                   "<input name='in1' type='color3' interfacename='in'/></multiply>"
                   "<output name='out' type='color3' nodename='m'/></nodegraph>"
                   "<nodegraph name='colors'><constant name='plain' type='color3'><input "
                   "name='value' type='color3' value='1,0,0'/></constant><output name='out' "
                   "type='color3' nodename='plain'/></nodegraph>"
                   "<constant name='plain' type='color3'><input name='value' type='color3' "
                   "value='0,1,0'/></constant>"
                   "<add name='sum' type='color3'><input name='in1' type='color3' "
                   "nodename='plain'/><input name='in2' type='color3' nodegraph='colors'/>"
                   "</add></materialx>");
    read("<xi:include href='lib.mtlx'/>"
         "<constant name='plain' type='color3'><input name='value' type='color3' "
         "value='0,0,1'/></constant>"
         "<lib:gain name='g' type='color3'><input name='in' type='color3' value='0.1,0.2,0.3'/>"
         "</lib:gain>"
         "<add name='a' type='color3'><input name='in1' type='color3' nodename='g'/>"
         "<input name='in2' type='color3' nodename='lib:plain'/></add>"
         "<add name='b' type='color3'><input name='in1' type='color3' nodename='plain'/>"
         "<input name='in2' type='color3' nodegraph='lib:colors' output='out'/></add>");
    EXPECT_EQ("multiply", input("a", "in1").source->category);
    EXPECT_EQ(1, input("lib:plain", "value").value->numbers[1]);
    EXPECT_EQ(&node("lib:plain"), input("a", "in2").source);
    EXPECT_EQ(&node("plain"), input("b", "in1").source);
    EXPECT_EQ(&node("lib:colors/plain"), input("b", "in2").source);
    EXPECT_EQ(&node("lib:plain"), input("lib:sum", "in1").source);
    EXPECT_EQ(&node("lib:colors/plain"), input("lib:sum", "in2").source);
}

TEST_F(Reader, inputs_of_the_document_are_an_interface_for_its_nodes)
{
    read("<input name='tint' type='color3' value='0.2,0.3,0.4' uiname='Tint'/>"
         "<input name='same' type='color3' nodename='c'/>"
         "<constant name='c' type='color3'><input name='value' type='color3' "
         "interfacename='tint'/></constant>"
         "<add name='a' type='color3'><input name='in1' type='color3' interfacename='tint'/>"
         "<input name='in2' type='color3' interfacename='same'/></add>");
    const Parameter* tint = input("c", "value").parameter;
    ASSERT_TRUE(tint);
    EXPECT_EQ("tint", tint->name);
    EXPECT_EQ("Tint", tint->ui.name);
    EXPECT_EQ(0.3, tint->value.numbers[1]);
    EXPECT_EQ(tint, input("a", "in1").parameter);
    EXPECT_EQ(&node("c"), input("a", "in2").source);
}

TEST_F(Reader, numbers_with_a_unit_are_converted_to_what_their_node_counts_in)
{
    read("<constant name='c' type='vector2'><input name='value' type='vector2' value='10, 20' "
         "unittype='distance' unit='centimeter'/></constant>"
         "<rotate2d name='r' type='vector2'><input name='amount' type='float' value='2' "
         "unit='radian'/></rotate2d>"
         "<constant name='odd' type='float'><input name='value' type='float' value='3' "
         "unit='cubit'/></constant>"
         "<thin_film_bsdf name='film' type='BSDF'><input name='thickness' type='float' value='0.5' "
         "unit='micron'/></thin_film_bsdf>"
         "<open_pbr_surface name='o' type='surfaceshader'><input name='thin_film_thickness' "
         "type='float' value='500' unit='nanometer'/></open_pbr_surface>");
    EXPECT_NEAR(0.1, input("c", "value").value->numbers[0], 1e-12);
    EXPECT_NEAR(0.2, input("c", "value").value->numbers[1], 1e-12);
    EXPECT_NEAR(114.59155902616465, input("r", "amount").value->numbers[0], 1e-9);
    EXPECT_EQ(3, input("odd", "value").value->numbers[0]);
    EXPECT_NEAR(500, input("film", "thickness").value->numbers[0], 1e-9);
    EXPECT_NEAR(0.5, input("o", "thin_film_thickness").value->numbers[0], 1e-12);
}

TEST_F(Reader, interface_inputs_with_a_unit_are_in_metres)
{
    read("<nodegraph name='g'><input name='size' type='float' value='2' unit='inch' "
         "unittype='distance'/><constant name='c' type='float'><input name='value' type='float' "
         "interfacename='size'/></constant><output name='out' type='float' nodename='c'/>"
         "</nodegraph>");
    EXPECT_NEAR(0.0508, input("g/c", "value").parameter->value.numbers[0], 1e-12);
}

TEST_F(Reader, gives_values_with_their_types)
{
    read(R"(<standard_surface name="s" type="surfaceshader">
              <input name="base" type="float" value="0.8"/>
              <input name="base_color" type="color3" value="0.1, 0.2, 0.3"/>
            </standard_surface>)");
    EXPECT_EQ(Value_type::surfaceshader, node("s").type);
    EXPECT_EQ(2u, node("s").inputs.size());
    EXPECT_DOUBLE_EQ(0.8, input("s", "base").value->numbers[0]);
    EXPECT_DOUBLE_EQ(0.3, input("s", "base_color").value->numbers[2]);
}

TEST_F(Reader, remembers_where_a_node_stands)
{
    read("<!-- a comment -->\n<constant name=\"c\" type=\"float\"/>");
    EXPECT_EQ(m_folder.file("d.mtlx"), node("c").place.file);
    EXPECT_EQ(3, node("c").place.line);
}

TEST_F(Reader, connects_nodes_by_name_in_any_order)
{
    read(R"(<absval name="a" type="float"><input name="in" type="float" nodename="c"/></absval>
            <constant name="c" type="float"/>)");
    EXPECT_EQ(&node("c"), input("a", "in").source);
    EXPECT_FALSE(input("a", "in").value);
}

TEST_F(Reader, follows_outputs_of_node_graphs)
{
    read(R"(<nodegraph name="g">
              <constant name="c" type="color3"/>
              <output name="one" type="color3" nodename="c"/>
            </nodegraph>
            <standard_surface name="s" type="surfaceshader">
              <input name="base_color" type="color3" nodegraph="g" output="one"/>
              <input name="coat_color" type="color3" nodegraph="g"/>
            </standard_surface>)");
    EXPECT_EQ("g", node("g/c").scope);
    EXPECT_EQ(&node("g/c"), input("s", "base_color").source);
    EXPECT_EQ(&node("g/c"), input("s", "coat_color").source) << "the only output needs no name";
}

TEST_F(Reader, shares_a_parameter_among_the_inputs_that_name_it)
{
    read(R"(<nodegraph name="g">
              <input name="scale" type="float" value="2" uiname="Scale" uifolder="A/B"
                     uimin="0" uimax="9" doc="How large"/>
              <absval name="a" type="float">
                <input name="in" type="float" interfacename="scale"/>
              </absval>
              <sin name="b" type="float"><input name="in" type="float" interfacename="scale"/></sin>
              <output name="out" type="float" nodename="a"/>
            </nodegraph>)");
    const Parameter* parameter = input("g/a", "in").parameter;
    ASSERT_TRUE(parameter);
    EXPECT_EQ(parameter, input("g/b", "in").parameter);
    EXPECT_EQ("scale", parameter->name);
    EXPECT_EQ("g", parameter->owner);
    EXPECT_DOUBLE_EQ(2.0, parameter->value.numbers[0]);
    EXPECT_EQ("Scale", parameter->ui.name);
    EXPECT_EQ("A/B", parameter->ui.folder);
    EXPECT_EQ("How large", parameter->ui.description);
    EXPECT_DOUBLE_EQ(9.0, parameter->ui.max->numbers[0]);
    EXPECT_FALSE(parameter->literal);
}

TEST_F(Reader, marks_parameters_that_steer_loops_or_choose_forms_as_literal)
{
    read(R"(<nodegraph name="g">
              <input name="detail" type="integer" value="3"/>
              <input name="mode" type="string" value="periodic"/>
              <input name="choice" type="integer" value="1" enum="none, some"/>
              <input name="number" type="integer" value="1"/>
              <fractal3d name="n" type="float">
                <input name="octaves" type="integer" interfacename="detail"/>
              </fractal3d>
              <image name="i" type="float">
                <input name="file" type="filename" value="x.png"/>
                <input name="uaddressmode" type="string" interfacename="mode"/>
              </image>
              <switch name="s" type="float">
                <input name="which" type="integer" interfacename="choice"/>
              </switch>
              <switch name="t" type="float">
                <input name="which" type="integer" interfacename="number"/>
              </switch>
              <output name="out" type="float" nodename="n"/>
            </nodegraph>)");
    EXPECT_TRUE(input("g/n", "octaves").parameter->literal);
    EXPECT_TRUE(input("g/i", "uaddressmode").parameter->literal);
    EXPECT_TRUE(input("g/s", "which").parameter->literal);
    EXPECT_FALSE(input("g/t", "which").parameter->literal);
}

TEST_F(Reader, connects_inputs_of_node_graphs_to_what_feeds_the_graph)
{
    read(R"(<constant name="c" type="float"/>
            <nodegraph name="g">
              <input name="x" type="float" nodename="c"/>
              <absval name="a" type="float">
                <input name="in" type="float" interfacename="x"/>
              </absval>
              <output name="out" type="float" nodename="a"/>
            </nodegraph>)");
    EXPECT_EQ(&node("c"), input("g/a", "in").source);
    EXPECT_TRUE(m_graph->parameters.empty());
}

TEST_F(Reader, reads_geometry_where_a_graph_input_defaults_to_it)
{
    read(R"(<nodegraph name="g">
              <input name="uv" type="vector2" defaultgeomprop="UV0"/>
              <image name="i" type="color3">
                <input name="file" type="filename" value="x.png"/>
                <input name="texcoord" type="vector2" interfacename="uv"/>
              </image>
              <output name="out" type="color3" nodename="i"/>
            </nodegraph>)");
    EXPECT_EQ("texcoord", input("g/i", "texcoord").source->category);
}

TEST_F(Reader, inlines_each_use_of_a_custom_node)
{
    read(std::string(custom_node) + R"(
            <constant name="c" type="color3"/>
            <tint name="first" type="color3"><input name="in" type="color3" nodename="c"/></tint>
            <tint name="second" type="color3">
              <input name="in" type="color3" nodename="first"/>
              <input name="amount" type="float" value="0.25"/>
            </tint>
            <standard_surface name="s" type="surfaceshader">
              <input name="base_color" type="color3" nodename="second"/>
            </standard_surface>)");
    EXPECT_EQ(&node("second/product"), input("s", "base_color").source);
    EXPECT_EQ(&node("first/product"), input("second/product", "in1").source);
    EXPECT_EQ(&node("c"), input("first/product", "in1").source);
    EXPECT_DOUBLE_EQ(0.5, input("first/product", "in2").parameter->value.numbers[0]);
    EXPECT_DOUBLE_EQ(0.25, input("second/product", "in2").parameter->value.numbers[0]);
    EXPECT_EQ("second", input("second/product", "in2").parameter->owner);
}

TEST_F(Reader, inlines_custom_nodes_inside_custom_nodes)
{
    read(std::string(custom_node) + R"(
            <nodedef name="ND_twice" node="twice">
              <input name="in" type="color3" value="0, 0, 0"/><output name="out" type="color3"/>
            </nodedef>
            <implementation name="IM_twice" nodedef="ND_twice" nodegraph="G"/>
            <nodegraph name="G">
              <tint name="t" type="color3">
                <input name="in" type="color3" interfacename="in"/>
              </tint>
              <output name="out" type="color3" nodename="t"/>
            </nodegraph>
            <twice name="w" type="color3">
              <input name="in" type="color3" value="0.5, 0.6, 0.7"/>
            </twice>)");
    const Parameter* parameter = input("w/t/product", "in1").parameter;
    ASSERT_TRUE(parameter);
    EXPECT_EQ("w", parameter->owner);
    EXPECT_DOUBLE_EQ(0.6, parameter->value.numbers[1]);
    EXPECT_FALSE(m_graph->find_node("G/t/product"))
        << "the implementation is not a part of the graph";
}

TEST_F(Reader, prefers_the_node_library_to_definitions_of_the_same_form)
{
    read(R"(<nodedef name="ND_absval" node="absval">
              <input name="in" type="float" value="0"/><output name="out" type="float"/>
            </nodedef>
            <nodegraph name="NG_absval" nodedef="ND_absval">
              <closure name="not_in_the_library" type="BSDF"/>
              <output name="out" type="float" nodename="not_in_the_library"/>
            </nodegraph>
            <absval name="a" type="float"><input name="in" type="float" value="-1"/></absval>)");
    EXPECT_EQ("absval", node("a").category);
}

TEST_F(Reader, does_not_show_the_graph_of_a_custom_node_that_nobody_uses)
{
    read(custom_node);
    EXPECT_TRUE(m_graph->nodes.empty());
}

TEST_F(Reader, names_the_output_of_a_node_with_several)
{
    read(R"(<constant name="c" type="color3"/>
            <separate3 name="parts" type="multioutput">
              <input name="in" type="color3" nodename="c"/>
            </separate3>
            <absval name="a" type="float">
              <input name="in" type="float" nodename="parts" output="outg"/>
            </absval>)");
    EXPECT_EQ("outg", input("a", "in").source_output);
}

TEST_F(Reader, keeps_channels_of_older_documents)
{
    read(R"(<constant name="c" type="color3"/>
            <absval name="a" type="float">
              <input name="in" type="float" nodename="c" channels="g"/>
            </absval>)");
    EXPECT_EQ("g", input("a", "in").channels);
}

TEST_F(Reader, joins_channels_along_the_way_of_a_connection)
{
    read(R"(<nodegraph name="g">
              <constant name="c" type="color4"/>
              <output name="out" type="vector3" nodename="c" channels="abg"/>
            </nodegraph>
            <absval name="a" type="float">
              <input name="in" type="float" nodegraph="g" output="out" channels="x"/>
            </absval>)");
    EXPECT_EQ("a", input("a", "in").channels);
}

TEST_F(Reader, takes_older_names_of_inputs)
{
    read(R"(<atan2 name="a" type="float">
              <parameter name="in1" type="float" value="1"/>
              <parameter name="in2" type="float" value="2"/>
            </atan2>
            <normalmap name="n" type="vector3">
              <input name="space" type="string" value="tangent"/>
            </normalmap>)");
    EXPECT_DOUBLE_EQ(1.0, input("a", "iny").value->numbers[0]);
    EXPECT_DOUBLE_EQ(2.0, input("a", "inx").value->numbers[0]);
    EXPECT_TRUE(node("n").inputs.empty());
}

TEST_F(Reader, takes_nodes_of_the_general_form)
{
    read(R"(<node name="c" nodetype="constant" type="float"/>)");
    EXPECT_EQ("constant", node("c").category);
}

TEST_F(Reader, leaves_out_inputs_without_a_value)
{
    read(R"(<standard_surface name="s" type="surfaceshader">
              <input name="base_color" type="color3"/>
            </standard_surface>
            <surfacematerial name="m" type="material">
              <input name="surfaceshader" type="surfaceshader" nodename="s"/>
              <input name="displacementshader" type="displacementshader" value=""/>
            </surfacematerial>)");
    EXPECT_TRUE(node("s").inputs.empty());
    EXPECT_EQ(1u, node("m").inputs.size());
}

TEST_F(Reader, puts_the_nearest_file_prefix_before_file_names)
{
    read(R"(<nodegraph name="g" fileprefix="near/">
              <image name="i" type="color3" fileprefix="own/">
                <input name="file" type="filename" value="x.png"/>
              </image>
              <image name="j" type="color3">
                <input name="file" type="filename" value="x.png"/>
              </image>
              <output name="out" type="color3" nodename="i"/>
            </nodegraph>
            <image name="k" type="color3">
              <input name="file" type="filename" value="x.png"/>
            </image>)");
    EXPECT_EQ("own/x.png", input("g/i", "file").value->text);
    EXPECT_EQ("near/x.png", input("g/j", "file").value->text);
    EXPECT_EQ("x.png", input("k", "file").value->text);
}

TEST_F(Reader, gives_colors_and_files_the_nearest_color_space)
{
    read(R"(<constant name="a" type="color3"><input name="value" type="color3" value="1,1,1"
                      colorspace="srgb_texture"/></constant>
            <constant name="b" type="color3">
              <input name="value" type="color3" value="1,1,1"/>
            </constant>
            <constant name="c" type="float"><input name="value" type="float" value="1"/></constant>
            <constant name="d" type="color3"><input name="value" type="color3" value="1,1,1"
                      colorspace="none"/></constant>)");
    EXPECT_EQ("srgb_texture", input("a", "value").color_space);
    EXPECT_EQ("lin_rec709", input("b", "value").color_space);
    EXPECT_EQ("", input("c", "value").color_space);
    EXPECT_EQ("", input("d", "value").color_space);
    EXPECT_EQ("lin_rec709", m_graph->color_space);
}

TEST_F(Reader, passes_over_looks_assignments_backdrops_and_other_name_spaces)
{
    read(R"(<look name="l"><materialassign name="a" material="m"/></look>
            <backdrop name="b"/><geominfo name="g"><geomprop name="p"/></geominfo>
            <propertyset name="p"/><collection name="c"/><variantset name="v"/>
            <tool:note xmlns:tool="urn:tool" name="n"><unknown/></tool:note>)");
    EXPECT_TRUE(m_graph->nodes.empty());
}

TEST_F(Reader, includes_files_beside_the_document_and_in_the_search_path)
{
    const Temporary_folder library;
    library.write("far.mtlx", document(R"(<constant name="far" type="float"/>)"));
    m_folder.write("sub/near.mtlx", document(R"(
        <xi:include href="nearer.mtlx"/>
        <image name="near" type="color3">
          <input name="file" type="filename" value="n.png"/>
        </image>)"));
    m_folder.write("sub/nearer.mtlx", document(R"(<constant name="nearer" type="float"/>)"));
    const std::string main = m_folder.write("main.mtlx", document(R"(
        <xi:include href="sub/near.mtlx"/><xi:include href="far.mtlx"/>)"));
    read_file(main, {library.path()});
    EXPECT_TRUE(m_graph->find_node("far"));
    EXPECT_TRUE(m_graph->find_node("nearer"));
    EXPECT_EQ("sub/n.png", input("near", "file").value->text) << "relative to the opened document";
}

TEST_F(Reader, reads_files_that_include_each_other_once)
{
    m_folder.write("a.mtlx",
                   document(R"(<xi:include href="b.mtlx"/><constant name="a" type="float"/>)"));
    m_folder.write("b.mtlx",
                   document(R"(<xi:include href="a.mtlx"/><constant name="b" type="float"/>)"));
    read_file(m_folder.file("a.mtlx"));
    EXPECT_EQ(2u, m_graph->nodes.size());
}

TEST_F(Reader, leaves_out_what_an_included_file_holds_that_is_missing)
{
    const std::string main = m_folder.write("main.mtlx", document(R"(
        <xi:include href="none.mtlx"/>
        <constant name="own" type="float"/>)"));
    read_file(main);
    EXPECT_TRUE(m_graph->find_node("own"));
    ASSERT_EQ(1u, m_graph->missing_files.size());
    EXPECT_EQ("the included file 'none.mtlx' is missing", m_graph->missing_files[0].text);
    EXPECT_EQ(3, m_graph->missing_files[0].place.line);
}

TEST_F(Reader, passes_the_file_prefix_of_the_including_document_on)
{
    m_folder.write("part.mtlx",
                   "<materialx version='1.39'><image name='i' type='color3'>"
                   "<input name='file' type='filename' value='x.png'/></image></materialx>");
    const std::string main = m_folder.write(
        "main.mtlx", "<materialx version='1.38' fileprefix='tex/'><xi:include href='part.mtlx'/>"
                     "</materialx>");
    read_file(main);
    EXPECT_EQ("tex/x.png", input("i", "file").value->text);
}

TEST_F(Reader, knows_the_document_and_its_folder)
{
    read("");
    EXPECT_EQ("d.mtlx", m_graph->document);
    EXPECT_EQ(m_folder.path(), m_graph->folder);
}

TEST_F(Reader, opens_every_document_of_the_shared_folder)
{
    const char* configured = std::getenv("TOVIRAEXPORT_SHARED");
    const std::filesystem::path shared =
        configured ? std::filesystem::path(configured)
                   : std::filesystem::path(SOURCE_FOLDER).parent_path() / "shared";
    if (!std::filesystem::is_directory(shared / "materialx"))
        GTEST_SKIP() << "there is no folder " << shared / "materialx";
    for (const auto& entry : std::filesystem::directory_iterator(shared / "materialx")) {
        const std::string file = entry.path().string();
        if (entry.path().extension() != ".mtlx")
            continue;
        const Read_result result = read_materialx(file, {});
        const bool is_complete = file.find("look") == std::string::npos;
        ASSERT_TRUE(result.graph) << file << ": " << result.error();
        EXPECT_EQ(is_complete, result.graph->missing_files.empty()) << file;
    }
}

TEST_F(Reader, opens_every_sample)
{
    for (const auto& entry : std::filesystem::directory_iterator(SOURCE_FOLDER "/samples")) {
        if (entry.path().extension() != ".mtlx")
            continue;
        const Read_result result = read_materialx(entry.path().string(), {});
        EXPECT_TRUE(result.graph) << entry.path() << ": " << result.error();
    }
}
