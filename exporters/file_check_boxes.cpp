#include "exporters/file_check_boxes.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

constexpr int indent = 10;
constexpr int gap = 5;

wxCheckBox* create_box(wxWindow* parent, const wxFont& font, const File_check_box& row)
{
    wxCheckBox* box = new wxCheckBox(parent, row.id, row.label);
    box->SetFont(font);
    box->SetValue(false);
    return box;
}

} // namespace

File_check_box_pair add_file_check_boxes(wxWindow* parent, wxBoxSizer* sizer, const wxFont& font,
                                         const File_check_box& first, const File_check_box& second)
{
    File_check_box_pair boxes;
    boxes.first = create_box(parent, font, first);
    sizer->Add(boxes.first, 0, wxLEFT, indent);
    sizer->Add(gap, gap, 0, wxALIGN_CENTER_HORIZONTAL, gap);
    boxes.second = create_box(parent, font, second);
    sizer->Add(boxes.second, 0, wxLEFT | wxBOTTOM, indent);
    sizer->Add(0, 0, 10, 0, 0); // stretches: what is left of the height stays empty
    return boxes;
}

} // namespace TOVIRAEXPORT
} // namespace QZ
