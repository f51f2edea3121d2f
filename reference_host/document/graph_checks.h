// Whether a shader graph makes sense as a whole.
#ifndef REFERENCE_HOST_DOCUMENT_GRAPH_CHECKS_H
#define REFERENCE_HOST_DOCUMENT_GRAPH_CHECKS_H

#include "reference_host/document/shader_graph.h"

namespace reference_host
{

// Throws Document_error when a node of a known category fits no definition of it, a connection
// takes from an output or channels that its source does not have, its type is wrong, or the graph
// has a cycle.
void check_graph(const Shader_graph& graph);

} // namespace reference_host

#endif
