#include "reference_host/desktop/exporter_panel.h"

#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"

#include <algorithm>
#include <cstdint>

#include <wx/textctrl.h>
#include <wx/window.h>

namespace reference_host
{
namespace
{

wxTextCtrl* file_field(const wxWindow& container)
{
    return dynamic_cast<wxTextCtrl*>(
        container.FindWindow(static_cast<long>(QZ::TOVIRAEXPORT::ID_EXPORTFILE_TEXT)));
}

void remember_file(QZ::TSDK::IExporter& exporter, const std::string& file)
{
    const std::string ending = "_exportfile_save";
    for (unsigned int i = 0; i < exporter.get_num_settings(); ++i) {
        const char* name = exporter.get_setting_name(i);
        const std::string key = name ? name : "";
        if (key.size() >= ending.size() &&
            key.compare(key.size() - ending.size(), ending.size(), ending) == 0)
            exporter.set_setting_value(i, file.c_str());
    }
}

} // namespace

Exporter_panel::Exporter_panel(QZ::TSDK::IExporter& exporter, QZ::TSDK::IGraph_view* view,
                               wxWindow& container, int width, const std::string& file)
    : m_exporter(exporter), m_view(view), m_container(container), m_width(width)
{
    const auto handle =
        static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(&container));
    if (!file.empty())
        remember_file(exporter, file);
    m_height = exporter.create_ui(handle, width, view);
    m_first_name = file_name();
}

Exporter_panel::~Exporter_panel()
{
    remove(true);
}

// The exporter's panel is the container's only child, as far from its edge on every side.
int Exporter_panel::both_borders() const
{
    const wxWindowList& children = m_container.GetChildren();
    if (children.empty())
        return 0;
    m_container.Layout();
    return 2 * std::max(children.GetLast()->GetData()->GetPosition().x, 0);
}

wxSize Exporter_panel::needed_area() const
{
    return wxSize(m_width + both_borders(), m_height + both_borders());
}

void Exporter_panel::fit_into(const wxSize& area)
{
    m_exporter.set_ui_size(area.GetWidth() - both_borders(), area.GetHeight() - both_borders());
}

std::string Exporter_panel::file_name() const
{
    const wxTextCtrl* field = file_field(m_container);
    return field ? QZ::TOVIRAEXPORT::to_bytes(field->GetValue()) : std::string();
}

void Exporter_panel::set_file_name(const std::string& name)
{
    if (wxTextCtrl* field = file_field(m_container))
        field->SetValue(QZ::TOVIRAEXPORT::from_bytes(name.c_str()));
}

void Exporter_panel::restore_file_name()
{
    if (file_name() != m_first_name)
        set_file_name(m_first_name);
}

void Exporter_panel::close()
{
    remove(false);
}

void Exporter_panel::remove(bool discard)
{
    if (m_is_open)
        m_exporter.remove_ui(m_view, discard);
    m_is_open = false;
}

} // namespace reference_host
