// Keeps the signals that a failing write raises, SIGPIPE and SIGXFSZ, from the calling thread's process while
// it lives, and takes back the ones that were raised meanwhile. The thread's signal mask is as before
// afterwards.
#pragma once

#include <csignal>

namespace ckscribe {

class SignalShield {
public:
    SignalShield();
    ~SignalShield();
    SignalShield(const SignalShield&) = delete;
    SignalShield& operator=(const SignalShield&) = delete;

private:
    sigset_t before;
    sigset_t pendingBefore;
};

}  // namespace ckscribe
