#include "reference_host/passes/passes.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_set>
#include <utility>

namespace reference_host
{
namespace
{

// The fields of structures that a function reads through its parameters, itself or in what it
// calls; "*": all of them.
using Field_reads = std::set<std::pair<std::string, std::string>>;
using Reads_by_function = std::map<std::string, Field_reads>;

constexpr const char* all_fields = "*";

// Calls `on_field` for what is read of a structure's variable, with the name of the field or "*",
// and `on_variable` for every other variable.
template<class On_field, class On_variable>
void visit_reads(const Expression& expression, const Reads_by_function& reads,
                 const On_field& on_field, const On_variable& on_variable)
{
    if (expression.op == Op::variable) {
        if (expression.type.base == Base_type::structure)
            on_field(expression, all_fields);
        else
            on_variable(expression.name);
        return;
    }
    for (const Expr& operand : expression.operands) {
        if (operand->op != Op::variable || operand->type.base != Base_type::structure) {
            visit_reads(*operand, reads, on_field, on_variable);
            continue;
        }
        const auto called = reads.find(expression.name);
        if (expression.op == Op::member) {
            on_field(*operand, expression.name);
        } else if (expression.op == Op::call && called != reads.end()) {
            for (const auto& [structure, field] : called->second)
                if (structure == operand->type.structure)
                    on_field(*operand, field);
        } else {
            on_field(*operand, all_fields);
        }
    }
}

// Functions come after those that they call; nothing calls the entry.
Reads_by_function field_reads(const Module& module)
{
    Reads_by_function reads;
    for (const Function& function : module.functions) {
        if (&function == &module.entry())
            break;
        Field_reads& own = reads[function.name];
        const auto note = [&](const Expression& variable, const std::string& field) {
            own.insert({variable.type.structure, field});
        };
        const std::function<void(const Statements&)> walk = [&](const Statements& statements) {
            for (const Statement& statement : statements) {
                for (const Expr& part : {statement.target, statement.value})
                    if (part)
                        visit_reads(*part, reads, note, [](const std::string&) {});
                walk(statement.body);
                walk(statement.otherwise);
            }
        };
        walk(function.body);
    }
    return reads;
}

// Goes through the statements of a function from its end and keeps what is read.
class Dead_stores
{
public:
    explicit Dead_stores(const Reads_by_function& reads) : m_reads(reads) {}

    void take_out(Statements& statements)
    {
        Statements kept;
        kept.reserve(statements.size());
        for (auto statement = statements.rbegin(); statement != statements.rend(); ++statement) {
            if (is_dead(*statement))
                continue;
            note(*statement);
            kept.push_back(std::move(*statement));
        }
        // Empty lines separate paragraphs that are left.
        while (!kept.empty() && is_empty_line(kept.back()))
            kept.pop_back();
        std::reverse(kept.begin(), kept.end());
        kept.erase(std::unique(kept.begin(), kept.end(),
                               [](const Statement& a, const Statement& b) {
                                   return is_empty_line(a) && is_empty_line(b);
                               }),
                   kept.end());
        statements = std::move(kept);
    }

    bool is_read(const std::string& variable) const { return m_variables.count(variable) != 0; }

private:
    static bool is_empty_line(const Statement& statement)
    {
        return statement.kind == Statement::Kind::empty_line;
    }

    static bool same(const Expr& a, const Expr& b)
    {
        return a->op == b->op && a->name == b->name && a->operands.size() == b->operands.size() &&
               (a->op == Op::variable || a->op == Op::member) &&
               (a->operands.empty() || same(a->operands[0], b->operands[0]));
    }

    bool is_dead(const Statement& statement) const
    {
        switch (statement.kind) {
        case Statement::Kind::let:
        case Statement::Kind::declare:
            return !is_read(statement.name);
        case Statement::Kind::assign:
            return is_dead_assignment(statement);
        default:
            return false;
        }
    }

    bool is_dead_assignment(const Statement& statement) const
    {
        const Expression& target = *statement.target;
        if (statement.oper == Operator::none && same(statement.target, statement.value))
            return true;
        if (target.op == Op::variable)
            return !is_read(target.name);
        if (target.op != Op::member || target.operands[0]->op != Op::variable)
            return false;
        const std::string& variable = target.operands[0]->name;
        return !m_fields.count({variable, target.name}) && !m_fields.count({variable, all_fields});
    }

    void note(const Statement& statement)
    {
        const auto on_field = [&](const Expression& variable, const std::string& field) {
            m_variables.insert(variable.name);
            m_fields.insert({variable.name, field});
        };
        const auto on_variable = [&](const std::string& name) { m_variables.insert(name); };
        for (const Expr& part : {statement.target, statement.value})
            if (part)
                visit_reads(*part, m_reads, on_field, on_variable);
        for (const Statements* nested : {&statement.body, &statement.otherwise})
            for (const Statement& inner : *nested)
                note(inner);
    }

    const Reads_by_function& m_reads;
    std::unordered_set<std::string> m_variables;
    std::set<std::pair<std::string, std::string>> m_fields;
};

bool same_function(const Function& function, const Expression& call)
{
    return function.name == call.name &&
           std::equal(call.operands.begin(), call.operands.end(), function.parameters.begin(),
                      function.parameters.end(),
                      [](const Expr& argument, const Variable_declaration& parameter) {
                          return argument->type == parameter.type;
                      });
}

// Callers come after what they call, so that one walk from the entry backwards is enough.
void keep_reached(std::vector<Function>& functions)
{
    std::set<const Function*> reached = {&functions.back()};
    std::vector<Function> kept;
    for (auto caller = functions.rbegin(); caller != functions.rend(); ++caller) {
        if (!reached.count(&*caller))
            continue;
        visit(caller->body, [&](const Expression& expression) {
            if (expression.op != Op::call)
                return;
            for (const Function& function : functions)
                if (same_function(function, expression))
                    reached.insert(&function);
        });
    }
    for (Function& function : functions)
        if (reached.count(&function))
            kept.push_back(std::move(function));
    functions = std::move(kept);
}

template<class Declared>
void take_out(std::vector<Declared>& declared, const std::unordered_set<std::string>& names)
{
    declared.erase(std::remove_if(declared.begin(), declared.end(),
                                  [&](const Declared& one) { return names.count(one.name) != 0; }),
                   declared.end());
}

void take_out_unread_uniforms(Module& module)
{
    std::unordered_set<std::string> unread;
    for (const Module_parameter& parameter : module.parameters)
        unread.insert(parameter.name);
    for (const Module_texture& texture : module.textures)
        unread.insert(texture.name);
    for (const Function& function : module.functions)
        visit(function.body, [&](const Expression& expression) {
            if (expression.op == Op::variable && !unread.empty())
                unread.erase(expression.name);
        });
    take_out(module.parameters, unread);
    take_out(module.textures, unread);
}

} // namespace

void prune(Module& module, const Pass_settings&)
{
    const Reads_by_function reads = field_reads(module);
    for (Function& function : module.functions) {
        if (function.of_library)
            continue;
        Dead_stores stores(reads);
        stores.take_out(function.body);
        const bool is_entry = &function == &module.functions.back();
        const bool is_method =
            module.role == Shader_role::light || module.role == Shader_role::volume;
        if (is_entry && !is_method && !stores.is_read("state"))
            function.parameters.clear();
    }
    keep_reached(module.functions);
    take_out_unread_uniforms(module);
}

} // namespace reference_host
