#include "reference_host/desktop/wx_runtime.h"

#include "exporter_base/bytes.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include <wx/app.h>
#include <wx/image.h>
#include <wx/log.h>
#include <wx/stopwatch.h>
#include <wx/utils.h>

namespace reference_host
{
namespace
{

class Host_app : public wxApp
{
public:
    bool OnInit() override { return true; } // the command line is not wx's to read
};

// GTK 3 complains about buttons narrower than its theme likes. That is of no use to anyone here.
void silence_gtk_warnings()
{
#if wxCHECK_VERSION(3, 2, 1)
    constexpr int warnings = 1 << 4; // G_LOG_LEVEL_WARNING
    wxApp::GTKAllowDiagnosticsControl();
    wxApp::GTKSuppressDiagnostics(warnings);
#endif
}

// A failed check of wx is a line for the developer, not a window for the user. wx 2.8 has no
// handler.
void report_asserts()
{
#if wxCHECK_VERSION(3, 0, 0)
    wxSetAssertHandler([](const wxString& file, int line, const wxString&,
                          const wxString& condition, const wxString& message) {
        using QZ::TOVIRAEXPORT::to_bytes;
        std::fprintf(stderr, "%s:%d: error: wx assertion %s: %s\n", to_bytes(file).c_str(), line,
                     to_bytes(condition).c_str(), to_bytes(message).c_str());
    });
#endif
}

} // namespace

Wx_runtime::Wx_runtime(Display_choice choice)
{
    setenv("GSETTINGS_BACKEND", "memory", 1); // the desktop's settings are not ours to touch
    if (!m_users_display.is_open() && choice == Display_choice::users)
        throw std::runtime_error("there is no display to open a window on");
    if (!m_users_display.is_open())
        m_private_display.emplace();
    report_asserts();
    wxApp::SetInstance(new Host_app);
    // Only the program's name: GTK would take some of our own options for its own.
    static char name[] = "shader-export";
    static char* arguments[] = {name, nullptr};
    int count = 1;
    if (!wxEntryStart(count, arguments) || !wxTheApp->CallOnInit())
        throw std::runtime_error("the window system cannot be started");
    // The toolkit's own errors are lines too: a window for them would wait for a user for ever.
    delete wxLog::SetActiveTarget(new wxLogStderr);
    silence_gtk_warnings();
    wxInitAllImageHandlers();
}

Wx_runtime::~Wx_runtime()
{
    wxEntryCleanup();
}

void Wx_runtime::settle()
{
    constexpr long quiet_ms = 300; // what GTK takes for layout and first drawing
    for (const wxStopWatch watch; watch.Time() < quiet_ms; wxMilliSleep(10))
        wxTheApp->Yield(true);
}

void Wx_runtime::run()
{
    wxTheApp->OnRun(); // ends with the last window, which MainLoop alone would not
}

} // namespace reference_host
