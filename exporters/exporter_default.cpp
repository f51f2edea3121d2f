#include "exporters/exporter_default.h"

#include "exporters/exporter_table.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

Exporter_default::Exporter_default() : Exporter_base(facts_of<Exporter_default>().name) {}

bool Exporter_default::export_shader(TSDK::ITovira*, TSDK::IGraph_view*)
{
    return true;
}

int Exporter_default::create_window(wxWindow* parent, int width, TSDK::IGraph_view*)
{
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    wxBoxSizer* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticText(parent, wxID_ANY, wxT("a:")));
    row->Add(new wxTextCtrl(parent, wxID_ANY));
    row->Add(new wxButton(parent, wxID_ANY, wxT("...")));
    sizer->Add(row);
    sizer->Add(new wxStaticText(parent, wxID_ANY, wxT("another exporter")));
    sizer->Add(new wxStaticText(parent, wxID_ANY, wxT("line 2")));
    sizer->Add(new wxRadioButton(parent, wxID_ANY, wxT("r1")));
    sizer->Add(new wxRadioButton(parent, wxID_ANY, wxT("r2")));
    sizer->Add(new wxCheckBox(parent, wxID_ANY, wxT("create qz file")));
    sizer->Add(new wxButton(parent, wxID_ANY, wxT("button!")));
    sizer->Add(0, 0);
    return lay_out_panel(parent, sizer, width);
}

void Exporter_default::initialize() {}

const char* Exporter_default::get_language() const
{
    return facts_of<Exporter_default>().language;
}

} // namespace TOVIRAEXPORT
} // namespace QZ
