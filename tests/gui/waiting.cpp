#include "tests/gui/waiting.h"

#include <wx/app.h>
#include <wx/utils.h>

namespace QZ
{
namespace TEST
{

void handle_events()
{
    wxTheApp->Yield(true);
}

bool wait_until(const std::function<bool()>& condition, std::chrono::milliseconds patience)
{
    constexpr unsigned long pause_ms = 2;
    const auto start = std::chrono::steady_clock::now();
    for (handle_events(); !condition(); handle_events()) {
        if (std::chrono::steady_clock::now() - start > patience)
            return false;
        wxMilliSleep(pause_ms);
    }
    return true;
}

} // namespace TEST
} // namespace QZ
