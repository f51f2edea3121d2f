#include "reference_host/shading/globals.h"
#include "reference_host/shading/module_fields.h"
#include "reference_host/shading/module_text.h"
#include "reference_host/shading/notation.h"
#include "reference_host/shading/shading_state.h"

#include <algorithm>
#include <map>

namespace reference_host
{
namespace
{

// What the functions of a module may name.
class Module_scope : public Notation_scope
{
public:
    explicit Module_scope(Module& module) : m_module(module) { module.origins = m_origins; }

    void add_uniform(const Code_type& type, const std::string& name)
    {
        m_uniforms[name] = variable(type, name);
    }

    Expr find_variable(const std::string& name) override
    {
        const auto uniform = m_uniforms.find(name);
        return uniform == m_uniforms.end() ? find_global(name) : uniform->second;
    }

    Code_type find_type(const std::string& name) override
    {
        return find_structure(name) ? Code_type(name) : Code_type();
    }

    Code_type find_member(const std::string& structure, const std::string& member) override
    {
        return member_type(structure, member);
    }

    // Functions may share a name; their parameters tell them apart.
    Expr call(const std::string& name, std::vector<Expr> arguments) override
    {
        const Builtin builtin = find_builtin(name);
        if (builtin != Builtin::none)
            return reference_host::call(builtin, std::move(arguments));
        for (const Function& function : m_module.functions)
            if (takes(function, name, arguments))
                return reference_host::call(name, function.type, std::move(arguments));
        throw Notation_error("no function \"" + name + "\" for these arguments");
    }

    Expr refused_value(const Code_type& type, const std::vector<Expr>& arguments) override
    {
        const auto is_text = [](const Expr& argument) { return argument->type == Base_type::text; };
        const bool has_origin = arguments.size() == 4 && is_text(arguments[1]) &&
                                is_text(arguments[2]) && arguments[3]->type == Base_type::integer;
        if (arguments.empty() || !is_text(arguments[0]) || (arguments.size() > 1 && !has_origin))
            throw Notation_error("wrong arguments for \"refused\"");
        m_module.has_refusals = true;
        Expr value = reference_host::refused(type, arguments[0]->name);
        if (!has_origin)
            return value;
        const int line = static_cast<int>(arguments[3]->numbers[0]);
        return with_origin(value, &m_origins->emplace_back(
                                      Origin{arguments[1]->name, {arguments[2]->name, line}}));
    }

private:
    static bool takes(const Function& function, const std::string& name,
                      const std::vector<Expr>& arguments)
    {
        return function.name == name &&
               std::equal(arguments.begin(), arguments.end(), function.parameters.begin(),
                          function.parameters.end(),
                          [](const Expr& argument, const Variable_declaration& parameter) {
                              return argument->type == parameter.type;
                          });
    }

    Module& m_module;
    std::shared_ptr<std::deque<Origin>> m_origins = std::make_shared<std::deque<Origin>>();
    std::map<std::string, Expr> m_uniforms;
};

class Module_reader
{
public:
    explicit Module_reader(const Shade_text& text) : m_scanner(text), m_scope(m_module) {}

    Module read()
    {
        read_shader();
        for (;;) {
            const auto item = std::find_if(std::begin(items), std::end(items),
                                           [&](const Item& i) { return m_scanner.accept(i.word); });
            if (item == std::end(items))
                break;
            (this->*item->read)();
            m_scanner.expect(";");
        }
        while (!m_scanner.at_end())
            read_function();
        if (m_module.functions.empty())
            m_scanner.fail("the module has no function");
        return std::move(m_module);
    }

private:
    struct Item {
        const char* word; // with the space behind it
        void (Module_reader::*read)();
    };

    void read_shader()
    {
        m_scanner.expect("shader ");
        const std::string role = m_scanner.name("what the shader is");
        const auto word = std::find(std::begin(role_words), std::end(role_words), role);
        if (word == std::end(role_words))
            m_scanner.fail("no shader is a \"" + role + "\"");
        m_module.role = static_cast<Shader_role>(word - std::begin(role_words));
        m_module.name = m_scanner.name("the name of the shader");
        m_scanner.expect(";");
    }

    // The fields that follow; false at something else.
    template<class Owner, std::size_t count>
    bool read_field(Owner& owner, const Text_field<Owner> (&fields)[count])
    {
        for (const Text_field<Owner>& field : fields)
            if (m_scanner.accept(std::string(field.word) + " ")) {
                owner.*field.text = m_scanner.quoted("a text");
                return true;
            }
        return false;
    }

    void read_source()
    {
        while (read_field(m_module, source_fields)) {
        }
    }

    void read_without()
    {
        do
            m_module.without_counterpart.push_back(m_scanner.quoted("an input"));
        while (m_scanner.accept(","));
    }

    void read_name()
    {
        const std::string name = m_scanner.name("a name");
        m_scanner.expect("=");
        m_module.names.push_back({name, m_scanner.quoted("a wish")});
    }

    bool read_number_or_flag(Module_parameter& parameter)
    {
        for (const Number_field& field : number_fields)
            if (m_scanner.accept(std::string(field.word) + " ")) {
                field.number(parameter) = m_scanner.number();
                return true;
            }
        for (const Flag_field& field : flag_fields)
            if (m_scanner.accept(std::string(field.word) + " "))
                return parameter.*field.flag = true;
        return false;
    }

    void read_parameter()
    {
        Module_parameter parameter;
        const Code_type type = base_type_from_word(m_scanner.name("the type of a parameter"));
        parameter.name = m_scanner.name("the name of a parameter");
        while (read_field(parameter, parameter_fields) || read_number_or_flag(parameter)) {
        }
        m_scanner.expect("=");
        parameter.value = parse_expression(m_scanner.until(';'), m_scope);
        if (!is_literal(parameter.value) || parameter.value->type != type)
            m_scanner.fail("the value of \"" + parameter.name + "\" is none of its type");
        m_scope.add_uniform(type, parameter.name);
        m_module.parameters.push_back(std::move(parameter));
    }

    void read_texture()
    {
        Module_texture texture;
        const Code_type type = base_type_from_word(m_scanner.name("the type of a texture"));
        if (!is_sampler(type))
            m_scanner.fail("no texture is of this type");
        texture.cube = type == Base_type::sampler_cube;
        texture.name = m_scanner.name("the name of a texture");
        while (read_field(texture, texture_fields)) {
        }
        m_scope.add_uniform(type, texture.name);
        m_module.textures.push_back(std::move(texture));
    }

    void read_function()
    {
        const bool of_library = m_scanner.accept("library ");
        Function function = parse_function(m_scanner.item(), m_scope, Empty_lines::kept);
        function.of_library = of_library;
        m_module.functions.push_back(std::move(function));
    }

    static constexpr Item items[] = {
        {"source", &Module_reader::read_source},    {"without ", &Module_reader::read_without},
        {"name ", &Module_reader::read_name},       {"parameter ", &Module_reader::read_parameter},
        {"texture ", &Module_reader::read_texture},
    };

    Shade_scanner m_scanner;
    Module m_module;
    Module_scope m_scope;
};

} // namespace

Module read_module(const Shade_text& text)
{
    return Module_reader(text).read();
}

} // namespace reference_host
