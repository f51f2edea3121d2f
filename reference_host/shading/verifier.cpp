#include "reference_host/shading/verifier.h"

#include "reference_host/shading/expression_types.h"
#include "reference_host/shading/globals.h"
#include "reference_host/shading/shading_state.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace reference_host
{
namespace
{

bool same_parameters(const Function& function, const std::vector<Expr>& arguments)
{
    return std::equal(arguments.begin(), arguments.end(), function.parameters.begin(),
                      function.parameters.end(),
                      [](const Expr& argument, const Variable_declaration& parameter) {
                          return argument->type == parameter.type;
                      });
}

bool same_parameters(const Function& a, const Function& b)
{
    return std::equal(a.parameters.begin(), a.parameters.end(), b.parameters.begin(),
                      b.parameters.end(),
                      [](const Variable_declaration& x, const Variable_declaration& y) {
                          return x.type == y.type;
                      });
}

using Functions_by_name = std::unordered_multimap<std::string_view, const Function*>;

// What a name stands for at a place of a function.
struct Declared {
    Code_type type;
    bool can_be_assigned;
};

using Declared_by_name = std::unordered_map<std::string_view, Declared>;

class Function_verifier
{
public:
    Function_verifier(const Function& function, const Declared_by_name& uniforms,
                      const Functions_by_name& known)
        : m_function(function), m_uniforms(uniforms), m_known(known)
    {
    }

    void verify()
    {
        for (const Variable_declaration& parameter : m_function.parameters)
            declare(parameter.name, parameter.type, true);
        check(m_function.body);
        m_place.clear();
        if (!returns(m_function.body))
            fail("not every path returns a value");
    }

private:
    [[noreturn]] void fail(const std::string& mistake, const Origin* origin = nullptr) const
    {
        std::string place = "in \"" + m_function.name + "\"";
        for (std::size_t i = 0; i < m_place.size(); ++i)
            place += (i == 0 ? ", statement " : ".") + std::to_string(m_place[i]);
        if (m_statement && !m_place.empty() && !m_statement->name.empty())
            place += " \"" + m_statement->name + "\"";
        if (origin)
            place += " (of " + origin->name + ")";
        throw Module_error(place + ": " + mistake);
    }

    void require(bool holds, const char* otherwise) const
    {
        if (!holds)
            fail(otherwise);
    }

    // Library functions know nothing of the document, whose names may be those of their variables.
    const Declared* find(const std::string& name) const
    {
        const auto local = m_locals.find(name);
        if (local != m_locals.end())
            return &local->second;
        const auto uniform = m_uniforms.find(name);
        return m_function.of_library || uniform == m_uniforms.end() ? nullptr : &uniform->second;
    }

    void declare(const std::string& name, const Code_type& type, bool can_be_assigned)
    {
        if (find(name) || find_global(name))
            fail("\"" + name + "\" is declared twice");
        const bool is_known = type.base == Base_type::structure
                                  ? find_structure(type.structure) != nullptr
                                  : type != Base_type::none;
        if (!is_known)
            fail("no variable is of type " + type_text(type));
        m_locals.insert({name, {type, can_be_assigned}});
        m_names.push_back(name);
    }

    Code_type variable_type(const Expression& e) const
    {
        if (const Declared* declared = find(e.name))
            return declared->type;
        const Expr global = find_global(e.name);
        if (!global)
            fail("\"" + e.name + "\" is not declared", e.origin);
        return global->type;
    }

    Code_type call_type(const Expression& e) const
    {
        const auto [first, last] = m_known.equal_range(e.name);
        for (auto known = first; known != last; ++known)
            if (same_parameters(*known->second, e.operands))
                return known->second->type;
        fail("no function \"" + e.name + "\" for these arguments is defined before", e.origin);
    }

    Code_type expected_type(const Expression& e) const
    {
        if (e.op == Op::variable)
            return variable_type(e);
        if (e.op == Op::call)
            return call_type(e);
        try {
            return type_by_operands(e);
        } catch (const Notation_error& error) {
            fail(error.what(), e.origin);
        }
    }

    void check(const Expression& e) const
    {
        for (const Expr& operand : e.operands)
            check(*operand);
        const Code_type type = expected_type(e);
        if (type != e.type)
            fail("a value of type " + type_text(type) + " is said to be of type " +
                     type_text(e.type),
                 e.origin);
    }

    // What is assigned is a variable or a part of one.
    void check_target(const Expression& e) const
    {
        if ((e.op == Op::member || e.op == Op::swizzle || e.op == Op::index))
            return check_target(*e.operands[0]);
        const Declared* declared = e.op == Op::variable ? find(e.name) : nullptr;
        require(declared && declared->can_be_assigned, "what is assigned is not a variable");
    }

    void check_assignment(const Statement& statement) const
    {
        check_target(*statement.target);
        check(*statement.target);
        const Code_type& target = statement.target->type;
        const Code_type& value = statement.value->type;
        const bool fits = statement.oper == Operator::none
                              ? value == target
                              : is_arithmetic(statement.oper) &&
                                    operation_type(statement.oper, target, value) == target;
        if (!fits)
            fail("a " + type_text(value) + " is assigned to a " + type_text(target));
    }

    void check_declaration(const Statement& statement)
    {
        const bool is_let = statement.kind == Statement::Kind::let;
        require(!is_let || statement.value, "it has no value");
        if (statement.value && statement.value->type != statement.type)
            fail("a " + type_text(statement.type) + " gets a " + type_text(statement.value->type),
                 statement.value->origin);
        declare(statement.name, statement.type, !is_let);
    }

    void check(const Statement& statement)
    {
        if (statement.value)
            check(*statement.value);
        const Code_type value = statement.value ? statement.value->type : Code_type();
        switch (statement.kind) {
        case Statement::Kind::let:
        case Statement::Kind::declare:
            return check_declaration(statement);
        case Statement::Kind::assign:
            require(statement.target && statement.value, "an assignment lacks a side");
            return check_assignment(statement);
        case Statement::Kind::condition:
            require(value == Base_type::boolean, "the condition is not true or false");
            check(statement.body);
            return check(statement.otherwise);
        case Statement::Kind::loop:
            require(value == Base_type::integer, "the number of rounds is not an integer");
            return check_loop(statement);
        case Statement::Kind::return_value:
            require(value == m_function.type, "the value is not of the function's type");
            return;
        case Statement::Kind::clip:
            require(value == Base_type::float1, "what is clipped by is not a number");
            return;
        case Statement::Kind::empty_line:
            return;
        }
    }

    void check_loop(const Statement& loop)
    {
        const std::size_t outer = m_names.size();
        declare(loop.name, Base_type::integer, false);
        check(loop.body);
        forget(outer);
    }

    // Variables end with their block.
    void check(const Statements& statements)
    {
        const std::size_t outer = m_names.size();
        const Statement* const outer_statement = m_statement;
        m_place.push_back(0);
        for (const Statement& statement : statements) {
            m_statement = &statement;
            ++m_place.back();
            check(statement);
        }
        m_place.pop_back();
        m_statement = outer_statement;
        forget(outer);
    }

    // All variables but the first ones.
    void forget(std::size_t first)
    {
        for (std::size_t i = first; i < m_names.size(); ++i)
            m_locals.erase(m_names[i]);
        m_names.resize(first);
    }

    static bool returns(const Statements& statements)
    {
        return std::any_of(statements.begin(), statements.end(), [](const Statement& statement) {
            return statement.kind == Statement::Kind::return_value ||
                   (statement.kind == Statement::Kind::condition && returns(statement.body) &&
                    returns(statement.otherwise));
        });
    }

    const Function& m_function;
    const Declared_by_name& m_uniforms;
    const Functions_by_name& m_known;
    Declared_by_name m_locals;
    std::vector<std::string_view> m_names; // of the locals in their order
    std::vector<int> m_place;              // numbers of the statement and those around it
    const Statement* m_statement = nullptr;
};

Declared_by_name uniforms_of(const Module& module)
{
    Declared_by_name uniforms;
    const auto add = [&](const Code_type& type, const std::string& name) {
        if (find_global(name) || !uniforms.insert({name, {type, false}}).second)
            throw Module_error("\"" + name + "\" is declared twice");
    };
    for (const Module_parameter& parameter : module.parameters) {
        if (!parameter.value || !is_literal(parameter.value) ||
            component_count(parameter.value->type) == 0)
            throw Module_error("the parameter \"" + parameter.name + "\" has no value");
        add(parameter.value->type, parameter.name);
    }
    for (const Module_texture& texture : module.textures)
        add(texture.cube ? Base_type::sampler_cube : Base_type::sampler_2d, texture.name);
    return uniforms;
}

void add_function(const Function& function, Functions_by_name& known)
{
    const auto [first, last] = known.equal_range(function.name);
    const bool is_taken = find_builtin(function.name) != Builtin::none ||
                          std::any_of(first, last, [&](const Functions_by_name::value_type& other) {
                              return same_parameters(*other.second, function);
                          });
    if (is_taken)
        throw Module_error("the function \"" + function.name + "\" is defined twice");
    known.emplace(function.name, &function);
}

} // namespace

void verify(const Module& module, Verified verified)
{
    const Declared_by_name uniforms = uniforms_of(module);
    Functions_by_name known;
    for (const Function& function : module.functions) {
        if (!function.of_library || verified == Verified::everything)
            Function_verifier(function, uniforms, known).verify();
        add_function(function, known);
    }
    if (module.functions.empty())
        throw Module_error("the module has no function");
}

} // namespace reference_host
