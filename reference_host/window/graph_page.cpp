#include "reference_host/window/graph_page.h"

#include "reference_host/window/wx_text.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>

#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/settings.h>

namespace reference_host
{
namespace
{

constexpr double smallest_scale = 0.05;
constexpr double largest_scale = 4;
constexpr double zoom_step = 1.25;
constexpr int margin = 12;            // of a picture that is shown whole, in pixels
constexpr int padding = 8;            // of a node's texts
constexpr double text_reserve = 1.08; // texts get a little wider when they are scaled down
constexpr int drag_limit = 4;         // what a hand moves in a click

wxColour system_color(wxSystemColour color)
{
    return wxSystemSettings::GetColour(color);
}

bool has_same_edges(const Graph_layout& one, const Graph_layout& other)
{
    return std::equal(one.edges.begin(), one.edges.end(), other.edges.begin(), other.edges.end(),
                      [](const Layout_edge& a, const Layout_edge& b) {
                          return a.from == b.from && a.to == b.to;
                      });
}

} // namespace

Graph_page::Graph_page(wxWindow* parent, Workspace& workspace)
    : wxWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS),
      m_workspace(workspace),
      m_job(*this, lay_out, [this](const Graph_layout& layout) { take_layout(layout); })
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetLabel(wxT("Graph"));
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        fit();
    });
    Bind(wxEVT_CHAR_HOOK, &Graph_page::on_key, this);
    bind_mouse();
    m_workspace.listen([this](Change change) { on_change(change); });
}

void Graph_page::on_change(Change change)
{
    if (change == Change::documents || change == Change::current)
        start_layout();
    if (change == Change::pointed)
        bring_into_sight(m_workspace.pointed_out());
}

// The size that a node needs for its two texts.
Layout_box Graph_page::box_for(const Node& node) const
{
    int width = 0, height = 0;
    const wxFont bold = GetFont().Bold();
    GetTextExtent(to_text(full_name(node)), &width, &height, nullptr, nullptr, &bold);
    const wxSize category = GetTextExtent(to_text(node.category));
    return {{},
            std::max(width, category.x) * text_reserve + 2 * padding,
            static_cast<double>(height + category.y + padding)};
}

// The same nodes keep their places: only their marks change.
void Graph_page::start_layout()
{
    static const Shader_graph no_graph;
    const Work_document* current = m_workspace.current();
    const Shader_graph& graph =
        current && current->content.graph ? *current->content.graph : no_graph;
    std::vector<std::string> names;
    Graph_layout wanted;
    std::map<const Node*, size_t> indices;
    m_categories.clear();
    for (const auto& node : graph.nodes) {
        indices.emplace(node.get(), names.size());
        names.push_back(full_name(*node));
        m_categories.push_back(node->category);
        wanted.boxes.push_back(box_for(*node));
    }
    for (const auto& node : graph.nodes) {
        for (const Input& input : node->inputs) {
            if (input.source)
                wanted.edges.push_back({indices.at(input.source), indices.at(node.get()), {}});
        }
    }
    const bool is_same = names == m_names && has_same_edges(wanted, m_wanted);
    Refresh();
    if (is_same)
        return;
    m_names = std::move(names);
    m_layout = {};
    if (!m_names.empty())
        m_job.start(wanted);
    m_wanted = std::move(wanted);
}

void Graph_page::take_layout(const Graph_layout& layout)
{
    if (layout.boxes.size() != m_names.size())
        return; // of a document before
    m_layout = layout;
    fit();
}

void Graph_page::fit()
{
    const wxSize size = GetClientSize();
    if (m_layout.width > 0 && m_layout.height > 0)
        m_scale = std::clamp(std::min((size.x - 2 * margin) / m_layout.width,
                                      (size.y - 2 * margin) / m_layout.height),
                             smallest_scale, 1.0);
    m_origin = {(size.x - m_layout.width * m_scale) / 2, (size.y - m_layout.height * m_scale) / 2};
    Refresh();
}

