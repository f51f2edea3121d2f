#include "reference_host/window/window_command.h"

#include "reference_host/app/plugin_library.h"
#include "reference_host/desktop/wx_runtime.h"
#include "reference_host/render/offscreen_context.h"
#include "reference_host/window/main_window.h"

#include <memory>

#include <wx/app.h>
#include <wx/config.h>
#include <wx/stdpaths.h>

namespace reference_host
{
namespace
{

// The user's settings, where the desktop keeps those of programs.
std::unique_ptr<wxConfigBase> open_settings()
{
    wxTheApp->SetAppName(wxT("shader-export"));
    wxStandardPaths::Get().SetFileLayout(wxStandardPaths::FileLayout_XDG);
    return std::unique_ptr<wxConfigBase>(wxConfigBase::Create());
}

} // namespace

int show_window(const Window_command& command)
{
    prefer_early_pictures();
    const Wx_runtime wx(Display_choice::users);
    const Plugin_library library(command.plugin);
    const std::unique_ptr<wxConfigBase> settings = open_settings();
    Main_window* window = new Main_window(library, *settings, command.scene);
    window->open_files(command.documents);
    window->Show();
    Wx_runtime::run();
    return 0;
}

} // namespace reference_host
