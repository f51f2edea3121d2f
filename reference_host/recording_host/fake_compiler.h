// Fakes of the compiler: option sets, units, generated shaders.
#ifndef REFERENCE_HOST_RECORDING_HOST_FAKE_COMPILER_H
#define REFERENCE_HOST_RECORDING_HOST_FAKE_COMPILER_H

#include "reference_host/recording_host/host_fakes.h"

#include <algorithm>
#include <cstring>

namespace QZ
{
namespace TEST
{

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
        if (m_recorder.next_call_fails()) {
            if (m_recorder.failure().text == Failed_text::garbage)
                std::memset(buffer, 0xff, size_t{size} + 1); // not even a terminating NUL
            return;
        }
        const std::string& text = code(index);
        const size_t length = std::min(text.size(), size_t{size});
        std::memcpy(buffer, text.data(), length);
        buffer[length] = '\0';
    }

private:
    const std::string& code(int index) const
    {
        static const std::string none;
        const std::vector<std::string>& codes = m_fakes.script.codes;
        const size_t position = static_cast<size_t>(index);
        return index >= 0 && position < codes.size() ? codes[position] : none;
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

} // namespace TEST
} // namespace QZ

#endif