// Moves the picture when it is so large that the middle of the node is outside of the view.
void Graph_page::bring_into_sight(const std::string& node)
{
    const wxSize size = GetClientSize();
    const bool is_there = std::find(m_names.begin(), m_names.end(), node) != m_names.end();
    const wxPoint place = place_of(node);
    if (is_there && !wxRect(size).Deflate(margin).Contains(place))
        m_origin += wxPoint2DDouble(size.x / 2.0 - place.x, size.y / 2.0 - place.y);
    Refresh();
}

void Graph_page::zoom(double factor, const wxPoint2DDouble& around)
{
    const double scale = std::clamp(m_scale * factor, smallest_scale, largest_scale);
    m_origin = around + (m_origin - around) * (scale / m_scale);
    m_scale = scale;
    Refresh();
}

void Graph_page::select(int index)
{
    if (index >= 0 && m_workspace.current())
        m_workspace.select(*m_workspace.current(), m_names[static_cast<size_t>(index)]);
}

wxPoint Graph_page::place_of(const std::string& node) const
{
    const auto found = std::find(m_names.begin(), m_names.end(), node);
    if (found == m_names.end() || m_layout.boxes.empty())
        return wxPoint(-1, -1);
    const Layout_point& center =
        m_layout.boxes[static_cast<size_t>(found - m_names.begin())].center;
    return wxPoint(static_cast<int>(m_origin.m_x + center.x * m_scale),
                   static_cast<int>(m_origin.m_y + center.y * m_scale));
}

int Graph_page::node_at(const wxPoint& place) const
{
    const double x = (place.x - m_origin.m_x) / m_scale;
    const double y = (place.y - m_origin.m_y) / m_scale;
    const auto found =
        std::find_if(m_layout.boxes.begin(), m_layout.boxes.end(), [&](const Layout_box& box) {
            return std::abs(x - box.center.x) <= box.width / 2 &&
                   std::abs(y - box.center.y) <= box.height / 2;
        });
    return found == m_layout.boxes.end() ? -1 : static_cast<int>(found - m_layout.boxes.begin());
}

// The nearest one in the direction of an arrow key, what is aside counting twice.
int Graph_page::next_node(int key) const
{
    const Node* node = m_workspace.current() ? m_workspace.current()->node() : nullptr;
    if (!node || m_layout.boxes.empty())
        return -1;
    const wxPoint from = place_of(full_name(*node));
    int nearest = -1;
    int nearest_distance = 0;
    for (size_t i = 0; i < m_names.size(); ++i) {
        const wxPoint way = place_of(m_names[i]) - from;
        const bool is_level = key == WXK_LEFT || key == WXK_RIGHT;
        const int ahead = key == WXK_LEFT    ? -way.x
                          : key == WXK_RIGHT ? way.x
                          : key == WXK_UP    ? -way.y
                                             : way.y;
        const int distance = ahead + 2 * std::abs(is_level ? way.y : way.x);
        if (ahead > 0 && (nearest < 0 || distance < nearest_distance)) {
            nearest = static_cast<int>(i);
            nearest_distance = distance;
        }
    }
    return nearest;
}

void Graph_page::bind_mouse()
{
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
        SetFocus();
        m_pressed_at = m_dragged_to = event.GetPosition();
        m_is_dragged = false;
    });
    Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
        if (!event.LeftIsDown())
            return;
        const wxPoint way = event.GetPosition() - m_pressed_at;
        m_is_dragged = m_is_dragged || std::abs(way.x) + std::abs(way.y) > drag_limit;
        if (!m_is_dragged)
            return;
        const wxPoint step = event.GetPosition() - m_dragged_to;
        m_origin += wxPoint2DDouble(step.x, step.y);
        m_dragged_to = event.GetPosition();
        Refresh();
    });
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) {
        if (!m_is_dragged)
            select(node_at(event.GetPosition()));
    });
    Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) {
        zoom(event.GetWheelRotation() > 0 ? zoom_step : 1 / zoom_step, event.GetPosition());
    });
}

