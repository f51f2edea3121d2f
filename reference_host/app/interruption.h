// A user who wants the program to stop: Ctrl-C, or a signal of a build system.
#ifndef REFERENCE_HOST_APP_INTERRUPTION_H
#define REFERENCE_HOST_APP_INTERRUPTION_H

namespace reference_host
{

// While it lives, the first SIGINT, SIGTERM or SIGHUP is only remembered, so that an export can end
// without a trace. A second one ends the process.
class Interruption
{
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    // For a process that works for another: from now on every signal is only remembered. A terminal
    // sends one to both, and the other one passes on its own.
    static void remember_all();

    // The signal that came, or 0.
    static int signal();
};

} // namespace reference_host

#endif
