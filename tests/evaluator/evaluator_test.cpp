// What modules compute: worked out by hand, and for every node and every helper function against
// the generated C++ and against GLSL drawn in floats.
#include "reference_host/library/library_scope.h"
#include "reference_host/shading/module_text.h"
#include "tests/evaluator/probe_texts.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

using namespace probing;

namespace
{

// Relative to the value, or absolute where it is below one. A float has seven digits: noise loses
// two of them in sums of large hashes, powers and rotations by large angles lose one. Mesa
// approximates the arcsine by a short polynomial. The hash of hexagons uses the digits that floats
// round off, so that little of it agrees.
constexpr double tolerance = 1e-4;
constexpr double arcsine_tolerance = 1e-3;
constexpr double cut_off_tolerance = 1e-2;

double tolerance_of(const Probe& probe, bool is_glsl)
{
    const auto& functions = probe.module.functions;
    if (std::any_of(functions.begin(), functions.end(),
                    [](const Function& function) { return function.name == "hex_random"; }))
        return cut_off_tolerance;
    bool takes_arcsine = false;
    for (const Function& function : functions)
        visit(function.body, [&](const Expression& e) {
            takes_arcsine =
                takes_arcsine ||
                (e.op == Op::builtin && (e.builtin == Builtin::asin || e.builtin == Builtin::acos));
        });
    return takes_arcsine && is_glsl ? arcsine_tolerance : tolerance;
}

// Between probes there are no derivatives.
bool takes_derivatives(const Probe& probe)
{
    bool takes = false;
    for (const Function& function : probe.module.functions)
        visit(function.body, [&](const Expression& e) {
            takes = takes || (e.op == Op::builtin &&
                              (e.builtin == Builtin::ddx || e.builtin == Builtin::ddy));
        });
    return takes;
}

std::vector<Probe> without_derivatives(std::vector<Probe> probes)
{
    probes.erase(std::remove_if(probes.begin(), probes.end(), takes_derivatives), probes.end());
    return probes;
}

std::vector<Probe> probes_of_nodes()
{
    std::vector<std::string> refused;
    std::vector<Probe> probes = node_probes(refused);
    EXPECT_THAT(refused, testing::ElementsAre("blur"));
    return without_derivatives(std::move(probes));
}

// NaN stands for what the languages leave undefined.
void compare(const std::vector<Probe>& probes, const Results& results, bool is_glsl)
{
    ASSERT_EQ(results.size(), probes.size());
    for (std::size_t i = 0; i < probes.size(); ++i) {
        const double allowed = tolerance_of(probes[i], is_glsl);
        int compared = 0;
        for (std::size_t set = 0; set < set_count; ++set) {
            const Shading_value expected = truth(probes[i], set);
            for (std::size_t k = 0; k < 4; ++k) {
                const double number = expected.numbers[k];
                if (!std::isfinite(number))
                    continue;
                ++compared;
                EXPECT_NEAR(results[i][set][k], number, allowed * std::max(1.0, std::abs(number)))
                    << probes[i].what << ", set " << set << ", component " << k;
            }
        }
        EXPECT_GE(compared, 8) << probes[i].what << " is left open in most sets";
    }
}

// The module of a function of these statements, which may call the library.
Module module_of(const std::string& statements)
{
    Library_scope scope;
    const std::string text = "float4 shown(State state)\n{\n" + statements + "\n}\n";
    Function function = parse_function({text, {"text", 1}}, scope);
    Module module;
    for (const Library_instance* used : scope.used())
        add_with_callees(*used, module.functions);
    module.functions.push_back(std::move(function));
    return module;
}

std::vector<double> numbers_of(const std::string& statements, const Evaluation_inputs& inputs = {})
{
    const Shading_value value = evaluate(module_of(statements), inputs);
    return {value.numbers.begin(), value.numbers.begin() + 4};
}

} // namespace

TEST(Evaluator, agrees_with_cpp_on_every_node)
{
    const std::vector<Probe> probes = probes_of_nodes();
    compare(probes, cpp_results(probes), false);
}

TEST(Evaluator, agrees_with_glsl_on_every_node)
{
    const std::vector<Probe> probes = probes_of_nodes();
    compare(probes, glsl_results(probes), true);
}

TEST(Evaluator, agrees_with_cpp_on_every_library_function)
{
    const std::vector<Probe> probes = without_derivatives(library_probes());
    compare(probes, cpp_results(probes), false);
}

TEST(Evaluator, agrees_with_glsl_on_every_library_function)
{
    const std::vector<Probe> probes = without_derivatives(library_probes());
    compare(probes, glsl_results(probes), true);
}

TEST(Evaluator, agrees_with_cpp_and_glsl_on_every_material)
{
    const std::vector<Probe> probes = without_derivatives(material_probes());
    ASSERT_GE(probes.size(), 9U); // those of the samples
    compare(probes, cpp_results(probes), false);
    compare(probes, glsl_results(probes), true);
}

