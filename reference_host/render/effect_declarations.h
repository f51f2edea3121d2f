// The declarations at file level of an effect.
#ifndef REFERENCE_HOST_RENDER_EFFECT_DECLARATIONS_H
#define REFERENCE_HOST_RENDER_EFFECT_DECLARATIONS_H

#include "reference_host/render/shader_tokens.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace reference_host
{

using Tokens = std::vector<Token>;

// Type, name, and all that follows up to the semicolon.
struct Declaration {
    std::string_view type;
    std::string_view name;
    std::size_t begin; // index of the token after the name
    std::size_t end;   // index of the semicolon
};

std::vector<Declaration> global_declarations(const Tokens& tokens);

// The text of the token at `index`; empty after the end.
std::string_view text_at(const Tokens& tokens, std::size_t index);

bool is_word(const Tokens& tokens, std::size_t index);

bool begins_with(std::string_view text, std::string_view beginning);

} // namespace reference_host

#endif
