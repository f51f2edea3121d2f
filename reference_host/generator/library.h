// Helper functions of generated code, written in the notation of notation.h.
//
// Each text is one function. "T" in a function is the type of the first argument whose parameter is
// a T; the function is made once for each such type. To add a function, add its text to one of the
// files library_*.cpp; nothing else names it. Only functions that a shader calls reach its text.
#ifndef REFERENCE_HOST_GENERATOR_LIBRARY_H
#define REFERENCE_HOST_GENERATOR_LIBRARY_H

#include "reference_host/generator/notation.h"

#include <cstddef>
#include <string>
#include <vector>

namespace reference_host
{

struct Library_texts {
    const char* const* texts;
    std::size_t count;
};

Library_texts color_library();   // adjustment, compositing, colour spaces
Library_texts math_library();    // arithmetic, matrices, geometry
Library_texts noise_library();   // hashes and noises
Library_texts pattern_library(); // placement of images, ramps, shapes
Library_texts light_library();   // kinds of lights, fog
Library_texts surface_library(); // the surface model

struct Library_function {
    Function_head head;
    const char* text;
};

// Null when there is none of that name.
const Library_function* find_library_function(const std::string& name);

// All functions, for tests and for the names that are taken.
const std::vector<Library_function>& all_library_functions();

} // namespace reference_host

#endif
