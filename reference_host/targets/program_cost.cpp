#include "reference_host/targets/program_cost.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <numeric>
#include <set>
#include <string>

namespace reference_host
{
namespace
{

// Instructions of a builtin: at once for all components, and for each of them.
struct Builtin_cost {
    Builtin builtin;
    double once, each;
};

constexpr Builtin_cost builtin_costs[] = {
    {Builtin::abs, 0, 0},
    {Builtin::floor, 2, 0},
    {Builtin::ceil, 2, 0},
    {Builtin::fract, 1, 0},
    {Builtin::sin, 0, 1},
    {Builtin::cos, 0, 1},
    {Builtin::tan, 1, 3},
    {Builtin::asin, 9, 1},
    {Builtin::acos, 9, 1},
    {Builtin::atan2, 12, 2},
    {Builtin::exp, 1, 1},
    {Builtin::log, 1, 1},
    {Builtin::sqrt, 0, 2},
    {Builtin::pow, 1, 2},
    {Builtin::min, 1, 0},
    {Builtin::max, 1, 0},
    {Builtin::clamp, 2, 0},
    {Builtin::saturate, 0, 0},
    {Builtin::mix, 2, 0},
    {Builtin::step, 1, 0},
    {Builtin::smoothstep, 5, 0},
    {Builtin::length, 3, 0},
    {Builtin::distance, 4, 0},
    {Builtin::dot, 1, 0},
    {Builtin::cross, 2, 0},
    {Builtin::normalize, 3, 0},
    {Builtin::faceforward, 3, 0},
    {Builtin::reflect, 3, 0},
    {Builtin::refract, 9, 0},
    {Builtin::ddx, 1, 0},
    {Builtin::ddy, 1, 0},
    {Builtin::transpose, 0, 0},
    {Builtin::row_transform, 0, 1},
    {Builtin::row_product, 0, 1},
    {Builtin::host_transform, 0, 1},
    {Builtin::host_untransform, 0, 1},
    {Builtin::camera_to_world, 0, 1},
    {Builtin::world_to_camera, 0, 1},
    {Builtin::world_to_camera_at, 0, 1},
    {Builtin::texture_2d, 1, 0},
    {Builtin::texture_cube, 1, 0},
    {Builtin::texture_cube_wide, 1, 0},
    {Builtin::texture_cube_bias, 1, 0},
};
static_assert(std::size(builtin_costs) == static_cast<std::size_t>(Builtin::none));

// Of a light of a list, about.
constexpr double light_instructions = 25.0;
constexpr double light_constants = 5.0;

// Matrices take a register for each row.
int registers_of(int components)
{
    return components == 16 ? 4 : components == 9 ? 3 : 1;
}

// What a loop counts or changes is no parameter.
bool is_position_of_loop(const Expression& e)
{
    return e.name.find(' ') != std::string::npos;
}

bool is_lookup(const Expression& e)
{
    return e.op == Op::builtin && e.builtin >= Builtin::texture_2d && e.builtin != Builtin::none;
}

class Costs
{
public:
    explicit Costs(const std::vector<Line_value>& line)
        : m_line(line), m_uses(line.size()), m_constant(line.size()), m_is_used(line.size())
    {
        for (std::size_t i = 0; i < line.size(); ++i) {
            bool all = line[i].expression->op == Op::literal || !line[i].operands.empty();
            for (const std::size_t operand : line[i].operands) {
                ++m_uses[operand];
                all = all && m_constant[operand];
            }
            m_constant[i] = all;
            for (const std::size_t operand : line[i].operands)
                m_is_used[operand] = m_is_used[operand] || !all;
        }
    }

    Program_cost sum()
    {
        Program_cost cost;
        std::map<const Origin*, double> by_origin;
        for (std::size_t i = 0; i < m_line.size(); ++i) {
            const double own = m_constant[i] ? 0.0 : instructions(i);
            cost.instructions += own;
            cost.lookups += is_lookup(*m_line[i].expression) ? 1 : 0;
            cost.choices += m_line[i].expression->op == Op::choose ? 1 : 0;
            by_origin[m_line[i].origin] += own;
        }
        for (const auto& [origin, instructions] : by_origin)
            if (instructions > cost.dearest_instructions) {
                cost.dearest = origin;
                cost.dearest_instructions = instructions;
            }
        cost.constants = constants();
        cost.temporaries = temporaries();
        return cost;
    }

private:
    const Expression& operand(std::size_t value, std::size_t i) const
    {
        return *m_line[m_line[value].operands[i]].expression;
    }

    double instructions(std::size_t i)
    {
        const Expression& e = *m_line[i].expression;
        switch (e.op) {
        case Op::binary:
            return operation(i, e);
        case Op::choose:
            return 1.0;
        case Op::builtin:
            return builtin(i, e);
        case Op::construct:
            return m_line[i].operands.size() > 1 ? 1.0 : 0.0;
        case Op::method:
            return light_instructions;
        case Op::member: // of the state, which is filled
            return component_count(e.type);
        default:
            return 0.0; // signs and the order of components are free
        }
    }

