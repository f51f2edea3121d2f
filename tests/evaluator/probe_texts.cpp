#include "tests/evaluator/probe_texts.h"

#include "reference_host/render/drawing.h"
#include "reference_host/shading/shading_state.h"
#include "reference_host/system/process.h"
#include "reference_host/targets/printer.h"
#include "reference_host/targets/swrc_prelude.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <sstream>

namespace probing
{
namespace
{

// Probes share one text: parameters and entries get the probe's number, functions of the library
// are there once.
class Probe_text
{
public:
    explicit Probe_text(Language language) : m_printer(language) {}

    std::string literal(const Shading_value& value) const
    {
        return m_printer.expression(reference_host::literal(value.type, value.numbers));
    }

    // The structures, and the values of the host. Matrices of the host stand before vectors in
    // GLSL, which takes them by columns, and behind them in C++.
    std::string head() const
    {
        std::string text;
        for (const Structure& structure : shading_structures())
            text += m_printer.structure(structure);
        for (const auto& [name, value] : host_values()) {
            Shading_value turned = value;
            for (std::size_t i = 0; i < 16 && value.size() == 16; ++i)
                turned.numbers[i] = value.numbers[i % 4 * 4 + i / 4];
            text += m_printer.type(value.type) + " " + name + " = " + literal(turned) + ";\n";
        }
        return text;
    }

    std::string functions(const Probe& probe)
    {
        std::string text;
        for (const Function& function : probe.module.functions) {
            const std::string printed = m_printer.function(function);
            if (is_shared(function, probe) && m_known.insert(printed).second)
                text += printed;
        }
        return text;
    }

    // The entry and what else is of the probe alone, under names with the number.
    std::string entry(const Probe& probe, const std::string& number) const
    {
        std::string text;
        std::set<std::string> uniforms;
        for (const auto& [name, values] : probe.parameters) {
            text += m_printer.type(values[0].type) + " " + numbered(name, number) + ";\n";
            uniforms.insert(name);
        }
        for (const Module_texture& texture : probe.module.textures)
            uniforms.insert(texture.name);
        std::set<std::string> functions;
        for (Function function : probe.module.functions) {
            if (is_shared(function, probe))
                continue;
            // Variables of the library may have the names of parameters.
            const bool reads_uniforms = !function.of_library;
            replace(function.body, [&](const Expr& e) {
                const bool is_own =
                    (e->op == Op::variable && reads_uniforms && uniforms.count(e->name)) ||
                    (e->op == Op::call && functions.count(e->name));
                return is_own ? under_name(e, numbered(e->name, number)) : e;
            });
            functions.insert(function.name);
            const bool is_entry = function.name == probe.module.entry().name;
            function.name = numbered(is_entry ? "probe" : function.name, number);
            text += m_printer.function(function);
        }
        return text;
    }

    static std::string numbered(const std::string& name, const std::string& number)
    {
        return name + "_" + number;
    }

    // Gives the variable the values of the sets, where `set` is their number.
    std::string assignment(const std::string& variable, const Values& values) const
    {
        std::string text = "    " + variable + " = ";
        for (std::size_t set = 0; set + 1 < set_count; ++set)
            text += "set == " + std::to_string(set) + " ? " + literal(values[set]) + " : ";
        return text + literal(values[set_count - 1]) + ";\n";
    }

    std::string parameters(const Probe& probe, const std::string& number) const
    {
        std::string text;
        for (const auto& [name, values] : probe.parameters)
            text += assignment(numbered(name, number), values);
        return text;
    }

    std::string state() const
    {
        std::string text;
        for (const auto& [name, values] : state_fields())
            text += assignment("state." + name, values);
        return text;
    }

    static std::string call(const Probe& probe, const std::string& number)
    {
        return numbered("probe", number) +
               (probe.module.entry().parameters.empty() ? "()" : "(state)");
    }

private:
    static Expr under_name(const Expr& e, const std::string& name)
    {
        auto made = std::make_shared<Expression>(*e);
        made->name = name;
        return made;
    }

    static bool is_shared(const Function& function, const Probe& probe)
    {
        return function.of_library && !probe.is_special;
    }

