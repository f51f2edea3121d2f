#include "tests/support/recording_host.h"

#include "sdk/interface_ids.h"
#include "tests/support/recorder.h"

#include <cstring>
#include <unordered_map>

namespace QZ
{
namespace TEST
{

namespace
{

class Fake_compiler;
class Fake_errors;
class Fake_graph;
class Fake_node;
class Fake_preferences;

std::string quoted(const char* text)
{
    return text ? '"' + std::string(text) + '"' : std::string("null");
}

std::string numbered(const char* kind, size_t number)
{
    return std::string(kind) + " " + std::to_string(number);
}

// An argument of a call, by its name in the log.
std::string argument(const TSDK::Interface* object)
{
    if (!object)
        return "null";
    const auto* recorded = dynamic_cast<const Recorded_object*>(object);
    return recorded ? recorded->name_as_argument() : "foreign object";
}

} // namespace

// The fakes' common ground: the script, the books, and the fake of each node.
struct Host_fakes {
    explicit Host_fakes(const Recording_host& host) : script(host) {}

    // Hands a text out, or null when this is the call that fails.
    const char* give_text(const Text& text)
    {
        return recorder.next_call_fails() || !text ? nullptr : text->c_str();
    }

    Fake_node* find_node(const Scripted_node* node);
    TSDK::IGraph_node* give_node(const Scripted_node* node);

    // Makes an object of a numbered kind and hands it out, or null when this is the call that
    // fails.
    template<typename Object>
    Object* give_numbered(const char* kind, size_t& count)
    {
        return recorder.give(recorder.make<Object>(*this, numbered(kind, ++count)));
    }

    const Recording_host& script;
    Recorder recorder;
    std::unordered_map<const Scripted_node*, Fake_node*> nodes;
    std::vector<Options> options;
    std::vector<const char*> lent_paths;
    size_t option_set_count = 0;
    size_t unit_count = 0;
    size_t shader_count = 0;

    TSDK::ITovira* app = nullptr;
    TSDK::IGraph_view* view = nullptr;
    Fake_compiler* compiler = nullptr;
    Fake_preferences* preferences = nullptr;
    Fake_errors* errors = nullptr;
    Fake_graph* graph = nullptr;
};

namespace
{

template<typename Base_interface>
class Fake : public Recorded<Base_interface>
{
public:
    Fake(Host_fakes& fakes, const std::string& name)
        : Recorded<Base_interface>(fakes.recorder, name), m_fakes(fakes)
    {
    }

protected:
    Host_fakes& m_fakes;
};

// ---- the graph

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
    Fake_group* m_group; // null for a declaration that is no group
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

TSDK::IGraph_node* Fake_group::get_member(int index)
{
    record("get_member(" + std::to_string(index) + ")");
    Fake_node* member = m_fakes.find_node(m_node.members.at(static_cast<size_t>(index)));
    if (m_recorder.next_call_fails() || !member)
        return nullptr;
    member->lend();
    return member;
}

// ---- the compiler

class Fake_errors : public Fake<TSDK::ICompiler_errors>
{
public:
    using Fake::Fake;
};

class Fake_graph : public Fake<TSDK::Interface>
{
public:
    using Fake::Fake;
};

class Fake_options : public Fake<TSDK::ICompiler_options>
{
public:
    Fake_options(Host_fakes& fakes, const std::string& name)
        : Fake(fakes, name), m_index(fakes.options.size())
    {
        fakes.options.emplace_back();
    }

    void set_option(const char* name, const char* value) override
    {
        record("set_option(" + quoted(name) + ", " + quoted(value) + ")");
        m_fakes.options[m_index].emplace_back(name ? name : "<null>", value ? value : "<null>");
    }

private:
    size_t m_index;
};

class Fake_shader : public Fake<TSDK::IGenerated_shader>
{
public:
    using Fake::Fake;

