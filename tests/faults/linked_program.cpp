// This program is linked with the library and ends while its threads are in calls. Its status is 0 if every
// call had the target's result, and 9 otherwise.

#include <p11-kit/pkcs11.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <thread>

#include "tests/calls/scripted_target.h"

namespace {

std::atomic<int> callsMade{0};

}  // namespace

CK_RV AnswerCall(const char*, const TargetWord* arguments, std::size_t) {
    ++callsMade;
    return arguments[0] + 1000;
}
void TargetIsLoaded() {}
void TargetIsUnloaded() {}

// tests/faults/slow_end.cpp waits here after the loader has run the destructors of all libraries.
extern "C" __attribute__((visibility("default"))) void WaitForMoreCalls() {
    const int before = callsMade;
    for (int i = 0; i < 1000 && callsMade < before + 100; ++i) usleep(1000);
    if (callsMade < before + 100) _exit(8);
}

int main() {
    for (int i = 0; i < 2; ++i) {
        std::thread([] {
            for (CK_SESSION_HANDLE session = 1;; ++session) {
                if (C_Logout(session) != session + 1000) _exit(9);
            }
        }).detach();
    }
    while (callsMade < 20) std::this_thread::yield();
    std::exit(0);
}
