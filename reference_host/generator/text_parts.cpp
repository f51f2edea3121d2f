#include "reference_host/generator/text_parts.h"

#include <algorithm>

namespace reference_host
{
namespace
{

constexpr std::size_t comment_width = 80;

// One line of a comment: no control characters, and no backslash at the end, which would join the
// next line to it.
std::string comment_line(const std::string& text)
{
    return one_line(text.empty() ? "//" : "// " + text) + "\n";
}

// A list of words in a comment, on as many lines as it needs.
std::string comment_list(const std::string& title, const std::vector<std::string>& words)
{
    std::string text;
    std::string line = title;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string word = words[i] + (i + 1 < words.size() ? "," : "");
        if (line.size() + word.size() + 4 > comment_width) {
            text += comment_line(line);
            line = "   ";
        }
        line += " " + word;
    }
    return text + comment_line(line);
}

} // namespace

std::string one_line(const std::string& text)
{
    std::string line = text;
    for (char& sign : line)
        if (static_cast<unsigned char>(sign) < ' ' || sign == 127)
            sign = ' ';
    line.erase(line.find_last_not_of(' ') + 1);
    if (!line.empty() && line.back() == '\\')
        line += '.';
    return line;
}

std::string copyright_comment(const std::string& text)
{
    std::string comment;
    for (std::size_t first = 0; first < text.size();) {
        const std::size_t end = std::min(text.find('\n', first), text.size());
        comment += comment_line(text.substr(first, end - first));
        first = end + 1;
    }
    return comment.empty() ? "" : comment + "\n";
}

std::vector<std::string> host_conventions(const Text_options& options)
{
    const std::pair<bool, const char*> rows[] = {{options.flip_tex2d_v, "flipped textures"},
                                                 {options.flip_vs_texture_v, "flipped mesh"},
                                                 {options.rotate_cube_map, "rotated cube maps"}};
    std::string words;
    for (const auto& [holds, word] : rows)
        if (holds)
            words.append(words.empty() ? "Host: " : ", ").append(word);
    return words.empty() ? std::vector<std::string>() : std::vector<std::string>{words};
}

std::string head_comment(const Shader_request& request, const Shader_code& code,
                         const std::vector<std::string>& lines)
{
    std::string comment = comment_line("Shader: " + code.name());
    const std::string scope = request.shader->scope.empty() ? "" : request.shader->scope + "/";
    comment += comment_line("Source: " + request.graph->document + ", node " + scope +
                            request.shader->name + " (" + request.shader->category + ")");
    for (const std::string& line : lines)
        comment += comment_line(line);
    if (!code.without_counterpart().empty())
        comment += comment_list("Set in the document, without counterpart here:",
                                code.without_counterpart());
    return comment;
}

std::string section(const std::string& title, const std::string& part)
{
    const std::size_t first = part.find_first_not_of('\n');
    if (first == std::string::npos)
        return "";
    const std::string head = "// ---- " + title + " ";
    return "\n" + head + std::string(comment_width - std::min(comment_width, head.size()), '-') +
           "\n" + part.substr(first);
}

std::string structure_text(const Shader_code& code, const std::string& name,
                           const std::set<std::string>& fields, const Printer& printer)
{
    Structure kept = *code.program().find_structure(name);
    kept.fields.erase(std::remove_if(kept.fields.begin(), kept.fields.end(),
                                     [&](const Variable_declaration& field) {
                                         return fields.count(field.name) == 0;
                                     }),
                      kept.fields.end());
    return kept.fields.empty() ? "" : "\n" + printer.structure(kept);
}

std::string structures_text(const Shader_code& code, const Streams* streams, const Printer& printer)
{
    std::set<std::string> state = code.used_fields("State");
    if (streams)
        for (const State_field* field : streams->fields())
            state.insert(field->name);
    std::set<std::string> iterator = code.used_fields("Light_iterator");
    // What the lights of a list give back has all fields.
    if (code.lighting() == Lighting::list ||
        (code.lighting() == Lighting::renderer && !iterator.empty()))
        for (const Variable_declaration& field :
             code.program().find_structure("Light_iterator")->fields)
            iterator.insert(field.name);
    return structure_text(code, "State", state, printer) +
           structure_text(code, "Light_iterator", iterator, printer) +
           structure_text(code, "Surface", code.used_fields("Surface"), printer);
}

std::string functions_text(const Shader_code& code, const Printer& printer, bool with_last)
{
    std::vector<const Function*> functions = code.used_functions();
    if (!with_last)
        functions.pop_back();
    std::string text;
    for (const Function* function : functions)
        text += "\n" + printer.function(*function);
    return text;
}

std::string texture_path(const Texture& texture, const Generator_settings& settings)
{
    return settings.texture_path ? settings.texture_path(texture.file) : texture.file;
}

void check_texture_count(const Shader_code& code, const std::set<std::string>& used,
                         const Text_options& options)
{
    constexpr std::size_t limit = 16; // samplers of shader model 3 and of OpenGL 2.1
    std::size_t count = options.use_oit ? 1 : 0;
    for (const Texture& texture : code.uniforms().textures())
        count += used.count(texture.name) + used.count(texture.name + "_sampler");
    if (count > limit)
        throw Notation_error("it reads " + std::to_string(count) + " textures; " +
                             std::to_string(limit) + " is the limit");
}

} // namespace reference_host
