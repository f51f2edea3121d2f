#include "reference_host/host/graph_objects.h"

#include "sdk/interface_ids.h"

#include <algorithm>
#include <cstring>

namespace reference_host
{

using QZ::TSDK::IConnection_iterator;
using QZ::TSDK::IGraph_node;
using QZ::TSDK::IInput_iterator;
using QZ::TSDK::Interface;
using QZ::TSDK::IShader_declaration;
using QZ::TSDK::IShader_group;

namespace
{

// What the nodes connected to a material's inputs are to its group.
struct Member_row {
    const char* input;
    const char* part;
};

constexpr Member_row member_rows[] = {
    {"surfaceshader", "surface"},
    {"backsurfaceshader", "back_surface"},
    {"displacementshader", "displacement"},
    {"volumeshader", "volume"},
};

// The connection of one input: one source, or none.
class Connection_iterator : public Host_object<IConnection_iterator>
{
public:
    Connection_iterator(Graph_objects& objects, const Node* source)
        : Host_object("connection iterator", ""), m_objects(objects), m_source(source)
    {
    }

    void reset() override
    {
        used("reset");
        m_index = 0;
    }
    void next(int steps) override
    {
        used("next");
        m_index += std::max(steps, 0);
    }
    bool at_end() override
    {
        used("at_end");
        return m_index > 0 || !m_source;
    }
    IGraph_node* get_source_node() override
    {
        used("get_source_node");
        return m_objects.hand_out(m_index == 0 ? m_source : nullptr);
    }

private:
    Graph_objects& m_objects;
    const Node* m_source;
    long m_index = 0;
};

class Input_iterator : public Host_object<IInput_iterator>
{
public:
    Input_iterator(Graph_objects& objects, const Node& node)
        : Host_object("input iterator", node.name), m_objects(objects), m_node(node)
    {
    }

    void reset() override
    {
        used("reset");
        m_index = 0;
    }
    void next(int steps) override
    {
        used("next");
        m_index += static_cast<size_t>(std::max(steps, 0));
    }
    bool at_end() override
    {
        used("at_end");
        return m_index >= m_node.inputs.size();
    }
    IConnection_iterator* get_connections() override
    {
        used("get_connections");
        const Node* source =
            m_index < m_node.inputs.size() ? m_node.inputs[m_index].source : nullptr;
        auto& connections = m_objects.ledger().make<Connection_iterator>(m_objects, source);
        connections.hand_out();
        return &connections;
    }

private:
    Graph_objects& m_objects;
    const Node& m_node;
    size_t m_index = 0;
};

// The group that a material is: the shaders connected to it.
class Shader_group : public Host_object<IShader_group>
{
public:
    Shader_group(Graph_objects& objects, const Node& material)
        : Host_object("shader group", material.name), m_objects(objects)
    {
        for (const Member_row& row : member_rows) {
            const Input* input = material.find_input(row.input);
            if (input && input->source)
                m_members.push_back({input->source, row.part});
        }
    }

    int get_interface_target() const override { return QZ::TSDK::INTERFACE_SHADER_GROUP; }

    int get_num_members() override
    {
        used("get_num_members");
        return static_cast<int>(m_members.size());
    }
    IGraph_node* get_member(int index) override
    {
        used("get_member");
        if (index < 0 || index >= static_cast<int>(m_members.size()))
            return nullptr;
        const Member& member = m_members[static_cast<size_t>(index)];
        return m_objects.lend_member(*member.node, member.part);
    }
    bool is_material() override
    {
        used("is_material");
        return true;
    }

private:
    struct Member {
        const Node* node;
        const char* part;
    };

    Graph_objects& m_objects;
    std::vector<Member> m_members;
};

class Shader_declaration : public Host_object<IShader_declaration>
{
public:
    Shader_declaration(Graph_objects& objects, const Node& node)
        : Host_object("shader declaration", node.name),
          m_objects(objects),
          m_node(node),
          m_usage(shader_usage(node))
    {
    }

