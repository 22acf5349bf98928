#include "host/orma_mutex.h"

#include <sched.h>

namespace {

// The lock is held for 1-2 µs, less than a sleep costs the thread that sleeps and the thread that wakes it.
// So a thread tries again before it sleeps, with growing pauses: each try takes the lock's cache line away
// from the processor that works behind it.
constexpr int kTries = 100;
constexpr int kLongestPause = 512;

// Lets the other thread of the same processor core work for a moment.
void Pause() {
#if defined(__x86_64__)
    __builtin_ia32_pause();
#elif defined(__aarch64__)
    asm volatile("yield");
#endif
}

bool IsLockedSoon(pthread_mutex_t* mutex) {
    int pause = 1;
    for (int i = 0; i < kTries; ++i) {
        if (pthread_mutex_trylock(mutex) == 0) return true;
        for (int j = 0; j < pause; ++j) Pause();
        if (pause < kLongestPause) {
            pause *= 2;
        } else {
            sched_yield();  // there may be more threads than processors
        }
    }
    return false;
}

}  // namespace

// The check knows no locks of the system.
void OrmaMutex::Lock() CKSCRIBE_UNCHECKED {
    if (!IsValid()) return;
    if (!IsLockedSoon(mutex)) pthread_mutex_lock(mutex);
    ++held;
}

bool OrmaMutex::LockIfFree() CKSCRIBE_UNCHECKED {
    if (!IsValid() || pthread_mutex_trylock(mutex) != 0) return false;
    if (held != 0) {  // by this thread
        pthread_mutex_unlock(mutex);
        return false;
    }
    ++held;
    return true;
}

void OrmaMutex::Unlock() CKSCRIBE_UNCHECKED {
    if (!IsValid()) return;
    --held;
    pthread_mutex_unlock(mutex);
}

int OrmaMutex::__init() {
    mutex = nullptr;
    theMutex = {};
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    const int result = pthread_mutex_init(&theMutex, &attributes);
    mutex = &theMutex;
    held = 0;
    return result;
}

void OrmaMutex::__fini() {
    if (!IsValid()) return;
    pthread_mutex_destroy(mutex);
    pthread_mutexattr_destroy(&attributes);
    mutex = nullptr;
}
