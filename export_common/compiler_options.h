// Filling the compiler's option sets.
//
// An option set may be null (a host that made none): nothing is set then.
#ifndef EXPORT_COMMON_COMPILER_OPTIONS_H
#define EXPORT_COMMON_COMPILER_OPTIONS_H

#include "plugin/export_symbol.h"
#include "sdk/igraph_view.h"
#include "sdk/itovira.h"
#include "sdk/itovira_compiler.h"

#include <cstddef>
#include <string>

#include <wx/string.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

// One row of an exporter's table: what it always sets. Numbers and switches are texts too.
struct Compiler_option {
    const char* name;
    const char* value;
};

void set_option(TSDK::ICompiler_options* options, const char* name, const char* value);
void set_option(TSDK::ICompiler_options* options, const char* name, const std::string& value);
void set_option(TSDK::ICompiler_options* options, const char* name, const wxString& value);

// The texts of a switch: "true" and "false".
const char* switch_text(bool on);

// A table of options, lent: Option_table(maya_options).
struct Option_table {
    template<size_t size>
    constexpr explicit Option_table(const Compiler_option (&table)[size]) : rows(table), count(size)
    {
    }

    const Compiler_option* rows;
    size_t count;
};

// Sets the rows of a table, in their order.
void set_options(TSDK::ICompiler_options* options, const Option_table& table);

// Sets "scene_ambient" to the scene's ambient colour: "float4(r,g,b,a)", each with two decimals.
void set_scene_ambient_option(TSDK::ICompiler_options* options, TSDK::IGraph_view* view);

// Sets "user_copyright" to the whole text of the first readable "user_copyright.txt" in the host's
// search paths, byte for byte. Sets nothing when there is none.
void set_user_copyright_option(TSDK::ITovira* app, TSDK::ICompiler_options* options);

namespace DETAIL
{

// Replaces the placeholders `pattern` in `text`, each found from the start anew, at most 20 times.
// Two characters are replaced per placeholder, whatever the length of `pattern`: placeholders look
// like "%s". Nothing in the library calls it; hosts do.
TOVIRAEXPORT_EXPORT void substitute(wxString& text, const wxString& pattern,
                                    const wxString& replacement);

// A hook that leaves `flags` as they are. Nothing in the library calls it; hosts do.
TOVIRAEXPORT_EXPORT void set_compile_flags(wxString& flags);

} // namespace DETAIL

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
