#include "reference_host/shading/word_stream.h"

#include "reference_host/shading/expression.h"
#include "reference_host/shading/quotes.h"

#include <algorithm>
#include <cctype>

namespace reference_host
{
namespace
{

// Returns the spaces and comments that the text begins with, and takes them off.
std::string_view skip_spaces(std::string_view& text)
{
    const std::string_view whole = text;
    for (;;) {
        while (!text.empty() && std::isspace(static_cast<unsigned char>(text[0])))
            text.remove_prefix(1);
        if (text.substr(0, 2) != "//")
            return whole.substr(0, whole.size() - text.size());
        text.remove_prefix(std::min(text.find('\n'), text.size()));
    }
}

bool is_word_sign(char sign)
{
    return std::isalnum(static_cast<unsigned char>(sign)) || sign == '_';
}

std::size_t word_length(std::string_view text)
{
    const bool number = std::isdigit(static_cast<unsigned char>(text[0]));
    std::size_t length = 0;
    while (length < text.size() && (is_word_sign(text[length]) || (number && text[length] == '.')))
        ++length;
    if (text[0] == '"')
        return quoted_length(text);
    static constexpr std::string_view pairs[] = {"<=", ">=", "==", "!=", "&&", "||", "<<",
                                                 ">>", "+=", "-=", "*=", "/=", "++"};
    for (const std::string_view pair : pairs)
        if (text.substr(0, 2) == pair)
            return 2;
    return length > 0 ? length : 1;
}

} // namespace

Word_stream::Word_stream(std::string_view text, Empty_lines empty_lines) : m_begin(text.data())
{
    for (;;) {
        const std::string_view spaces = skip_spaces(text);
        if (text.empty())
            return;
        std::size_t end = empty_lines == Empty_lines::kept ? spaces.find('\n') : spaces.npos;
        while (end != spaces.npos && (end = spaces.find('\n', end + 1)) != spaces.npos)
            m_words.push_back(spaces.substr(end, 1));
        const std::size_t length = word_length(text);
        m_words.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
}

bool Word_stream::accept(std::string_view word)
{
    if (peek() != word)
        return false;
    ++m_next;
    return true;
}

void Word_stream::expect(std::string_view word)
{
    if (!accept(word))
        throw Notation_error("expected \"" + std::string(word) + "\" before \"" +
                             std::string(peek()) + "\"");
}

void Word_stream::skip_statement()
{
    int depth = 0;
    do {
        const std::string_view word = take();
        depth += word == "{" || word == "(";
        depth -= word == "}" || word == ")";
        if (depth == 0 && (word == ";" || word == "}"))
            return;
    } while (!at_end());
}

void Word_stream::skip_expression()
{
    int depth = 0;
    int choices = 0;
    for (; !at_end(); take()) {
        const std::string_view word = peek();
        const bool ends = word == ")" || word == "]" || word == "," || word == ";" ||
                          (word == ":" && choices == 0);
        if (depth == 0 && ends)
            return;
        depth += word == "(" || word == "[";
        depth -= word == ")" || word == "]";
        choices += depth == 0 && word == "?";
        choices -= depth == 0 && word == ":";
    }
}

int Word_stream::lines_passed() const
{
    const char* last = m_next == 0 ? m_begin : m_words[m_next - 1].data();
    return static_cast<int>(std::count(m_begin, last, '\n'));
}

} // namespace reference_host
