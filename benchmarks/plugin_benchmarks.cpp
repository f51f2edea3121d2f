// What the plug-in itself costs, without a host's compiler:
//   walk_ladder/N     determine_subshader_usage over N steps that each use the one before twice:
//                     2^N paths, 2N connections
//   walk_chain/N      the same over N nodes in a row
//   bytes_in/N        N bytes of host text into a wxString
//   bytes_out/N       and back
#include "export_common/graph_queries.h"
#include "exporter_base/bytes.h"

#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace
{

using namespace QZ;

class Plain_declaration : public TSDK::IShader_declaration
{
public:
    TSDK::Interface* get_interface(int) override { return nullptr; }
    int get_interface_target() const override { return 0; }
    bool has_parameter(const char*) override { return false; }
    bool uses_function(const char*) override { return false; }
};

// A node without reference counts, whose sources all stand on one input.
class Plain_node : public TSDK::IGraph_node
{
public:
    std::vector<Plain_node*> sources;

    TSDK::Interface* get_interface(int) override { return nullptr; }
    int get_interface_target() const override { return 0; }
    const char* get_name() override { return "node"; }
    TSDK::IShader_declaration* get_declaration() override { return &m_declaration; }
    TSDK::IInput_iterator* get_input_iterator(int) override { return new Inputs(this); }
    const char* get_shader_type() override { return "surface"; }

private:
    class Connections final : public TSDK::IConnection_iterator
    {
    public:
        explicit Connections(Plain_node* node) : m_node(node) {}
        void release() const override { delete this; }
        TSDK::Interface* get_interface(int) override { return nullptr; }
        int get_interface_target() const override { return 0; }
        void reset() override { m_at = 0; }
        void next(int steps) override { m_at += steps; }
        bool at_end() override { return m_at >= m_node->sources.size(); }
        TSDK::IGraph_node* get_source_node() override { return m_node->sources[m_at]; }

    private:
        Plain_node* m_node;
        size_t m_at = 0;
    };

    class Inputs final : public TSDK::IInput_iterator
    {
    public:
        explicit Inputs(Plain_node* node) : m_node(node) {}
        void release() const override { delete this; }
        TSDK::Interface* get_interface(int) override { return nullptr; }
        int get_interface_target() const override { return 0; }
        void reset() override { m_done = false; }
        void next(int) override { m_done = true; }
        bool at_end() override { return m_done; }
        TSDK::IConnection_iterator* get_connections() override { return new Connections(m_node); }

    private:
        Plain_node* m_node;
        bool m_done = false;
    };

    Plain_declaration m_declaration;
};

// Nodes of which each is connected `times` times to the one before.
std::vector<std::unique_ptr<Plain_node>> connected_nodes(int count, int times)
{
    std::vector<std::unique_ptr<Plain_node>> nodes;
    for (int i = 0; i < count; ++i) {
        nodes.push_back(std::make_unique<Plain_node>());
        if (i > 0)
            nodes[i]->sources.assign(times, nodes[i - 1].get());
    }
    return nodes;
}

void walk(benchmark::State& state, int times)
{
    const auto nodes = connected_nodes(static_cast<int>(state.range(0)), times);
    for (auto _ : state) {
        bool lights = false;
        bool environment = false;
        TOVIRAEXPORT::determine_subshader_usage(nodes.back().get(), lights, environment);
        benchmark::DoNotOptimize(lights);
    }
    state.SetComplexityN(state.range(0));
}

void walk_ladder(benchmark::State& state)
{
    walk(state, 2);
}

void walk_chain(benchmark::State& state)
{
    walk(state, 1);
}

std::string shader_text(size_t size)
{
    const std::string line = "    color += light_contribution * max(dot_nl, 0.0); // \xC3\xA9\n";
    std::string text;
    while (text.size() < size)
        text += line;
    return text;
}

void bytes_in(benchmark::State& state)
{
    const std::string text = shader_text(static_cast<size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(TOVIRAEXPORT::from_bytes(text.c_str()));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void bytes_out(benchmark::State& state)
{
    const std::string bytes = shader_text(static_cast<size_t>(state.range(0)));
    const wxString text = TOVIRAEXPORT::from_bytes(bytes.c_str());
    for (auto _ : state)
        benchmark::DoNotOptimize(TOVIRAEXPORT::to_bytes(text));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
}

BENCHMARK(walk_ladder)->RangeMultiplier(4)->Range(16, 16384)->Complexity(benchmark::oN);
BENCHMARK(walk_chain)->RangeMultiplier(4)->Range(16, 16384)->Complexity(benchmark::oN);
BENCHMARK(bytes_in)->Arg(1 << 16)->Arg(1 << 23);
BENCHMARK(bytes_out)->Arg(1 << 16)->Arg(1 << 23);

} // namespace
