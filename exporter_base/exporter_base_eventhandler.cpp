#include "exporter_base/exporter_base_eventhandler.h"

#include "exporter_base/control_ids.h"
#include "exporter_base/exporter_base.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

BEGIN_EVENT_TABLE(Exporter_base_eventhandler, wxEvtHandler)
EVT_BUTTON(ID_EXPORTFILE_BROWSE, Exporter_base_eventhandler::on_choose_file)
END_EVENT_TABLE()

Exporter_base_eventhandler::Exporter_base_eventhandler(Exporter_base* exporter)
    : m_exporter(exporter)
{
}

void Exporter_base_eventhandler::on_choose_file(wxCommandEvent&)
{
    m_exporter->choose_exportfile();
}

void Exporter_base_eventhandler::on_panel_destroyed(wxWindowDestroyEvent& event)
{
    event.Skip();
    m_exporter->forget_panel(event.GetWindow());
}

} // namespace TOVIRAEXPORT
} // namespace QZ
