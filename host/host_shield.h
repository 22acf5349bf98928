// Every stretch of this library's own work inside an application's call runs behind this shield: a
// cancellation of the thread must not strike while a lock is held, and the application reads the errno that
// the target left.
#pragma once

#include <pthread.h>

#include <cerrno>

#include "host/thread_local_model.h"

namespace ckscribe {

// Whether the calling thread is behind the shield and can be cancelled at any instruction outside of it. For
// host/uncancelled_io.h alone.
CKSCRIBE_INITIAL_EXEC extern constinit thread_local bool isAsynchronousBehindShield;

// For BehindHostShield alone. A function of its own, so that none of its clean-up becomes part of its
// callers.
template <class Work>
[[gnu::noinline]] void DoShielded(const Work& work) noexcept {
    work();
}

// Does `work`, which must not throw. The calling thread cannot be cancelled meanwhile, and errno is
// afterwards what it was before.
//
// A cancellation that came meanwhile may end the thread here, and one of a thread that can be cancelled at
// any instruction may do so anywhere around this. Unwinding then passes through the frames of the exported
// function. It would end the whole process at an instruction for which a frame's table of clean-ups has no
// entry, so these frames must have no such table: no object that needs destruction, no try, no noexcept
// outside `work`.
template <class Work>
void BehindHostShield(const Work& work) {
    const int error = errno;
    int cancelState = PTHREAD_CANCEL_ENABLE;
    int cancelType = PTHREAD_CANCEL_DEFERRED;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancelState);
    pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, &cancelType);
    const bool isAsynchronous = cancelType == PTHREAD_CANCEL_ASYNCHRONOUS;
    if (isAsynchronous) isAsynchronousBehindShield = true;
    DoShielded(work);
    if (isAsynchronous) {
        isAsynchronousBehindShield = false;
        pthread_setcanceltype(cancelType, nullptr);
    }
    errno = error;
    pthread_setcancelstate(cancelState, nullptr);
    // Not every system looks for a cancellation that came meanwhile when the state changes.
    if (isAsynchronous) pthread_testcancel();
}

}  // namespace ckscribe
