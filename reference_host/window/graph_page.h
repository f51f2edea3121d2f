// The nodes of the current document with their connections. A click selects a node, which is then
// the one that is exported; dragging moves the picture, the wheel and the keys + and - change its
// size, 0 shows all of it, the arrow keys select the next node in their direction.
#ifndef REFERENCE_HOST_WINDOW_GRAPH_PAGE_H
#define REFERENCE_HOST_WINDOW_GRAPH_PAGE_H

#include "reference_host/window/graph_layout.h"
#include "reference_host/window/newest_job.h"
#include "reference_host/window/workspace.h"

#include <string>
#include <vector>

#include <wx/geometry.h>
#include <wx/window.h>

class wxGraphicsContext;

namespace reference_host
{

class Graph_page : public wxWindow
{
public:
    // The workspace must outlive the view.
    Graph_page(wxWindow* parent, Workspace& workspace);

    const Graph_layout& layout() const { return m_layout; }
    double scale() const { return m_scale; }

    // Where the middle of a node is in the view; outside it when there is no such node.
    wxPoint place_of(const std::string& node) const;

private:
    void on_change(Change change);
    Layout_box box_for(const Node& node) const;
    void start_layout();
    void take_layout(const Graph_layout& layout);
    void fit();
    void bring_into_sight(const std::string& node);
    void zoom(double factor, const wxPoint2DDouble& around);
    void select(int index);
    int node_at(const wxPoint& place) const; // -1: none
    int next_node(int key) const;            // -1: none
    void bind_mouse();
    void on_key(wxKeyEvent& event);
    void paint();
    void draw_edges(wxGraphicsContext& context) const;
    void draw_node(wxGraphicsContext& context, size_t index) const;

    Workspace& m_workspace;
    std::vector<std::string> m_names;      // of the nodes, in the order of the layout
    std::vector<std::string> m_categories; // likewise
    Graph_layout m_wanted;                 // before it was laid out
    Graph_layout m_layout;
    double m_scale = 1;
    wxPoint2DDouble m_origin; // of the layout in the view
    wxPoint m_pressed_at;
    wxPoint m_dragged_to;
    bool m_is_dragged = false;
    Newest_job<Graph_layout, Graph_layout> m_job;
};

} // namespace reference_host

#endif
