#include "reference_host/host/compiler_objects.h"

#include "sdk/interface_ids.h"

#include <algorithm>
#include <cstring>

namespace reference_host
{

using QZ::TSDK::ICompilation_unit;
using QZ::TSDK::ICompiler_errors;
using QZ::TSDK::ICompiler_options;
using QZ::TSDK::IGenerated_shader;

namespace
{

class Compiler_options : public Host_object<ICompiler_options>
{
public:
    Compiler_options() : Host_object("compiler options", "") {}

    void set_option(const char* name, const char* value) override
    {
        used("set_option");
        if (name)
            m_options[name] = value ? value : "";
    }

    const Option_set& options() const { return m_options; }

private:
    Option_set m_options;
};

// All diagnostics go to the record of the export; the sink only marks that they are wanted.
class Compiler_errors : public Host_object<ICompiler_errors>
{
public:
    Compiler_errors() : Host_object("compiler errors", "") {}
};

class Generated_shader : public Host_object<IGenerated_shader>
{
public:
    Generated_shader(std::vector<std::string> texts, const std::string& target,
                     Compiler_record& record)
        : Host_object("generated shader", target), m_texts(std::move(texts)), m_record(record)
    {
    }

    int get_num_codes() override
    {
        used("get_num_codes");
        return static_cast<int>(m_texts.size());
    }
    unsigned int get_code_size(int code_index) override
    {
        used("get_code_size");
        return static_cast<unsigned int>(text(code_index).size());
    }
    void get_code(int code_index, char* buffer, unsigned int size) override
    {
        used("get_code");
        if (!buffer) {
            m_record.wrong_uses.push_back("get_code was given no buffer");
            return;
        }
        const std::string& code = text(code_index);
        const size_t length = std::min<size_t>(code.size(), size);
        std::memcpy(buffer, code.data(), length);
        buffer[length] = '\0';
        m_record.texts.push_back(code.substr(0, length));
    }

private:
    const std::string& text(int code_index) const
    {
        static const std::string none;
        const bool is_valid = code_index >= 0 && code_index < static_cast<int>(m_texts.size());
        if (!is_valid)
            m_record.wrong_uses.push_back("there is no generated text " +
                                          std::to_string(code_index));
        return is_valid ? m_texts[static_cast<size_t>(code_index)] : none;
    }

    std::vector<std::string> m_texts;
    Compiler_record& m_record;
};

class Compilation_unit : public Host_object<ICompilation_unit>
{
public:
    Compilation_unit(std::unique_ptr<Compiled_shader> shader, const std::string& name,
                     Ledger& ledger, Compiler_record& record)
        : Host_object("compilation unit", name),
          m_shader(std::move(shader)),
          m_ledger(ledger),
          m_record(record)
    {
    }

    IGenerated_shader* generate_shader(const char* target, ICompiler_options* options) override
    {
        used("generate_shader");
        const auto* set = m_ledger.find<Compiler_options>(options);
        if (!target || !set) {
            m_record.wrong_uses.push_back("generate_shader was given no target or no options");
            return nullptr;
        }
        set->used("generate_shader");
        std::vector<std::string> texts =
            m_shader->generate(target, set->options(), m_record.diagnostics);
        if (texts.empty())
            return nullptr;
        auto& generated = m_ledger.make<Generated_shader>(std::move(texts), target, m_record);
        generated.hand_out();
        return &generated;
    }
    bool uses_state(int, const char* name) override
    {
        used("uses_state");
        return name && m_shader->uses_state(name);
    }

private:
    std::unique_ptr<Compiled_shader> m_shader;
    Ledger& m_ledger;
    Compiler_record& m_record;
};

} // namespace

Compiler::Compiler(Graph_objects& objects, Compiler_record& record)
    : Host_object("compiler", ""), m_objects(objects), m_record(record)
{
}

int Compiler::get_interface_target() const
{
    return QZ::TSDK::INTERFACE_COMPILER;
}

ICompiler_options* Compiler::create_options()
{
    used("create_options");
    auto& options = m_objects.ledger().make<Compiler_options>();
    options.hand_out();
    return &options;
}

ICompiler_errors* Compiler::get_errors()
{
    used("get_errors");
    auto& errors = m_objects.ledger().make<Compiler_errors>();
    errors.hand_out();
    return &errors;
}

ICompilation_unit* Compiler::compile_shader(QZ::TSDK::IGraph_node* node, ICompiler_errors* errors,
                                            int)
{
    used("compile_shader");
    if (const auto* sink = m_objects.ledger().find<Compiler_errors>(errors))
        sink->used("compile_shader");
    const auto* known = m_objects.ledger().find<Graph_node>(node);
    if (!known) {
        m_record.wrong_uses.push_back("compile_shader was given no node of the graph");
        return nullptr;
    }
    known->used("compile_shader");
    const Export_scene& scene = m_objects.scene();
    return hand_out_unit(
        compile_node(*scene.graph, known->node(), scene.generator, m_record.diagnostics),
        known->node().name);
}

ICompilation_unit* Compiler::compile(QZ::TSDK::Interface* graph, ICompiler_errors* errors,
                                     ICompiler_options* options)
{
    used("compile");
    if (const auto* sink = m_objects.ledger().find<Compiler_errors>(errors))
        sink->used("compile");
    const auto* known_graph = m_objects.ledger().find<Graph_handle>(graph);
    const auto* set = m_objects.ledger().find<Compiler_options>(options);
    if (!known_graph || !set) {
        m_record.wrong_uses.push_back("compile was given no graph or no options");
        return nullptr;
    }
    known_graph->used("compile");
    set->used("compile");
    const Export_scene& scene = m_objects.scene();
    const auto name = set->options().find("shader_name");
    return hand_out_unit(
        compile_group(*scene.graph, set->options(), scene.generator, m_record.diagnostics),
        name == set->options().end() ? std::string() : name->second);
}

ICompilation_unit* Compiler::hand_out_unit(std::unique_ptr<Compiled_shader> shader,
                                           const std::string& name)
{
    if (!shader)
        return nullptr;
    auto& unit = m_objects.ledger().make<Compilation_unit>(std::move(shader), name,
                                                           m_objects.ledger(), m_record);
    unit.hand_out();
    return &unit;
}

} // namespace reference_host
