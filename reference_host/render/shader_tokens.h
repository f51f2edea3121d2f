// Cuts shader text (Cg, HLSL, GLSL) into tokens, as far as finding declarations needs it.
#ifndef REFERENCE_HOST_RENDER_SHADER_TOKENS_H
#define REFERENCE_HOST_RENDER_SHADER_TOKENS_H

#include <string>
#include <string_view>
#include <vector>

namespace reference_host
{

enum class Token_kind { word, text, sign };

struct Token {
    Token_kind kind;
    std::string_view text; // a part of the shader text; a quoted text without its quotes
    int depth;             // in how many braces and brackets it stands; those themselves: outside
};

// Words are identifiers and numbers, a sign is one character. Comments and lines of the
// preprocessor are left out. The tokens refer to `source`.
std::vector<Token> tokens_of(std::string_view source);

bool is_word_character(char character);

} // namespace reference_host

#endif
