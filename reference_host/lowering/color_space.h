// Conversions of colours to the working space of generated shaders, linear Rec. 709.
#ifndef REFERENCE_HOST_LOWERING_COLOR_SPACE_H
#define REFERENCE_HOST_LOWERING_COLOR_SPACE_H

#include "reference_host/document/shader_graph.h"
#include "reference_host/shading/notation.h"

#include <string>

namespace reference_host
{

// Whether the name is one that the functions below know; an empty one is the working space.
bool is_known_color_space(const std::string& name);

// The expression that converts a colour of three or four components; alpha stays. The expression
// itself when there is nothing to convert.
Expr to_working_space(const Expr& color, const std::string& color_space, Notation_scope& scope);

// The same for a value that is known now. Values that are not colours stay.
Value to_working_space(const Value& color, const std::string& color_space);

} // namespace reference_host

#endif
