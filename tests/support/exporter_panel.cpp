#include "tests/support/exporter_panel.h"

#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"

#include <gtest/gtest.h>

#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/frame.h>
#include <wx/textctrl.h>

namespace QZ
{
namespace TEST
{

namespace
{

constexpr int panel_width = 400;

} // namespace

Exporter_panel::Exporter_panel(TSDK::IExporter& exporter)
    : m_exporter(exporter), m_window(new wxFrame(nullptr, wxID_ANY, wxT("host")))
{
    m_exporter.create_ui(reinterpret_cast<unsigned long long>(static_cast<wxWindow*>(m_window)),
                         panel_width, nullptr);
}

Exporter_panel::~Exporter_panel()
{
    m_exporter.remove_ui(nullptr, m_discard);
    delete m_window;
}

template<typename Control>
Control* Exporter_panel::find(int id) const
{
    Control* control = dynamic_cast<Control*>(m_window->FindWindow(id));
    EXPECT_NE(control, nullptr) << "no control of the id " << id;
    return control;
}

void Exporter_panel::set_text(int id, const std::string& text)
{
    if (wxTextCtrl* control = find<wxTextCtrl>(id))
        control->SetValue(TOVIRAEXPORT::from_bytes(text.c_str()));
}

void Exporter_panel::set_check_box(int id, bool on)
{
    if (wxCheckBox* control = find<wxCheckBox>(id))
        control->SetValue(on);
}

void Exporter_panel::select(int id, int index)
{
    if (wxComboBox* control = find<wxComboBox>(id))
        control->SetSelection(index);
}

bool Exporter_panel::has_control(int id) const
{
    return m_window->FindWindow(id) != nullptr;
}

std::string Exporter_panel::text(int id) const
{
    wxTextCtrl* control = find<wxTextCtrl>(id);
    return control ? TOVIRAEXPORT::to_bytes(control->GetValue()) : std::string();
}

bool Exporter_panel::check_box(int id) const
{
    wxCheckBox* control = find<wxCheckBox>(id);
    return control && control->GetValue();
}

void choose_export_file(TSDK::IExporter& exporter, const std::string& path)
{
    Exporter_panel(exporter).set_text(TOVIRAEXPORT::ID_EXPORTFILE_TEXT, path);
}

} // namespace TEST
} // namespace QZ
