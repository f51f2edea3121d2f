#include "reference_host/evaluator/evaluator.h"

#include "reference_host/evaluator/builtin_values.h"
#include "reference_host/shading/shading_state.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace reference_host
{
namespace
{

using Variables = std::map<std::string, Shading_value>;

// What derivatives were taken of, in the order of their taking.
using Record = std::vector<Shading_value>;

// One way through the module. The way of a neighbouring point records what derivatives are taken
// of; that of the point itself compares with the records of its neighbours.
class Evaluation
{
public:
    Evaluation(const Module& module, const Evaluation_inputs& inputs)
        : m_module(module), m_inputs(inputs)
    {
        for (const Module_parameter& parameter : module.parameters)
            m_uniforms[parameter.name] = literal_value(*parameter.value);
        for (const Module_texture& texture : module.textures) {
            Shading_value& sampler = m_uniforms[texture.name];
            sampler = Shading_value(texture.cube ? Base_type::sampler_cube : Base_type::sampler_2d);
            sampler.texture = texture.name;
        }
        for (const auto& [name, value] : inputs.variables)
            m_uniforms[name] = value;
    }

    Shading_value run(const Shading_value& state)
    {
        const Function& entry = m_module.entry();
        std::vector<Shading_value> arguments;
        if (!entry.parameters.empty())
            arguments.push_back(state);
        return call(entry, std::move(arguments));
    }

    const Record& record() const { return m_record; }

    void compare_with(const Record& right, const Record& above)
    {
        m_right = &right;
        m_above = &above;
    }

private:
    static Shading_value literal_value(const Expression& literal)
    {
        Shading_value value(literal.type);
        std::copy(literal.numbers.begin(), literal.numbers.end(), value.numbers.begin());
        return value;
    }

    Shading_value call(const Function& function, std::vector<Shading_value> arguments)
    {
        Variables locals;
        for (std::size_t i = 0; i < function.parameters.size(); ++i)
            locals[function.parameters[i].name] = std::move(arguments[i]);
        std::optional<Shading_value> result = run(function.body, locals);
        if (!result)
            throw Evaluation_error("\"" + function.name + "\" returns nothing");
        return std::move(*result);
    }

    // The value that a statement returned, if one did.
    std::optional<Shading_value> run(const Statements& statements, Variables& locals)
    {
        for (const Statement& statement : statements)
            if (std::optional<Shading_value> result = run(statement, locals))
                return result;
        return std::nullopt;
    }

    std::optional<Shading_value> run(const Statement& statement, Variables& locals)
    {
        switch (statement.kind) {
        case Statement::Kind::let:
        case Statement::Kind::declare:
            locals[statement.name] = statement.value ? value(*statement.value, locals)
                                     : statement.type.base == Base_type::structure
                                         ? structure_value(statement.type.structure)
                                         : Shading_value(statement.type);
            return std::nullopt;
        case Statement::Kind::assign:
            assign(statement, locals);
            return std::nullopt;
        case Statement::Kind::condition:
            return run(truth(*statement.value, locals) ? statement.body : statement.otherwise,
                       locals);
        case Statement::Kind::loop:
            return run_loop(statement, locals);
        case Statement::Kind::return_value:
            return value(*statement.value, locals);
        default: // what is clipped has a value all the same
            return std::nullopt;
        }
    }

    std::optional<Shading_value> run_loop(const Statement& loop, Variables& locals)
    {
        for (int i = 0; i < value(*loop.value, locals).numbers[0]; ++i) {
            locals[loop.name] = Shading_value(Base_type::integer, {static_cast<double>(i)});
            if (std::optional<Shading_value> result = run(loop.body, locals))
                return result;
        }
        return std::nullopt;
    }

    bool truth(const Expression& e, const Variables& locals)
    {
        return value(e, locals).numbers[0] != 0.0;
    }

    void assign(const Statement& statement, Variables& locals)
    {
        Shading_value assigned = value(*statement.value, locals);
        if (statement.oper != Operator::none)
            assigned = operation(statement.oper, value(*statement.target, locals), assigned);
        set(*statement.target, std::move(assigned), locals);
    }

    // Sets a variable, or a part of one.
    void set(const Expression& target, Shading_value assigned, Variables& locals)
    {
        if (target.op == Op::variable) {
            locals[target.name] = std::move(assigned);
            return;
        }
        const Expression& owner = *target.operands[0];
        Shading_value whole = value(owner, locals);
        if (target.op == Op::member) {
            whole.fields[target.name] = std::move(assigned);
        } else if (target.op == Op::swizzle) {
            for (std::size_t i = 0; i < target.name.size(); ++i)
                whole.numbers[channel(target.name[i])] = assigned.numbers[i];
        } else {
            throw Evaluation_error("rows are not assigned");
        }
        set(owner, std::move(whole), locals);
    }

    static std::size_t channel(char letter) { return std::string("xyzw").find(letter); }

    Shading_value value(const Expression& e, const Variables& locals)
    {
        switch (e.op) {
        case Op::literal:
            return literal_value(e);
        case Op::variable:
            return variable(e, locals);
        case Op::choose: // the other one may have no value
            return value(*e.operands[truth(*e.operands[0], locals) ? 1 : 2], locals);
        case Op::refused:
            throw Evaluation_error(e.name);
        case Op::method:
            throw Evaluation_error("the lists of a scene have no values here");
        default:
            return combined(e, values(e.operands, locals));
        }
    }

    std::vector<Shading_value> values(const std::vector<Expr>& operands, const Variables& locals)
    {
        std::vector<Shading_value> computed;
        for (const Expr& operand : operands)
            computed.push_back(value(*operand, locals));
        return computed;
    }

    Shading_value variable(const Expression& e, const Variables& locals) const
    {
        const auto local = locals.find(e.name);
        if (local != locals.end())
            return local->second;
        const auto uniform = m_uniforms.find(e.name);
        if (uniform == m_uniforms.end())
            throw Evaluation_error("\"" + e.name + "\" has no value");
        return uniform->second;
    }

    Shading_value combined(const Expression& e, std::vector<Shading_value> operands)
    {
        switch (e.op) {
        case Op::member:
            return field(operands[0], e.name);
        case Op::swizzle:
            return swizzled(operands[0], e);
        case Op::index:
            return row(operands[0], operands[1], e.type);
        case Op::unary:
            return unary(e.oper, std::move(operands[0]));
        case Op::binary:
            return operation(e.oper, operands[0], operands[1]);
        case Op::builtin:
            return builtin(e, operands);
        case Op::call:
            return call(find_function(e), std::move(operands));
        default:
            return constructed(e.type, operands);
        }
    }

    static Shading_value field(const Shading_value& structure, const std::string& name)
    {
        const auto found = structure.fields.find(name);
        if (found == structure.fields.end())
            throw Evaluation_error("the field \"" + name + "\" has no value");
        return found->second;
    }

    static Shading_value swizzled(const Shading_value& vector, const Expression& e)
    {
        Shading_value result(e.type);
        for (std::size_t i = 0; i < e.name.size(); ++i)
            result.numbers[i] = vector.numbers[channel(e.name[i])];
        return result;
    }

    static Shading_value row(const Shading_value& matrix, const Shading_value& position,
                             const Code_type& type)
    {
        Shading_value result(type);
        const auto first = static_cast<std::size_t>(position.numbers[0]) *
                           static_cast<std::size_t>(component_count(type));
        std::copy_n(matrix.numbers.begin() + static_cast<std::ptrdiff_t>(first),
                    component_count(type), result.numbers.begin());
        return result;
    }

    static Shading_value unary(Operator op, Shading_value operand)
    {
        for (double& number : operand.numbers)
            number = row_of(op).fold(0.0, number);
        return operand;
    }

    static Shading_value operation(Operator op, const Shading_value& a, const Shading_value& b)
    {
        const Shading_value& wider = a.size() >= b.size() ? a : b;
        Shading_value result(is_arithmetic(op) ? wider.type : Code_type(Base_type::boolean));
        for (int i = 0; i < wider.size(); ++i) {
            const auto component = static_cast<std::size_t>(i);
            const double x = a.numbers[a.size() == 1 ? 0 : component];
            const double y = b.numbers[b.size() == 1 ? 0 : component];
            const double number = result.type == Base_type::natural ? natural_result(op, x, y)
                                                                    : row_of(op).fold(x, y);
            result.numbers[component] =
                result.type == Base_type::integer ? std::trunc(number) : number;
        }
        return result;
    }

    static Shading_value constructed(const Code_type& type, const std::vector<Shading_value>& parts)
    {
        if (type == Base_type::matrix3 && parts[0].type == Base_type::matrix4)
            return upper_left(parts[0]);
        Shading_value result(type);
        std::size_t next = 0;
        for (const Shading_value& part : parts)
            for (int i = 0; i < part.size(); ++i)
                result.numbers[next++] = part.numbers[static_cast<std::size_t>(i)];
        if (next == 1)
            result.numbers.fill(parts[0].numbers[0]);
        if (type == Base_type::integer)
            result.numbers[0] = std::trunc(result.numbers[0]);
        if (type == Base_type::integer && parts[0].type == Base_type::natural)
            result.numbers[0] = static_cast<std::int32_t>(natural_number(parts[0].numbers[0]));
        if (type == Base_type::natural)
            result.numbers[0] = natural_number(result.numbers[0]);
        if (type == Base_type::boolean)
            result.numbers[0] = result.numbers[0] != 0.0 ? 1.0 : 0.0;
        return result;
    }

    const Function& find_function(const Expression& e) const
    {
        for (const Function& function : m_module.functions)
            if (function.name == e.name &&
                std::equal(e.operands.begin(), e.operands.end(), function.parameters.begin(),
                           function.parameters.end(),
                           [](const Expr& argument, const Variable_declaration& parameter) {
                               return argument->type == parameter.type;
                           }))
                return function;
        throw Evaluation_error("there is no function \"" + e.name + "\"");
    }

    Shading_value builtin(const Expression& e, const std::vector<Shading_value>& arguments)
    {
        switch (e.builtin) {
        case Builtin::ddx:
        case Builtin::ddy:
            return derivative(e.builtin == Builtin::ddx ? m_right : m_above, arguments[0]);
        case Builtin::texture_2d:
        case Builtin::texture_cube:
        case Builtin::texture_cube_wide:
        case Builtin::texture_cube_bias:
            if (!m_inputs.look_up)
                throw Evaluation_error("there are no textures");
            return m_inputs.look_up(arguments[0].texture, arguments[1]);
        case Builtin::camera_to_world:
            return matrix_times_vector(upper_left(host_matrix(Host_value::view_inverse)),
                                       arguments[0]);
        case Builtin::world_to_camera:
            return matrix_times_vector(upper_left(host_matrix(Host_value::view_matrix)),
                                       arguments[0]);
        case Builtin::world_to_camera_at: {
            const auto& p = arguments[0].numbers;
            Shading_value moved = matrix_times_vector(host_matrix(Host_value::view_matrix),
                                                      {Base_type::float4, {p[0], p[1], p[2], 1.0}});
            moved.type = Base_type::float3;
            return moved;
        }
        default:
            return builtin_value(e.builtin, arguments);
        }
    }

    Shading_value host_matrix(Host_value value) const
    {
        return variable(*host_variable(value), {});
    }

    Shading_value derivative(const Record* neighbour, const Shading_value& here)
    {
        const std::size_t number = m_record.size();
        m_record.push_back(here);
        if (!neighbour || number >= neighbour->size())
            return Shading_value(here.type);
        return operation(Operator::subtract, (*neighbour)[number], here);
    }

    const Module& m_module;
    const Evaluation_inputs& m_inputs;
    Variables m_uniforms;
    Record m_record;
    const Record* m_right = nullptr;
    const Record* m_above = nullptr;
};

} // namespace

Shading_value evaluate(const Module& module, const Evaluation_inputs& inputs)
{
    Evaluation here(module, inputs);
    if (!inputs.neighbours)
        return here.run(inputs.state);
    Evaluation right(module, inputs);
    Evaluation above(module, inputs);
    right.run(inputs.neighbours->right);
    above.run(inputs.neighbours->above);
    here.compare_with(right.record(), above.record());
    return here.run(inputs.state);
}

} // namespace reference_host
