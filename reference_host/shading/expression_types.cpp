#include "reference_host/shading/expression_types.h"

#include "reference_host/shading/shading_state.h"

#include <algorithm>
#include <cmath>

namespace reference_host
{
namespace
{

[[noreturn]] void fail(const std::string& mistake)
{
    throw Notation_error(mistake);
}

bool is_matrix(const Code_type& type)
{
    return type == Base_type::matrix3 || type == Base_type::matrix4;
}

// The vector that a matrix of this type has for a row; none for what is not a matrix.
Code_type row_type(const Code_type& matrix)
{
    if (!is_matrix(matrix))
        return Base_type::none;
    return matrix == Base_type::matrix3 ? Base_type::float3 : Base_type::float4;
}

std::string list_of_types(const std::vector<Expr>& operands)
{
    std::string text;
    for (const Expr& operand : operands)
        text += (text.empty() ? "" : ", ") + type_text(operand->type);
    return text;
}

Code_type literal_type(const Expression& e)
{
    const bool is_text = e.type == Base_type::text;
    if (!is_text && component_count(e.type) == 0)
        fail("no literal is of type " + type_text(e.type));
    if (e.numbers.size() != static_cast<std::size_t>(component_count(e.type)))
        fail("a literal of type " + type_text(e.type) + " has " + std::to_string(e.numbers.size()) +
             " numbers");
    return e.type;
}

Code_type field_type(const Expression& e)
{
    const std::string& structure = e.operands[0]->type.structure;
    const bool is_list = structure.find('[') != std::string::npos;
    const bool has_fields = is_list || find_structure(structure);
    const Code_type type = has_fields ? member_type(structure, e.name) : Code_type();
    if (type == Base_type::none)
        fail(type_text(e.operands[0]->type) + " has no field \"" + e.name + "\"");
    return type;
}

Code_type method_type(const Expression& e)
{
    const std::string& structure = e.operands[0]->type.structure;
    const Code_type type = find_structure(structure) ? Code_type() : member_type(structure, e.name);
    const bool takes = e.operands.size() == 2 && e.operands[1]->type == Code_type("State");
    if (type == Base_type::none || !takes)
        fail(type_text(e.operands[0]->type) + " has no method \"" + e.name +
             "\" for these arguments");
    return type;
}

Code_type swizzle_type(const Expression& e)
{
    const Code_type& whole = e.operands[0]->type;
    const char* const missing = &"xyzw"[std::min(component_count(whole), 4)];
    if (!is_float(whole) || e.name.empty() || e.name.size() > 4 ||
        e.name.find_first_not_of("xyzw") != std::string::npos ||
        e.name.find_first_of(missing) != std::string::npos)
        fail(type_text(whole) + " has no components \"" + e.name + "\"");
    return float_type(static_cast<int>(e.name.size()));
}

Code_type index_type(const Expression& e)
{
    const Code_type& whole = e.operands[0]->type;
    if (e.operands[1]->type != Base_type::integer)
        fail("an index is not an integer");
    if (is_matrix(whole))
        return row_type(whole);
    const std::size_t brackets = whole.structure.find("[]");
    if (brackets == std::string::npos)
        fail(type_text(whole) + " has no elements");
    return Code_type(whole.structure.substr(0, brackets));
}

Code_type unary_type(const Expression& e)
{
    const Code_type& type = e.operands[0]->type;
    const bool fits = e.oper == Operator::invert
                          ? type == Base_type::boolean
                          : component_count(type) > 0 && type != Base_type::boolean;
    if (!fits)
        fail(std::string("\"") + row_of(e.oper).sign + "\" takes no " + type_text(type));
    return type;
}

Code_type binary_type(const Expression& e)
{
    const Code_type& a = e.operands[0]->type;
    const Code_type& b = e.operands[1]->type;
    const Code_type type = operation_type(e.oper, a, b);
    if (type == Base_type::none)
        fail(std::string("\"") + row_of(e.oper).sign + "\" takes no " + type_text(a) + " and " +
             type_text(b));
    return type;
}

Code_type choose_type(const Expression& e)
{
    if (e.operands[0]->type != Base_type::boolean)
        fail("a condition is not true or false");
    if (e.operands[1]->type != e.operands[2]->type)
        fail("the two values are of different types: " + list_of_types(e.operands));
    return e.operands[1]->type;
}

Code_type construct_type(const Expression& e)
{
    const int wanted = component_count(e.type);
    int count = 0;
    bool all_have_components = true;
    for (const Expr& part : e.operands) {
        count += component_count(part->type);
        all_have_components = all_have_components && component_count(part->type) > 0;
    }
    const bool repeats = e.operands.size() == 1 && count == 1 && !is_matrix(e.type);
    const bool cuts_off = e.operands.size() == 1 && e.type == Base_type::matrix3 &&
                          e.operands[0]->type == Base_type::matrix4;
    if (wanted == 0 || !all_have_components || (count != wanted && !repeats && !cuts_off))
        fail("no " + type_text(e.type) + " is made of " + list_of_types(e.operands));
    return e.type;
}

// All arguments are of one type of floats, but for scalars that may stay when all of these do.
bool fits_widest(const Builtin_row& row, const std::vector<Expr>& operands)
{
    Code_type widest = operands[0]->type;
    for (const Expr& operand : operands)
        if (component_count(operand->type) > component_count(widest))
            widest = operand->type;
    bool all_widest = true;
    bool some_scalar = true;
    for (std::size_t i = 0; i < operands.size(); ++i) {
        const bool may_stay = (row.keeps_scalars >> i & 1U) != 0;
        const bool is_widest = operands[i]->type == widest;
        all_widest = all_widest && is_widest;
        some_scalar =
            some_scalar && (may_stay ? operands[i]->type == Base_type::float1 : is_widest);
    }
    return is_float(widest) && (all_widest || some_scalar);
}

// Of the builtins that take arguments of their own types.
bool fits_special(Builtin builtin, const std::vector<Expr>& operands)
{
    const Code_type& a = operands[0]->type;
    const Code_type b = operands.size() > 1 ? operands[1]->type : Code_type();
    switch (builtin) {
    case Builtin::cross:
        return a == Base_type::float3 && b == Base_type::float3;
    case Builtin::reflect:
        return is_float(a) && a == b;
    case Builtin::refract:
        return is_float(a) && a == b && operands[2]->type == Base_type::float1;
    case Builtin::transpose:
        return is_matrix(a);
    case Builtin::row_transform:
        return is_matrix(b) && a == row_type(b);
    case Builtin::row_product:
        return is_matrix(a) && a == b;
    case Builtin::host_transform:
    case Builtin::host_untransform:
        return is_matrix(a) && b == row_type(a);
    case Builtin::camera_to_world:
    case Builtin::world_to_camera:
    case Builtin::world_to_camera_at:
        return a == Base_type::float3;
    case Builtin::texture_2d:
        return a == Base_type::sampler_2d && b == Base_type::float2;
    case Builtin::texture_cube:
        return a == Base_type::sampler_cube && b == Base_type::float3;
    case Builtin::texture_cube_wide:
        return a == Base_type::sampler_cube && b == Base_type::float3 &&
               operands[2]->type == Base_type::float3 && operands[3]->type == Base_type::float3;
    case Builtin::texture_cube_bias:
        return a == Base_type::sampler_cube && b == Base_type::float3 &&
               operands[2]->type == Base_type::float1;
    default:
        return true;
    }
}

Code_type builtin_type(const Expression& e)
{
    const Builtin_row& row = row_of(e.builtin);
    const bool by_widest =
        row.result == Builtin_result::widest || row.result == Builtin_result::scalar;
    if (!(e.operands.size() == static_cast<std::size_t>(row.arguments) &&
          (!by_widest || fits_widest(row, e.operands)) && fits_special(e.builtin, e.operands)))
        fail(std::string("\"") + row.name + "\" takes no " + list_of_types(e.operands));
    switch (row.result) {
    case Builtin_result::first:
        return e.operands[0]->type;
    case Builtin_result::second:
        return e.operands[1]->type;
    case Builtin_result::texel:
        return Base_type::float4;
    case Builtin_result::scalar:
        return Base_type::float1;
    default:
        return (*std::max_element(e.operands.begin(), e.operands.end(),
                                  [](const Expr& a, const Expr& b) {
                                      return component_count(a->type) < component_count(b->type);
                                  }))
            ->type;
    }
}

} // namespace

std::string type_text(const Code_type& type)
{
    return type.base == Base_type::structure ? type.structure : type_word(type.base);
}

Code_type operation_type(Operator op, const Code_type& a, const Code_type& b)
{
    switch (row_of(op).level) {
    case Level::either:
    case Level::both:
        return a == Base_type::boolean && b == Base_type::boolean ? Base_type::boolean
                                                                  : Base_type::none;
    case Level::equality:
        return a == b && (a == Base_type::text || component_count(a) == 1) ? Base_type::boolean
                                                                           : Base_type::none;
    case Level::order:
        return a == b && component_count(a) == 1 && a != Base_type::boolean ? Base_type::boolean
                                                                            : Base_type::none;
    default:
        break;
    }
    const auto is_whole = [](const Code_type& t) {
        return t == Base_type::integer || t == Base_type::natural;
    };
    const auto is_number = [&](const Code_type& t) {
        return is_float(t) || is_matrix(t) || is_whole(t);
    };
    if (is_of_bits(op)) {
        const bool shifts = row_of(op).level == Level::shift;
        return a == Base_type::natural && b == (shifts ? Base_type::integer : Base_type::natural)
                   ? a
                   : Base_type::none;
    }
    if (!is_number(a) || !is_number(b))
        return Base_type::none;
    if (a == b || b == Base_type::float1)
        return is_whole(a) && b == Base_type::float1 ? Code_type() : a;
    return a == Base_type::float1 && !is_whole(b) ? b : Code_type();
}

Code_type type_by_operands(const Expression& e)
{
    switch (e.op) {
    case Op::literal:
        return literal_type(e);
    case Op::member:
        return field_type(e);
    case Op::method:
        return method_type(e);
    case Op::swizzle:
        return swizzle_type(e);
    case Op::index:
        return index_type(e);
    case Op::unary:
        return unary_type(e);
    case Op::binary:
        return binary_type(e);
    case Op::choose:
        return choose_type(e);
    case Op::builtin:
        return builtin_type(e);
    case Op::construct:
        return construct_type(e);
    default:
        return e.type;
    }
}

} // namespace reference_host
