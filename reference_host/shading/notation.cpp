#include "reference_host/shading/notation.h"

#include "reference_host/shading/expression_types.h"
#include "reference_host/shading/quotes.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <map>

namespace reference_host
{
namespace
{

void require(bool holds, const std::string& otherwise)
{
    if (!holds)
        throw Notation_error(otherwise);
}

// Parser and printer, verifier and destructors follow expressions and statements down: a text may
// not nest them deeper than this, nor string more operations together.
constexpr int deepest_nesting = 1000;
constexpr int longest_chain = 2000;

// One step down for as long as it lives.
class Nesting
{
public:
    explicit Nesting(int& depth) : m_depth(depth)
    {
        require(m_depth < deepest_nesting, "the text is too deeply nested");
        ++m_depth;
    }
    ~Nesting() { --m_depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    int& m_depth;
};

class Notation_parser
{
public:
    Notation_parser(std::string_view text, Notation_scope& scope, Empty_lines empty_lines)
        : m_words(text, empty_lines), m_scope(scope)
    {
    }

    Expr whole_expression()
    {
        Expr parsed = expression();
        if (!m_words.at_end())
            throw Notation_error("unexpected \"" + std::string(m_words.peek()) + "\"");
        return parsed;
    }

    int lines_passed() const { return m_words.lines_passed(); }

    Function function()
    {
        Function parsed;
        parsed.type = known_type(m_words.take());
        m_result = &parsed.type;
        parsed.name = m_words.take();
        m_words.expect("(");
        while (!m_words.accept(")")) {
            Variable_declaration parameter;
            parameter.type = known_type(m_words.take());
            parameter.name = m_words.take();
            declare_local(parameter.type, parameter.name);
            parsed.parameters.push_back(parameter);
            m_words.accept(",");
        }
        block(parsed.body);
        if (!m_words.at_end())
            throw Notation_error("unexpected \"" + std::string(m_words.peek()) + "\"");
        return parsed;
    }

private:
    Code_type type(std::string_view name)
    {
        const std::string word(name);
        const Code_type basic = base_type_from_word(word);
        return basic != Base_type::none || name == "void" ? basic : m_scope.find_type(word);
    }

    Code_type known_type(std::string_view name)
    {
        const Code_type known = type(name);
        require(known != Base_type::none || name == "void",
                "unknown type \"" + std::string(name) + "\"");
        return known;
    }

    bool is_type(std::string_view name)
    {
        return !name.empty() && std::isalpha(static_cast<unsigned char>(name[0])) &&
               type(name) != Base_type::none;
    }

    void declare_local(const Code_type& type, const std::string& name)
    {
        m_locals[name] = variable(type, name);
    }

    void block(Statements& statements)
    {
        if (!m_words.accept("{"))
            return statement(statements);
        while (!m_words.accept("}")) {
            if (m_words.at_end())
                throw Notation_error("a block does not end");
            statement(statements);
        }
    }

    void statement(Statements& statements)
    {
        const Nesting nesting(m_depth);
        if (m_words.accept("if"))
            return condition(statements);
        if (m_words.accept("for"))
            return loop(statements);
        if (m_words.accept("\n"))
            return statements.push_back(empty_line());
        Statement parsed;
        if (m_words.accept("clip")) {
            parsed.kind = Statement::Kind::clip;
            parsed.value = expression();
        } else if (m_words.accept("let")) {
            parsed = declaration();
            parsed.kind = Statement::Kind::let;
            require(parsed.value != nullptr, "\"" + parsed.name + "\" has no value");
        } else if (m_words.accept("return")) {
            parsed = return_value(expression());
            require(!m_result || parsed.value->type == *m_result,
                    "the value is not of the function's type");
        } else if (is_type(m_words.peek()) && m_words.peek(1) != "(") {
            parsed = declaration();
        } else {
            const Expr target = postfix();
            const Operator op = assignment();
            Expr value = expression();
            if (op == Operator::none)
                value = fitting(value, target->type);
            require(value->type == target->type ||
                        (op != Operator::none && component_count(value->type) == 1),
                    "the value is not of the variable's type");
            parsed = assign(target, op, value);
        }
        m_words.expect(";");
        statements.push_back(std::move(parsed));
    }