    Interface* get_interface(int id) override
    {
        used("get_interface");
        if (id != QZ::TSDK::INTERFACE_SHADER_GROUP || m_node.type != Value_type::material)
            return nullptr;
        auto& group = m_objects.ledger().make<Shader_group>(m_objects, m_node);
        group.hand_out();
        return &group;
    }
    bool has_parameter(const char* name) override
    {
        used("has_parameter");
        if (!name)
            return false;
        return std::strcmp(name, "lights") == 0 ? m_usage.lights_parameter
                                                : m_node.find_input(name) != nullptr;
    }
    bool uses_function(const char* name) override
    {
        used("uses_function");
        struct Function {
            const char* name;
            bool is_used;
        };
        const Function functions[] = {
            {"direct_light", m_usage.direct_light},
            {"reflect_environment", m_usage.reflect_environment},
            {"refract_environment", m_usage.refract_environment},
            // What could do without an environment does not ask for one.
            {"trace_environment",
             m_usage.trace_environment && m_objects.scene().render_settings.environment != nullptr},
        };
        return name && std::any_of(std::begin(functions), std::end(functions),
                                   [&](const Function& function) {
                                       return function.is_used &&
                                              std::strcmp(name, function.name) == 0;
                                   });
    }

private:
    Graph_objects& m_objects;
    const Node& m_node;
    Shader_usage m_usage;
};

} // namespace

IGraph_node* Graph_objects::hand_out(const Node* node)
{
    if (!node)
        return nullptr;
    Graph_node*& object = m_nodes[node];
    if (!object) {
        const auto& selection = m_scene.selection;
        const bool is_selected =
            std::find(selection.begin(), selection.end(), node) != selection.end();
        object = &m_ledger.make<Graph_node>(*this, *node, full_name(*node),
                                            is_selected ? m_scene.kind : Shader_kind_answer());
    }
    object->hand_out();
    return object;
}

IGraph_node* Graph_objects::lend_member(const Node& node, const std::string& part)
{
    Graph_node*& object = m_members[full_name(node) + " as " + part];
    if (!object)
        object = &m_ledger.make<Graph_node>(*this, node, part, Shader_kind_answer());
    object->lend();
    return object;
}

Graph_node::Graph_node(Graph_objects& objects, const Node& node, std::string name,
                       Shader_kind_answer kind)
    : Host_object("graph node", name),
      m_objects(objects),
      m_node(node),
      m_shown_name(std::move(name)),
      m_kind(std::move(kind))
{
}

const char* Graph_node::get_name()
{
    used("get_name");
    return m_shown_name.c_str();
}

IShader_declaration* Graph_node::get_declaration()
{
    used("get_declaration");
    auto& declaration = m_objects.ledger().make<Shader_declaration>(m_objects, m_node);
    declaration.hand_out();
    return &declaration;
}

IInput_iterator* Graph_node::get_input_iterator(int)
{
    used("get_input_iterator");
    auto& inputs = m_objects.ledger().make<Input_iterator>(m_objects, m_node);
    inputs.hand_out();
    return &inputs;
}

const char* Graph_node::get_shader_type()
{
    used("get_shader_type");
    switch (m_kind.from) {
    case Shader_kind_answer::From::fixed:
        return m_kind.text.c_str();
    case Shader_kind_answer::From::none:
        return nullptr;
    case Shader_kind_answer::From::node:
        break;
    }
    return shader_kind(m_node);
}

Graph_view::Graph_view(Graph_objects& objects, Graph_handle& graph)
    : Host_object("graph view", ""), m_objects(objects), m_graph(graph)
{
}

Interface* Graph_view::get_graph()
{
    used("get_graph");
    m_graph.hand_out();
    return &m_graph;
}

IGraph_node* Graph_view::get_environment_shader()
{
    used("get_environment_shader");
    return m_objects.hand_out(m_objects.scene().render_settings.environment);
}

IGraph_node* Graph_view::get_volume_shader()
{
    used("get_volume_shader");
    return m_objects.hand_out(m_objects.scene().render_settings.volume);
}

unsigned int Graph_view::get_num_lights()
{
    used("get_num_lights");
    return static_cast<unsigned int>(m_objects.scene().render_settings.lights.size());
}

Render_light Graph_view::light(unsigned int index) const
{
    const std::vector<Render_light>& lights = m_objects.scene().render_settings.lights;
    return index < lights.size() ? lights[index] : Render_light();
}

IGraph_node* Graph_view::get_light(unsigned int index)
{
    used("get_light");
    return m_objects.hand_out(light(index).node);
}

int Graph_view::get_light_type(unsigned int index)
{
    used("get_light_type");
    return static_cast<int>(light(index).kind);
}

float Graph_view::get_light_spread(unsigned int index)
{
    used("get_light_spread");
    return light(index).spread;
}

float Graph_view::get_light_distance_limit(unsigned int index)
{
    used("get_light_distance_limit");
    return light(index).distance_limit;
}

int Graph_view::get_num_selected_nodes()
{
    used("get_num_selected_nodes");
    return static_cast<int>(m_objects.scene().selection.size());
}

IGraph_node* Graph_view::get_selected_node(int index)
{
    used("get_selected_node");
    const auto& selection = m_objects.scene().selection;
    const bool is_valid = index >= 0 && index < static_cast<int>(selection.size());
    return m_objects.hand_out(is_valid ? selection[static_cast<size_t>(index)] : nullptr);
}

void Graph_view::get_scene_ambient(float rgba[4])
{
    used("get_scene_ambient");
    std::copy_n(m_objects.scene().render_settings.ambient.begin(), 4, rgba);
}

} // namespace reference_host