TEST(Evaluator, agrees_with_glsl_on_derivatives)
{
    Evaluation_inputs inputs;
    inputs.variables["has_derivatives"] = {Base_type::boolean, {1}};
    inputs.neighbours = {inputs.state, inputs.state};
    const Point_function place = [](double x, double y) {
        return Shading_value(Base_type::float2, {0.25 + x * 0.0625, 0.5 + y * 0.125 + x * 0.03125});
    };
    const char* const texts[] = {
        "return float4(height_to_normal(sin(state.texture_coordinate0.x * 3.0), 20.0, "
        "state.texture_coordinate0), 1.0);",
        "return float4(anti_aliased_step(0.53, state.texture_coordinate0.y), ddx(state."
        "texture_coordinate0), ddy(state.texture_coordinate0.x));",
    };
    for (const char* text : texts) {
        const Module module = module_of(text);
        const Four drawn = glsl_result_of_quad(module, place);
        inputs.state.fields["texture_coordinate0"] = place(0, 0);
        inputs.neighbours->right.fields["texture_coordinate0"] = place(1, 0);
        inputs.neighbours->above.fields["texture_coordinate0"] = place(0, 1);
        const Shading_value expected = evaluate(module, inputs);
        for (std::size_t k = 0; k < 4; ++k)
            EXPECT_NEAR(drawn[k], expected.numbers[k], tolerance) << text << " " << k;
    }
}

TEST(Evaluator, computes_what_is_worked_out_by_hand)
{
    using Numbers = std::vector<double>;
    Evaluation_inputs inputs;
    inputs.state.fields["normal"] = {Base_type::float3, {0, 0, 2}};
    inputs.look_up = [](const std::string& texture, const Shading_value& place) {
        return Shading_value(Base_type::float4,
                             {place.numbers[0] + (texture == "wood" ? 1 : 0), 5, 6, 7});
    };
    EXPECT_EQ(numbers_of("return float4(1.0 + 2.0 * 3.0, 7.0 - 1.0, 0.5, float(7 / 2));"),
              (Numbers{7, 6, 0.5, 3}));
    EXPECT_EQ(numbers_of("float3 v = state.normal.zxy; v.y += 3.0; v.xz *= 2.0; "
                         "return float4(v, v.y > 2.0 && !(v.x < v.z) ? 1.0 : 0.0);",
                         inputs),
              (Numbers{4, 3, 0, 1}));
    EXPECT_EQ(numbers_of("float sum = 0.0; for (int i = 0; i < 4; i++) { if (i == 3) return "
                         "float4(sum); sum += float(i); } return float4(9.0);"),
              (Numbers{3, 3, 3, 3}));
    // Row vectors stand before matrices of documents, column vectors behind those of the host.
    inputs.variables["world"] = {Base_type::matrix4,
                                 {1, 2, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 0, 0, 1}};
    EXPECT_EQ(numbers_of("return host_transform(world, float4(1.0, 10.0, 0.0, 1.0));", inputs),
              (Numbers{21, 10, 0, 6}));
    EXPECT_EQ(numbers_of("return row_transform(float4(1.0, 10.0, 0.0, 1.0), world);", inputs),
              (Numbers{6, 12, 0, 1}));
    EXPECT_EQ(numbers_of("return float4(world[0].y, float3x3(world)[1].y, "
                         "transpose(world)[0].w, determinant4(world));",
                         inputs),
              (Numbers{2, 1, 5, 1}));
    EXPECT_EQ(numbers_of("return float4(reflect(float3(1.0, -1.0, 0.0), float3(0.0, 1.0, 0.0)), "
                         "modulo(-0.25, 1.0));"),
              (Numbers{1, 1, 0, 0.75}));
    const Module textured = read_module({"shader pattern a;\ntexture sampler2D wood;\n"
                                         "texture samplerCUBE sky;\nfloat4 a()\n{\n"
                                         "    return texture_2d(wood, float2(2.0)) + "
                                         "texture_cube(sky, float3(3.0));\n}\n",
                                         {"text", 1}});
    EXPECT_EQ(evaluate(textured, inputs).numbers[0], 6);
}

TEST(Evaluator, says_what_languages_leave_open)
{
    EXPECT_TRUE(std::isnan(numbers_of("return float4(pow(state.position.x - 0.5, 2.0));")[0]));
    EXPECT_TRUE(std::isnan(numbers_of("return float4(normalize(state.position), 1.0);")[0]));
    EXPECT_TRUE(
        std::isnan(numbers_of("return float4(smoothstep(1.0, 0.0, state.position.x));")[0]));
}

TEST(Evaluator, says_what_has_no_value)
{
    const struct {
        const char *statements, *error;
    } rows[] = {
        {"return float4(time);", "\"time\" has no value"},
        {"return float4(float(lights.length));", "\"lights\" has no value"},
        {"return texture_2d(state, float2(0.0));", "there are no textures"},
    };
    for (const auto& row : rows)
        try {
            numbers_of(row.statements);
            ADD_FAILURE() << row.statements;
        } catch (const Evaluation_error& error) {
            EXPECT_STREQ(error.what(), row.error);
        }
}
