#include "reference_host/targets/text_parts.h"

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

std::vector<std::string> target_conventions(const Text_options& options)
{
    const std::pair<bool, const char*> rows[] = {{options.flip_tex2d_v, "flipped textures"},
                                                 {options.flip_vs_texture_v, "flipped mesh"},
                                                 {options.rotate_cube_map, "rotated cube maps"}};
    std::string words;
    for (const auto& [holds, word] : rows)
        if (holds)
            words.append(words.empty() ? "Conventions: " : ", ").append(word);
    return words.empty() ? std::vector<std::string>() : std::vector<std::string>{words};
}

std::string head_comment(const Module& module, const std::vector<std::string>& lines)
{
    std::string comment = comment_line("Shader: " + module.name);
    comment += comment_line("Source: " + module.document + ", node " + module.node + " (" +
                            module.category + ")");
    for (const std::string& line : lines)
        comment += comment_line(line);
    if (!module.without_counterpart.empty())
        comment += comment_list("Set in the document, without counterpart here:",
                                module.without_counterpart);
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

std::string structure_text(const std::string& name, const std::set<std::string>& fields,
                           const Printer& printer)
{
    Structure kept = *find_structure(name);
    kept.fields.erase(std::remove_if(kept.fields.begin(), kept.fields.end(),
                                     [&](const Variable_declaration& field) {
                                         return fields.count(field.name) == 0;
                                     }),
                      kept.fields.end());
    return kept.fields.empty() ? "" : "\n" + printer.structure(kept);
}

std::string structures_text(const Uses& uses, const Text_plan& plan,
                            const std::vector<State_field>& fields, const Printer& printer)
{
    std::set<std::string> state = uses.fields_of("State");
    for (const State_field field : fields)
        state.insert(row_of(field).name);
    std::set<std::string> iterator = uses.fields_of("Light_iterator");
    // What the lights of a list return has all fields.
    if (plan.has_light_interface() || (plan.lights_in_list && !iterator.empty()))
        for (const Variable_declaration& field : find_structure("Light_iterator")->fields)
            iterator.insert(field.name);
    return structure_text("State", state, printer) +
           structure_text("Light_iterator", iterator, printer);
}

std::string functions_text(const Module& module, const Printer& printer, bool with_last)
{
    std::string text;
    for (const Function& function : module.functions)
        if (with_last || &function != &module.entry())
            text += "\n" + printer.function(function);
    return text;
}

std::string texture_path(const Module_texture& texture, const Generator_settings& settings)
{
    return settings.texture_path ? settings.texture_path(texture.file) : texture.file;
}

void check_texture_count(const Module& module, const Text_options& options)
{
    constexpr std::size_t limit = 16; // samplers of shader model 3 and of OpenGL 2.1
    const std::size_t count = module.textures.size() + (options.use_oit ? 1 : 0);
    if (count > limit)
        throw Notation_error("it reads " + std::to_string(count) + " textures; " +
                             std::to_string(limit) + " is the limit");
}

} // namespace reference_host
