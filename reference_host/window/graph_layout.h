// Where the nodes of a graph stand when it is drawn: in layers from left to right, by Graphviz.
#ifndef REFERENCE_HOST_WINDOW_GRAPH_LAYOUT_H
#define REFERENCE_HOST_WINDOW_GRAPH_LAYOUT_H

#include <cstddef>
#include <string>
#include <vector>

namespace reference_host
{

struct Layout_point {
    double x = 0;
    double y = 0; // downwards
};

struct Layout_box {
    Layout_point center;
    double width = 0;
    double height = 0;
};

struct Layout_edge {
    std::size_t from = 0; // by index
    std::size_t to = 0;
    std::vector<Layout_point> curve; // Bezier: a start, then three points for each piece
};

struct Graph_layout {
    double width = 0;
    double height = 0;
    std::vector<Layout_box> boxes; // one for each node, in their order
    std::vector<Layout_edge> edges;
    std::string error; // why there is no layout; empty: there is one
};

// Places boxes of the given sizes. The centers do not matter, nor do the curves of the edges.
Graph_layout lay_out(const Graph_layout& graph);

} // namespace reference_host

#endif
