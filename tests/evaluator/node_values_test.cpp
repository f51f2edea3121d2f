// What nodes compute, in numbers that are worked out from the standard's definitions by hand: by
// the evaluator, by the generated C++ and by GLSL.
#include "tests/evaluator/probe_texts.h"
#include "tests/generator/generation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

using namespace probing;

namespace
{

struct Node_value {
    const char* category;      // "NODE" or "NODE.OUTPUT"
    const char *type, *inputs; // "TYPE NAME VALUE; ..."
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
    // Around the middle, from below through the left; away from the middle.
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
    // Noise by the standard's hash: gradients at the corners of the cell, one of 8 or of 12, mixed
    // by the curve 6 t^5 - 15 t^4 + 10 t^3. The channels of vectors take 8 bits of the hash each.
    {"cellnoise2d", "float", "vector2 texcoord 3.2,-5.7", 0.890524, 0.890524, 0.890524},
    {"cellnoise2d", "vector3", "vector2 texcoord 3.2,-5.7", 0.943104, 0.739976, 0.656982},
    {"cellnoise3d", "float", "vector3 position 3.2,-5.7,12.3", 0.162929, 0.162929, 0.162929},
    {"cellnoise3d", "vector3", "vector3 position 3.2,-5.7,12.3", 0.159291, 0.085753, 0.444158},
    {"noise2d", "float", "vector2 texcoord 1.3,-2.6", 0.312396, 0.312396, 0.312396},
    {"noise2d", "vector3", "vector2 texcoord 1.3,-2.6", 0.312396, 0.699420, -0.475755},
    {"noise2d", "color4", "vector2 texcoord 1.3,-2.6", 0.312396, 0.699420, -0.475755, -0.043631},
    {"noise3d", "float", "vector3 position 1.3,-2.6,4.75", -0.466842, -0.466842, -0.466842},
    {"noise3d", "color4", "vector3 position 1.3,-2.6,4.75", -0.466842, -0.092911, -0.270254,
     -0.217505},
    {"fractal2d", "vector3", "vector2 texcoord 0.3,0.6", -0.078821, 0.867307, -0.363937},
    {"fractal2d", "vector2", "vector2 texcoord 0.3,0.6", -0.078821, 0.145319, 0},
    {"fractal3d", "vector3", "vector3 position 0.3,0.6,0.75", 0.489656, -0.612098, 0.335702},
    {"fractal3d", "vector2", "vector3 position 0.3,0.6,0.75", 0.489656, 0.324243, 0},
    // The distances to the nearest of nine points, or 27; or what the cell of the nearest has.
    {"worleynoise2d", "vector3", "vector2 texcoord 1.3,-2.6", 0.139660, 0.674734, 1.292104},
    {"worleynoise2d", "float", "vector2 texcoord 1.3,-2.6; integer style 1", 0.209509, 0.209509,
     0.209509},
    {"worleynoise2d", "vector3", "vector2 texcoord 1.3,-2.6; integer style 1", 0.415510, 0.478501,
     0.835977},
    {"worleynoise3d", "vector3", "vector3 position 1.3,-2.6,4.75", 0.507874, 0.677679, 0.729728},
    // Flakes: the one with the highest random rank of those that cover the point, and its numbers.
    {"flake3d.presence", "float", "vector3 position 3.3,-1.6,2.2; float size 1", 0.738241, 0.738241,
     0.738241},
    {"flake3d.rand", "float", "vector3 position 3.3,-1.6,2.2; float size 1", 0.370728, 0.370728,
     0.370728},
    {"flake2d.presence", "float", "vector2 texcoord 0.4,7.3; float size 1", 0.701055, 0.701055,
     0.701055},
    {"flake2d.presence", "float", "vector2 texcoord 0.4,7.3; float size 1; float coverage 0.1", 0,
     0, 0},
    {"flake2d.flakenormal", "vector3",
     "vector2 texcoord 0.4,7.3; float size 1; float roughness 0.3; vector3 normal 0,0,1; vector3 "
     "tangent 1,0,0; vector3 bitangent 0,1,0",
     -0.057341, -0.034506, 0.997758},
    // Hair: (0.726 a + 0.812 a^2 + 3.7 a^20)^2, 0.265 b + 1.194 b^2 + 5.372 b^22; the square of
    // log(color) by a polynomial; -log(1 - m) times the absorption of both melanins.
    {"chiang_hair_roughness.roughness_R", "vector2", "float longitudinal 0.3; float azimuthal 0.4",
     0.084611, 0.297040, 0},
    {"chiang_hair_roughness.roughness_TRT", "vector2",
     "float longitudinal 0.3; float azimuthal 0.4", 0.338445, 0.297040, 0},
    {"chiang_hair_absorption_from_color", "vector3", "color3 color 0.5,0.25,1", 0.013569, 0.054277,
     0},
    {"deon_hair_absorption_from_melanin", "vector3",
     "float melanin_concentration 0.5; float melanin_redness 0.25", 0.250226, 0.431658, 0.894160},
    // Colours of other spaces, and surface models in the words of others.
    {"g22_rec709_to_lin_rec709", "color3", "color3 in 0.5,1,0", 0.217638, 1, 0},
    {"srgb_texture_to_lin_rec709", "color4", "color4 in 0.5,0.04,1,0.5", 0.214041, 0.003096, 1,
     0.5},
    {"standard_surface_to_UsdPreviewSurface.diffuseColor_out", "color3",
     "color3 base_color 0.5,0.4,0.2; float base 0.5; float coat 0.5; color3 coat_color 0.5,1,0",
     0.1875, 0.2, 0.05},
    {"standard_surface_to_UsdPreviewSurface.clearcoat_out", "float",
     "float coat 0.5; color3 coat_color 0.5,1,0", 0.25, 0.25, 0.25},
    {"standard_surface_to_gltf_pbr.base_color_out", "color3",
     "float transmission 1; color3 transmission_color 0.5,0.6,0.7", 0.5, 0.6, 0.7},
    {"standard_surface_to_open_pbr_surface.fuzz_roughness_out", "float",
     "float sheen_roughness 0.5", 0.757858, 0.757858, 0.757858},
    {"open_pbr_surface_to_standard_surface.thin_film_thickness_out", "float",
     "float thin_film_weight 1; float thin_film_thickness 0.4", 400, 400, 400},
    // (1 - K) / (1 - albedo K) with K = 1 - (1 - 0.053254) / 1.6^2
    {"open_pbr_surface_to_standard_surface.base_color_out", "color3",
     "color3 base_color 0.5,0.5,1; float coat_weight 1", 0.269979, 0.269979, 1},
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
        const std::string whole = row.category;
        const std::string category = whole.substr(0, whole.find('.'));
        const std::string output = whole.substr(std::min(category.size() + 1, whole.size()));
        elements += "<" + category + " name='" + named("tested", i) + "' type='" +
                    (output.empty() ? row.type : "multioutput") + "'>" +
                    input_elements(row.inputs) + "</" + category + "><dot name='" +
                    named("shown", i) + "' type='" + row.type + "'><input name='in' type='" +
                    row.type + "' nodename='" + named("tested", i) +
                    (output.empty() ? "" : "' output='" + output) + "'/></dot>\n";
    }
    return elements;
}