    int get_num_codes() override
    {
        record("get_num_codes()");
        return static_cast<int>(m_fakes.script.codes.size());
    }

    unsigned int get_code_size(int index) override
    {
        record("get_code_size(" + std::to_string(index) + ")");
        return static_cast<unsigned int>(code(index).size());
    }

    void get_code(int index, char* buffer, unsigned int size) override
    {
        record("get_code(" + std::to_string(index) + ", " + std::to_string(size) + ")");
        if (m_recorder.next_call_fails())
            return;
        const std::string text = code(index).substr(0, size);
        std::memcpy(buffer, text.c_str(), text.size() + 1);
    }

private:
    std::string code(int index) const
    {
        const std::vector<std::string>& codes = m_fakes.script.codes;
        const size_t position = static_cast<size_t>(index);
        return index >= 0 && position < codes.size() ? codes[position] : std::string();
    }
};

class Fake_unit : public Fake<TSDK::ICompilation_unit>
{
public:
    using Fake::Fake;

    TSDK::IGenerated_shader* generate_shader(const char* target,
                                             TSDK::ICompiler_options* options) override
    {
        record("generate_shader(" + quoted(target) + ", " + argument(options) + ")");
        if (!m_fakes.script.generates)
            return nullptr;
        return m_fakes.give_numbered<Fake_shader>("shader", m_fakes.shader_count);
    }

    bool uses_state(int shader_index, const char* name) override
    {
        record("uses_state(" + std::to_string(shader_index) + ", " + quoted(name) + ")");
        return m_fakes.script.states.count(name) > 0;
    }
};

class Fake_compiler : public Fake<TSDK::ITovira_compiler>
{
public:
    using Fake::Fake;

    TSDK::ICompiler_options* create_options() override
    {
        record("create_options()");
        return m_fakes.give_numbered<Fake_options>("options", m_fakes.option_set_count);
    }

    TSDK::ICompiler_errors* get_errors() override
    {
        record("get_errors()");
        return m_recorder.give(m_fakes.errors);
    }

    TSDK::ICompilation_unit* compile_shader(TSDK::IGraph_node* node, TSDK::ICompiler_errors* errors,
                                            int flags) override
    {
        record("compile_shader(" + argument(node) + ", " + argument(errors) + ", " +
               std::to_string(flags) + ")");
        return give_unit();
    }

