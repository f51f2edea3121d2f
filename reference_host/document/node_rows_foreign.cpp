#include "reference_host/document/node_rows.h"

#include <iterator>

namespace reference_host
{
namespace
{

constexpr Node_row rows[] = {
    {"UsdUVTexture", "",
     "filename file, vector2 st = texcoord, string wrapS = \"periodic\", "
     "string wrapT = \"periodic\", vector4 fallback = 0 0 0 1, vector4 scale = 1, "
     "vector4 bias = 0, string sourceColorSpace = \"auto\"",
     "float r = image(file, st, wrapS, wrapT, fallback).x"},
};

} // namespace

Node_rows foreign_rows()
{
    return {rows, std::size(rows)};
}

} // namespace reference_host
