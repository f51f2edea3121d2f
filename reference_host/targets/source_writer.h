// Writes a shader as source for a renderer: a C++ function and a scene text that describes it.
#ifndef REFERENCE_HOST_TARGETS_SOURCE_WRITER_H
#define REFERENCE_HOST_TARGETS_SOURCE_WRITER_H

#include "reference_host/targets/text_plan.h"

#include <string>
#include <vector>

namespace reference_host
{

// The C++ source, which needs nothing but the standard library, and the qz scene text:
//
//     # a comment
//     shader "wood" {
//         kind "surface"
//         parameter "base" float 1.0
//         texture "wood_map" 2d "wood.png"
//     }
//
// Words and numbers are separated by spaces, texts stand in double quotes with \" and \\ inside,
// blocks in braces. Throws Notation_error.
std::vector<std::string> write_source(const Module& module, const Text_plan& plan);

} // namespace reference_host

#endif
