// Output names derived from the one name that the user chose. Pure text: no file is opened.
#ifndef EXPORT_COMMON_OUTPUT_NAMES_H
#define EXPORT_COMMON_OUTPUT_NAMES_H

#include <initializer_list>

#include <wx/string.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

// A chosen name, taken apart for an exporter that writes files of its own extensions.
struct Output_stem {
    wxString directory; // with its separator at the end; empty when the name has none
    wxString base;      // the name without its extension if that is an own one, otherwise all of it
    wxString extension; // the own extension that the name had; empty when it had none

    // directory + base + suffix; the suffix brings its dot.
    wxString with(const wxString& suffix) const;
};

// Takes a chosen name apart. The own extensions are given without the dot; case counts:
//   "/d/x.fx" -> "/d/", "x", "fx"      "/d/x.FX" -> "/d/", "x.FX", ""      "x" -> "", "x", ""
Output_stem split_output_name(const wxString& chosen,
                              std::initializer_list<wxString> own_extensions);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
