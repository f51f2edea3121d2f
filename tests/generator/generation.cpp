#include "tests/generator/generation.h"

#include "reference_host/document/materialx_reader.h"
#include "tests/support/shared_folder.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

namespace generation
{
namespace
{

constexpr const char* added_elements = R"(
<directional_light name="added_sun" type="lightshader"/>
<point_light name="added_bulb" type="lightshader"/>
<environment_map name="added_sky" type="color3">
  <input name="file" type="filename" value="sky.dds"/>
</environment_map>
<fog name="added_fog" type="volumeshader"/>
)";

std::vector<std::string> lines_of(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// The lines of `text` that occur more often in it than in `other`.
std::vector<std::string> surplus(const std::string& text, const std::string& other, char sign)
{
    std::map<std::string, int> counts;
    for (const std::string& line : lines_of(other))
        ++counts[line];
    std::vector<std::string> lines;
    for (const std::string& line : lines_of(text))
        if (--counts[line] < 0)
            lines.push_back(sign + line);
    return lines;
}

Result finish(std::unique_ptr<reference_host::Compiled_shader> compiled, const std::string& target,
              const Option_set& options, Result result)
{
    if (compiled)
        result.texts = compiled->generate(target, options, result.diagnostics);
    return result;
}

} // namespace

std::unique_ptr<Shader_graph> graph_of(const std::string& elements)
{
    const QZ::TEST::Temporary_folder folder;
    const std::string file =
        folder.write("scene.mtlx", "<?xml version=\"1.0\"?>\n<materialx version=\"1.39\">\n" +
                                       elements + "</materialx>\n");
    reference_host::Read_result read = reference_host::read_materialx(file, {});
    EXPECT_TRUE(read.graph) << read.error();
    return read.graph ? std::move(read.graph) : std::make_unique<Shader_graph>();
}

std::vector<Test_document> all_documents()
{
    std::map<std::string, std::string> texts;
    for (const auto& entry : std::filesystem::directory_iterator(SAMPLES))
        if (entry.path().extension() == ".mtlx") {
            std::ifstream stream(entry.path(), std::ios::binary);
            texts[entry.path().filename()].assign(std::istreambuf_iterator<char>(stream), {});
        }
    for (const std::string& file : QZ::TEST::shared_files("materialx", ".mtlx"))
        texts[file] = QZ::TEST::read_shared_file(file);
    const QZ::TEST::Temporary_folder folder;
    std::vector<Test_document> documents;
    for (auto& [name, text] : texts) {
        text.insert(text.rfind("</materialx>"), added_elements);
        auto read = reference_host::read_materialx(folder.write("document.mtlx", text), {});
        if (read.graph) // else it includes others
            documents.push_back({name, std::move(read.graph)});
    }
    return documents;
}

Option_set lit_by_all(const std::string& material)
{
    return {{"shader_name", material},
            {"lights", "added_sun, added_bulb"},
            {"environment", "added_sky"},
            {"volume", "added_fog"}};
}

std::vector<std::string> exported_nodes(const Shader_graph& graph)
{
    std::vector<std::string> names;
    for (const auto& node : graph.nodes)
        if (node->category == "surfacematerial" ||
            node->type == reference_host::Value_type::surfaceshader)
            names.push_back(full_name(*node));
    return names;
}

std::string painted_scene()
{
    return R"(
<nodegraph name="pattern">
  <input name="tint" type="color3" value="0.9, 0.8, 0.7" uiname="Tint" uifolder="Look" doc="Dyes"/>
  <input name="octaves" type="integer" value="2"/>
  <tiledimage name="wood" type="color3">
    <input name="file" type="filename" value="wood.png" colorspace="srgb_texture"/>
  </tiledimage>
  <fractal3d name="grain" type="float">
    <input name="octaves" type="integer" interfacename="octaves"/>
  </fractal3d>
  <multiply name="dyed" type="color3">
    <input name="in1" type="color3" nodename="wood"/>
    <input name="in2" type="color3" interfacename="tint"/>
  </multiply>
  <multiply name="grained" type="color3">
    <input name="in1" type="color3" nodename="dyed"/>
    <input name="in2" type="float" nodename="grain"/>
  </multiply>
  <normalmap name="bumps" type="vector3">
    <input name="in" type="vector3" value="0.6, 0.5, 1"/>
  </normalmap>
  <output name="out" type="color3" nodename="grained"/>
  <output name="bumps_out" type="vector3" nodename="bumps"/>
</nodegraph>
<standard_surface name="paint_surface" type="surfaceshader">
  <input name="base_color" type="color3" nodegraph="pattern" output="out"/>
  <input name="specular_roughness" type="float" value="0.25"/>
  <input name="coat" type="float" value="0.5"/>
  <input name="opacity" type="color3" value="0.5, 0.5, 0.5"/>
  <input name="normal" type="vector3" nodegraph="pattern" output="bumps_out"/>
</standard_surface>
<surfacematerial name="paint" type="material">
  <input name="surfaceshader" type="surfaceshader" nodename="paint_surface"/>
</surfacematerial>
<directional_light name="sun" type="lightshader">
  <input name="direction" type="vector3" value="0, -1, -1"/>
</directional_light>
<point_light name="bulb" type="lightshader">
  <input name="position" type="vector3" value="1, 2, 3"/>
</point_light>
<spot_light name="spot" type="lightshader"/>
<environment_map name="sky" type="color3">
  <input name="file" type="filename" value="sky.dds"/>
</environment_map>
<fog name="haze" type="volumeshader"/>
)";
}

std::string Result::messages() const
{
    std::string text;
    for (const reference_host::Diagnostic& diagnostic : diagnostics)
        text += diagnostic.text + "\n";
    return text;
}

Result generate(const Shader_graph& graph, const std::string& target, const Option_set& group,
                const Option_set& options)
{
    Option_set named = group;
    named.emplace("shader_name", "paint");
    Result result;
    auto compiled = reference_host::compile_group(graph, named, {}, result.diagnostics);
    return finish(std::move(compiled), target, options, std::move(result));
}

Result generate_node(const Shader_graph& graph, const std::string& node, const std::string& target,
                     const Option_set& options)
{
    Result result;
    const reference_host::Node* found = graph.find_node(node);
    EXPECT_TRUE(found) << node;
    if (!found)
        return result;
    auto compiled = reference_host::compile_node(graph, *found, {}, result.diagnostics);
    return finish(std::move(compiled), target, options, std::move(result));
}

std::vector<std::string> difference(const std::string& before, const std::string& after)
{
    std::vector<std::string> lines = surplus(before, after, '-');
    for (const std::string& line : surplus(after, before, '+'))
        lines.push_back(line);
    return lines;
}

bool contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

} // namespace generation
