// Check boxes that choose which of several files an export writes, below the export-file row.
#ifndef EXPORTERS_FILE_CHECK_BOXES_H
#define EXPORTERS_FILE_CHECK_BOXES_H

#include <wx/checkbox.h>
#include <wx/font.h>
#include <wx/sizer.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

struct File_check_box {
    int id;
    const wxChar* label;
};

// The two boxes, in the order in which they are shown. The panel owns them.
struct File_check_box_pair {
    wxCheckBox* first;
    wxCheckBox* second;
};

// Makes two boxes on `parent`, not checked, and adds them to `sizer` with what keeps them apart.
File_check_box_pair add_file_check_boxes(wxWindow* parent, wxBoxSizer* sizer, const wxFont& font,
                                         const File_check_box& first, const File_check_box& second);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
