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
#include <optional>
#include <string>

#include <wx/string.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

void set_option(TSDK::ICompiler_options* options, const char* name, const char* value);
void set_option(TSDK::ICompiler_options* options, const char* name, const std::string& value);
void set_option(TSDK::ICompiler_options* options, const char* name, const wxString& value);

// The texts of a switch: "true" and "false".
const char* switch_text(bool on);

// What the rows of a table without computed values are computed from.
struct Nothing_computed {
};

// One row of an exporter's table of options: a fixed value, or a function that computes the value
// from the exporter's `Source` when it exports. Numbers and switches are texts, too. A function
// that returns no value sets nothing.
template<typename Source = Nothing_computed>
struct Option_row {
    using Value = std::optional<std::string>;
    using Compute = Value (*)(const Source&);

    constexpr Option_row(const char* option, const char* fixed_value)
        : name(option), value(fixed_value), compute(nullptr)
    {
    }
    constexpr Option_row(const char* option, Compute computed_value)
        : name(option), value(nullptr), compute(computed_value)
    {
    }

    const char* name;
    const char* value;
    Compute compute; // null for a fixed value
};

// Sets the rows of a table, in their order.
template<typename Source, size_t count>
void set_options(TSDK::ICompiler_options* options, const Option_row<Source> (&table)[count],
                 const Source& source)
{
    for (const Option_row<Source>& row : table) {
        if (!row.compute)
            set_option(options, row.name, row.value);
        else if (const std::optional<std::string> value = row.compute(source))
            set_option(options, row.name, *value);
    }
}

// A table of fixed values, lent.
struct Option_table {
    template<size_t size>
    constexpr Option_table(const Option_row<> (&table)[size]) : rows(table), count(size)
    {
    }

    const Option_row<>* rows;
    size_t count;
};

// Sets the rows of a table of fixed values, in their order.
void set_options(TSDK::ICompiler_options* options, const Option_table& table);

// Sets "scene_ambient" to the scene's ambient colour: "float4(r,g,b,a)", each with two decimals.
void set_scene_ambient_option(TSDK::ICompiler_options* options, TSDK::IGraph_view* view);

// Sets "user_copyright" to the text of the first "user_copyright.txt" in the host's search paths
// that is a regular file and can be read, byte for byte up to its first NUL. Sets nothing when
// there is none. Never waits: a pipe of that name is passed over.
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
