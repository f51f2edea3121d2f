#include "reference_host/generator/program.h"

#include "reference_host/generator/dialect.h"
#include "reference_host/generator/library.h"

namespace reference_host
{
namespace
{

// The program's scope with a meaning for T.
class Generic_scope : public Notation_scope
{
public:
    Generic_scope(Program& program, Shading_type generic)
        : m_program(program), m_generic(std::move(generic))
    {
    }

    Expr find_variable(const std::string& name) override { return m_program.find_variable(name); }
    Shading_type find_type(const std::string& name) override
    {
        return name == "T" ? m_generic : m_program.find_type(name);
    }
    Shading_type find_member(const std::string& structure, const std::string& member) override
    {
        return m_program.find_member(structure, member);
    }
    Expr call(const std::string& function, std::vector<Expr> arguments) override
    {
        return m_program.call(function, std::move(arguments));
    }

private:
    Program& m_program;
    Shading_type m_generic;
};

// What T is in a call; none when the function has no T.
Shading_type generic_type(const Function_head& head, const std::vector<Expr>& arguments)
{
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (head.parameter_types[i] == "T")
            return arguments[i]->type;
    return Kind::none;
}

Expr fitting(const Expr& argument, const Shading_type& parameter)
{
    if (argument->type == parameter)
        return argument;
    if (is_float(parameter) && component_count(argument->type) == 1)
        return construct(parameter, {argument});
    throw Notation_error("wrong type of argument");
}

} // namespace

Program::Program() : m_library(standard_library()) {}

void Program::add_structure(const Structure& structure)
{
    m_structures[structure.name] = structure;
}

void Program::add_method(const std::string& structure, const std::string& name,
                         const Shading_type& result)
{
    m_methods[structure][name] = result;
}

const Structure* Program::find_structure(const std::string& name) const
{
    const auto found = m_structures.find(name);
    return found == m_structures.end() ? nullptr : &found->second;
}

Expr Program::known_variable(const std::string& name) const
{
    const auto found = m_variables.find(name);
    return found == m_variables.end() ? nullptr : found->second;
}

Shading_type Program::find_type(const std::string& name)
{
    return m_structures.count(name) ? Shading_type(name) : Shading_type();
}

Shading_type Program::find_member(const std::string& structure, const std::string& member)
{
    if (const Structure* found = find_structure(structure))
        for (const Variable_declaration& field : found->fields)
            if (field.name == member)
                return field.type;
    const auto& methods = m_methods[structure];
    const auto method = methods.find(member);
    return method == methods.end() ? Shading_type() : method->second;
}

Expr Program::call(const std::string& function, std::vector<Expr> arguments)
{
    if ((function == "ddx" || function == "ddy") && is_false(m_variables["has_derivatives"]))
        throw Notation_refusal("it needs derivatives, which the target does not have");
    if (const Intrinsic* intrinsic = find_intrinsic(function))
        return call_intrinsic(*intrinsic, std::move(arguments));
    const Library_function* library = m_library.find(function);
    if (!library || library->head.parameter_types.size() != arguments.size())
        throw Notation_error("no function \"" + function + "\" for these arguments");
    const Function& made = make(*library, generic_type(library->head, arguments));
    for (std::size_t i = 0; i < arguments.size(); ++i)
        arguments[i] = fitting(arguments[i], made.parameters[i].type);
    return reference_host::call(function, made.type, std::move(arguments));
}

const Function& Program::make(const Library_function& library, const Shading_type& generic)
{
    const Function*& made = m_instances[{&library, generic.kind}];
    if (!made) {
        Generic_scope scope(*this, generic);
        // Parsing adds the functions that this one calls, so that they stand before it.
        Function parsed = parse_function(library.text, scope);
        inline_result(parsed.body); // conditions that do not hold here may leave it alone
        m_functions.push_back(std::move(parsed));
        made = &m_functions.back();
    }
    return *made;
}

} // namespace reference_host
