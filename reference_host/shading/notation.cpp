#include "reference_host/shading/notation.h"

#include "reference_host/shading/expression_parser.h"

namespace reference_host
{
namespace
{

class Notation_parser : public Expression_parser
{
public:
    using Expression_parser::Expression_parser;

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

    const Code_type* m_result = nullptr; // of the function that is parsed
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
    return parsed<Expr>(text, scope, &Notation_parser::whole_expression);
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
