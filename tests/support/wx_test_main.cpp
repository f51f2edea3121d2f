#include "tests/support/wx_test_main.h"

#include "tests/support/wx_asserts.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include <gmock/gmock.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <wx/app.h>
#include <wx/init.h>

namespace QZ
{
namespace TEST
{

namespace
{

class Test_app : public wxApp
{
public:
    bool OnInit() override { return true; }
};

bool wx_is_started = false;
pid_t xvfb_process = 0;

// ---- the display

// Runs in the child: becomes an Xvfb that writes the number of its display to `pipe_end`, says
// nothing else, and ends with the test program even when that crashes.
[[noreturn]] void become_xvfb(int pipe_end)
{
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int silence = ::open("/dev/null", O_RDWR);
    ::dup2(silence, STDOUT_FILENO);
    ::dup2(silence, STDERR_FILENO);
    const std::string descriptor = std::to_string(pipe_end);
    ::execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", "1600x1200x24",
             "-noreset", "-nolisten", "tcp", nullptr);
    ::_exit(127);
}

// Starts a private Xvfb and returns its display's number; empty when that fails.
std::string start_xvfb()
{
    int ends[2];
    if (::pipe(ends) != 0)
        return std::string();
    xvfb_process = ::fork();
    if (xvfb_process == 0) {
        ::close(ends[0]);
        become_xvfb(ends[1]);
    }
    ::close(ends[1]);
    std::string number;
    char digit;
    while (::read(ends[0], &digit, 1) == 1 && digit != '\n')
        number += digit;
    ::close(ends[0]);
    return number;
}

void end_xvfb()
{
    if (xvfb_process <= 0)
        return;
    ::kill(xvfb_process, SIGTERM);
    ::waitpid(xvfb_process, nullptr, 0);
}

void need_display()
{
    if (std::getenv("DISPLAY"))
        return;
    const std::string number = start_xvfb();
    if (number.empty()) {
        std::fprintf(stderr, "no DISPLAY, and no Xvfb could be started\n");
        std::exit(1);
    }
    ::setenv("DISPLAY", (":" + number).c_str(), 1);
}

} // namespace

void start_wx()
{
    if (wx_is_started)
        return;
    wx_is_started = true;
    need_display();
    wxApp::SetInstance(new Test_app);
    static char program[] = "test";
    static char* arguments[] = {program, nullptr};
    static int argument_count = 1;
    if (!wxEntryStart(argument_count, arguments) || !wxTheApp->CallOnInit()) {
        std::fprintf(stderr, "wx cannot be started\n");
        std::exit(1);
    }
    watch_wx_asserts(); // the application has set its own handler
}

} // namespace TEST
} // namespace QZ

int main(int argc, char** argv)
{
    using namespace QZ::TEST;
    ::setenv("GSETTINGS_BACKEND", "memory", 1); // no user settings, and no warnings about them
    ::setenv("NO_AT_BRIDGE", "1", 1);           // no accessibility bus
#if !wxCHECK_VERSION(3, 0, 0)
    ::setenv("LC_ALL", "C.UTF-8", 1); // in "C" its file dialog waits for names beyond ASCII
#endif
    ::testing::InitGoogleMock(&argc, argv);
    fail_tests_on_wx_asserts();
    const int result = RUN_ALL_TESTS();
    if (wx_is_started)
        wxEntryCleanup();
    end_xvfb();
    return result;
}
