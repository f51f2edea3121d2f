#include "export_common/graph_queries.h"

#include "export_common/host_ref.h"
#include "exporter_base/bytes.h"
#include "sdk/interface_ids.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <unordered_set>
#include <vector>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

using Declaration_ref = Host_ref<TSDK::IShader_declaration>;

Host_ref<TSDK::IShader_group> group_of(const Declaration_ref& declaration)
{
    if (!declaration)
        return Host_ref<TSDK::IShader_group>();
    return query_interface<TSDK::IShader_group>(declaration.get(), TSDK::INTERFACE_SHADER_GROUP);
}

// The first member named "surface"; lent by the group, which lives as long as the declaration. A
// host that speaks of more members than any group has must not keep the user waiting.
TSDK::IGraph_node* find_surface_member(TSDK::IShader_group* group)
{
    constexpr int member_limit = 1 << 20;
    const int count = std::min(group->get_num_members(), member_limit);
    for (int i = 0; i < count; ++i) {
        TSDK::IGraph_node* member = group->get_member(i);
        if (member && std::strcmp(text_or_empty(member->get_name()), "surface") == 0)
            return member;
    }
    return nullptr;
}

bool uses_environment_function(TSDK::IShader_declaration* declaration)
{
    static const char* const functions[] = {"reflect_environment", "refract_environment",
                                            "trace_environment", "trace_immediate", "trace"};
    return std::any_of(std::begin(functions), std::end(functions),
                       [&](const char* name) { return declaration->uses_function(name); });
}

// The walk of determine_subshader_usage: depth first, with a stack of its own for the open visits,
// so that a deep graph does not overflow the process's stack.
class Usage_walk
{
public:
    Usage_walk(bool& uses_lights, bool& uses_environment)
        : m_uses_lights(uses_lights), m_uses_environment(uses_environment)
    {
    }

    void run(TSDK::IGraph_node* root)
    {
        m_walked.insert(root);
        enter(root);
        while (!m_visits.empty()) {
            Visit& visit = m_visits.back();
            if (!visit.inputs)
                begin_inputs(visit);
            else if (visit.connections)
                follow_connection(visit);
            else
                next_input(visit);
        }
    }

private:
    // One node on the way from the root, from its declaration to the end of its inputs.
    struct Visit {
        TSDK::IGraph_node* node;
        Declaration_ref declaration;
        Host_ref<TSDK::IInput_iterator> inputs;
        Host_ref<TSDK::IConnection_iterator> connections;
        bool followed = false; // the current connection's source has been walked
    };

    bool is_complete() const { return m_uses_lights && m_uses_environment; }

    // Opens the visit of a node. A material's surface is walked before the material itself.
    void enter(TSDK::IGraph_node* node)
    {
        do {
            Visit visit;
            visit.node = node;
            visit.declaration = adopt(node->get_declaration());
            node = find_surface(visit);
            m_visits.push_back(std::move(visit));
        } while (node && !is_under_way(node));
    }

    // The surface of a material that is still to be walked, or null. Without one, a material counts
    // as using lights.
    TSDK::IGraph_node* find_surface(const Visit& visit)
    {
        if (m_uses_lights || !is_material(visit.node))
            return nullptr;
        const Host_ref<TSDK::IShader_group> group = group_of(visit.declaration);
        TSDK::IGraph_node* surface = group ? find_surface_member(group.get()) : nullptr;
        if (!surface)
            m_uses_lights = true;
        return surface;
    }

    // A member is lent, not ours to remember; one that leads back to itself must not hang the walk.
    bool is_under_way(TSDK::IGraph_node* node) const
    {
        return std::any_of(m_visits.begin(), m_visits.end(),
                           [node](const Visit& visit) { return visit.node == node; });
    }

    void ask(TSDK::IShader_declaration* declaration)
    {
        if (declaration->has_parameter("lights"))
            m_uses_lights = true;
        if (declaration->uses_function("direct_light"))
            m_uses_lights = true;
        if (uses_environment_function(declaration))
            m_uses_environment = true;
    }

    void begin_inputs(Visit& visit)
    {
        if (visit.declaration)
            ask(visit.declaration.get());
        visit.declaration.release();
        visit.inputs = adopt(visit.node->get_input_iterator(0));
        if (visit.inputs)
            visit.inputs->reset();
        else
            m_visits.pop_back();
    }

    void next_input(Visit& visit)
    {
        if (visit.inputs->at_end()) {
            m_visits.pop_back();
            return;
        }
        visit.connections = adopt(visit.inputs->get_connections());
        if (visit.connections)
            visit.connections->reset();
        else
            visit.inputs->next(1);
    }

    // Two steps per connection: down into its source, then on to the next connection.
    void follow_connection(Visit& visit)
    {
        if (visit.followed) {
            visit.followed = false;
            if (is_complete()) {
                m_visits.pop_back();
                return;
            }
            visit.connections->next(1);
        }
        if (visit.connections->at_end()) {
            visit.connections.release();
            visit.inputs->next(1);
            return;
        }
        Host_ref<TSDK::IGraph_node> source = adopt(visit.connections->get_source_node());
        if (!source) {
            visit.connections->next(1);
            return;
        }
        visit.followed = true;
        TSDK::IGraph_node* node = source.get();
        if (m_walked.insert(node).second) {
            m_held.push_back(std::move(source));
            enter(node);
        }
    }

    bool& m_uses_lights;
    bool& m_uses_environment;
    std::vector<Visit> m_visits;
    std::unordered_set<TSDK::IGraph_node*> m_walked;
    // References to the walked nodes, so that no address is reused for another node.
    std::vector<Host_ref<TSDK::IGraph_node>> m_held;
};

} // namespace

bool is_material(TSDK::IGraph_node* node)
{
    if (!node)
        return false;
    const Declaration_ref declaration = adopt(node->get_declaration());
    const Host_ref<TSDK::IShader_group> group = group_of(declaration);
    return group && group->is_material();
}

void determine_subshader_usage(TSDK::IGraph_node* node, bool& uses_lights, bool& uses_environment)
{
    if (node)
        Usage_walk(uses_lights, uses_environment).run(node);
}

wxString get_shader_name(TSDK::IGraph_node* node)
{
    const wxString name = node ? from_bytes(node->get_name()) : wxString();
    return is_material(node) ? name + wxT("_surface") : name;
}

const char* get_shader_kind(TSDK::IGraph_node* node)
{
    return node ? node->get_shader_type() : nullptr;
}

bool is_surface_kind(const char* kind)
{
    return !kind || std::strcmp(kind, "surface") == 0;
}

} // namespace TOVIRAEXPORT
} // namespace QZ
