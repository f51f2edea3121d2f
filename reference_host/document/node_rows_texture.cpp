#include "reference_host/document/node_rows.h"

#include <iterator>

namespace reference_host
{
namespace
{

using namespace row_types;

constexpr const char* image_inputs =
    "filename file, string layer, T default, vector2 texcoord = texcoord, "
    "string uaddressmode = \"periodic\", string vaddressmode = \"periodic\", "
    "string filtertype = \"linear\", string framerange, integer frameoffset, "
    "string frameendaction = \"constant\"";
constexpr const char* tiled_inputs =
    "filename file, string layer, T default, vector2 texcoord = texcoord, "
    "vector2 uvtiling = 1 1, vector2 uvoffset = 0 0, vector2 realworldimagesize = 1 1, "
    "vector2 realworldtilesize = 1 1, string filtertype = \"linear\", string framerange, "
    "integer frameoffset, string frameendaction = \"constant\"";

constexpr Node_row rows[] = {
    {"image", numbers, image_inputs,
     "T out = image(file, texcoord, uaddressmode, vaddressmode, default)"},
    {"tiledimage", numbers, tiled_inputs,
     "T out = image(file, (texcoord * uvtiling - uvoffset) / realworldimagesize * "
     "realworldtilesize, \"periodic\", \"periodic\", default)"},

    {"ramplr", numbers, "T valuel, T valuer, vector2 texcoord = texcoord",
     "T out = mix(valuel, valuer, saturate(texcoord.x))"},
    {"ramptb", numbers, "T valuet, T valueb, vector2 texcoord = texcoord",
     "T out = mix(valuet, valueb, saturate(texcoord.y))"},
    {"ramp4", numbers, "T valuetl, T valuetr, T valuebl, T valuebr, vector2 texcoord = texcoord",
     "T out = mix(mix(valuetl, valuetr, saturate(texcoord.x)), "
     "mix(valuebl, valuebr, saturate(texcoord.x)), saturate(texcoord.y))"},
    {"splitlr", numbers, "T valuel, T valuer, float center = 0.5, vector2 texcoord = texcoord",
     "T out = mix(valuel, valuer, anti_aliased_step(center, texcoord.x))"},
    {"splittb", numbers, "T valuet, T valueb, float center = 0.5, vector2 texcoord = texcoord",
     "T out = mix(valuet, valueb, anti_aliased_step(center, texcoord.y))"},
};

} // namespace

Node_rows texture_rows()
{
    return {rows, std::size(rows)};
}

} // namespace reference_host
