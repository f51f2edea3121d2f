#include "reference_host/passes/straight_line.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <unordered_map>

namespace reference_host
{
namespace
{

// The value of a variable. Of a structure, what it was made as, and the fields that were set since.
struct Content {
    Expr whole;
    std::map<std::string, Expr> fields;
};

using Variables = std::map<std::string, Content>;

// Expressions of which there is one for each value.
class Value_table
{
public:
    Expr unique(const Expr& made)
    {
        if (m_places.count(made.get()))
            return made;
        std::vector<Expr> operands;
        std::vector<std::size_t> places;
        for (const Expr& operand : made->operands) {
            operands.push_back(unique(operand));
            places.push_back(m_places.at(operands.back().get()));
        }
        const Key key(static_cast<int>(made->op), static_cast<int>(made->oper),
                      static_cast<int>(made->builtin), static_cast<int>(made->type.base),
                      made->name, made->numbers, places);
        const auto [found, is_new] = m_known.try_emplace(key, m_values.size());
        if (is_new)
            add(*made, std::move(operands), std::move(places));
        return m_values[found->second].expression;
    }

    std::size_t size() const { return m_values.size(); }

    void set_origin(const Origin* origin) { m_origin = origin; }
    const Origin* origin() const { return m_origin; }

    // What the roots need.
    std::vector<Line_value> needed(const std::vector<Expr>& roots) const
    {
        std::vector<bool> is_needed(m_values.size());
        for (const Expr& root : roots)
            is_needed[m_places.at(root.get())] = true;
        std::vector<Line_value> kept;
        for (std::size_t i = m_values.size(); i-- > 0;)
            if (is_needed[i])
                for (const std::size_t operand : m_values[i].operands)
                    is_needed[operand] = true;
        std::vector<std::size_t> new_place(m_values.size());
        for (std::size_t i = 0; i < m_values.size(); ++i) {
            if (!is_needed[i])
                continue;
            new_place[i] = kept.size();
            kept.push_back(m_values[i]);
            for (std::size_t& operand : kept.back().operands)
                operand = new_place[operand];
        }
        return kept;
    }

private:
    using Key =
        std::tuple<int, int, int, int, std::string, std::vector<double>, std::vector<std::size_t>>;

    void add(const Expression& made, std::vector<Expr> operands, std::vector<std::size_t> places)
    {
        auto kept = std::make_shared<Expression>(made);
        kept->operands = std::move(operands);
        m_places[kept.get()] = m_values.size();
        m_values.push_back({kept, m_origin, std::move(places)});
    }

    std::vector<Line_value> m_values;
    std::map<Key, std::size_t> m_known;
    std::unordered_map<const Expression*, std::size_t> m_places;
    const Origin* m_origin = nullptr;
};

class Straightening
{
public:
    Straightening(const Module& module, const Line_settings& settings)
        : m_module(module), m_settings(settings)
    {
        for (const Function& function : module.functions)
            m_functions.emplace(function.name, &function);
    }

    std::vector<Line_value> run()
    {
        Variables locals;
        for (const Variable_declaration& parameter : m_module.entry().parameters)
            locals[parameter.name].whole = leaf(parameter.type, parameter.name);
        const Content result = run(m_module.entry(), std::move(locals));
        add_root(result);
        return m_values.needed(m_roots);
    }

private:
    // What a body has returned so far; where that depends, the choice between it and the rest.
    struct Frame {
        Variables locals;
        std::vector<std::pair<Expr, Content>> returned; // under conditions, the last one first
        Content result;
        bool is_done = false;
    };

    Expr leaf(const Code_type& type, const std::string& name)
    {
        return m_values.unique(variable(type, name));
    }

    void add_root(const Content& content)
    {
        if (content.whole)
            m_roots.push_back(m_values.unique(content.whole));
        for (const auto& field : content.fields)
            m_roots.push_back(field.second);
    }

    Content run(const Function& function, Variables locals)
    {
        Frame frame;
        frame.locals = std::move(locals);
        run(function.body, frame);
        for (auto& [condition, content] : frame.returned)
            frame.result = frame.result.whole || !frame.result.fields.empty()
                               ? chosen(condition, content, frame.result)
                               : content;
        return frame.result;
    }

    void run(const Statements& statements, Frame& frame)
    {
        for (const Statement& statement : statements) {
            if (frame.is_done)
                return;
            run(statement, frame);
        }
    }

