// fxcheck: checks how an effect file is put together, CgFX or HLSL.
//
//     fxcheck FILE
//
// It knows the frame and not the language: expressions and types are for the compilers of others.
//   - Brackets match and texts end on their line.
//   - There is a technique, or a structure that implements an interface (a light or a volume).
//   - Each pass has a vertex and a fragment program of one family, and both are functions of
//     the file.
//   - States and sampler states are known to the family of the programs.
//   - Samplers read textures that the file declares, in the family's brackets.
//   - No global name is declared twice (names within #if may be).
// Exit status: 0 it is so; 1 it is not, with the line on standard error; 2 wrong usage.
#include "reference_host/system/file_access.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using Words = std::set<std::string>;

// What effects of one family call things.
struct Family {
    const char* vertex_program;
    const char* fragment_program;
    const char* texture_bracket; // before the name of a sampler's texture
    Words states;
    Words sampler_states;
};

const Family families[] = {
    {"VertexProgram",
     "FragmentProgram",
     "<",
     {"DepthTestEnable", "DepthMask", "DepthFunc", "BlendEnable", "BlendFunc", "CullFaceEnable",
      "CullFace"},
     {"MinFilter", "MagFilter", "WrapS", "WrapT", "WrapR"}},
    {"VertexShader",
     "PixelShader",
     "(",
     {"ZEnable", "ZWriteEnable", "ZFunc", "AlphaBlendEnable", "SrcBlend", "DestBlend", "CullMode"},
     {"MinFilter", "MagFilter", "MipFilter", "AddressU", "AddressV", "AddressW"}},
};

struct Word {
    std::string text; // of a text in quotes the first sign only
    int line = 0;
    bool is_guarded = false; // within #if
};

[[noreturn]] void fail(int line, const std::string& reason)
{
    throw std::runtime_error(std::to_string(line) + ": error: " + reason);
}

// ---- reading words ----

class Word_reader
{
public:
    explicit Word_reader(const std::string& text) : m_text(text) {}

    // All words, and none for comments and lines of the preprocessor.
    std::vector<Word> read()
    {
        while (m_at < m_text.size()) {
            const char c = m_text[m_at];
            if (c == '#' && m_at_line_start)
                skip_directive();
            else if (m_text.compare(m_at, 2, "//") == 0)
                m_at = std::min(m_text.find('\n', m_at), m_text.size());
            else if (m_text.compare(m_at, 2, "/*") == 0)
                skip_comment();
            else if (std::isspace(static_cast<unsigned char>(c)))
                skip_space();
            else
                read_word();
        }
        return m_words;
    }

private:
    static bool is_part(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

    void skip_space()
    {
        if (m_text[m_at] == '\n') {
            ++m_line;
            m_at_line_start = true;
        }
        ++m_at;
    }

    void skip_directive()
    {
        const std::size_t end = std::min(m_text.find('\n', m_at), m_text.size());
        const std::string directive = m_text.substr(m_at, end - m_at);
        m_guards += directive.compare(0, 3, "#if") == 0;
        m_guards -= directive.compare(0, 6, "#endif") == 0;
        m_at = end;
    }

    void skip_comment()
    {
        const std::size_t end = m_text.find("*/", m_at);
        if (end == std::string::npos)
            fail(m_line, "a comment does not end");
        for (; m_at < end + 2; ++m_at)
            m_line += m_text[m_at] == '\n';
    }

    void read_word()
    {
        m_at_line_start = false;
        Word word{std::string(1, m_text[m_at]), m_line, m_guards > 0};
        if (word.text == "\"")
            skip_text();
        else if (!is_part(m_text[m_at]))
            ++m_at;
        else
            for (word.text.clear(); m_at < m_text.size() && is_part(m_text[m_at]); ++m_at)
                word.text += m_text[m_at];
        m_words.push_back(word);
    }

    void skip_text()
    {
        for (++m_at; m_at < m_text.size() && m_text[m_at] != '"'; ++m_at) {
            if (m_text[m_at] == '\n')
                fail(m_line, "a text does not end on its line");
            m_at += m_text[m_at] == '\\';
        }
        ++m_at;
    }

    const std::string& m_text;
    std::size_t m_at = 0;
    int m_line = 1;
    int m_guards = 0;
    bool m_at_line_start = true;
    std::vector<Word> m_words;
};

// ---- checks ----

class Effect_checker
{
public:
    explicit Effect_checker(std::vector<Word> words) : m_words(std::move(words))
    {
        const int last_line = m_words.empty() ? 1 : m_words.back().line;
        m_words.push_back({"", last_line});
    }

    void check()
    {
        check_brackets();
        collect_globals();
        if (m_techniques.empty() && !m_has_implementation)
            fail(m_words.back().line, "neither a technique nor an implementation of an interface");
        for (const std::size_t technique : m_techniques)
            check_passes(technique);
        for (const std::size_t sampler : m_samplers)
            check_sampler(sampler);
    }

private:
    const std::string& text(std::size_t at) const
    {
        return m_words[std::min(at, m_words.size() - 1)].text;
    }

    void check_brackets()
    {
        std::vector<const Word*> open;
        for (const Word& word : m_words) {
            if (word.text == "(" || word.text == "[" || word.text == "{")
                open.push_back(&word);
            const std::string opening = word.text == ")"   ? "("
                                        : word.text == "]" ? "["
                                        : word.text == "}" ? "{"
                                                           : "";
            if (opening.empty())
                continue;
            if (open.empty() || open.back()->text != opening)
                fail(word.line, "'" + word.text + "' closes nothing");
            open.pop_back();
        }
        if (!open.empty())
            fail(open.back()->line, "'" + open.back()->text + "' is never closed");
    }

