// The nodes of a shader graph, scope by scope.
//
// A scope is the document itself, a node graph, or one use of a custom node (which is a node graph
// of its own each time). Names are unique within a scope.
#ifndef REFERENCE_HOST_DOCUMENT_GRAPH_SCOPES_H
#define REFERENCE_HOST_DOCUMENT_GRAPH_SCOPES_H

#include "reference_host/document/node_definitions.h"
#include "reference_host/document/shader_graph.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace reference_host
{

class Document_problems;

struct Scope;

// What a name in a scope stands for: a node, or the scope that a node graph or custom node opens.
struct Member {
    Node* node = nullptr;
    Scope* scope = nullptr;
};

struct Scope {
    std::string path;        // the names from the document down, "/"-separated; empty: document
    Scope* parent = nullptr; // null: the document
    Element graph;           // the node graph; false: the document
    Element use;             // the custom node that is used here; false: a plain node graph
    const Custom_definition* definition = nullptr; // of `use`
    std::unordered_map<std::string, Member> members;
    std::unordered_map<std::string, Element> inputs; // of the document; others have them in `graph`
    std::unordered_map<std::string, Element> outputs;
    std::vector<std::pair<Node*, Element>> nodes; // each node and the element that it comes from

    // The declaration of an interface input: of the document, the node graph, or the custom node's
    // definition. A false element when there is none.
    Element find_interface(const std::string& name) const;
};

struct Scopes {
    Node_definitions definitions;
    std::vector<std::unique_ptr<Scope>> all; // the document first
};

// Makes all nodes, without their inputs, in the document's order. Notes names that are missing or
// exist twice, unknown types, and custom nodes that contain themselves. A node of an unknown
// category is made: it matters only to what uses it; one of an unknown type has none.
Scopes make_scopes(const Document_files& files, Shader_graph& graph, Document_problems& problems);

// The type that an element declares. Throws Document_error when it is missing or unknown.
Value_type declared_type(const Element& element);

// "node 'name' (category)", for messages.
std::string describe(const Node& node);

} // namespace reference_host

#endif
