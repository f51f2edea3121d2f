#include "reference_host/window/graph_layout.h"

#include "reference_host/system/memory_file.h"
#include "reference_host/system/process.h"

#include <locale>
#include <sstream>

namespace reference_host
{
namespace
{

constexpr double per_inch = 72;
constexpr Process_limits limits = {5, 0, std::size_t{64} << 20};

std::string name_of(std::size_t index)
{
    return "n" + std::to_string(index);
}

std::size_t index_of(const std::string& name)
{
    return std::stoul(name.substr(1));
}

std::string dot_text(const Graph_layout& graph)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << "digraph { rankdir = LR; nodesep = 0.15; ranksep = 0.5;\n"
            "node [shape = box, fixedsize = true, label = \"\"]; edge [arrowhead = none];\n";
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        text << name_of(i) << " [width = " << graph.boxes[i].width / per_inch
             << ", height = " << graph.boxes[i].height / per_inch << "];\n";
    for (const Layout_edge& edge : graph.edges)
        text << name_of(edge.from) << ":e -> " << name_of(edge.to) << ":w;\n";
    text << "}\n";
    return text.str();
}

// Reads the form "plain" of Graphviz: lengths in inches, y upwards.
class Plain_reader
{
public:
    explicit Plain_reader(Graph_layout& layout) : m_layout(layout) {}

    void read_line(const std::string& line)
    {
        m_words = std::istringstream(line);
        m_words.imbue(std::locale::classic());
        std::string kind;
        m_words >> kind;
        if (kind == "graph")
            read_graph();
        else if (kind == "node")
            read_node();
        else if (kind == "edge")
            read_edge();
    }

private:
    void read_graph()
    {
        double scale = 1;
        m_words >> scale >> m_layout.width >> m_layout.height;
        m_layout.width *= per_inch;
        m_layout.height *= per_inch;
    }

    void read_node()
    {
        std::string name;
        m_words >> name;
        m_layout.boxes.at(index_of(name)).center = read_point();
    }

    void read_edge()
    {
        std::string from, to;
        std::size_t count = 0;
        m_words >> from >> to >> count;
        Layout_edge edge = {index_of(from), index_of(to), {}};
        for (std::size_t i = 0; i < count && m_words; ++i)
            edge.curve.push_back(read_point());
        m_layout.edges.push_back(std::move(edge));
    }

    Layout_point read_point()
    {
        Layout_point point;
        m_words >> point.x >> point.y;
        return {point.x * per_inch, m_layout.height - point.y * per_inch};
    }

    Graph_layout& m_layout;
    std::istringstream m_words;
};

} // namespace

Graph_layout lay_out(const Graph_layout& graph)
{
    Graph_layout layout;
    layout.boxes = graph.boxes;
    const Memory_file file(dot_text(graph));
    const Process_result result = run_program({"dot", "-Tplain", file.path()}, limits);
    if (result.end == Process_end::no_start) {
        layout.error = "The graph is laid out by Graphviz, which is absent: the program dot.";
    } else if (result.end != Process_end::exit || result.status != 0) {
        layout.error = "The graph cannot be laid out: dot " + describe_end(result, limits);
    } else {
        Plain_reader reader(layout);
        std::istringstream lines(result.output);
        for (std::string line; std::getline(lines, line);)
            reader.read_line(line);
    }
    return layout;
}

} // namespace reference_host
