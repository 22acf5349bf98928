// This library does all of its own work inside an application's call behind this shield. No cancellation of
// the thread strikes there while a lock is held, and the application reads the errno that the target left.
#pragma once

#include <pthread.h>

#include <cerrno>

#include "host/thread_local_model.h"

namespace ckscribe {

// Returns whether the calling thread is behind the shield and can be cancelled at any instruction outside of
// it. Only host/uncancelled_io.h reads it.
CKSCRIBE_INITIAL_EXEC extern constinit thread_local bool isAsynchronousBehindShield;

// Only BehindHostShield calls it. It is a function of its own, so that none of its clean-up becomes part of
// its callers.
template <class Work>
[[gnu::noinline]] void DoShielded(const Work& work) noexcept {
    work();
}

// Does `work`, which must not throw. Meanwhile the calling thread cannot be cancelled. Afterwards errno is
// what it was before.
//
// A cancellation that came meanwhile may end the thread here. A thread that can be cancelled at any
// instruction may end anywhere around this. Unwinding then passes through the frames of the exported
// function. If such a frame has a table of clean-ups, an instruction without an entry in it ends the whole
// process. Therefore these frames must have no table: no object that needs destruction, no try and no
// noexcept outside `work`.
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