void Graph_page::on_key(wxKeyEvent& event)
{
    const wxSize size = GetClientSize();
    const wxPoint2DDouble middle(size.x / 2.0, size.y / 2.0);
    const int key = event.GetKeyCode();
    if (event.HasAnyModifiers() && event.GetModifiers() != wxMOD_SHIFT)
        return event.Skip();
    if (key == '+' || key == '=' || key == WXK_NUMPAD_ADD)
        zoom(zoom_step, middle);
    else if (key == '-' || key == WXK_NUMPAD_SUBTRACT)
        zoom(1 / zoom_step, middle);
    else if (key == '0' || key == WXK_NUMPAD0)
        fit();
    else if (key == WXK_LEFT || key == WXK_RIGHT || key == WXK_UP || key == WXK_DOWN)
        select(next_node(key));
    else
        event.Skip();
}

void Graph_page::paint()
{
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(wxBrush(system_color(wxSYS_COLOUR_WINDOW)));
    dc.Clear();
    dc.SetTextForeground(system_color(wxSYS_COLOUR_WINDOWTEXT));
    if (!m_layout.error.empty())
        dc.DrawText(to_text(m_layout.error), margin, margin);
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
    if (!context || m_layout.boxes.empty() || !m_layout.error.empty())
        return;
    context->Translate(m_origin.m_x, m_origin.m_y);
    context->Scale(m_scale, m_scale);
    draw_edges(*context);
    for (size_t i = 0; i < m_layout.boxes.size(); ++i)
        draw_node(*context, i);
}

void Graph_page::draw_edges(wxGraphicsContext& context) const
{
    context.SetPen(wxPen(system_color(wxSYS_COLOUR_GRAYTEXT), 1));
    context.SetBrush(*wxTRANSPARENT_BRUSH);
    for (const Layout_edge& edge : m_layout.edges) {
        if (edge.curve.empty())
            continue;
        wxGraphicsPath path = context.CreatePath();
        path.MoveToPoint(edge.curve[0].x, edge.curve[0].y);
        for (size_t i = 1; i + 2 < edge.curve.size(); i += 3)
            path.AddCurveToPoint(edge.curve[i].x, edge.curve[i].y, edge.curve[i + 1].x,
                                 edge.curve[i + 1].y, edge.curve[i + 2].x, edge.curve[i + 2].y);
        context.StrokePath(path);
    }
}

void Graph_page::draw_node(wxGraphicsContext& context, size_t index) const
{
    const Work_document* current = m_workspace.current();
    const Node* node = current ? current->node() : nullptr;
    const bool is_selected = node && full_name(*node) == m_names[index];
    const bool is_pointed_out = m_workspace.pointed_out() == m_names[index];
    const Layout_box& box = m_layout.boxes[index];
    const double left = box.center.x - box.width / 2;
    const double top = box.center.y - box.height / 2;
    const wxColour letters =
        system_color(is_selected ? wxSYS_COLOUR_HIGHLIGHTTEXT : wxSYS_COLOUR_BTNTEXT);
    context.SetBrush(
        wxBrush(system_color(is_selected ? wxSYS_COLOUR_HIGHLIGHT : wxSYS_COLOUR_BTNFACE)));
    context.SetPen(
        wxPen(system_color(is_pointed_out ? wxSYS_COLOUR_HIGHLIGHT : wxSYS_COLOUR_BTNSHADOW),
              is_pointed_out ? 3 : 1));
    context.DrawRoundedRectangle(left, top, box.width, box.height, padding / 2.0);
    context.SetFont(GetFont().Bold(), letters);
    context.DrawText(to_text(m_names[index]), left + padding, top + padding / 2.0);
    context.SetFont(GetFont(), letters);
    context.DrawText(to_text(m_categories[index]), left + padding, top + box.height / 2);
}

} // namespace reference_host
