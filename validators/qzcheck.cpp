// qzcheck: parses the qz scene text of a shader.
//
//     qzcheck FILE
//
//     file       = shader
//     shader     = "shader" TEXT "{" "kind" TEXT { parameter | texture } "}"
//     parameter  = "parameter" TEXT TYPE NUMBER...       as many numbers as TYPE has components
//     texture    = "texture" TEXT ("2d" | "cube") TEXT
//
// TEXT stands in double quotes, with \" and \\ inside; "#" begins a comment; names are not
// repeated. Exit status: 0 it is such a text; 1 it is not, with the line on standard error; 2 wrong
// usage.
#include "reference_host/system/file_access.h"

#include <cstdio>
#include <map>
#include <set>
#include <stdexcept>
#include <string>

namespace
{

// How many numbers a parameter of a type has.
const std::map<std::string, int> component_counts = {
    {"boolean", 1}, {"integer", 1}, {"float", 1},  {"vector2", 2},  {"vector3", 3},
    {"vector4", 4}, {"color3", 3},  {"color4", 4}, {"matrix33", 9}, {"matrix44", 16},
};

class Parser
{
public:
    explicit Parser(std::string text) : m_text(std::move(text)) { advance(); }

    // Throws std::runtime_error with line and reason.
    void parse()
    {
        expect("shader");
        take_name();
        expect("{");
        expect("kind");
        take_text("a kind");
        while (m_word != "}") {
            if (take("parameter"))
                parse_parameter();
            else if (take("texture"))
                parse_texture();
            else
                fail("neither parameter nor texture: '" + m_word + "'");
        }
        advance();
        if (!m_word.empty())
            fail("something follows the shader: '" + m_word + "'");
    }

private:
    void parse_parameter()
    {
        take_name();
        const auto type = component_counts.find(m_word);
        if (type == component_counts.end())
            fail("no type: '" + m_word + "'");
        advance();
        for (int i = 0; i < type->second; ++i) {
            std::size_t read = 0;
            if (!m_is_text && m_word != "true" && m_word != "false") {
                try {
                    std::stod(m_word, &read);
                } catch (const std::exception&) {
                    fail("no number: '" + m_word + "'");
                }
                if (read != m_word.size())
                    fail("no number: '" + m_word + "'");
            }
            advance();
        }
    }

    void parse_texture()
    {
        take_name();
        if (!take("2d"))
            expect("cube");
        take_text("a file name");
    }

    void take_name()
    {
        if (!m_names.insert(m_word).second)
            fail("the name '" + m_word + "' stands here again");
        take_text("a name");
    }

    void take_text(const char* what)
    {
        if (!m_is_text)
            fail(std::string("no ") + what + ": '" + m_word + "'");
        advance();
    }

    bool take(const char* word)
    {
        if (m_is_text || m_word != word)
            return false;
        advance();
        return true;
    }

    void expect(const char* word)
    {
        if (!take(word))
            fail(std::string("'") + word + "' expected, not '" + m_word + "'");
    }

    // Reads the next word, empty at the end of the text.
    void advance()
    {
        m_word.clear();
        m_is_text = false;
        skip_blanks();
        if (m_at == m_text.size())
            return;
        if (m_text[m_at] == '"')
            return read_text();
        while (m_at < m_text.size() && m_text[m_at] != ' ' && m_text[m_at] != '\n')
            m_word += m_text[m_at++];
    }

    void read_text()
    {
        m_is_text = true;
        for (++m_at; m_at < m_text.size() && m_text[m_at] != '"'; ++m_at) {
            if (m_text[m_at] == '\n')
                fail("a text goes on over the end of the line");
            if (m_text[m_at] == '\\')
                ++m_at;
            if (m_at < m_text.size())
                m_word += m_text[m_at];
        }
        if (m_at == m_text.size())
            fail("a text does not end");
        ++m_at;
    }

    void skip_blanks()
    {
        bool in_comment = false;
        for (; m_at < m_text.size(); ++m_at) {
            const char c = m_text[m_at];
            in_comment = c != '\n' && (in_comment || c == '#');
            m_line += c == '\n';
            if (!in_comment && c != ' ' && c != '\n')
                return;
        }
    }

    [[noreturn]] void fail(const std::string& reason) const
    {
        throw std::runtime_error(std::to_string(m_line) + ": error: " + reason);
    }

    std::string m_text;
    std::size_t m_at = 0;
    int m_line = 1;
    std::string m_word; // the next one
    bool m_is_text = false;
    std::set<std::string> m_names;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: qzcheck FILE\n", stderr);
        return 2;
    }
    constexpr std::size_t max_size = 16 << 20;
    std::string reason;
    const std::optional<std::string> text =
        reference_host::read_whole_file(argv[1], max_size, reason);
    try {
        if (!text)
            throw std::runtime_error("0: error: cannot be read: " + reason);
        Parser(*text).parse();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s:%s\n", argv[1], error.what());
        return 1;
    }
    return 0;
}
