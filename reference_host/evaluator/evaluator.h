// What a module computes, in numbers: the measure of what every language makes of it.
//
// Numbers are doubles. Matrices of the host stand before column vectors, those of documents behind
// row vectors. What shading languages leave undefined is NaN.
#ifndef REFERENCE_HOST_EVALUATOR_EVALUATOR_H
#define REFERENCE_HOST_EVALUATOR_EVALUATOR_H

#include "reference_host/evaluator/shading_value.h"
#include "reference_host/shading/module.h"

#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace reference_host
{

// Something that has no value: what is refused, the lists of a scene, a variable without one.
struct Evaluation_error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The states of the points that lie one pixel to the right and one above, for derivatives.
struct Neighbours {
    Shading_value right, above;
};

struct Evaluation_inputs {
    Shading_value state = structure_value("State");
    std::optional<Neighbours> neighbours; // without them derivatives are zero

    // By name: switches, values of the host, the ambient light, and parameters that shall not have
    // their defaults.
    std::map<std::string, Shading_value> variables;

    // What a texture has at texture coordinates, or a cube map in a direction, which is all that a
    // look-up in a smaller copy gets.
    std::function<Shading_value(const std::string& texture, const Shading_value& place)> look_up;
};

// What the module's entry returns for the state. Throws Evaluation_error.
Shading_value evaluate(const Module& module, const Evaluation_inputs& inputs);

} // namespace reference_host

#endif
