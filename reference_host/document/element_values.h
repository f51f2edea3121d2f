// The values and hints that the inputs of a document carry in their attributes.
#ifndef REFERENCE_HOST_DOCUMENT_ELEMENT_VALUES_H
#define REFERENCE_HOST_DOCUMENT_ELEMENT_VALUES_H

#include "reference_host/document/document_files.h"
#include "reference_host/document/shader_graph.h"

#include <optional>
#include <string>

namespace reference_host
{

// "node 'n', input 'in1'" and the like, for messages.
std::string describe(const Element& element);

// The value of an input or of the interface of a node graph; nothing when it has none (an empty
// text is a value of texts only). The name of a file is put together from the file prefixes and the
// folder of the file that names it, relative to the opened document. Throws Document_error when the
// text is not a value of that type.
std::optional<Value> value_of(const Element& element, Value_type type);

// The colour space that holds for an input: its own, or that of what it stands in. Empty when none
// is given or wanted ("none", "raw", "Raw"), and for types that have none.
std::string color_space_of(const Element& element, Value_type type);

// Hints are for the eye alone: what cannot be read is left out. One number stands for all numbers
// of a value.
Ui_hints ui_hints_of(const Element& element, Value_type type);

} // namespace reference_host

#endif
