// Questions about a shader node and what is connected to it.
//
// A null node, and null where the host should have returned an object, counts as having nothing.
#ifndef EXPORT_COMMON_GRAPH_QUERIES_H
#define EXPORT_COMMON_GRAPH_QUERIES_H

#include "sdk/igraph_node.h"

#include <wx/string.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

// Whether the node's declaration is a group that is a material.
bool is_material(TSDK::IGraph_node* node);

// Finds out whether the shader of `node`, with everything connected to its inputs, uses the scene's
// lights and its environment. A material is asked through its member "surface"; without one it
// counts as using lights. The flags are only ever set, so the caller clears them first, and the
// walk stops once both are set.
//
// Each distinct node is walked once: the cost grows with nodes and connections, not with paths, and
// a cycle ends the walk as well. Nesting depth costs no stack.
void determine_subshader_usage(TSDK::IGraph_node* node, bool& uses_lights, bool& uses_environment);

// The name under which a node is exported: its own, with "_surface" appended for a material.
wxString get_shader_name(TSDK::IGraph_node* node);

// The node's kind as the host tells it; null where the host does, which stands for a surface.
const char* get_shader_kind(TSDK::IGraph_node* node);

// Whether a node's kind is that of a surface shader: null or exactly "surface".
bool is_surface_kind(const char* kind);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
