#include "reference_host/document/node_rows.h"

#include <iterator>

namespace reference_host
{
namespace
{

using namespace row_types;

constexpr Node_row rows[] = {
    {"noise2d", numbers, "T|float amplitude = 1, float pivot = 0, vector2 texcoord = texcoord",
     "T out = amplitude * T(noise_2d(texcoord)) + pivot"},
    {"noise3d", "float", "T amplitude = 1, float pivot = 0, vector3 position = position",
     "T out = amplitude * noise_3d(position) + pivot"},
    {"fractal3d", "float",
     "T amplitude = 1, integer octaves = 3 [1 8], float lacunarity = 2, float diminish = 0.5, "
     "vector3 position = position",
     "T out = amplitude * fractal_3d(position, octaves, lacunarity, diminish)"},
};

} // namespace

Node_rows procedural_rows()
{
    return {rows, std::size(rows)};
}

} // namespace reference_host
