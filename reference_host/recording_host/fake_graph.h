// Fakes of the shader graph: nodes, declarations, groups and the iterators.
#ifndef REFERENCE_HOST_RECORDING_HOST_FAKE_GRAPH_H
#define REFERENCE_HOST_RECORDING_HOST_FAKE_GRAPH_H

#include "reference_host/recording_host/host_fakes.h"
#include "sdk/interface_ids.h"

namespace QZ
{
namespace TEST
{

class Fake_connections : public Fake<TSDK::IConnection_iterator>
{
public:
    Fake_connections(Host_fakes& fakes, const std::string& name,
                     const std::vector<Scripted_node*>& sources)
        : Fake(fakes, name), m_sources(sources)
    {
    }

    void reset() override
    {
        record("reset()");
        m_position = 0;
    }

    void next(int steps) override
    {
        record("next(" + std::to_string(steps) + ")");
        m_position += steps;
    }

    bool at_end() override
    {
        record("at_end()");
        return m_position >= m_sources.size();
    }

    TSDK::IGraph_node* get_source_node() override
    {
        record("get_source_node()");
        return m_fakes.give_node(m_position < m_sources.size() ? m_sources[m_position] : nullptr);
    }

private:
    const std::vector<Scripted_node*>& m_sources;
    size_t m_position = 0;
};

class Fake_inputs : public Fake<TSDK::IInput_iterator>
{
public:
    Fake_inputs(Host_fakes& fakes, const std::string& node_name, const Scripted_node& node)
        : Fake(fakes, "inputs of " + node_name), m_node_name(node_name), m_node(node)
    {
    }

    void reset() override
    {
        record("reset()");
        m_position = 0;
    }

    void next(int steps) override
    {
        record("next(" + std::to_string(steps) + ")");
        m_position += steps;
    }

    bool at_end() override
    {
        record("at_end()");
        return m_position >= m_node.inputs.size();
    }

    TSDK::IConnection_iterator* get_connections() override
    {
        record("get_connections()");
        if (m_position >= m_node.inputs.size())
            return nullptr;
        return m_recorder.give(m_recorder.make<Fake_connections>(
            m_fakes, "connections of " + m_node_name, m_node.inputs[m_position]));
    }

private:
    std::string m_node_name;
    const Scripted_node& m_node;
    size_t m_position = 0;
};

class Fake_group : public Fake<TSDK::IShader_group>
{
public:
    Fake_group(Host_fakes& fakes, const std::string& name, const Scripted_node& node)
        : Fake(fakes, name), m_node(node)
    {
    }

    int get_num_members() override
    {
        record("get_num_members()");
        return static_cast<int>(m_node.members.size());
    }

    TSDK::IGraph_node* get_member(int index) override;

    bool is_material() override
    {
        record("is_material()");
        return m_node.is_material;
    }

private:
    const Scripted_node& m_node;
};

class Fake_declaration : public Fake<TSDK::IShader_declaration>
{
public:
    Fake_declaration(Host_fakes& fakes, const std::string& node_name, const Scripted_node& node)
        : Fake(fakes, "declaration of " + node_name),
          m_node(node),
          m_group(node.is_group ? m_recorder.make<Fake_group>(fakes, "group of " + node_name, node)
                                : nullptr)
    {
    }

    TSDK::Interface* get_interface(int id) override
    {
        record("get_interface(" + std::to_string(id) + ")");
        return id == TSDK::INTERFACE_SHADER_GROUP ? m_recorder.give(m_group) : nullptr;
    }

    bool has_parameter(const char* name) override
    {
        record("has_parameter(" + quoted(name) + ")");
        return m_node.parameters.count(name) > 0;
    }

    bool uses_function(const char* name) override
    {
        record("uses_function(" + quoted(name) + ")");
        return m_node.functions.count(name) > 0;
    }

private:
    const Scripted_node& m_node;
    Fake_group* m_group; // null for a declaration that is not a group
};

class Fake_node : public Fake<TSDK::IGraph_node>
{
public:
    Fake_node(Host_fakes& fakes, const Scripted_node& node)
        : Fake(fakes, node.name.value_or("unnamed node")),
          m_node(node),
          m_declaration(m_recorder.make<Fake_declaration>(fakes, name(), node))
    {
    }

    const char* get_name() override
    {
        record("get_name()");
        return m_fakes.give_text(m_node.name);
    }

    TSDK::IShader_declaration* get_declaration() override
    {
        record("get_declaration()");
        return m_recorder.give(m_declaration);
    }

    TSDK::IInput_iterator* get_input_iterator(int kind) override
    {
        record("get_input_iterator(" + std::to_string(kind) + ")");
        return m_recorder.give(m_recorder.make<Fake_inputs>(m_fakes, name(), m_node));
    }

    const char* get_shader_type() override
    {
        record("get_shader_type()");
        return m_fakes.give_text(m_node.kind);
    }

private:
    const Scripted_node& m_node;
    Fake_declaration* m_declaration;
};

inline TSDK::IGraph_node* Fake_group::get_member(int index)
{
    record("get_member(" + std::to_string(index) + ")");
    Fake_node* member = m_fakes.find_node(m_node.members.at(static_cast<size_t>(index)));
    if (m_recorder.next_call_fails() || !member)
        return nullptr;
    member->lend();
    return member;
}

inline Fake_node* Host_fakes::find_node(const Scripted_node* node)
{
    if (!node)
        return nullptr;
    Fake_node*& fake = nodes[node];
    if (!fake)
        fake = recorder.make<Fake_node>(*this, *node);
    return fake;
}

inline TSDK::IGraph_node* Host_fakes::give_node(const Scripted_node* node)
{
    return recorder.give(find_node(node));
}

} // namespace TEST
} // namespace QZ

#endif
