// Holds signals back during steps that must not be interrupted.
#ifndef REFERENCE_HOST_SYSTEM_HELD_SIGNALS_H
#define REFERENCE_HOST_SYSTEM_HELD_SIGNALS_H

#include <pthread.h>
#include <signal.h>

namespace reference_host
{

// While one lives, no signal but SIGKILL reaches this thread; those that came arrive at its end.
class Held_signals
{
public:
    Held_signals()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, &m_before);
    }
    ~Held_signals() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    Held_signals(const Held_signals&) = delete;
    Held_signals& operator=(const Held_signals&) = delete;

private:
    sigset_t m_before;
};

} // namespace reference_host

#endif
