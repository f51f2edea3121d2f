#include "reference_host/render/effect_declarations.h"

namespace reference_host
{

std::string_view text_at(const Tokens& tokens, std::size_t index)
{
    return index < tokens.size() ? tokens[index].text : std::string_view();
}

bool is_word(const Tokens& tokens, std::size_t index)
{
    return index < tokens.size() && tokens[index].kind == Token_kind::word;
}

bool begins_with(std::string_view text, std::string_view beginning)
{
    return text.compare(0, beginning.size(), beginning) == 0;
}

std::vector<Declaration> global_declarations(const Tokens& tokens)
{
    std::vector<Declaration> declarations;
    for (std::size_t i = 0; i + 2 < tokens.size(); ++i) {
        if (tokens[i].depth != 0 || !is_word(tokens, i) || !is_word(tokens, i + 1) ||
            tokens[i].text == "struct")
            continue;
        const std::string_view next = tokens[i + 2].text;
        if (next != ":" && next != "<" && next != "=" && next != ";" && next != "[")
            continue;
        // An annotation holds semicolons of its own.
        int angles = 0;
        std::size_t end = i + 2;
        for (; end < tokens.size() &&
               (angles > 0 || tokens[end].text != ";" || tokens[end].depth != 0);
             ++end) {
            if (tokens[end].depth == 0)
                angles += tokens[end].text == "<" ? 1 : tokens[end].text == ">" ? -1 : 0;
        }
        declarations.push_back({tokens[i].text, tokens[i + 1].text, i + 2, end});
        i = end;
    }
    return declarations;
}

} // namespace reference_host
