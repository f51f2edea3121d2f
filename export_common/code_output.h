// From generated code to files: copying texts out of the host, writing them, forming output names.
//
// Nothing here speaks to the user: failures are results and texts for the exporter to show.
#ifndef EXPORT_COMMON_CODE_OUTPUT_H
#define EXPORT_COMMON_CODE_OUTPUT_H

#include "sdk/itovira_compiler.h"

#include <string>

#include <wx/string.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

// Copies text `code_index` into `code`, which is empty on failure. On failure `error` says why: no
// shader, or an index at or beyond the count (a negative one goes to the host as it is).
bool get_shader_source_code(TSDK::IGenerated_shader* shader, int code_index, wxString& code,
                            wxString& error);

// Copies text 0 of `shader` and writes it to `filename`. False for a null shader and when writing
// fails.
bool write_code(const wxString& filename, TSDK::IGenerated_shader* shader);

// Creates or truncates `filename` and writes the text up to its first NUL. False with "write open
// failed [name]" or "write failed [name]" in `error`; what was written until then stays.
bool save_buffer_to_file(const wxString& filename, const wxString& buffer, wxString& error);

// `filename` with the extension (given without the dot). An extension that it has already stays
// once and case counts: "a.fx" -> "a.fx", "a.FX" -> "a.FX.fx", "a.txt" -> "a.txt.fx".
wxString add_extension(const wxString& filename, const wxString& extension);

// Text `code_index` of a shader as bytes; empty when the host gives none or memory runs out. The
// index is not checked.
std::string get_code_bytes(TSDK::IGenerated_shader* shader, int code_index);

// Asks a unit for code; null when there is no unit, no option set, or the generation failed. New
// reference.
TSDK::IGenerated_shader* generate_code(TSDK::ICompilation_unit* unit, const char* target,
                                       TSDK::ICompiler_options* options);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