    // The place behind the bracket that closes the one at `at`.
    std::size_t behind_bracket(std::size_t at) const
    {
        int depth = 0;
        do {
            const std::string& word = text(at++);
            depth += word == "(" || word == "[" || word == "{";
            depth -= word == ")" || word == "]" || word == "}";
        } while (depth > 0);
        return at;
    }

    void collect_globals()
    {
        for (std::size_t at = 0; !text(at).empty();)
            at = read_declaration(at);
    }

    // Reads one declaration of the file's outermost level; returns the place behind it.
    std::size_t read_declaration(std::size_t at)
    {
        if (text(at) == "technique")
            m_techniques.push_back(at);
        const bool is_structure = text(at) == "struct" || text(at) == "interface";
        m_has_implementation = m_has_implementation || (is_structure && text(at + 2) == ":");
        if (is_structure)
            declare(at + 1);
        bool is_named = is_structure || text(at) == "technique";
        for (const std::size_t start = at; !text(at).empty(); ++at) {
            const std::string& word = text(at);
            if (!is_named && at > start && std::string("(:<=;[").find(word) != std::string::npos) {
                name_declaration(start, at - 1, word == "(");
                is_named = true;
            }
            if (word == "sampler_state")
                m_samplers.push_back(at + 1);
            if (word == "<")
                at = behind_annotations(at) - 1;
            else if (word == ";")
                return at + 1;
            else if (word == "{" && text(behind_bracket(at)) != ";")
                return behind_bracket(at);
            else if (word == "(" || word == "[" || word == "{")
                at = behind_bracket(at) - 1;
        }
        return at;
    }

    void name_declaration(std::size_t start, std::size_t at, bool is_function)
    {
        if (is_function)
            m_functions.insert(text(at)); // functions may be overloaded
        else
            declare(at);
        for (std::size_t i = start; i < at; ++i)
            if (text(i) == "texture")
                m_textures.insert(text(at));
    }

    void declare(std::size_t at)
    {
        if (!m_globals.insert(text(at)).second && !m_words[at].is_guarded)
            fail(m_words[at].line, "'" + text(at) + "' is declared twice");
    }

    std::size_t behind_annotations(std::size_t at) const
    {
        while (text(at) != ">" && !text(at).empty())
            ++at;
        return at + 1;
    }

    // ---- passes ----

    // The brace of "technique NAME {" or "pass NAME {".
    std::size_t opening_brace(std::size_t at) const
    {
        const int line = m_words[at].line;
        for (; text(at) != "{"; ++at)
            if (text(at).empty() || text(at) == ";")
                fail(line, "'{' expected");
        return at;
    }

    void check_passes(std::size_t technique)
    {
        std::size_t at = opening_brace(technique);
        const std::size_t end = behind_bracket(at) - 1;
        int passes = 0;
        for (++at; at < end; ++at) {
            if (text(at) != "pass")
                continue;
            ++passes;
            at = opening_brace(at);
            check_pass(at);
            at = behind_bracket(at) - 1;
        }
        if (passes == 0)
            fail(m_words[technique].line, "a technique without a pass");
    }

    void check_pass(std::size_t open)
    {
        const std::size_t end = behind_bracket(open) - 1;
        Words programs;
        std::vector<std::size_t> states;
        for (std::size_t at = open + 1; at < end; at = behind_value(at)) {
            if (text(at + 2) == "compile") {
                programs.insert(text(at));
                if (!m_functions.count(text(at + 4)))
                    fail(m_words[at].line, "there is no function '" + text(at + 4) + "'");
            } else {
                states.push_back(at);
            }
        }
        for (const Family& family : families)
            if (programs == Words{family.vertex_program, family.fragment_program})
                m_family = &family;
        if (!m_family)
            fail(m_words[open].line,
                 "a pass without a vertex and a fragment program of one family");
        for (const std::size_t at : states)
            if (!m_family->states.count(text(at)))
                fail(m_words[at].line, "'" + text(at) + "' is not a state");
    }

    void check_sampler(std::size_t open) const
    {
        const std::size_t end = behind_bracket(open) - 1;
        for (std::size_t at = open + 1; at < end; at = behind_value(at)) {
            const std::string& name = text(at);
            if (name == "Texture") {
                if (!m_textures.count(text(at + 3)))
                    fail(m_words[at].line, "there is no texture '" + text(at + 3) + "'");
                if (m_family && text(at + 2) != m_family->texture_bracket)
                    fail(m_words[at].line, "the texture is in the other family's brackets");
            } else if (m_family && !m_family->sampler_states.count(name)) {
                fail(m_words[at].line, "'" + name + "' is not a sampler state");
            }
        }
    }

    // The place behind "NAME = VALUE;".
    std::size_t behind_value(std::size_t at) const
    {
        if (text(at + 1) != "=")
            fail(m_words[at].line, "'=' expected behind '" + text(at) + "'");
        while (text(at) != ";" && !text(at).empty())
            ++at;
        return at + 1;
    }

    std::vector<Word> m_words; // ended by an empty one
    std::vector<std::size_t> m_techniques;
    std::vector<std::size_t> m_samplers; // their opening brackets
    Words m_globals;
    Words m_functions;
    Words m_textures;
    bool m_has_implementation = false;
    const Family* m_family = nullptr; // that of the last pass
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: fxcheck FILE\n", stderr);
        return 2;
    }
    constexpr std::size_t max_size = 64 << 20;
    std::string reason;
    const std::optional<std::string> text =
        reference_host::read_whole_file(argv[1], max_size, reason);
    try {
        if (!text)
            fail(0, "cannot be read: " + reason);
        Effect_checker(Word_reader(*text).read()).check();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s:%s\n", argv[1], error.what());
        return 1;
    }
    return 0;
}
