// Fakes of the application handle, its preferences and the graph view.
#ifndef REFERENCE_HOST_RECORDING_HOST_FAKE_APPLICATION_H
#define REFERENCE_HOST_RECORDING_HOST_FAKE_APPLICATION_H

#include "reference_host/recording_host/fake_compiler.h"
#include "reference_host/recording_host/fake_graph.h"
#include "sdk/interface_ids.h"

namespace QZ
{
namespace TEST
{

class Fake_preferences : public Fake<TSDK::IPreferences>
{
public:
    using Fake::Fake;

    bool get_bool_preference(const char* name, bool* value) override
    {
        record("get_bool_preference(" + quoted(name) + ")");
        const auto found = m_fakes.script.preferences.find(name);
        if (m_recorder.next_call_fails() || found == m_fakes.script.preferences.end())
            return false;
        *value = found->second;
        return true;
    }
};

class Fake_app : public Fake<TSDK::ITovira>
{
public:
    using Fake::Fake;

    TSDK::Interface* get_interface(int id) override
    {
        record("get_interface(" + std::to_string(id) + ")");
        if (id == TSDK::INTERFACE_COMPILER)
            return m_recorder.give(m_fakes.compiler);
        if (id == TSDK::INTERFACE_PREFERENCES)
            return m_recorder.give(m_fakes.script.has_preferences ? m_fakes.preferences : nullptr);
        return nullptr;
    }

    const char** get_search_paths(int& count) override
    {
        record("get_search_paths()");
        m_fakes.lent_paths.clear();
        for (const Text& path : m_fakes.script.search_paths)
            m_fakes.lent_paths.push_back(path ? path->c_str() : nullptr);
        count = static_cast<int>(m_fakes.lent_paths.size());
        return m_recorder.next_call_fails() ? nullptr : m_fakes.lent_paths.data();
    }
};

class Fake_view : public Fake<TSDK::IGraph_view>
{
public:
    using Fake::Fake;

    TSDK::Interface* get_graph() override
    {
        record("get_graph()");
        return m_recorder.give(m_fakes.graph);
    }

    TSDK::IGraph_node* get_environment_shader() override
    {
        record("get_environment_shader()");
        return m_fakes.give_node(m_fakes.script.environment);
    }

    TSDK::IGraph_node* get_volume_shader() override
    {
        record("get_volume_shader()");
        return m_fakes.give_node(m_fakes.script.volume);
    }

    unsigned int get_num_lights() override
    {
        record("get_num_lights()");
        return static_cast<unsigned int>(m_fakes.script.lights.size());
    }

    TSDK::IGraph_node* get_light(unsigned int index) override
    {
        record("get_light(" + std::to_string(index) + ")");
        return m_fakes.give_node(light(index).node);
    }

    int get_light_type(unsigned int index) override
    {
        record("get_light_type(" + std::to_string(index) + ")");
        return light(index).type;
    }

    float get_light_spread(unsigned int index) override
    {
        record("get_light_spread(" + std::to_string(index) + ")");
        return light(index).spread;
    }

    float get_light_distance_limit(unsigned int index) override
    {
        record("get_light_distance_limit(" + std::to_string(index) + ")");
        return light(index).distance_limit;
    }

    int get_num_selected_nodes() override
    {
        record("get_num_selected_nodes()");
        return static_cast<int>(m_fakes.script.selection.size());
    }

    TSDK::IGraph_node* get_selected_node(int index) override
    {
        record("get_selected_node(" + std::to_string(index) + ")");
        return m_fakes.give_node(m_fakes.script.selection.at(static_cast<size_t>(index)));
    }

    void get_scene_ambient(float rgba[4]) override
    {
        record("get_scene_ambient()");
        std::memcpy(rgba, m_fakes.script.ambient, sizeof m_fakes.script.ambient);
    }

private:
    const Scripted_light& light(unsigned int index) const
    {
        return m_fakes.script.lights.at(index);
    }
};

} // namespace TEST
} // namespace QZ

#endif
