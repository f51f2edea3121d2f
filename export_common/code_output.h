// From generated code to files: copying texts out of the host, writing them, forming output names.
//
// Code stays bytes, and only one copy of it is made: a shader may be large. Nothing here speaks to
// the user: failures are results, with texts for the exporter to show.
#ifndef EXPORT_COMMON_CODE_OUTPUT_H
#define EXPORT_COMMON_CODE_OUTPUT_H

#include "sdk/itovira_compiler.h"

#include <initializer_list>
#include <memory>
#include <string_view>

#include <wx/string.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

// One text of a generated shader, copied from the host.
class Code_text
{
public:
    Code_text() = default;

    // Copies text `code_index` of `shader`, which is not null. The index is not checked. Empty when
    // the host leaves the buffer empty or memory runs out.
    Code_text(TSDK::IGenerated_shader* shader, int code_index);

    // The text up to its first NUL. Valid as long as this object.
    const char* c_str() const { return m_buffer ? m_buffer.get() : ""; }

private:
    std::unique_ptr<char[]> m_buffer; // NUL-terminated
};

// Copies text `code_index` into `code`, which is empty on failure. On failure `error` says why: no
// shader, or an index at or beyond the count (a negative one goes to the host as it is).
bool get_shader_source_code(TSDK::IGenerated_shader* shader, int code_index, Code_text& code,
                            wxString& error);
bool get_shader_source_code(TSDK::IGenerated_shader* shader, int code_index, wxString& code,
                            wxString& error);

// Copies text 0 of `shader` and writes it to `filename`. False for a null shader and when writing
// fails.
bool write_code(const wxString& filename, TSDK::IGenerated_shader* shader);

// Creates or truncates `filename` and writes the pieces one after the other. False with "write open
// failed [name]" or "write failed [name]" in `error`; what was written until then stays.
bool save_bytes_to_file(const wxString& filename, std::initializer_list<std::string_view> pieces,
                        wxString& error);

// The same for one text, up to its first NUL.
bool save_buffer_to_file(const wxString& filename, const wxString& buffer, wxString& error);

// `filename` with the extension (given without the dot). An extension that it has already stays
// once and case counts: "a.fx" -> "a.fx", "a.FX" -> "a.FX.fx", "a.txt" -> "a.txt.fx".
wxString add_extension(const wxString& filename, const wxString& extension);

// Asks a unit for code; null when there is no unit, no option set, or the generation failed. New
// reference.
TSDK::IGenerated_shader* generate_code(TSDK::ICompilation_unit* unit, const char* target,
                                       TSDK::ICompiler_options* options);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