std::vector<Probe> probes_of_rows()
{
    const auto graph = generation::graph_of(document_elements());
    std::vector<Probe> probes;
    for (std::size_t i = 0; i < std::size(node_values); ++i) {
        Diagnostics diagnostics;
        const auto compiled =
            compile_node(*graph, *graph->find_node(named("shown", i)), {}, diagnostics);
        const auto module =
            compiled ? compiled->module_after("name", "Swrc", {{"alpha_transparency", "true"}},
                                              diagnostics)
                     : nullptr;
        const std::string what =
            std::string(node_values[i].category) + ": " + node_values[i].inputs;
        EXPECT_TRUE(module) << what;
        if (module)
            probes.push_back({what, *module, {}, false});
    }
    return probes;
}

void expect(const Four& numbers, const Node_value& row, const std::string& what)
{
    const double expected[] = {row.x, row.y, row.z, row.w};
    for (std::size_t k = 0; k < 4; ++k)
        EXPECT_NEAR(numbers[k], expected[k], 1e-4) << what << ", component " << k;
}

} // namespace

TEST(Node_values, are_those_of_the_standard)
{
    const std::vector<Probe> probes = probes_of_rows();
    ASSERT_EQ(probes.size(), std::size(node_values));
    const Results cpp = cpp_results(probes);
    const Results glsl = glsl_results(probes);
    ASSERT_EQ(glsl.size(), probes.size());
    for (std::size_t i = 0; i < probes.size(); ++i) {
        const Shading_value value = truth(probes[i], 0);
        Four numbers;
        std::copy_n(value.numbers.begin(), 4, numbers.begin());
        expect(numbers, node_values[i], probes[i].what);
        expect(cpp[i][0], node_values[i], probes[i].what + ", in C++");
        expect(glsl[i][0], node_values[i], probes[i].what + ", in GLSL");
    }
}

// ---- nodes that look around ----

