// What nodes compute, in numbers that are worked out from the standard's definitions by hand. The
// generated C++ is compiled and run.
#include "reference_host/system/process.h"
#include "tests/generator/generation.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace generation;

namespace
{

struct Node_value {
    const char *category, *type, *inputs; // "TYPE NAME VALUE; ..."
    double x, y, z;
    double w = 1; // the alpha of a color4
};

// A float has its value in all three.
constexpr Node_value node_values[] = {
    // 0.5 - |fract(|x|) - 0.5|
    {"trianglewave", "float", "float in 0.25", 0.25, 0.25, 0.25},
    {"trianglewave", "float", "float in -1.75", 0.25, 0.25, 0.25},
    {"trianglewave", "float", "float in 0.5", 0.5, 0.5, 0.5},
    // b / (1 - f), 1 - (1 - b) / f; nothing where they divide by zero
    {"dodge", "color3", "color3 fg 0.5,1,2; color3 bg 0.5,0.5,0.5", 1.0, 0.0, -0.5},
    {"dodge", "color3", "color3 fg 0.5,1,0; color3 bg 0.5,0.5,0.5; float mix 0.5", 0.75, 0.0, 0.5},
    {"burn", "color3", "color3 fg 0.5,0,0.25; color3 bg 0.5,0.5,0.5", 0.0, 0.0, -1.0},
    {"burn", "float", "float fg 0.5; float bg 0.75; float mix 0.5", 0.625, 0.625, 0.625},
    // The background decides: 2 f b below a half, 1 - 2 (1 - f) (1 - b) above.
    {"overlay", "color3", "color3 fg 0.75,0.75,0.25; color3 bg 0.25,0.75,0.75", 0.375, 0.875,
     0.625},
    // The first colour where the sum of row and column is odd.
    {"checkerboard", "color3",
     "vector2 texcoord 0.01,0.01; color3 color1 1,0,0; color3 color2 0,1,0", 0, 1, 0},
    {"checkerboard", "color3",
     "vector2 texcoord 0.13,0.01; color3 color1 1,0,0; color3 color2 0,1,0", 1, 0, 0},
    // The radius is that of the circle within; the sides left and right are upright.
    {"hexagon", "float", "vector2 texcoord 0.49,0; float radius 0.5", 1, 1, 1},
    {"hexagon", "float", "vector2 texcoord 0,0.57; float radius 0.5", 1, 1, 1},
    {"hexagon", "float", "vector2 texcoord 0,0.58; float radius 0.5", 0, 0, 0},
    {"hexagon", "float", "vector2 texcoord 0.51,0; float radius 0.5", 0, 0, 0},
    {"cloverleaf", "float", "vector2 texcoord 0.9,0.25; vector2 center 1,0.5; float radius 0.5", 1,
     1, 1},
    {"cloverleaf", "float", "vector2 texcoord 1.5,0.5; vector2 center 1,0.5; float radius 0.5", 0,
     0, 0},
    {"tiledcircles", "color3", "vector2 texcoord 0.5,0.5; float size 0.2", 1, 1, 1},
    {"tiledcircles", "color3", "vector2 texcoord 0.01,0.01; float size 0.2; boolean staggered true",
     1, 1, 1},
    {"tiledcircles", "color3", "vector2 texcoord 0.5,0.86; float size 0.2; boolean staggered true",
     1, 1, 1},
    {"tiledcircles", "color3", "vector2 texcoord 0.5,0.5; float size 0.2; boolean staggered true",
     0, 0, 0},
    {"tiledhexagons", "color3",
     "vector2 texcoord 0.99,0.01; float size 0.2; boolean staggered true", 1, 1, 1},
    {"tiledhexagons", "color3", "vector2 texcoord 0.5,0.3; float size 0.2; boolean staggered true",
     0, 0, 0},
    {"tiledcloverleafs", "color3",
     "vector2 texcoord 0.5,0.49; float size 0.4; boolean staggered true", 1, 1, 1},
    // A line of that half width along the diagonal of a tile two units wide.
    {"crosshatch", "color3", "vector2 texcoord 0.56,0.5; float thickness 0.1", 1, 1, 1},
    {"crosshatch", "color3", "vector2 texcoord 0.58,0.5; float thickness 0.1", 0, 0, 0},
    {"smoothstep", "float", "float in 0.25", 0.15625, 0.15625, 0.15625},
    {"smoothstep", "float", "float in 0.5; float low 1; float high 0", 1, 1, 1},
    {"smoothstep", "float", "float in -0.5; float low 1; float high 0", 0, 0, 0},
    {"smoothstep", "color3", "color3 in 0.5,0.5,1; color3 low 0,1,1; color3 high 1,0,2", 0.5, 1, 0},
    {"mincomponent", "float", "color3 in 0.3,0.2,0.4", 0.2, 0.2, 0.2},
    {"mincomponent", "float", "vector4 in 0.3,0.2,0.4,0.1", 0.1, 0.1, 0.1},
    {"maxcomponent", "float", "vector2 in 0.3,0.2", 0.3, 0.3, 0.3},
    {"maxcomponent", "float", "color4 in 0.3,0.2,0.4,0.1", 0.4, 0.4, 0.4},
    {"extract", "vector3", "matrix33 in 1,2,3,4,5,6,7,8,9; integer index 1", 4, 5, 6},
    // A body below 1667 K goes on to become redder.
    {"blackbody", "color3", "float temperature 1000", 2.867483, 0.548988, 0},
    // Around the middle, from below by way of the left; away from the middle.
    {"ramp", "color4", "vector2 texcoord 0.5,1; integer type 1; integer interpolation 0", 0.5, 0.5,
     0.5},
    {"ramp", "color4", "vector2 texcoord 1,0.5; integer type 1; integer interpolation 0", 0.75,
     0.75, 0.75},
    {"ramp", "color4", "vector2 texcoord 1,0.5; integer type 2; integer interpolation 0", 0.707,
     0.707, 0.707},
    {"convert", "color4", "float in 0.25", 0.25, 0.25, 0.25, 0.25},
    {"combine2", "color4", "color3 in1 0.5,0.5,0.5", 0.5, 0.5, 0.5, 0},
    {"combine4", "color4", "float in1 0.5", 0.5, 0, 0, 0},
    // Every octave is zero at the corners of cells, and nothing is added.
    {"unifiednoise2d", "float", "vector2 texcoord 3,5; integer type 3", 0, 0, 0},
    {"unifiednoise3d", "float", "vector3 position 3,5,7; integer type 3", 0, 0, 0},
};

std::string input_elements(const std::string& inputs)
{
    std::istringstream rest(inputs);
    std::string elements;
    for (std::string type, name, value; rest >> type >> name >> value;) {
        if (value.back() == ';')
            value.pop_back();
        elements += "<input name='" + name + "' type='" + type + "' value='" + value + "'/>";
    }
    return elements;
}

std::string named(const std::string& name, std::size_t number)
{
    return name + std::to_string(number);
}

// All nodes in one document, each behind a node that shows it.
std::string document_elements()
{
    std::string elements;
    for (std::size_t i = 0; i < std::size(node_values); ++i) {
        const Node_value& row = node_values[i];
        elements += std::string("<") + row.category + " name='" + named("tested", i) + "' type='" +
                    row.type + "'>" + input_elements(row.inputs) + "</" + row.category +
                    "><dot name='" + named("shown", i) + "' type='" + row.type +
                    "'><input name='in' type='" + row.type + "' nodename='" + named("tested", i) +
                    "'/></dot>\n";
    }
    return elements;
}

// The sources of all nodes, and a program that prints what they give, one line each.
std::string program_text()
{
    const auto graph = graph_of(document_elements());
    std::string text;
    std::string calls;
    for (std::size_t i = 0; i < std::size(node_values); ++i) {
        const Result result =
            generate_node(*graph, named("shown", i), "Swrc", {{"alpha_transparency", "true"}});
        EXPECT_FALSE(result.texts.empty()) << node_values[i].category << result.messages();
        const std::string name = named("shown", i);
        calls += "{ auto v = " + name + "_shader::" + name +
                 "(); std::printf(\"%g %g %g %g\\n\", v.x, v.y, v.z, v.w); }\n";
        text += result.text();
    }
    return text + "#include <cstdio>\nint main()\n{\n" + calls + "}\n";
}

} // namespace

TEST(Node_values, are_those_of_the_standard)
{
    const QZ::TEST::Temporary_folder folder;
    const std::string program = folder.file("values");
    const auto compiled =
        reference_host::run_program({CXX_COMPILER, "-std=c++17", "-w",
                                     folder.write("values.cpp", program_text()), "-o", program});
    ASSERT_EQ(compiled.status, 0) << compiled.output;
    std::istringstream values(reference_host::run_program({program}).output);
    for (const Node_value& row : node_values) {
        double x = -1;
        double y = -1;
        double z = -1;
        double w = -1;
        values >> x >> y >> z >> w;
        const std::string what = std::string(row.category) + ": " + row.inputs;
        EXPECT_NEAR(x, row.x, 1e-4) << what;
        EXPECT_NEAR(y, row.y, 1e-4) << what;
        EXPECT_NEAR(z, row.z, 1e-4) << what;
        EXPECT_NEAR(w, row.w, 1e-4) << what;
    }
}
