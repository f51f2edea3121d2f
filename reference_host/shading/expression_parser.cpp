#include "reference_host/shading/expression_parser.h"

#include "reference_host/shading/expression_types.h"
#include "reference_host/shading/quotes.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace reference_host
{
namespace
{

constexpr int longest_chain = 2000;

// Integers and floats are kept apart: a shading language may have no conversion between them.
Expr combine(Operator op, const Expr& a, const Expr& b)
{
    const bool converts_a = a->type == Base_type::integer && is_float(b->type);
    const bool converts_b = b->type == Base_type::integer && is_float(a->type);
    const Expr first = converts_a ? construct(Base_type::float1, {a}) : a;
    const Expr second = converts_b ? construct(Base_type::float1, {b}) : b;
    require(operation_type(op, first->type, second->type) != Base_type::none,
            "wrong types of operands for \"" + std::string(row_of(op).sign) + "\"");
    return binary(op, first, second);
}

Expr element(const Expr& list, const Expr& position)
{
    if (list->type == Base_type::matrix3 || list->type == Base_type::matrix4)
        return index(list, position,
                     list->type == Base_type::matrix3 ? Base_type::float3 : Base_type::float4);
    std::string name = list->type.structure;
    name.resize(name.size() - std::min<std::size_t>(2, name.size())); // without "[]"
    return index(list, position, Code_type(name));
}

// One part is repeated, converted or cut off; several have as many components as the whole.
Expr constructed(const Code_type& type, const std::vector<Expr>& parts)
{
    int count = 0;
    for (const Expr& part : parts)
        count += component_count(part->type);
    require(parts.size() == 1 ? count > 0 : count == component_count(type),
            "wrong number of components");
    return construct(type, parts);
}

template<typename Number>
Number parsed(const std::string& word)
{
    Number number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    require(error == std::errc(), "the number " + word + " is out of range");
    return number;
}

} // namespace

void require(bool holds, const std::string& otherwise)
{
    if (!holds)
        throw Notation_error(otherwise);
}

Expr fitting(const Expr& value, const Code_type& wanted)
{
    const bool number = component_count(value->type) == 1 && is_float(wanted);
    return number && value->type != wanted ? construct(wanted, {value}) : value;
}

Nesting::Nesting(int& depth) : m_depth(depth)
{
    constexpr int deepest = 1000;
    require(m_depth < deepest, "the text is too deeply nested");
    ++m_depth;
}

Expression_parser::Expression_parser(std::string_view text, Notation_scope& scope,
                                     Empty_lines empty_lines)
    : m_words(text, empty_lines), m_scope(scope)
{
}

Expr Expression_parser::whole_expression()
{
    Expr parsed = expression();
    if (!m_words.at_end())
        throw Notation_error("unexpected \"" + std::string(m_words.peek()) + "\"");
    return parsed;
}

Code_type Expression_parser::type(std::string_view name)
{
    const std::string word(name);
    const Code_type basic = base_type_from_word(word);
    return basic != Base_type::none || name == "void" ? basic : m_scope.find_type(word);
}

Code_type Expression_parser::known_type(std::string_view name)
{
    const Code_type known = type(name);
    require(known != Base_type::none || name == "void",
            "unknown type \"" + std::string(name) + "\"");
    return known;
}

bool Expression_parser::is_type(std::string_view name)
{
    return !name.empty() && std::isalpha(static_cast<unsigned char>(name[0])) &&
           type(name) != Base_type::none;
}

void Expression_parser::declare_local(const Code_type& type, const std::string& name)
{
    m_locals[name] = variable(type, name);
}

Expr Expression_parser::expression()
{
    const Nesting nesting(m_depth);
    Expr condition = operation(static_cast<int>(Level::either));
    if (!m_words.accept("?"))
        return condition;
    require(condition->type == Base_type::boolean, "the condition is not true or false");
    if (is_true(condition) || is_false(condition))
        return taken_branch(is_true(condition));
    const Expr a = expression();
    m_words.expect(":");
    const Expr b = expression();
    const Code_type& wider =
        component_count(a->type) >= component_count(b->type) ? a->type : b->type;
    const Expr first = fitting(a, wider);
    const Expr second = fitting(b, wider);
    require(first->type == second->type, "the two values are of different types");
    return choose(condition, first, second);
}

// The other branch need not be meaningful, and asks for nothing.
Expr Expression_parser::taken_branch(bool is_first)
{
    if (!is_first) {
        m_words.skip_expression();
        m_words.expect(":");
        return expression();
    }
    Expr taken = expression();
    m_words.expect(":");
    m_words.skip_expression();
    return taken;
}

Expr Expression_parser::operation(int level)
{
    Expr left = prefix();
    for (int links = 0;; ++links) {
        const Operator op = find_binary(m_words.peek());
        if (op == Operator::none || static_cast<int>(row_of(op).level) < level)
            return left;
        require(links < longest_chain, "an expression has too many operations");
        m_words.take();
        left = combine(op, left, operation(static_cast<int>(row_of(op).level) + 1));
    }
}

Expr Expression_parser::prefix()
{
    const Nesting nesting(m_depth);
    if (m_words.accept("-"))
        return negate(prefix());
    if (m_words.accept("!"))
        return logical_not(prefix());
    return postfix();
}

Expr Expression_parser::postfix()
{
    Expr parsed = primary();
    for (int links = 0;; ++links) {
        require(links < longest_chain, "an expression has too many members");
        if (m_words.accept("[")) {
            parsed = element(parsed, expression());
            m_words.expect("]");
        } else if (m_words.accept(".")) {
            parsed = selected(parsed, std::string(m_words.take()));
        } else {
            return parsed;
        }
    }
}

Expr Expression_parser::selected(const Expr& whole, const std::string& name)
{
    if (whole->type.base != Base_type::structure) {
        if (!is_float(whole->type) || name.empty() || name.size() > 4 ||
            name.find_first_not_of("xyzw") != std::string::npos)
            throw Notation_error("no component \"" + name + "\"");
        return swizzle(whole, name);
    }
    const bool is_list = whole->type.structure.find('[') != std::string::npos;
    const Code_type found = is_list && name == "length"
                                ? Code_type(Base_type::integer)
                                : m_scope.find_member(whole->type.structure, name);
    if (found == Base_type::none)
        throw Notation_error("no member \"" + name + "\" in " + whole->type.structure);
    return m_words.accept("(") ? method(whole, name, found, arguments())
                               : member(whole, name, found);
}

Named_values Expression_parser::named_arguments()
{
    Named_values parsed;
    do {
        const std::string name(m_words.take());
        m_words.expect("=");
        parsed.emplace_back(name, expression());
    } while (m_words.accept(","));
    m_words.expect(")");
    return parsed;
}

std::vector<Expr> Expression_parser::arguments()
{
    std::vector<Expr> parsed;
    while (!m_words.accept(")")) {
        parsed.push_back(expression());
        if (!m_words.accept(",") && m_words.peek() != ")")
            throw Notation_error("an argument list does not end");
    }
    return parsed;
}

Expr Expression_parser::primary()
{
    const std::string word(m_words.take());
    if (word == "(") {
        Expr inner = expression();
        m_words.expect(")");
        return inner;
    }
    if (word == "true" || word == "false")
        return boolean_literal(word == "true");
    if (!word.empty() && word[0] == '"' && (word.size() < 2 || word.back() != '"'))
        throw Notation_error("a text does not end");
    if (!word.empty() && word[0] == '"')
        return text_literal(without_quotes(word));
    if (!word.empty() && std::isdigit(static_cast<unsigned char>(word[0])))
        return number(word);
    if (word == "refused" && m_words.accept("<"))
        return refused();
    if (m_words.peek() == "(" && m_words.peek(2) == "=") {
        m_words.take();
        return m_scope.node(word, named_arguments());
    }
    if (m_words.accept("("))
        return is_type(word) ? constructed(type(word), arguments())
                             : m_scope.call(word, arguments());
    return named(word);
}

Expr Expression_parser::refused()
{
    const std::string_view word = m_words.take();
    const Code_type refused_type =
        word == type_word(Base_type::text) ? Base_type::text : known_type(word);
    m_words.expect(">");
    m_words.expect("(");
    return m_scope.refused_value(refused_type, arguments());
}

Expr Expression_parser::number(const std::string& word)
{
    if (word.back() == 'u')
        return literal(
            Base_type::natural,
            {static_cast<double>(parsed<std::uint32_t>(word.substr(0, word.size() - 1)))});
    if (word.find('.') == std::string::npos)
        return integer_literal(parsed<int>(word));
    return literal(parsed<double>(word));
}

Expr Expression_parser::named(const std::string& name)
{
    const auto local = m_locals.find(name);
    Expr found = local != m_locals.end() ? local->second : m_scope.find_variable(name);
    if (!found)
        throw Notation_error("unknown name \"" + name + "\"");
    return found;
}

} // namespace reference_host
