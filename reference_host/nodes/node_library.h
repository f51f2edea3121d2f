// What every category of node is: its inputs with their types and defaults, its outputs, and, as a
// text in the shading notation, what each output is worth.
//
// The reader checks documents against it, and the generator takes the defaults of inputs that a
// document leaves out, and the implementations, from it. A category has one definition per
// signature ("image" of a color3 and of a float are two). They are read from nodes/*.shade, whose
// form docs/nodes.md describes.
#ifndef REFERENCE_HOST_NODES_NODE_LIBRARY_H
#define REFERENCE_HOST_NODES_NODE_LIBRARY_H

#include "reference_host/nodes/value.h"
#include "reference_host/shading/shade_file.h"

#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

struct Input_definition {
    std::string name;
    Value_type type = Value_type::none;
    Value value;                // the default
    std::string default_source; // "texcoord", "position", "normal", ...: what an unconnected input
                                // reads instead of a value; empty: the value
    std::optional<double> min, max; // the range that a slider shows; missing: unlimited
    std::string unit;               // that it counts in; empty: metres, degrees
};

struct Output_definition {
    std::string name; // "out" when there is only one
    Value_type type = Value_type::none;
    Shade_text implementation; // an expression of the inputs; empty for shaders and materials
    Place place;
};

struct Node_definition {
    std::string category;
    Value_type generic = Value_type::none; // what T stands for in the implementations; none: no T
    std::vector<Input_definition> inputs;
    std::vector<Output_definition> shared;  // values that several outputs name; no document does
    std::vector<Output_definition> outputs; // at least one

    const Input_definition* find_input(const std::string& name) const;
    const Output_definition* find_output(const std::string& name) const; // empty name: the first
};

// Reads definitions in the order of the files. Throws Shade_error.
std::vector<Node_definition> read_nodes(const std::vector<Shade_text>& files);

// The files that the program is built with, in the order in which nodes are listed.
const std::vector<Shade_text>& node_texts();

// The definitions of the files that the program is built with. They live as long as the program.
const std::vector<Node_definition>& all_definitions();

// Whether the library has any signature of that category.
bool is_known_category(const std::string& category);

// The first definition of a category; null when there is none.
const Node_definition* find_first_definition(const std::string& category);

// An input that a node of a document gives.
struct Given_input {
    std::string name;
    Value_type type;
};

// The definition of a category that gives a type and has all of the inputs. Null when none fits.
const Node_definition* find_definition(const std::string& category, Value_type type,
                                       const std::vector<Given_input>& given);

} // namespace reference_host

#endif