    void run(const Statement& statement, Frame& frame)
    {
        switch (statement.kind) {
        case Statement::Kind::let:
        case Statement::Kind::declare:
            frame.locals[statement.name] = initial(statement, frame.locals);
            break;
        case Statement::Kind::assign:
            assign(statement, frame.locals);
            break;
        case Statement::Kind::condition:
            run_condition(statement, frame);
            break;
        case Statement::Kind::loop:
            run_loop(statement, frame);
            break;
        case Statement::Kind::return_value:
            frame.result = value(statement.value, frame.locals);
            frame.is_done = true;
            break;
        case Statement::Kind::clip:
            add_root(value(statement.value, frame.locals));
            break;
        case Statement::Kind::empty_line:
            break;
        }
    }

    Content initial(const Statement& statement, const Variables& locals)
    {
        if (statement.value)
            return value(statement.value, locals);
        return {leaf(statement.type, statement.name), {}};
    }

    void run_condition(const Statement& statement, Frame& frame)
    {
        const Expr condition = plain(statement.value, frame.locals);
        if (is_literal(condition)) {
            run(is_true(condition) ? statement.body : statement.otherwise, frame);
            return;
        }
        Frame taken{frame.locals, {}, {}, false};
        Frame other{frame.locals, {}, {}, false};
        run(statement.body, taken);
        run(statement.otherwise, other);
        if (taken.is_done && other.is_done) {
            frame.result = chosen(condition, taken.result, other.result);
            frame.is_done = true;
        } else if (taken.is_done || other.is_done) {
            frame.returned.insert(frame.returned.begin(),
                                  {condition, taken.is_done ? taken.result : other.result});
            frame.locals = taken.is_done ? other.locals : taken.locals;
        } else {
            for (auto& [name, content] : frame.locals)
                content = chosen(condition, taken.locals[name], other.locals[name]);
        }
    }

    void run_loop(const Statement& loop, Frame& frame)
    {
        if (loop.value->op != Op::member && !m_settings.repeats_loops) {
            forget_assigned(loop.body, frame.locals);
            frame.locals[loop.name].whole = unknown(Base_type::integer);
            run(loop.body, frame);
            return;
        }
        const int count = repetitions(loop, frame.locals);
        for (int i = 0; i < count && !frame.is_done && !is_beyond_all(); ++i) {
            frame.locals[loop.name].whole = m_values.unique(integer_literal(i));
            run(loop.body, frame);
        }
    }

    // No machine takes as much: what else a loop would add changes nothing.
    bool is_beyond_all()
    {
        constexpr std::size_t most_values = 100'000;
        constexpr int most_rounds = 100'000;
        return m_values.size() > most_values || ++m_rounds > most_rounds;
    }

    int repetitions(const Statement& loop, const Variables& locals)
    {
        if (loop.value->op == Op::member)
            return m_settings.list_length;
        const Expr end = plain(loop.value, locals);
        if (is_literal(end))
            return static_cast<int>(end->numbers[0]);
        for (const Module_parameter& parameter : m_module.parameters)
            if (parameter.name == end->name)
                return static_cast<int>(parameter.value->numbers[0]);
        return 1;
    }

    // What a loop assigns is another value each time.
    void forget_assigned(const Statements& statements, Variables& locals)
    {
        for (const Statement& statement : statements) {
            if (statement.kind == Statement::Kind::assign) {
                const Expression* target = statement.target.get();
                while (target->op != Op::variable)
                    target = target->operands[0].get();
                const auto assigned = locals.find(target->name);
                if (assigned != locals.end() && target->type.base != Base_type::structure)
                    assigned->second.whole = unknown(target->type);
            }
            forget_assigned(statement.body, locals);
            forget_assigned(statement.otherwise, locals);
        }
    }

    Expr unknown(const Code_type& type)
    {
        return leaf(type, "unknown " + std::to_string(m_unknowns++));
    }

    Content chosen(const Expr& condition, const Content& a, const Content& b)
    {
        Content result;
        if (!a.whole || !b.whole)
            result.whole = a.whole ? a.whole : b.whole;
        else
            result.whole = a.whole == b.whole ? a.whole : either(condition, a.whole, b.whole);
        for (const Content* content : {&a, &b})
            for (const auto& field : content->fields) {
                const Expr left = field_of(a, field.first, field.second->type);
                const Expr right = field_of(b, field.first, field.second->type);
                result.fields[field.first] = left == right ? left : either(condition, left, right);
            }
        return result;
    }

