#include "reference_host/app/interruption.h"

#include <csignal>

namespace reference_host
{
namespace
{

constexpr int signals[] = {SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t received = 0;

extern "C" void remember(int number)
{
    received = number;
}

void handle_all(void (*handler)(int), int flags)
{
    for (const int number : signals) {
        struct sigaction action = {};
        action.sa_handler = handler;
        action.sa_flags = flags; // never SA_RESTART: questions end
        sigaction(number, &action, nullptr);
    }
}

} // namespace

Interruption::Interruption()
{
    received = 0;
    handle_all(remember, static_cast<int>(SA_RESETHAND));
}

Interruption::~Interruption()
{
    handle_all(SIG_DFL, 0);
}

void Interruption::remember_all()
{
    handle_all(remember, 0);
}

int Interruption::signal()
{
    return received;
}

} // namespace reference_host
