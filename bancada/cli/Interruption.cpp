#include "bancada/cli/Interruption.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <poll.h>

namespace bancada
{
namespace
{

constexpr int SIGNALS[] = {SIGINT, SIGTERM};

volatile std::sig_atomic_t received = 0;

void TakeDown(int signal)
{
    received = signal;
}

sigset_t BlockSignals()
{
    sigset_t ours;
    sigemptyset(&ours);
    for (const int signal : SIGNALS) {
        sigaddset(&ours, signal);
    }
    sigset_t before;
    sigprocmask(SIG_BLOCK, &ours, &before);
    return before;
}

} // namespace

Interruption::Interruption()
{
    received = 0;
    for (const int signal : SIGNALS) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_DFL) {
            continue; // ignored, as a shell has it for what runs behind
        }
        struct sigaction action = {};
        action.sa_handler = TakeDown;
        sigemptyset(&action.sa_mask);
        // The engine's and the log's calls go on as if nothing had come; the next one ends.
        action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
        sigaction(signal, &action, nullptr);
    }
}

Interruption::~Interruption()
{
    for (const int signal : SIGNALS) {
        struct sigaction now = {};
        sigaction(signal, nullptr, &now);
        if (now.sa_handler == TakeDown) {
            std::signal(signal, SIG_DFL);
        }
    }
}

int Interruption::Signal() const
{
    return received;
}

bool Interruption::WaitToRead(int file) const
{
    // Blocked but within ppoll, so that none comes between the question and the wait.
    const sigset_t before = BlockSignals();
    pollfd readable = {};
    readable.fd = file;
    readable.events = POLLIN;
    int ready = 0;
    do {
        ready = ppoll(&readable, 1, nullptr, &before);
    } while (received == 0 && ready < 0 && errno == EINTR); // EINTR: another signal
    sigprocmask(SIG_SETMASK, &before, nullptr);
    return received == 0;
}

void EndBySignal(int signal)
{
    std::signal(signal, SIG_DFL);
    std::raise(signal);
    std::_Exit(128 + signal); // where it is blocked
}

} // namespace bancada
