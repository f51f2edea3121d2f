#include "reference_host/app/exporter_panel.h"

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

} // namespace

Exporter_panel::Exporter_panel(QZ::TSDK::IExporter& exporter, QZ::TSDK::IGraph_view* view,
                               wxWindow& container, int width)
    : m_exporter(exporter), m_view(view), m_container(container), m_width(width)
{
    const auto handle =
        static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(&container));
    m_height = exporter.create_ui(handle, width, view);
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
