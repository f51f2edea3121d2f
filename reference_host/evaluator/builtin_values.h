// What builtins return, in numbers.
#ifndef REFERENCE_HOST_EVALUATOR_BUILTIN_VALUES_H
#define REFERENCE_HOST_EVALUATOR_BUILTIN_VALUES_H

#include "reference_host/evaluator/shading_value.h"
#include "reference_host/shading/builtin.h"

#include <vector>

namespace reference_host
{

// The value of a builtin that needs nothing but its arguments: of all but derivatives, textures and
// the changes of space that name no matrix. What shading languages leave undefined (the power of a
// negative number, the direction of a null vector) is NaN.
Shading_value builtin_value(Builtin builtin, const std::vector<Shading_value>& arguments);

// A column vector through a matrix.
Shading_value matrix_times_vector(const Shading_value& matrix, const Shading_value& vector);

// The upper left of a matrix of four rows.
Shading_value upper_left(const Shading_value& matrix);

} // namespace reference_host

#endif
