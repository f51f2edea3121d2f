// The values of a document as expressions.
#ifndef REFERENCE_HOST_LOWERING_DOCUMENT_VALUES_H
#define REFERENCE_HOST_LOWERING_DOCUMENT_VALUES_H

#include "reference_host/document/shader_graph.h"
#include "reference_host/shading/expression.h"

namespace reference_host
{

// The type in which a value of a document is computed. Colours and vectors of one size are the
// same; none for shaders and materials.
Code_type code_type(Value_type type);

Expr literal(const Value& value);

} // namespace reference_host

#endif
