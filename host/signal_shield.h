// While an object of this class lives, the signals of a failing write, SIGPIPE and SIGXFSZ, do not reach
// the process through the calling thread. Its end takes back those that were raised meanwhile and restores
// the thread's signal mask.
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
