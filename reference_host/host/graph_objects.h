// The shader graph as the plug-in sees it.
#ifndef REFERENCE_HOST_HOST_GRAPH_OBJECTS_H
#define REFERENCE_HOST_HOST_GRAPH_OBJECTS_H

#include "reference_host/host/export_scene.h"
#include "reference_host/host/ledger.h"
#include "sdk/igraph_node.h"
#include "sdk/igraph_view.h"

#include <string>
#include <unordered_map>

namespace reference_host
{

class Graph_node;

// Makes the objects of the nodes. A node of the graph is always the same object, so that a walk can
// tell that it was there before.
class Graph_objects
{
public:
    // Both must outlive the objects.
    Graph_objects(Ledger& ledger, const Export_scene& scene) : m_ledger(ledger), m_scene(scene) {}

    // A new reference on the node's object; null for null.
    QZ::TSDK::IGraph_node* hand_out(const Node* node);

    // The object of a node as a member of a group, under the name of its part in that group.
    // Borrowed.
    QZ::TSDK::IGraph_node* lend_member(const Node& node, const std::string& part);

    Ledger& ledger() const { return m_ledger; }
    const Export_scene& scene() const { return m_scene; }

private:
    Ledger& m_ledger;
    const Export_scene& m_scene;
    std::unordered_map<const Node*, Graph_node*> m_nodes;
    std::unordered_map<std::string, Graph_node*> m_members; // by node and part
};

class Graph_node : public Host_object<QZ::TSDK::IGraph_node>
{
public:
    // `name` is what get_name answers.
    Graph_node(Graph_objects& objects, const Node& node, std::string name, Shader_kind_answer kind);

    const Node& node() const { return m_node; }

    const char* get_name() override;
    QZ::TSDK::IShader_declaration* get_declaration() override;
    QZ::TSDK::IInput_iterator* get_input_iterator(int kind) override;
    const char* get_shader_type() override;

private:
    Graph_objects& m_objects;
    const Node& m_node;
    std::string m_shown_name;
    Shader_kind_answer m_kind;
};

// The graph as a whole: nothing but a name for it.
class Graph_handle : public Host_object<QZ::TSDK::Interface>
{
public:
    Graph_handle() : Host_object("graph", "") {}
};

class Graph_view : public Host_object<QZ::TSDK::IGraph_view>
{
public:
    Graph_view(Graph_objects& objects, Graph_handle& graph);

    QZ::TSDK::Interface* get_graph() override;
    QZ::TSDK::IGraph_node* get_environment_shader() override;
    QZ::TSDK::IGraph_node* get_volume_shader() override;
    unsigned int get_num_lights() override;
    QZ::TSDK::IGraph_node* get_light(unsigned int index) override; // null beyond the last
    int get_light_type(unsigned int index) override;               // 0 beyond the last
    float get_light_spread(unsigned int index) override;
    float get_light_distance_limit(unsigned int index) override;
    int get_num_selected_nodes() override;
    QZ::TSDK::IGraph_node* get_selected_node(int index) override; // null out of range
    void get_scene_ambient(float rgba[4]) override;

private:
    Render_light light(unsigned int index) const;

    Graph_objects& m_objects;
    Graph_handle& m_graph;
};

} // namespace reference_host

#endif
