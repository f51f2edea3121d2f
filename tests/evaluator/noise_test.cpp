// Noise where a language has no integers: other places than the standard's, but as high and as
// rough.
#include "reference_host/evaluator/evaluator.h"
#include "tests/generator/generation.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

using namespace reference_host;

namespace
{

struct Noise_node {
    const char *category, *type, *inputs;
};

constexpr Noise_node noise_nodes[] = {
    {"noise2d", "float", ""},
    {"noise3d", "float", ""},
    {"fractal3d", "float", ""},
    {"cellnoise2d", "float", ""},
    {"cellnoise3d", "float", ""},
    {"worleynoise2d", "float", ""},
    {"worleynoise3d", "float", ""},
    {"unifiednoise2d", "float", "<input name='freq' type='vector2' value='8,8'/>"},
};

struct Statistics {
    double mean = 0;
    double deviation = 0;
};

// Of the node as a target has it, over the same places for all. Mean and deviation of so many are
// right to 0.01.
Statistics statistics(const Noise_node& node, const std::string& target)
{
    const auto graph =
        generation::graph_of("<" + std::string(node.category) + " name='n' type='" + node.type +
                             "'>" + node.inputs + "</" + node.category + ">");
    Diagnostics diagnostics;
    const auto compiled = compile_node(*graph, *graph->find_node("n"), {}, diagnostics);
    const auto module = compiled->module_after("name", target, {}, diagnostics);
    std::mt19937 random(5);
    std::uniform_real_distribution<double> place(-100, 100);
    constexpr int count = 3000;
    double sum = 0;
    double squares = 0;
    for (int i = 0; i < count; ++i) {
        Evaluation_inputs inputs;
        const double x = place(random);
        const double y = place(random);
        inputs.state.fields["texture_coordinate0"] = {Base_type::float2, {x, y}};
        inputs.state.fields["object_position"] = {Base_type::float3, {x, y, place(random)}};
        const double value = evaluate(*module, inputs).numbers[0];
        sum += value;
        squares += value * value;
    }
    const double mean = sum / count;
    return {mean, std::sqrt(squares / count - mean * mean)};
}

} // namespace

TEST(Noise, has_the_same_mean_and_deviation_without_integers)
{
    for (const Noise_node& node : noise_nodes) {
        const Statistics standard = statistics(node, "GL");
        const Statistics stand_in = statistics(node, "FX");
        EXPECT_NEAR(stand_in.mean, standard.mean, 0.03) << node.category;
        EXPECT_NEAR(stand_in.deviation / standard.deviation, 1.0, 0.05) << node.category;
    }
}
