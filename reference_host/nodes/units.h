// The units that documents give numbers in: those of the standard.
#ifndef REFERENCE_HOST_NODES_UNITS_H
#define REFERENCE_HOST_NODES_UNITS_H

#include "reference_host/nodes/value.h"

#include <string>

namespace reference_host
{

// By what numbers in one unit are multiplied to be numbers in another. An empty `to` is what
// shaders count in: metres, degrees. 1 when a unit is not known or the two do not measure the same.
double unit_scale(const std::string& from, const std::string& to);

// Floats and vectors have units; anything else, and what has no unit, stays as it is.
void convert_unit(Value& value, const std::string& from, const std::string& to);

} // namespace reference_host

#endif
