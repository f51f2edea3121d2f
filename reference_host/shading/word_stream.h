// The words of a text of the shading notation, and a place among them.
#ifndef REFERENCE_HOST_SHADING_WORD_STREAM_H
#define REFERENCE_HOST_SHADING_WORD_STREAM_H

#include <cstddef>
#include <string_view>
#include <vector>

namespace reference_host
{

// What becomes of empty lines: each is a word, "\n", or none is.
enum class Empty_lines { skipped, kept };

class Word_stream
{
public:
    // The text must outlive the stream.
    explicit Word_stream(std::string_view text, Empty_lines empty_lines = Empty_lines::skipped);

    bool at_end() const { return m_next == m_words.size(); }

    // Empty behind the last word.
    std::string_view peek(std::size_t ahead = 0) const
    {
        return m_next + ahead < m_words.size() ? m_words[m_next + ahead] : std::string_view();
    }
    std::string_view take() { return at_end() ? std::string_view() : m_words[m_next++]; }

    bool accept(std::string_view word);
    void expect(std::string_view word); // throws Notation_error

    // Passes over one statement or block.
    void skip_statement();

    // Passes over one expression and stops before the sign that ends it.
    void skip_expression();

    // How many lines lie before the last word that was taken.
    int lines_passed() const;

private:
    const char* m_begin;
    std::vector<std::string_view> m_words;
    std::size_t m_next = 0;
};

} // namespace reference_host

#endif
