// The type that a value has by its operands.
#ifndef REFERENCE_HOST_SHADING_EXPRESSION_TYPES_H
#define REFERENCE_HOST_SHADING_EXPRESSION_TYPES_H

#include "reference_host/shading/expression.h"

#include <string>

namespace reference_host
{

// The type of an arithmetic operation, a comparison or a combination of truths; none when there is
// no such operation. Integers and floats are not combined.
Code_type operation_type(Operator op, const Code_type& a, const Code_type& b);

// The type of a value that does not depend on what is declared around it: of all but variables and
// calls of functions. Throws Notation_error when its operands do not fit.
Code_type type_by_operands(const Expression& expression);

// "float3", "State", "Light[]".
std::string type_text(const Code_type& type);

} // namespace reference_host

#endif
