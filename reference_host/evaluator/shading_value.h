// Values that the evaluator computes.
#ifndef REFERENCE_HOST_EVALUATOR_SHADING_VALUE_H
#define REFERENCE_HOST_EVALUATOR_SHADING_VALUE_H

#include "reference_host/shading/types.h"

#include <array>
#include <initializer_list>
#include <map>
#include <string>

namespace reference_host
{

struct Shading_value {
    Code_type type;
    std::array<double, 16> numbers{}; // as many as the type has components; of matrices by rows
    std::string texture;              // of a sampler: the name of its texture
    std::map<std::string, Shading_value> fields; // of a structure

    Shading_value() = default;
    explicit Shading_value(const Code_type& value_type) : type(value_type) {}
    Shading_value(const Code_type& value_type, std::initializer_list<double> values);

    int size() const { return component_count(type); }
};

// A structure with all its fields, whose numbers are zero.
Shading_value structure_value(const std::string& structure);

} // namespace reference_host

#endif
