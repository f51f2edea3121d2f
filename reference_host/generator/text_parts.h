// Parts that the texts of all targets share: comments at the head, section lines, structures.
#ifndef REFERENCE_HOST_GENERATOR_TEXT_PARTS_H
#define REFERENCE_HOST_GENERATOR_TEXT_PARTS_H

#include "reference_host/generator/printer.h"
#include "reference_host/generator/shader_code.h"
#include "reference_host/generator/streams.h"

#include <string>
#include <vector>

namespace reference_host
{

// The user's copyright text as comment lines, whatever is in it.
std::string copyright_comment(const std::string& text);

// What a program must do with textures that OpenGL does not, "Host: flipped textures, rotated cube
// maps", for whoever draws the text; nothing where it is the same.
std::vector<std::string> host_conventions(const Text_options& options);

// What the text is, from which document and node it comes, and the given lines.
std::string head_comment(const Shader_request& request, const Shader_code& code,
                         const std::vector<std::string>& lines);

// A part of a text under its title, "// ---- transforms ------", after an empty line. Nothing when
// the part is empty.
std::string section(const std::string& title, const std::string& part);

// A structure with the fields of those names only, in its own order; empty when there are none.
std::string structure_text(const Shader_code& code, const std::string& name,
                           const std::set<std::string>& fields, const Printer& printer);

// State, Light_iterator and Surface as far as the code uses them.
std::string structures_text(const Shader_code& code, const Streams* streams,
                            const Printer& printer);

// The functions, each after an empty line. The last one is left out where `with_last` is false.
std::string functions_text(const Shader_code& code, const Printer& printer, bool with_last);

// A text without line breaks or other control characters, for a comment.
std::string one_line(const std::string& text);

// The file of a texture as it stands in the text.
std::string texture_path(const Texture& texture, const Generator_settings& settings);

// Throws Notation_error when the text reads more textures than a fragment program may. `used` has
// the names of all variables of the text.
void check_texture_count(const Shader_code& code, const std::set<std::string>& used,
                         const Text_options& options);

} // namespace reference_host

#endif
