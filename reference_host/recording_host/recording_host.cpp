#include "reference_host/recording_host/recording_host.h"

#include "reference_host/recording_host/fake_application.h"
#include "reference_host/recording_host/fake_compiler.h"
#include "reference_host/recording_host/fake_graph.h"

namespace QZ
{
namespace TEST
{

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

void Recording_host::set_failing_call(int number, const Call_failure& failure)
{
    m_fakes->recorder.set_failing_call(number, failure);
}

void Recording_host::set_throwing_call(int number)
{
    Call_failure failure;
    failure.throws = true;
    m_fakes->recorder.set_failing_call(number, failure);
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
