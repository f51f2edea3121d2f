// The values of a document's attributes.
//
// Strict, and the same in every locale: the decimal sign is a point, nothing may follow a number,
// and a value has exactly as many numbers as its type. Numbers are separated by commas, spaces or
// both.
#ifndef REFERENCE_HOST_DOCUMENT_VALUE_PARSER_H
#define REFERENCE_HOST_DOCUMENT_VALUE_PARSER_H

#include "reference_host/document/shader_graph.h"

#include <optional>
#include <string_view>

namespace reference_host
{

// The value of a type from its text, or nothing when the text is not one: a number that is missing,
// surplus, not finite or out of range, a boolean other than "true" and "false", a type without
// values (shaders and materials).
std::optional<Value> parse_value(Value_type type, std::string_view text);

} // namespace reference_host

#endif
