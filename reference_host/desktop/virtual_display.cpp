#include "reference_host/desktop/virtual_display.h"

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/random.h>
#include <sys/wait.h>
#include <unistd.h>

#include <X11/Xlib.h>

namespace reference_host
{
namespace
{

constexpr int start_timeout_ms = 20'000;       // a busy machine takes its time
constexpr const char* screen = "1280x2000x24"; // high enough for the longest panel

// A file of the form that servers and clients read: 16-bit numbers, the higher byte first, and
// texts after their lengths. One cookie, for any display: its number is not known yet.
std::string new_cookie_file()
{
    constexpr char any_family[] = "\xff\xff";
    constexpr std::string_view method = "MIT-MAGIC-COOKIE-1";
    constexpr std::size_t cookie_size = 16;
    char cookie[cookie_size];
    if (getrandom(cookie, sizeof cookie, 0) != sizeof cookie)
        throw std::runtime_error("there are no random numbers for a display's cookie");
    const auto add = [](std::string& file, std::string_view text) {
        file.append({'\0', static_cast<char>(text.size())}).append(text);
    };
    std::string file = any_family;
    add(file, {}); // any host
    add(file, {}); // any display
    add(file, method);
    add(file, {cookie, cookie_size});
    return file;
}

// Becomes the server. Never returns.
[[noreturn]] void run_server(int report, const std::string& cookie_file, pid_t parent)
{
    setpgid(0, 0); // Ctrl-C is for the program, which may need its display to the end
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent)
        _exit(1); // the parent ended before the line above
    const int silence = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(silence, stream);
    const std::string number = std::to_string(report);
    execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), "-screen", "0", screen, "-noreset",
           "-nolisten", "tcp", "-auth", cookie_file.c_str(), static_cast<char*>(nullptr));
    _exit(127);
}

// The display number that the server reports once it is ready; empty when it does not.
std::string read_number(int report)
{
    std::string number;
    pollfd waiting{report, POLLIN, 0};
    char digit = 0;
    while (poll(&waiting, 1, start_timeout_ms) == 1 && read(report, &digit, 1) == 1) {
        if (digit == '\n')
            return number;
        number += digit;
    }
    return {};
}

} // namespace

Display_connection::Display_connection() : m_display(XOpenDisplay(nullptr)) {}

Display_connection::~Display_connection()
{
    if (m_display)
        XCloseDisplay(m_display);
}

Virtual_display::Virtual_display() : m_cookie(new_cookie_file())
{
    int report[2];
    if (pipe(report) != 0)
        throw std::runtime_error("there is no display, and no pipe to start one with");
    fcntl(report[0], F_SETFD, FD_CLOEXEC);
    const pid_t parent = getpid();
    m_server = fork();
    if (m_server == 0)
        run_server(report[1], m_cookie.path(), parent);
    close(report[1]);
    const std::string number = m_server > 0 ? read_number(report[0]) : std::string();
    close(report[0]);
    if (number.empty()) {
        end_server();
        throw std::runtime_error("there is no display, and Xvfb, which would replace it, does not "
                                 "start (Debian package xvfb)");
    }
    setenv("DISPLAY", (":" + number).c_str(), 1);
    setenv("XAUTHORITY", m_cookie.path().c_str(), 1);
    setenv("GDK_BACKEND", "x11", 1);
}

Virtual_display::~Virtual_display()
{
    end_server();
}

void Virtual_display::end_server()
{
    if (m_server <= 0)
        return;
    kill(m_server, SIGTERM);
    waitpid(m_server, nullptr, 0);
    m_server = -1;
}

} // namespace reference_host
