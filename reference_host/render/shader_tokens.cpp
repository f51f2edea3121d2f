#include "reference_host/render/shader_tokens.h"

#include <algorithm>
#include <cctype>

namespace reference_host
{

namespace
{

class Tokenizer
{
public:
    explicit Tokenizer(std::string_view source) : m_source(source) {}

    std::vector<Token> run()
    {
        while (m_at < m_source.size())
            step();
        return std::move(m_tokens);
    }

private:
    void step()
    {
        const char character = m_source[m_at];
        if (std::isspace(static_cast<unsigned char>(character)))
            ++m_at;
        else if (character == '#' || starts_with("//"))
            skip_past("\n");
        else if (starts_with("/*"))
            skip_past("*/");
        else if (character == '"')
            take_text();
        else if (is_word_character(character))
            take_word();
        else
            take_sign();
    }

    bool starts_with(std::string_view text) const
    {
        return m_source.compare(m_at, text.size(), text) == 0;
    }

    void skip_past(std::string_view end)
    {
        const std::size_t found = m_source.find(end, m_at);
        m_at = found == std::string_view::npos ? m_source.size() : found + end.size();
    }

    void take_text()
    {
        const std::size_t begin = ++m_at;
        while (m_at < m_source.size() && m_source[m_at] != '"')
            m_at += m_source[m_at] == '\\' ? 2 : 1;
        m_at = std::min(m_at, m_source.size());
        add(Token_kind::text, begin);
        ++m_at;
    }

    void take_word()
    {
        const std::size_t begin = m_at;
        while (m_at < m_source.size() && is_word_character(m_source[m_at]))
            ++m_at;
        add(Token_kind::word, begin);
    }

    void take_sign()
    {
        const char sign = m_source[m_at++];
        if (sign == '}' || sign == ')' || sign == ']')
            --m_depth;
        add(Token_kind::sign, m_at - 1);
        if (sign == '{' || sign == '(' || sign == '[')
            ++m_depth;
    }

    void add(Token_kind kind, std::size_t begin)
    {
        m_tokens.push_back({kind, m_source.substr(begin, m_at - begin), m_depth});
    }

    std::string_view m_source;
    std::size_t m_at = 0;
    int m_depth = 0;
    std::vector<Token> m_tokens;
};

} // namespace

std::vector<Token> tokens_of(std::string_view source)
{
    return Tokenizer(source).run();
}

bool is_word_character(char character)
{
    return std::isalnum(static_cast<unsigned char>(character)) || character == '_';
}

} // namespace reference_host
