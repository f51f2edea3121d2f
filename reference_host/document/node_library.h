// What every category of node is: its inputs with their types and defaults, its outputs, and what
// the generator computes for them.
//
// The reader checks documents against it, and the generator takes the defaults of inputs that a
// document leaves out, and the implementations, from it. A category has one definition per
// signature ("image" of a color3 and of a float are two). The definitions are made from the rows of
// document/node_rows.h.
#ifndef REFERENCE_HOST_DOCUMENT_NODE_LIBRARY_H
#define REFERENCE_HOST_DOCUMENT_NODE_LIBRARY_H

#include "reference_host/document/shader_graph.h"

#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

struct Input_definition {
    std::string name;
    Type type = Type::none;
    Value value;                // the default
    std::string default_source; // "texcoord", "position", "normal", ...: what an unconnected input
                                // reads instead of a value; empty: the value
    std::optional<double> min, max; // the range that a slider shows; missing: unlimited
};

struct Output_definition {
    std::string name; // "out" when there is only one
    Type type = Type::none;
    std::string implementation; // an expression of the inputs; empty for shaders and materials
};

struct Node_definition {
    std::string category;
    Type generic = Type::none; // what T stands for in the implementations; none: no T
    std::vector<Input_definition> inputs;
    std::vector<Output_definition> shared;  // values that several outputs name; no document does
    std::vector<Output_definition> outputs; // at least one

    const Input_definition* find_input(const std::string& name) const;
    const Output_definition* find_output(const std::string& name) const; // empty name: the first
};

// Whether the library has any signature of that category.
bool is_known_category(const std::string& category);

// The definition that fits a node: its category, the type of its output and the types of the inputs
// that it gives. Null when none fits. The result lives as long as the program.
const Node_definition* find_definition(const Node& node);

// All definitions, in the order of the rows; for tests and listings.
const std::vector<Node_definition>& all_definitions();

} // namespace reference_host

#endif
