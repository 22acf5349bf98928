#include "host/signal_shield.h"

#include <cerrno>
#include <ctime>

#include "host/uncancelled_io.h"

namespace ckscribe {

namespace {

constexpr int kSignalsOfWrite[] = {SIGPIPE, SIGXFSZ};

}  // namespace

SignalShield::SignalShield() {
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const int signal : kSignalsOfWrite) sigaddset(&blocked, signal);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    // A signal that waits already is the host's own. It stays.
    sigpending(&pendingBefore);
}

SignalShield::~SignalShield() {
    const int error = errno;
    sigset_t ours;
    sigemptyset(&ours);
    for (const int signal : kSignalsOfWrite) {
        if (!sigismember(&pendingBefore, signal)) sigaddset(&ours, signal);
    }
    const timespec atOnce = {0, 0};
    while (SigtimedwaitUncancelled(&ours, &atOnce) > 0) continue;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    errno = error;
}

}  // namespace ckscribe