    // "=" is none; "+=" and the like are operators.
    Operator assignment()
    {
        const std::string_view word = m_words.take();
        const Operator op =
            word.size() == 2 && word[1] == '=' ? find_binary(word.substr(0, 1)) : Operator::none;
        if (word != "=" && !is_arithmetic(op))
            throw Notation_error("no assignment \"" + std::string(word) + "\"");
        return op;
    }

    Statement declaration()
    {
        const Code_type declared = known_type(m_words.take());
        const std::string name(m_words.take());
        const Expr value = m_words.accept("=") ? fitting(expression(), declared) : nullptr;
        require(!value || value->type == declared, "the value is not of the variable's type");
        declare_local(declared, name);
        return declare(declared, name, value);
    }

    void condition(Statements& statements)
    {
        m_words.expect("(");
        Statement parsed;
        parsed.kind = Statement::Kind::condition;
        parsed.value = expression();
        require(parsed.value->type == Base_type::boolean, "the condition is not true or false");
        m_words.expect(")");
        const bool known = is_literal(parsed.value);
        const bool taken = !known || is_true(parsed.value);
        if (taken)
            block(known ? statements : parsed.body);
        else
            m_words.skip_statement();
        if (m_words.accept("else")) {
            if (known && taken)
                m_words.skip_statement();
            else
                block(known ? statements : parsed.otherwise);
        }
        if (!known)
            statements.push_back(std::move(parsed));
    }

    void loop(Statements& statements)
    {
        Statement parsed;
        parsed.kind = Statement::Kind::loop;
        m_words.expect("(");
        m_words.expect("int");
        parsed.name = m_words.take();
        declare_local(Base_type::integer, parsed.name);
        m_words.expect("=");
        m_words.expect("0");
        m_words.expect(";");
        m_words.expect(parsed.name);
        m_words.expect("<");
        parsed.value = expression();
        m_words.expect(";");
        m_words.expect(parsed.name);
        m_words.expect("++");
        m_words.expect(")");
        block(parsed.body);
        statements.push_back(std::move(parsed));
    }

    // A scalar where a vector is wanted is repeated, an integer where a float is wanted converted.
    Expr fitting(const Expr& value, const Code_type& wanted)
    {
        const bool number = component_count(value->type) == 1 && is_float(wanted);
        return number && value->type != wanted ? construct(wanted, {value}) : value;
    }

    Expr expression()
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
    Expr taken_branch(bool is_first)
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

    Expr operation(int level)
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

    // Integers and floats are kept apart: a shading language may have no conversion between them.
    static Expr combine(Operator op, const Expr& a, const Expr& b)
    {
        const bool converts_a = a->type == Base_type::integer && is_float(b->type);
        const bool converts_b = b->type == Base_type::integer && is_float(a->type);
        const Expr first = converts_a ? construct(Base_type::float1, {a}) : a;
        const Expr second = converts_b ? construct(Base_type::float1, {b}) : b;
        require(operation_type(op, first->type, second->type) != Base_type::none,
                "wrong types of operands for \"" + std::string(row_of(op).sign) + "\"");
        return binary(op, first, second);
    }

    Expr prefix()
    {
        const Nesting nesting(m_depth);
        if (m_words.accept("-"))
            return negate(prefix());
        if (m_words.accept("!"))
            return logical_not(prefix());
        return postfix();
    }

    Expr postfix()
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

    static Expr element(const Expr& list, const Expr& position)
    {
        if (list->type == Base_type::matrix3 || list->type == Base_type::matrix4)
            return index(list, position,
                         list->type == Base_type::matrix3 ? Base_type::float3 : Base_type::float4);
        std::string name = list->type.structure;
        name.resize(name.size() - std::min<std::size_t>(2, name.size())); // without "[]"
        return index(list, position, Code_type(name));
    }

    Expr selected(const Expr& whole, const std::string& name)
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