namespace
{

// What the node "tested" of a document computes for a state and those beside it.
std::vector<double> value_of_node(const std::string& elements, const std::string& type,
                                  const Evaluation_inputs& inputs)
{
    const auto graph =
        generation::graph_of(elements + "<dot name='shown' type='" + type +
                             "'><input name='in' type='" + type + "' nodename='tested'/></dot>");
    Diagnostics diagnostics;
    const auto compiled = compile_node(*graph, *graph->find_node("shown"), {}, diagnostics);
    const auto module = compiled ? compiled->module_after("name", "GL", {}, diagnostics) : nullptr;
    if (!module) {
        ADD_FAILURE() << elements;
        return {0, 0, 0};
    }
    const Shading_value value = evaluate(*module, inputs);
    return {value.numbers.begin(), value.numbers.begin() + 3};
}

// Every texture shows its place, the second and the third of a node with another blue.
Shading_value place_as_color(const std::string& texture, const Shading_value& place)
{
    const double blue = texture.back() == '2' ? 1 : texture.back() == '3' ? 2 : 0;
    return {Base_type::float4, {place.numbers[0], place.numbers[1], blue, 1}};
}

void expect_near(const std::vector<double>& numbers, const std::vector<double>& expected)
{
    for (std::size_t k = 0; k < 3; ++k)
        EXPECT_NEAR(numbers[k], expected[k], 1e-5) << "component " << k;
}

} // namespace

// u = atan2(x, -z) / 2 pi + rotation / 360, v = asin(y) / pi + 1/2
TEST(Node_values, a_direction_finds_its_place_in_a_panorama)
{
    Evaluation_inputs inputs;
    inputs.look_up = place_as_color;
    const auto seen = [&](const std::string& direction, const std::string& rotation) {
        return value_of_node("<latlongimage name='tested' type='color3'><input name='file' "
                             "type='filename' value='x.png' colorspace='raw'/><input "
                             "name='viewdir' type='vector3' value='" +
                                 direction + "'/><input name='rotation' type='float' value='" +
                                 rotation + "'/></latlongimage>",
                             "color3", inputs);
    };
    expect_near(seen("0,0,-2", "0"), {0, 0.5, 0});
    expect_near(seen("1,0,0", "0"), {0.25, 0.5, 0});
    expect_near(seen("-1,0,0", "90"), {0, 0.5, 0});
    expect_near(seen("0,1,-1", "0"), {0, 0.75, 0});
}

// Along each axis an image, weighted by the normal: |n| to the power of 1 / blend, made one in sum.
TEST(Node_values, three_images_share_a_surface_by_its_normal)
{
    Evaluation_inputs inputs;
    inputs.look_up = place_as_color;
    const auto seen = [&](const std::string& normal, const std::string& blend) {
        return value_of_node("<triplanarprojection name='tested' type='color3'>"
                             "<input name='filex' type='filename' value='x.png' colorspace='raw'/>"
                             "<input name='filey' type='filename' value='y.png' colorspace='raw'/>"
                             "<input name='filez' type='filename' value='z.png' colorspace='raw'/>"
                             "<input name='position' type='vector3' value='0.1,0.2,0.3'/>"
                             "<input name='normal' type='vector3' value='" +
                                 normal + "'/><input name='blend' type='float' value='" + blend +
                                 "'/></triplanarprojection>",
                             "color3", inputs);
    };
    expect_near(seen("1,0,0", "1"), {0.2, 0.3, 0});
    expect_near(seen("0,-1,0", "1"), {0.1, 0.3, 1});
    expect_near(seen("0,0,1", "1"), {0.1, 0.2, 2});
    expect_near(seen("0.6,0,0.8", "1"), {1.0 / 7.0, 1.7 / 7.0, 8.0 / 7.0});
    expect_near(seen("0.6,0,0.8", "0.5"), {0.136, 0.236, 1.28});
}

// A height that rises by 16 where u goes from 0 to 1 slopes by 45 degrees.
TEST(Node_values, a_height_that_rises_tilts_the_normal)
{
    Evaluation_inputs inputs;
    inputs.state.fields["normal"] = {Base_type::float3, {0, 0, 1}};
    inputs.state.fields["texture_tangent"] = {Base_type::float3, {1, 0, 0}};
    inputs.state.fields["texture_binormal"] = {Base_type::float3, {0, 1, 0}};
    inputs.state.fields["texture_coordinate0"] = {Base_type::float2, {0.5, 0.5}};
    inputs.neighbours = {inputs.state, inputs.state};
    inputs.neighbours->right.fields["texture_coordinate0"] = {Base_type::float2, {0.75, 0.5}};
    inputs.neighbours->above.fields["texture_coordinate0"] = {Base_type::float2, {0.5, 0.75}};
    const auto tilted = [&](const std::string& scale) {
        return value_of_node("<ramplr name='height' type='float'><input name='valuel' "
                             "type='float' value='0'/><input name='valuer' type='float' "
                             "value='16'/></ramplr><bump name='tested' type='vector3'><input "
                             "name='height' type='float' nodename='height'/><input name='scale' "
                             "type='float' value='" +
                                 scale + "'/></bump>",
                             "vector3", inputs);
    };
    expect_near(tilted("1"), {-std::sqrt(0.5), 0, std::sqrt(0.5)});
    expect_near(tilted("0.5"), {-1 / std::sqrt(5.0), 0, 2 / std::sqrt(5.0)});
    expect_near(tilted("0"), {0, 0, 1});
}
