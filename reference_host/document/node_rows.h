// The node library as data: one row per category and shape of signature.
//
// To add a node, add a row to one of the tables in node_rows_*.cpp:
//
//     {"smoothstep", numbers, "T in = 0, T|float low = 0, T|float high = 1",
//      "T out = smoothstep(low, high, in)"},
//
// types    The document types that T stands for, separated by blanks; the row gives one definition
//          for each. Empty when the row has no T.
// inputs   "TYPE NAME = DEFAULT [MIN MAX]", separated by commas.
//          TYPE is a type of a document ("color3", "filename", ...) or T; alternatives are
//          separated by "|" and switch together: the row above gives (T, T, T) and (T, float,
//          float). DEFAULT is one number for all components, a number for each, "identity", true,
//          false, a text in quotes, or the name of what the scene provides: texcoord, position,
//          normal, tangent, bitangent, viewdirection. Without DEFAULT it is zero or the empty text.
//          MIN and MAX are the range of a slider; optional.
// outputs  "TYPE NAME = EXPRESSION", separated by semicolons. The expression is in the shading
//          notation of generator/notation.h, where T is the shading type of T and inputs are
//          variables. Inputs that are texts are constants, so that comparing them chooses at the
//          time of generation: space == "world" ? a : b. Surface shaders, lights and materials have
//          no expression: the generator knows them by their category.
//          "let TYPE NAME = EXPRESSION" gives a value a name that later expressions may use.
//
// Helper functions that expressions call are in generator/library_*.cpp, in the same notation.
#ifndef REFERENCE_HOST_DOCUMENT_NODE_ROWS_H
#define REFERENCE_HOST_DOCUMENT_NODE_ROWS_H

#include <cstddef>

namespace reference_host
{

struct Node_row {
    const char* category;
    const char* types;
    const char* inputs;
    const char* outputs;
};

// One table of rows.
struct Node_rows {
    const Node_row* rows;
    std::size_t count;
};

// Lists of types that many rows share.
namespace row_types
{
constexpr const char* numbers = "float color3 color4 vector2 vector3 vector4";
constexpr const char* vectors = "color3 color4 vector2 vector3 vector4";
constexpr const char* colors = "color3 color4";
} // namespace row_types

Node_rows math_rows();       // arithmetic, vectors, matrices
Node_rows channel_rows();    // convert, combine, separate, extract, conditions, logic
Node_rows color_rows();      // adjustment and compositing
Node_rows geometry_rows();   // position, normal, texcoord, transforms, normal maps
Node_rows texture_rows();    // images, ramps, splits
Node_rows procedural_rows(); // noises and shapes
Node_rows foreign_rows();    // the nodes of glTF and USD
Node_rows surface_rows();    // surface models
Node_rows scene_rows();      // lights, environment, fog, materials

} // namespace reference_host

#endif
