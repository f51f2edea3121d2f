// Parts that the texts of all targets share: comments at the head, section lines, structures.
#ifndef REFERENCE_HOST_TARGETS_TEXT_PARTS_H
#define REFERENCE_HOST_TARGETS_TEXT_PARTS_H

#include "reference_host/passes/uses.h"
#include "reference_host/targets/printer.h"
#include "reference_host/targets/streams.h"

#include <string>
#include <vector>

namespace reference_host
{

// The user's copyright text as comment lines, whatever is in it.
std::string copyright_comment(const std::string& text);

// What a program must do with textures that OpenGL does not, "Conventions: flipped textures,
// rotated cube maps", for whoever draws the text; nothing where it is the same.
std::vector<std::string> target_conventions(const Text_options& options);

// What the text is, from which document and node it comes, and the given lines.
std::string head_comment(const Module& module, const std::vector<std::string>& lines);

// A part of a text under its title, "// ---- transforms ------", after an empty line. Nothing when
// the part is empty.
std::string section(const std::string& title, const std::string& part);

// A structure with the fields of those names only, in its own order; empty when there are none.
std::string structure_text(const std::string& name, const std::set<std::string>& fields,
                           const Printer& printer);

// State and Light_iterator as far as they are used, State also with the fields that are given.
std::string structures_text(const Uses& uses, const Text_plan& plan,
                            const std::vector<State_field>& fields, const Printer& printer);

// The functions, each after an empty line. The last one is left out where `with_last` is false.
std::string functions_text(const Module& module, const Printer& printer, bool with_last);

// A text without line breaks or other control characters, for a comment.
std::string one_line(const std::string& text);

// The file of a texture as it stands in the text.
std::string texture_path(const Module_texture& texture, const Generator_settings& settings);

// Throws Notation_error when the text reads more textures than a fragment program may.
void check_texture_count(const Module& module, const Text_options& options);

} // namespace reference_host

#endif
