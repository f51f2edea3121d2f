#include "plugin/exporter_plugin_app.h"

#include "exporter_base/wx_compat.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

bool live_plugin = false;

} // namespace

bool Exporter_plugin_app::OnInit()
{
    return true;
}

int Exporter_plugin_app::OnRun()
{
    return wxAppBase::OnRun();
}

wxAppConsole* wxCreateApp()
{
    wxAppConsole::CheckBuildOptions(TOVIRAEXPORT_WX_SIGNATURE, "your program");
    return new Exporter_plugin_app;
}

wxAppInitializer wxTheAppInitializer(wxCreateApp);

Exporter_plugin_app& wxGetApp()
{
    return *static_cast<Exporter_plugin_app*>(wxApp::GetInstance());
}

void mark_live_plugin()
{
    if (!live_plugin)
        live_plugin = true;
}

void unmark_live_plugin()
{
    live_plugin = false;
}

} // namespace TOVIRAEXPORT
} // namespace QZ