    Printer m_printer;
    std::set<std::string> m_known;
};

std::string cpp_textures(const Probe& probe, const std::string& number)
{
    std::string text;
    for (const Module_texture& texture : probe.module.textures)
        text += (texture.cube ? "Sampler_cube " : "Sampler_2d ") +
                Probe_text::numbered(texture.name, number) +
                (texture.cube ? "{cube_texel_at};\n" : "{texel_at};\n");
    return text;
}

// ---- C++ --------------------------------------------------------------------

constexpr const char* cpp_texels = R"(
float4 texel_at(const void*, const float2& p)
{
    return float4(0.5f + 0.25f * std::sin(p.x), 0.5f + 0.25f * std::cos(p.y),
                  0.5f + 0.25f * std::sin(p.x + p.y), 0.75f + 0.125f * std::cos(p.x));
}
float4 cube_texel_at(const void*, const float3& p)
{
    return texel_at(nullptr, float2(p.x, p.y)) + float4(0.0f, 0.0f, 0.125f * std::sin(p.z), 0.0f);
}
)";

std::string cpp_program(const std::vector<Probe>& probes)
{
    Probe_text texts(Language::cpp);
    std::string text = "#include <cmath>\n#include <cstddef>\n#include <cstdio>\n" +
                       swrc_prelude() + cpp_texels + texts.head();
    std::string calls;
    for (std::size_t i = 0; i < probes.size(); ++i) {
        const std::string number = std::to_string(i);
        text += texts.functions(probes[i]) + cpp_textures(probes[i], number) +
                texts.entry(probes[i], number) + "float4 run" + number +
                "(int set, const State& state)\n{\n" + texts.parameters(probes[i], number) +
                "    return " + Probe_text::call(probes[i], number) + ";\n}\n";
        calls += "    run" + number + ",\n";
    }
    return text + "float4 (*const runs[])(int, const State&) = {\n" + calls +
           "};\n"
           "int main()\n{\n    State states[4];\n"
           "    for (int set = 0; set < 4; set++)\n    {\n    State& state = states[set];\n" +
           texts.state() +
           "    }\n    for (auto run : runs)\n        for (int set = 0; set < 4; set++)\n"
           "        {\n            float4 v = run(set, states[set]);\n"
           "            std::printf(\"%.9g %.9g %.9g %.9g\\n\", v.x, v.y, v.z, v.w);\n        "
           "}\n}\n";
}

// ---- GLSL -------------------------------------------------------------------

constexpr std::size_t probes_in_program = 48;

// A driver spreads out all calls, and takes its time with the large programs that come of it.
constexpr std::size_t operations_in_program = 12000;

std::size_t spread_size(const Module& module)
{
    std::map<std::string, std::size_t> sizes; // overloaded functions are of a size
    std::size_t last = 0;
    for (const Function& function : module.functions) {
        last = 0;
        visit(function.body,
              [&](const Expression& e) { last += 1 + (e.op == Op::call ? sizes[e.name] : 0); });
        sizes[function.name] = last;
    }
    return last;
}

constexpr const char* glsl_vertex = R"(#version 130
in vec4 vertex_texcoord0;
void main()
{
    gl_Position = vec4(vertex_texcoord0.xy * 2.0 - 1.0, 0.0, 1.0);
}
)";

// The program looks textures up in a formula.
constexpr const char* glsl_head = R"(#version 130
vec4 texel_at(vec2 p)
{
    return vec4(0.5 + 0.25 * sin(p.x), 0.5 + 0.25 * cos(p.y), 0.5 + 0.25 * sin(p.x + p.y),
                0.75 + 0.125 * cos(p.x));
}
vec4 texel_at(vec3 p)
{
    return texel_at(p.xy) + vec4(0.0, 0.0, 0.125 * sin(p.z), 0.0);
}
#define texture(sampler, place) texel_at(place)
#define textureGrad(sampler, place, dx, dy) texel_at(place)
)";

// Each row of the picture is a probe, each pair of its columns a set: three numbers and the fourth.
std::string glsl_program(const Probe* first, const Probe* last)
{
    Probe_text texts(Language::glsl);
    std::string text = glsl_head + texts.head();
    std::string calls;
    for (const Probe* probe = first; probe != last; ++probe) {
        const std::string number = std::to_string(probe - first);
        text += texts.functions(*probe) + texts.entry(*probe, number);
        calls += "    if (which == " + number + ")\n    {\n" + texts.parameters(*probe, number) +
                 "    result = " + Probe_text::call(*probe, number) + ";\n    }\n";
    }
    return text +
           "void main()\n{\n    int set = int(gl_FragCoord.x) / 2;\n"
           "    int which = int(gl_FragCoord.y);\n    vec4 result = vec4(0.0);\n    State "
           "state;\n" +
           texts.state() + calls +
           "    bool is_fourth = int(gl_FragCoord.x) != set * 2;\n"
           "    gl_FragColor = vec4(is_fourth ? result.www : result.xyz, 1.0);\n}\n";
}

