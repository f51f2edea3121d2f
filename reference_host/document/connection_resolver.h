// Gives the nodes of a shader graph their inputs: values, parameters and connections.
//
// A connection in a document may lead through outputs of node graphs, inputs of node graphs and of
// custom nodes, and interface names; what an input holds in the end is where all this ends.
#ifndef REFERENCE_HOST_DOCUMENT_CONNECTION_RESOLVER_H
#define REFERENCE_HOST_DOCUMENT_CONNECTION_RESOLVER_H

#include "reference_host/document/graph_scopes.h"
#include "reference_host/document/shader_graph.h"

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace reference_host
{

class Document_problems;

class Connection_resolver
{
public:
    // All must outlive the resolver. Parameters and geometry nodes are added to the graph.
    Connection_resolver(const Scopes& scopes, Shader_graph& graph, Document_problems& problems)
        : m_scopes(scopes), m_graph(graph), m_problems(problems)
    {
    }

    // Fills in the inputs of all nodes. Leaves out, and notes, what names something that is
    // missing, values and connections of a wrong type, inputs given twice, and connections that
    // lead back to themselves without passing a node.
    void connect();

private:
    // A place that a connection passes: the connection of `element`, whose names belong to `scope`.
    struct Hop {
        const Scope* scope;
        Element element;
    };

    // Where a connection ends. Neither node nor parameter: nothing is given, the input's default
    // holds.
    struct Origin {
        const Node* node = nullptr;
        std::string output;
        Parameter* parameter = nullptr;
        std::string channels;
        bool is_wrong = false; // and reported
    };

    using Key = std::pair<const Scope*, const void*>;

    void add_inputs(const Scope& scope, Node& node, const Element& element);
    void add_input(const Scope& scope, Node& node, const Element& element);
    void check_interface(const Scope& scope);
    void check_interface_input(const Scope& scope, const Element& input);

    Origin resolve(const Scope& scope, const Element& element);
    Origin follow_hops(const Hop& start, std::vector<Hop>& hops);
    std::optional<Hop> follow(const Hop& at, Origin& origin);
    std::optional<Hop> follow_interface(const Hop& at, Origin& origin);
    std::optional<Hop> follow_output(const Scope& scope, const Element& from);
    Origin unconnected(const Scope& scope, const Element& declaration, const Element& given);
    const Node* geometry_node(const Scope& scope, const Element& declaration);

    const Scopes& m_scopes;
    Shader_graph& m_graph;
    Document_problems& m_problems;
    std::map<Key, std::optional<Origin>> m_origins; // nothing: on the way that is being followed
    std::map<Key, Parameter*> m_parameters;
    std::map<std::pair<const Scope*, std::string>, const Node*> m_geometry;
};

} // namespace reference_host

#endif