    Named_values named_arguments()
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

    std::vector<Expr> arguments()
    {
        std::vector<Expr> parsed;
        while (!m_words.accept(")")) {
            parsed.push_back(expression());
            if (!m_words.accept(",") && m_words.peek() != ")")
                throw Notation_error("an argument list does not end");
        }
        return parsed;
    }

    Expr primary()
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

    Expr refused()
    {
        const std::string_view word = m_words.take();
        const Code_type refused_type =
            word == type_word(Base_type::text) ? Base_type::text : known_type(word);
        m_words.expect(">");
        m_words.expect("(");
        return m_scope.refused_value(refused_type, arguments());
    }

    // One part is repeated, converted or cut off; several have as many components as the whole.
    static Expr constructed(const Code_type& type, const std::vector<Expr>& parts)
    {
        int count = 0;
        for (const Expr& part : parts)
            count += component_count(part->type);
        require(parts.size() == 1 ? count > 0 : count == component_count(type),
                "wrong number of components");
        return construct(type, parts);
    }

    Expr number(const std::string& word)
    {
        if (word.back() == 'u')
            return literal(
                Base_type::natural,
                {static_cast<double>(parsed<std::uint32_t>(word.substr(0, word.size() - 1)))});
        if (word.find('.') == std::string::npos)
            return integer_literal(parsed<int>(word));
        return literal(parsed<double>(word));
    }

    template<typename Number>
    Number parsed(const std::string& word)
    {
        Number number = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        require(error == std::errc(), "the number " + word + " is out of range");
        return number;
    }

    Expr named(const std::string& name)
    {
        const auto local = m_locals.find(name);
        Expr found = local != m_locals.end() ? local->second : m_scope.find_variable(name);
        if (!found)
            throw Notation_error("unknown name \"" + name + "\"");
        return found;
    }

    Word_stream m_words;
    Notation_scope& m_scope;
    const Code_type* m_result = nullptr; // of the function that is parsed
    std::map<std::string, Expr> m_locals;
    int m_depth = 0;
};

// What the parser makes of the text. Mistakes get the text's place.
template<typename Result>
Result parsed(const Shade_text& text, Notation_scope& scope, Result (Notation_parser::*parse)(),
              Empty_lines empty_lines = Empty_lines::skipped)
{
    Notation_parser parser(text.text, scope, empty_lines);
    try {
        return (parser.*parse)();
    } catch (const Notation_error& error) {
        if (error.is_placed || text.place.line == 0)
            throw;
        const int line = text.place.line + parser.lines_passed();
        Notation_error placed(Shade_error({text.place.file, line}, error.what()).what());
        placed.is_placed = true;
        throw placed;
    }
}

} // namespace

Expr Notation_scope::refused_value(const Code_type&, const std::vector<Expr>&)
{
    throw Notation_error("nothing can be refused here");
}

Expr Notation_scope::node(const std::string& category, Named_values)
{
    throw Notation_error("\"" + category + "\": a node cannot stand here");
}

Expr parse_expression(const Shade_text& text, Notation_scope& scope)
{
    return parsed(text, scope, &Notation_parser::whole_expression);
}

Expr parse_expression(std::string_view text, Notation_scope& scope)
{
    return parse_expression(Shade_text{text, {}}, scope);
}

Function parse_function(const Shade_text& text, Notation_scope& scope, Empty_lines empty_lines)
{
    return parsed(text, scope, &Notation_parser::function, empty_lines);
}

bool names_word(std::string_view text, std::string_view word)
{
    for (Word_stream words(text); !words.at_end(); words.take())
        if (words.peek() == word)
            return true;
    return false;
}

Function_head parse_head(const Shade_text& text)
{
    Word_stream words(text.text.substr(0, text.text.find('{')));
    Function_head head;
    head.type = words.take();
    head.name = words.take();
    words.expect("(");
    while (!words.at_end() && !words.accept(")")) {
        head.parameter_types.emplace_back(words.take());
        words.take();
        words.accept(",");
    }
    return head;
}

} // namespace reference_host
