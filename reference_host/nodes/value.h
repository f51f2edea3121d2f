// Types and values of a document.
#ifndef REFERENCE_HOST_NODES_VALUE_H
#define REFERENCE_HOST_NODES_VALUE_H

#include "reference_host/shading/place.h"

#include <array>
#include <string>

namespace reference_host
{

// The types of values in a document. Colours and vectors of one size are different types to the
// reader and the same to a shading language.
enum class Value_type {
    none,
    boolean,
    integer,
    float1,
    vector2,
    vector3,
    vector4,
    color3,
    color4,
    matrix33,
    matrix44,
    string,
    filename,
    bsdf, // how a surface scatters light
    edf,  // what it emits
    vdf,  // what is below it
    surfaceshader,
    displacementshader,
    volumeshader,
    lightshader,
    material,
    multioutput
};

// The document's word for a type ("color3", "float", ...), and back; an unknown word is none.
const char* type_name(Value_type type);
Value_type type_from_name(const std::string& name);

// The number of numbers in a value: 1 for float, integer and boolean, 9 for matrix33, 0 for texts.
int component_count(Value_type type);

struct Value {
    Value_type type = Value_type::none;
    std::array<double, 16> numbers{}; // the first component_count(type) are used; row by row
    std::string text;                 // of string and filename
};

} // namespace reference_host

#endif
