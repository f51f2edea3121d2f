#include "reference_host/library/library_scope.h"

#include "reference_host/shading/globals.h"
#include "reference_host/shading/shading_state.h"

#include <algorithm>

namespace reference_host
{
namespace
{

// What T is in a call; none when the function has no T.
Code_type generic_type(const Function_head& head, const std::vector<Expr>& arguments)
{
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (head.parameter_types[i] == "T")
            return arguments[i]->type;
    return Base_type::none;
}

Expr fitting(const Expr& argument, const Code_type& parameter)
{
    if (argument->type == parameter)
        return argument;
    if (is_float(parameter) && component_count(argument->type) == 1)
        return construct(parameter, {argument});
    throw Notation_error("wrong type of argument");
}

bool same_head(const Function& a, const Function& b)
{
    return a.name == b.name &&
           std::equal(a.parameters.begin(), a.parameters.end(), b.parameters.begin(),
                      b.parameters.end(),
                      [](const Variable_declaration& x, const Variable_declaration& y) {
                          return x.type == y.type;
                      });
}

} // namespace

Expr Library_scope::find_variable(const std::string& name)
{
    return find_global(name);
}

Code_type Library_scope::find_type(const std::string& name)
{
    if (name == "T")
        return m_generic;
    return find_structure(name) ? Code_type(name) : Code_type();
}

Code_type Library_scope::find_member(const std::string& structure, const std::string& member)
{
    return member_type(structure, member);
}

Expr Library_scope::call(const std::string& function, std::vector<Expr> arguments)
{
    const Builtin builtin = find_builtin(function);
    if (builtin != Builtin::none)
        return reference_host::call(builtin, std::move(arguments));
    const Library_function* library = m_library.find(function);
    if (!library || library->head.parameter_types.size() != arguments.size())
        throw Notation_error("no function \"" + function + "\" for these arguments");
    const Library_instance& made =
        m_library.instance(*library, generic_type(library->head, arguments));
    for (std::size_t i = 0; i < arguments.size(); ++i)
        arguments[i] = fitting(arguments[i], made.function.parameters[i].type);
    if (std::find(m_used.begin(), m_used.end(), &made) == m_used.end())
        m_used.push_back(&made);
    return reference_host::call(function, made.function.type, std::move(arguments));
}

void add_with_callees(const Library_instance& instance, std::vector<Function>& functions)
{
    for (const Function& known : functions)
        if (known.of_library && same_head(known, instance.function))
            return;
    for (const Library_instance* called : instance.calls)
        add_with_callees(*called, functions);
    functions.push_back(instance.function);
}

} // namespace reference_host
