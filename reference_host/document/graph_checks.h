// Whether a shader graph makes sense as a whole.
#ifndef REFERENCE_HOST_DOCUMENT_GRAPH_CHECKS_H
#define REFERENCE_HOST_DOCUMENT_GRAPH_CHECKS_H

#include "reference_host/document/shader_graph.h"

namespace reference_host
{

class Document_problems;

// Notes nodes of a known category that fit no definition of it, connections that take from an
// output or channels that their source does not have or that have a wrong type, and cycles. Nodes
// without a type were reported before.
void check_graph(const Shader_graph& graph, Document_problems& problems);

} // namespace reference_host

#endif
