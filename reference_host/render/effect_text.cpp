#include "reference_host/render/effect_text.h"

#include "reference_host/render/effect_declarations.h"

#include <algorithm>
#include <sstream>

namespace reference_host
{

namespace
{

// The value of the string annotation "ResourceName" of a declaration.
std::string resource_name(const Tokens& tokens, const Declaration& declaration)
{
    for (std::size_t i = declaration.begin; i + 2 < declaration.end; ++i)
        if (tokens[i].text == "ResourceName" && tokens[i + 1].text == "=" &&
            tokens[i + 2].kind == Token_kind::text)
            return std::string(tokens[i + 2].text);
    return "";
}

// The texture that a sampler_state names: "Texture = <name>;" or "Texture = (name);".
std::string_view sampled_texture(const Tokens& tokens, const Declaration& declaration)
{
    for (std::size_t i = declaration.begin; i + 3 < declaration.end; ++i)
        if (tokens[i].text == "Texture" && tokens[i + 1].text == "=")
            return tokens[i + 3].text;
    return {};
}

std::map<std::string, std::string> texture_files(const Tokens& tokens,
                                                 const std::vector<Declaration>& declarations)
{
    std::map<std::string, std::string> files;
    for (const Declaration& declaration : declarations)
        if (std::string file = resource_name(tokens, declaration); !file.empty())
            files.emplace(declaration.name, std::move(file));
    for (const Declaration& declaration : declarations) {
        const auto texture = files.find(std::string(sampled_texture(tokens, declaration)));
        if (begins_with(declaration.type, "sampler") && texture != files.end())
            files.emplace(declaration.name, texture->second);
    }
    return files;
}

// "STATE = compile PROFILE ENTRY (": the first one whose state is `cg_state` or `d3d_state`.
std::string entry_point(const Tokens& tokens, std::string_view cg_state, std::string_view d3d_state)
{
    for (std::size_t i = 2; i + 2 < tokens.size(); ++i)
        if (tokens[i].text == "compile" && tokens[i - 1].text == "=" &&
            (tokens[i - 2].text == cg_state || tokens[i - 2].text == d3d_state))
            return std::string(tokens[i + 2].text);
    return "";
}

// Structs by the interface that they implement.
std::map<std::string_view, std::vector<std::string>> implementations(const Tokens& tokens)
{
    std::map<std::string_view, std::vector<std::string>> result;
    for (std::size_t i = 0; i + 4 < tokens.size(); ++i)
        if (tokens[i].text == "struct" && tokens[i + 2].text == ":" && tokens[i + 4].text == "{")
            result[tokens[i + 3].text].emplace_back(tokens[i + 1].text);
    return result;
}

} // namespace

Effect_description describe_effect(const std::string& text)
{
    const Tokens tokens = tokens_of(text);
    const std::vector<Declaration> declarations = global_declarations(tokens);
    Effect_description description;
    description.vertex_entry = entry_point(tokens, "VertexProgram", "VertexShader");
    description.fragment_entry = entry_point(tokens, "FragmentProgram", "PixelShader");
    description.direct3d = std::any_of(tokens.begin(), tokens.end(), [](const Token& token) {
        return token.text == "VertexShader";
    });
    description.texture_files = texture_files(tokens, declarations);
    const auto structs = implementations(tokens);
    for (const Declaration& declaration : declarations) {
        const auto implementing = structs.find(declaration.type);
        if (text_at(tokens, declaration.begin) == "[" &&
            text_at(tokens, declaration.begin + 1) == "]" && implementing != structs.end())
            description.unsized_lists.emplace(declaration.name, implementing->second);
    }
    return description;
}

std::string without_parameter_semantics(const std::string& text)
{
    std::string result = text;
    const Tokens tokens = tokens_of(text);
    for (const Declaration& declaration : global_declarations(tokens)) {
        const bool is_matrix = begins_with(declaration.type, "float") &&
                               declaration.type.find('x') != std::string_view::npos;
        if (is_matrix || text_at(tokens, declaration.begin) != ":" ||
            !is_word(tokens, declaration.begin + 1))
            continue;
        const char* first = tokens[declaration.begin].text.data();
        const std::string_view semantic = tokens[declaration.begin + 1].text;
        std::fill(result.begin() + (first - text.data()),
                  result.begin() + (semantic.data() + semantic.size() - text.data()), ' ');
    }
    return result;
}

std::map<std::string, std::string> texture_comments(const std::string& text)
{
    constexpr std::string_view beginning = "// texture ";
    std::map<std::string, std::string> files;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t colon = line.find(": ");
        if (begins_with(line, beginning) && colon != std::string::npos && colon > beginning.size())
            files.emplace(line.substr(beginning.size(), colon - beginning.size()),
                          line.substr(colon + 2));
    }
    return files;
}

std::vector<Glsl_uniform> glsl_uniforms(const std::string& text)
{
    std::vector<Glsl_uniform> uniforms;
    const Tokens tokens = tokens_of(text);
    for (std::size_t i = 0; i + 3 < tokens.size(); ++i)
        if (tokens[i].text == "uniform")
            uniforms.push_back({std::string(tokens[i + 1].text), std::string(tokens[i + 2].text),
                                tokens[i + 3].text == "="});
    return uniforms;
}

} // namespace reference_host
