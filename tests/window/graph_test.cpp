// The graph of a document: nodes laid out, selected by mouse and keys.
#include "tests/window/program_window.h"

#include "reference_host/window/graph_layout.h"
#include "reference_host/window/graph_page.h"

namespace QZ
{
namespace TEST
{
namespace
{

class Graph : public Program_window
{
protected:
    void open_graph()
    {
        start(wxSize(1024, 700));
        open(sample("wood_textured"), "Custom GLSL");
        press_key("Control_L", "1");
        ASSERT_TRUE(wait_until([this] {
            return window().graph().IsShownOnScreen() && window().graph().layout().width > 0;
        }));
    }

    std::string exported_node() const { return full_name(*window().workspace().current()->node()); }
};

} // namespace

TEST_F(Graph, shows_every_node_left_of_those_that_read_it)
{
    open_graph();
    const reference_host::Graph_layout& layout = window().graph().layout();
    EXPECT_EQ(layout.error, "");
    EXPECT_EQ(layout.boxes.size(), window().workspace().current()->content.graph->nodes.size());
    EXPECT_FALSE(layout.edges.empty());
    for (const reference_host::Layout_edge& edge : layout.edges) {
        EXPECT_LT(layout.boxes[edge.from].center.x, layout.boxes[edge.to].center.x);
        EXPECT_EQ(edge.curve.size() % 3, 1u);
    }
    take_picture("graph");
}

TEST_F(Graph, exports_the_node_that_is_clicked)
{
    open_graph();
    click(window().graph(), window().graph().place_of("Varnished_wood"));
    EXPECT_TRUE(wait_until([this] { return exported_node() == "Varnished_wood"; }));
    EXPECT_TRUE(wait_for_code("Shader: Varnished_wood"));
}

TEST_F(Graph, goes_from_node_to_node_with_the_arrow_keys)
{
    open_graph();
    focus(window().graph());
    press_key("Left");
    EXPECT_TRUE(wait_until([this] { return exported_node() == "Varnished_wood"; }));
    press_key("Right");
    EXPECT_TRUE(wait_until([this] { return exported_node() == "Wood"; }));
}

TEST_F(Graph, grows_with_the_key_plus_and_fits_with_0)
{
    open_graph();
    focus(window().graph());
    const double before = window().graph().scale();
    press_key("KP_Add");
    EXPECT_TRUE(wait_until([&] { return window().graph().scale() > before; }));
    press_key("0");
    EXPECT_TRUE(wait_until([&] { return window().graph().scale() == before; }));
}

} // namespace TEST
} // namespace QZ
