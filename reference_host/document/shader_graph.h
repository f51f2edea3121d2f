// The shader graph of one opened document, flat and checked.
//
// The reader (document/materialx_reader.h) resolves everything that is only notation in a document:
// included files, file prefixes, node graphs, interface names, custom node definitions. What is
// left is a set of nodes of the node library's categories (nodes/node_library.h), whose inputs
// hold a value, a parameter that the artist exposed, or a connection to another node. The graph is
// acyclic, and every connection ends at a node of this graph.
//
// A graph owns its nodes and parameters; pointers to them stay valid as long as the graph.
#ifndef REFERENCE_HOST_DOCUMENT_SHADER_GRAPH_H
#define REFERENCE_HOST_DOCUMENT_SHADER_GRAPH_H

#include "reference_host/nodes/node_library.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

// What the document says about showing an input to the artist. Empty texts and missing numbers were
// not given.
struct Ui_hints {
    std::string name;        // uiname
    std::string folder;      // uifolder, levels separated by "/"
    std::string description; // doc
    std::optional<Value> min, max, soft_min, soft_max, step;
    std::vector<std::string> enum_names;
};

// An input of a node graph or of a custom node that the artist exposed. Several inputs of nodes may
// share one.
struct Parameter {
    std::string name;  // the interface name
    std::string owner; // the node graph that exposes it
    Value value;
    Ui_hints ui;
    std::string color_space; // of a colour or a file name; empty: none given
    bool literal = false;    // steers the shape of the code (a loop count); see ignore_literal
};

struct Node;

struct Input {
    std::string name;
    Value_type type = Value_type::none;

    // Exactly one of these three is set.
    std::optional<Value> value;
    const Parameter* parameter = nullptr;
    const Node* source = nullptr;

    std::string source_output; // which output of the source; empty: its only one
    std::string channels;      // the swizzle that older documents put on a connection
    std::string color_space;   // of a colour or a file name; empty: none given
    std::string unit;          // of the value; empty: that of the definition
    Ui_hints ui;
};

struct Node {
    std::string name;     // as the artist wrote it; unique within its scope only
    std::string scope;    // the node graphs it stands in, "/"-separated; empty: top level
    std::string category; // of the node library: "image", "standard_surface", ...
    Value_type type = Value_type::none;          // of the output
    const Node_definition* definition = nullptr; // null: its category is unknown
    std::vector<Input> inputs;                   // those that the document gives, in its order
    Place place;

    // The input of that name, or null when the document does not give it.
    const Input* find_input(const std::string& input_name) const;
};

// The name by which a graph, the plug-in and the user know a node: "scope/name", or the name alone
// at top level. Unique within its graph.
std::string full_name(const Node& node);

// The definition that fits a node as it is: its category, its type and the inputs that it gives.
// Null when there is none.
const Node_definition* find_definition(const Node& node);

// A file that a document includes and that is not there.
struct Missing_file {
    std::string text; // the message about it
    Place place;      // of the include
};

struct Shader_graph {
    std::string document;           // the file name that was opened, without its folder
    std::string folder;             // the folder of that file; image files may be relative to it
    std::vector<std::string> files; // that were read: the document, then what it includes
    std::vector<Missing_file> missing_files;
    std::string color_space; // the working colour space ("lin_rec709" when none is given)
    std::vector<std::unique_ptr<Node>> nodes; // in the document's order
    std::vector<std::unique_ptr<Parameter>> parameters;

    // The node of that full name, or null when there is none.
    const Node* find_node(const std::string& node_name) const;
};

} // namespace reference_host

#endif
