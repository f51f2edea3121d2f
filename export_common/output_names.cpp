#include "export_common/output_names.h"

#include <wx/filename.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

wxString Output_stem::with(const wxString& suffix) const
{
    return directory + base + suffix;
}

Output_stem split_output_name(const wxString& chosen,
                              std::initializer_list<wxString> own_extensions)
{
    const wxFileName file(chosen);
    Output_stem stem;
    stem.directory = file.GetPath(wxPATH_GET_VOLUME);
    if (!stem.directory.empty())
        stem.directory += wxFileName::GetPathSeparators()[0];
    stem.base = file.GetFullName();
    for (const wxString& extension : own_extensions) {
        if (file.GetExt() == extension) {
            stem.base = file.GetName();
            stem.extension = extension;
        }
    }
    return stem;
}

} // namespace TOVIRAEXPORT
} // namespace QZ