    Expr either(const Expr& condition, const Expr& a, const Expr& b)
    {
        return m_values.unique(choose(condition, a, b));
    }

    Expr field_of(const Content& content, const std::string& name, const Code_type& type)
    {
        const auto found = content.fields.find(name);
        if (found != content.fields.end())
            return found->second;
        return m_values.unique(member(content.whole, name, type));
    }

    void assign(const Statement& statement, Variables& locals)
    {
        Content assigned = value(statement.value, locals);
        if (statement.oper != Operator::none)
            assigned.whole = m_values.unique(
                binary(statement.oper, plain(statement.target, locals), assigned.whole));
        set(*statement.target, assigned, locals);
    }

    void set(const Expression& target, const Content& assigned, Variables& locals)
    {
        if (target.op == Op::variable) {
            locals[target.name] = assigned;
            return;
        }
        const Expression& owner = *target.operands[0];
        if (target.op == Op::member) {
            locals[owner.name].fields[target.name] = assigned.whole;
            return;
        }
        // Some components of a vector: the others stay.
        const Expr whole = plain(target.operands[0], locals);
        std::vector<Expr> components;
        for (const char channel : std::string("xyzw").substr(0, component_count(whole->type))) {
            const std::size_t place = target.name.find(channel);
            const bool keeps = place == std::string::npos;
            const char source =
                assigned.whole->type == Base_type::float1 ? 'x' : "xyzw"[keeps ? 0 : place];
            components.push_back(
                swizzle(keeps ? whole : assigned.whole, std::string(1, keeps ? channel : source)));
        }
        set(owner, {m_values.unique(construct(whole->type, components)), {}}, locals);
    }

    Expr plain(const Expr& e, const Variables& locals) { return value(e, locals).whole; }

    Content value(const Expr& e, const Variables& locals)
    {
        const Origin* outer = m_values.origin();
        if (e->origin && m_depth == 0)
            m_values.set_origin(e->origin);
        Content result = computed(e, locals);
        m_values.set_origin(outer);
        return result;
    }

    Content computed(const Expr& e, const Variables& locals)
    {
        if (e->op == Op::variable) {
            const auto local = locals.find(e->name);
            return local == locals.end() ? Content{m_values.unique(e), {}} : local->second;
        }
        if (e->op == Op::method) // its state is that of the point, and no value
            return {m_values.unique(method(plain(e->operands[0], locals), e->name, e->type, {})),
                    {}};
        std::vector<Content> operands;
        for (const Expr& operand : e->operands)
            operands.push_back(value(operand, locals));
        if (e->op == Op::call)
            return called(*e, std::move(operands));
        if (e->op == Op::member)
            return {field_of(operands[0], e->name, e->type), {}};
        std::vector<Expr> plain_operands;
        for (const Content& operand : operands)
            plain_operands.push_back(operand.whole);
        return {m_values.unique(with_operands(e, std::move(plain_operands))), {}};
    }

    Content called(const Expression& call, std::vector<Content> arguments)
    {
        const Function& function = find_function(call);
        Variables locals;
        for (std::size_t i = 0; i < arguments.size(); ++i)
            locals[function.parameters[i].name] = std::move(arguments[i]);
        m_depth += function.of_library ? 1 : 0;
        Content result = run(function, std::move(locals));
        m_depth -= function.of_library ? 1 : 0;
        return result;
    }

    const Function& find_function(const Expression& call) const
    {
        const auto [first, last] = m_functions.equal_range(call.name);
        const auto fits = [&](const auto& named) {
            const Function& function = *named.second;
            return std::equal(call.operands.begin(), call.operands.end(),
                              function.parameters.begin(), function.parameters.end(),
                              [](const Expr& argument, const Variable_declaration& parameter) {
                                  return argument->type == parameter.type;
                              });
        };
        return *std::find_if(first, last, fits)->second;
    }

    const Module& m_module;
    const Line_settings& m_settings;
    std::multimap<std::string, const Function*> m_functions;
    Value_table m_values;
    std::vector<Expr> m_roots;
    int m_unknowns = 0;
    int m_rounds = 0; // of loops
    int m_depth = 0;  // of functions of the library, whose text is of no document
};

} // namespace

std::vector<Line_value> straight_line(const Module& module, const Line_settings& settings)
{
    return Straightening(module, settings).run();
}

} // namespace reference_host
