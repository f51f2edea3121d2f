// The custom nodes of a document: definitions that a node graph of the document implements.
//
// A definition is a <nodedef>; its node graph names it (nodedef="ND_x"), or an <implementation>
// names both. Definitions without a node graph describe nodes of the node library and are not kept.
#ifndef REFERENCE_HOST_DOCUMENT_NODE_DEFINITIONS_H
#define REFERENCE_HOST_DOCUMENT_NODE_DEFINITIONS_H

#include "reference_host/document/document_files.h"

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace reference_host
{

class Document_problems;

struct Custom_definition {
    std::vector<Element> nodedefs; // the definition, then those that it inherits from
    Element graph;                 // what implements it

    // The input that the definition declares; a false element when there is none.
    Element find_input(const std::string& name) const;
};

class Node_definitions
{
public:
    // Leaves out, and notes, implementations of missing definitions or node graphs, and definitions
    // that exist twice, or inherit from a missing one or from themselves.
    Node_definitions(const std::vector<Element>& document, Document_problems& problems);

    // What a node may be a use of: the definition that it names, or the first of its category and
    // output type that declares all of its inputs. Null when there is none.
    const Custom_definition* find(const Element& node) const;

    // Whether the node graph only implements a definition and is not a part of the shader graph.
    bool is_implementation(const Element& nodegraph) const
    {
        return m_graphs.count(nodegraph.id()) > 0;
    }

private:
    void add_implementation(const Element& element,
                            const std::unordered_map<std::string, Element>& graphs);
    void add(const std::string& nodedef, const Element& graph, const Element& user);
    bool fits(const Custom_definition& definition, const Element& node) const;

    std::set<const void*> m_graphs; // the implementations, by their elements' ids
    std::unordered_map<std::string, Element> m_nodedefs;
    std::unordered_map<std::string, std::vector<Custom_definition>> m_by_category;
};

} // namespace reference_host

#endif