    // Powers of one base share its logarithms.
    double builtin(std::size_t i, const Expression& e)
    {
        const Builtin_cost& row = builtin_costs[static_cast<std::size_t>(e.builtin)];
        const double components = std::min(component_count(e.type), 4);
        const bool repeats =
            e.builtin == Builtin::pow && !m_bases.insert(m_line[i].operands[0]).second;
        return row.once + row.each * components - (repeats ? components : 0.0);
    }

    double operation(std::size_t i, const Expression& e) const
    {
        if (e.oper == Operator::divide) // a reciprocal for each component
            return m_constant[m_line[i].operands[1]] ? 1.0
                                                     : 1.0 + component_count(operand(i, 1).type);
        if (e.oper == Operator::add || e.oper == Operator::subtract)
            for (std::size_t k = 0; k < 2; ++k)
                if (operand(i, k).op == Op::binary && operand(i, k).oper == Operator::multiply &&
                    m_uses[m_line[i].operands[k]] == 1)
                    return 0.0; // one instruction multiplies and adds
        return 1.0;
    }

    // Four numbers share a register; parameters do not. What constants give is one, too.
    double constants() const
    {
        std::set<double> numbers;
        double registers = 0.0;
        double computed = 0.0;
        for (std::size_t i = 0; i < m_line.size(); ++i) {
            const Expression& e = *m_line[i].expression;
            const int components = component_count(e.type);
            if (e.op == Op::variable && components > 0 && !is_position_of_loop(e))
                registers += registers_of(components);
            if (e.op == Op::method)
                registers += light_constants;
            if (!m_is_used[i] || !m_constant[i])
                continue;
            if (e.op == Op::literal)
                for (int k = 0; k < components; ++k)
                    numbers.insert(std::abs(e.numbers[static_cast<std::size_t>(k)]));
            else
                computed += components;
        }
        return registers + std::ceil((static_cast<double>(numbers.size()) + computed) / 4.0);
    }

    // As many as hold what lives between two values. Compilers order values as they like: here in
    // the order of the text, or each as late as it is asked for.
    double temporaries() const
    {
        std::vector<std::size_t> as_written(m_line.size());
        std::iota(as_written.begin(), as_written.end(), 0);
        return std::min(most_living(as_written), most_living(as_asked_for()));
    }

    double most_living(const std::vector<std::size_t>& order) const
    {
        std::vector<std::size_t> uses = m_uses;
        double living = 0.0;
        double most = 0.0;
        for (const std::size_t value : order) {
            living += components_in_registers(value);
            most = std::max(most, living);
            if (uses[value] == 0)
                living -= components_in_registers(value);
            for (const std::size_t operand : m_line[value].operands)
                if (--uses[operand] == 0)
                    living -= components_in_registers(operand);
        }
        return most / 4.0;
    }

    // Of the operands of a value first the one that itself keeps most (Sethi and Ullman).
    std::vector<std::vector<std::size_t>> operands_in_order() const
    {
        std::vector<double> kept(m_line.size());
        std::vector<std::vector<std::size_t>> all;
        for (std::size_t i = 0; i < m_line.size(); ++i) {
            std::vector<std::size_t> operands = m_line[i].operands;
            std::stable_sort(operands.begin(), operands.end(),
                             [&](std::size_t a, std::size_t b) { return kept[a] > kept[b]; });
            double beside = 0.0;
            kept[i] = components_in_registers(i);
            for (const std::size_t operand : operands) {
                kept[i] = std::max(kept[i], kept[operand] + beside);
                beside += components_in_registers(operand);
            }
            all.push_back(std::move(operands));
        }
        return all;
    }

    std::vector<std::size_t> as_asked_for() const
    {
        const std::vector<std::vector<std::size_t>> operands = operands_in_order();
        std::vector<std::size_t> order;
        std::vector<bool> is_met(m_line.size());
        std::vector<std::pair<std::size_t, std::size_t>> open; // values and their next operands
        for (std::size_t root = 0; root < m_line.size(); ++root) {
            if (m_uses[root] != 0)
                continue;
            open.emplace_back(root, 0);
            while (!open.empty()) {
                auto& [value, next] = open.back();
                if (next == operands[value].size()) {
                    order.push_back(value);
                    open.pop_back();
                    continue;
                }
                const std::size_t operand = operands[value][next++];
                if (!is_met[operand])
                    open.emplace_back(operand, 0);
                is_met[operand] = true;
            }
        }
        return order;
    }

    double components_in_registers(std::size_t value) const
    {
        return needs_register(value) ? std::min(component_count(m_line[value].expression->type), 4)
                                     : 0;
    }

    bool needs_register(std::size_t i) const
    {
        const Expression& e = *m_line[i].expression;
        return !m_constant[i] && e.op != Op::variable && e.op != Op::literal &&
               e.op != Op::swizzle && e.op != Op::unary && e.op != Op::index;
    }

    const std::vector<Line_value>& m_line;
    std::vector<std::size_t> m_uses;
    std::set<std::size_t> m_bases; // of powers
    std::vector<bool> m_constant;  // known to a compiler
    std::vector<bool> m_is_used;   // by what is not
};

} // namespace

Program_cost cost_of(const std::vector<Line_value>& line)
{
    return Costs(line).sum();
}

} // namespace reference_host