void draw_probes(const Probe* first, const Probe* last, Results& results)
{
    Drawing drawing;
    drawing.vertex = {"probes.vert", glsl_vertex};
    drawing.fragment = {"probes.frag", glsl_program(first, last)};
    drawing.view.shape = Shape::plane;
    drawing.view.samples = 1;
    std::string error;
    const int size = static_cast<int>(probes_in_program);
    const auto picture = draw(drawing, size, error);
    ASSERT_TRUE(picture) << error;
    for (const Probe* probe = first; probe != last; ++probe) {
        auto& result = results.emplace_back();
        const int row = size - 1 - static_cast<int>(probe - first);
        for (std::size_t set = 0; set < set_count; ++set) {
            const int column = static_cast<int>(set) * 2;
            const Light_pixel& three = picture->at(column, row);
            const Light_pixel& fourth = picture->at(column + 1, row);
            result[set] = {three[0], three[1], three[2], fourth[0]};
        }
    }
}

} // namespace

Results cpp_results(const std::vector<Probe>& probes)
{
    const QZ::TEST::Temporary_folder folder;
    const std::string program = folder.file("probes");
    const std::string source = folder.write("probes.cpp", cpp_program(probes));
    const auto compiled = run_program({CXX_COMPILER, "-std=c++17", "-w", source, "-o", program});
    EXPECT_EQ(compiled.status, 0) << compiled.output.substr(0, 4000);
    std::istringstream values(run_program({program}).output);
    Results results(probes.size());
    std::string word; // "nan" and "inf", too
    for (auto& probe : results)
        for (Four& set : probe)
            for (double& number : set)
                number = values >> word ? std::stod(word) : -1.0;
    return results;
}

Results glsl_results(const std::vector<Probe>& probes)
{
    // This driver of Mesa interprets: few pixels are drawn sooner than machine code is made.
    setenv("GALLIUM_DRIVER", "softpipe", 1);
    Results results;
    const Probe* const end = probes.data() + probes.size();
    for (const Probe* first = probes.data(); first != end;) {
        const Probe* last = first;
        std::size_t size = 0;
        do
            size += spread_size((last++)->module);
        while (last != end && last - first < static_cast<std::ptrdiff_t>(probes_in_program) &&
               size + spread_size(last->module) < operations_in_program);
        draw_probes(first, last, results);
        first = last;
    }
    return results;
}

Four glsl_result_of_quad(const Module& module, const Point_function& place)
{
    setenv("GALLIUM_DRIVER", "softpipe", 1);
    Probe_text texts(Language::glsl);
    const Probe probe{"", module, {}, false};
    const auto way = [&](double x, double y) {
        const Shading_value there = place(x, y);
        const Shading_value here = place(0, 0);
        return texts.literal(
            {Base_type::float2,
             {there.numbers[0] - here.numbers[0], there.numbers[1] - here.numbers[1]}});
    };
    Drawing drawing;
    drawing.vertex = {"quad.vert", glsl_vertex};
    drawing.fragment = {
        "quad.frag",
        glsl_head + texts.head() + "bool has_derivatives = true;\n" + texts.functions(probe) +
            texts.entry(probe, "0") +
            "void main()\n{\n    State state;\n    vec2 pixel = floor(gl_FragCoord.xy);\n" +
            "    state.texture_coordinate0 = " + texts.literal(place(0, 0)) + " + pixel.x * " +
            way(1, 0) + " + pixel.y * " + way(0, 1) +
            ";\n    vec4 result = probe_0(state);\n"
            "    gl_FragColor = vec4(result.xyz, 1.0);\n}\n"};
    drawing.view.shape = Shape::plane;
    drawing.view.samples = 1;
    std::string error;
    Four shown = {};
    for (const char* channels : {"xyz", "www"}) {
        std::string& text = drawing.fragment.text;
        text.replace(text.rfind("result.") + 7, 3, channels);
        const auto picture = draw(drawing, 2, error);
        EXPECT_TRUE(picture) << error;
        if (!picture)
            return shown;
        const Light_pixel& pixel = picture->at(0, 1);
        shown = channels[0] == 'x' ? Four{pixel[0], pixel[1], pixel[2], 0}
                                   : Four{shown[0], shown[1], shown[2], pixel[0]};
    }
    return shown;
}

} // namespace probing