    TSDK::ICompilation_unit* compile(TSDK::Interface* graph, TSDK::ICompiler_errors* errors,
                                     TSDK::ICompiler_options* options) override
    {
        record("compile(" + argument(graph) + ", " + argument(errors) + ", " + argument(options) +
               ")");
        return give_unit();
    }

private:
    TSDK::ICompilation_unit* give_unit()
    {
        if (!m_fakes.script.compiles)
            return nullptr;
        return m_fakes.give_numbered<Fake_unit>("unit", m_fakes.unit_count);
    }
};

// ---- the application

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

} // namespace

Fake_node* Host_fakes::find_node(const Scripted_node* node)
{
    if (!node)
        return nullptr;
    Fake_node*& fake = nodes[node];
    if (!fake)
        fake = recorder.make<Fake_node>(*this, *node);
    return fake;
}

TSDK::IGraph_node* Host_fakes::give_node(const Scripted_node* node)
{
    return recorder.give(find_node(node));
}

// ---- the host

Recording_host::Recording_host() : m_fakes(std::make_unique<Host_fakes>(*this))
{
    Recorder& recorder = m_fakes->recorder;
    Fake_app* app = recorder.make<Fake_app>(*m_fakes, "app");
    Fake_view* view = recorder.make<Fake_view>(*m_fakes, "view");
    app->lend();
    view->lend();
    m_fakes->app = app;
    m_fakes->view = view;
    m_fakes->compiler = recorder.make<Fake_compiler>(*m_fakes, "compiler");
    m_fakes->preferences = recorder.make<Fake_preferences>(*m_fakes, "preferences");
    m_fakes->errors = recorder.make<Fake_errors>(*m_fakes, "errors");
    m_fakes->graph = recorder.make<Fake_graph>(*m_fakes, "graph");
}

Recording_host::~Recording_host() = default;

Scripted_node& Recording_host::add_node(const Text& name)
{
    m_nodes.push_back(std::make_unique<Scripted_node>());
    m_nodes.back()->name = name;
    return *m_nodes.back();
}

Scripted_node& Recording_host::add_selected_node(const Text& name)
{
    Scripted_node& node = add_node(name);
    selection.push_back(&node);
    return node;
}

Scripted_node& Recording_host::add_light(const Text& name, int type, float spread,
                                         float distance_limit)
{
    Scripted_node& node = add_node(name);
    node.kind = "light";
    lights.push_back({&node, type, spread, distance_limit});
    return node;
}

void Recording_host::set_failing_call(int number)
{
    m_fakes->recorder.set_failing_call(number);
}

void Recording_host::set_keeps_log(bool keeps_log)
{
    m_fakes->recorder.set_keeps_log(keeps_log);
}

TSDK::ITovira* Recording_host::app()
{
    return m_fakes->app;
}

TSDK::IGraph_view* Recording_host::view()
{
    return m_fakes->view;
}

TSDK::ITovira_compiler* Recording_host::compiler()
{
    m_fakes->compiler->lend();
    return m_fakes->compiler;
}

TSDK::ICompiler_errors* Recording_host::errors()
{
    m_fakes->errors->lend();
    return m_fakes->errors;
}

TSDK::IGraph_node* Recording_host::node(const Scripted_node& script)
{
    Fake_node* node = m_fakes->find_node(&script);
    node->lend();
    return node;
}

TSDK::ICompilation_unit* Recording_host::make_unit()
{
    Fake_unit* unit =
        m_fakes->recorder.make<Fake_unit>(*m_fakes, numbered("unit", ++m_fakes->unit_count));
    unit->lend();
    return unit;
}

TSDK::ICompiler_options* Recording_host::make_options()
{
    Fake_options* options = m_fakes->recorder.make<Fake_options>(
        *m_fakes, numbered("options", ++m_fakes->option_set_count));
    options->lend();
    return options;
}

TSDK::IGenerated_shader* Recording_host::make_shader()
{
    Fake_shader* shader =
        m_fakes->recorder.make<Fake_shader>(*m_fakes, numbered("shader", ++m_fakes->shader_count));
    shader->lend();
    return shader;
}

const std::vector<std::string>& Recording_host::log() const
{
    return m_fakes->recorder.log();
}

std::vector<std::string> Recording_host::calls(const std::string& beginning) const
{
    std::vector<std::string> calls;
    for (const std::string& line : log())
        if (line.compare(0, beginning.size(), beginning) == 0)
            calls.push_back(line);
    return calls;
}

std::vector<std::string> Recording_host::releases() const
{
    const std::string ending = ".release()";
    std::vector<std::string> names;
    for (const std::string& line : log())
        if (line.size() > ending.size() &&
            line.compare(line.size() - ending.size(), ending.size(), ending) == 0)
            names.push_back(line.substr(0, line.size() - ending.size()));
    return names;
}

Options Recording_host::options(int number) const
{
    const size_t index = static_cast<size_t>(number) - 1;
    return index < m_fakes->options.size() ? m_fakes->options[index] : Options();
}

int Recording_host::fallible_calls() const
{
    return m_fakes->recorder.fallible_calls();
}

std::vector<std::string> Recording_host::problems() const
{
    return m_fakes->recorder.problems();
}

std::string option_value(const Options& options, const std::string& name)
{
    std::string value = "<not set>";
    for (const auto& option : options)
        if (option.first == name)
            value = option.second;
    return value;
}

} // namespace TEST
} // namespace QZ
