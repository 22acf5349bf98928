#include "host/orma_mutex.h"

#include <sched.h>

namespace {

// What is locked here takes a microsecond or two. To sleep meanwhile takes a thread much longer, and the
// thread that has to wake it, too; so a thread asks for a while before it sleeps: after ever longer pauses,
// because each time it asks it takes the lock's memory away from the processor of the thread that works
// behind it.
constexpr int kTries = 100;
constexpr int kLongestPause = 512;

bool IsLockedSoon(pthread_mutex_t* mutex) {
    int pause = 1;
    for (int i = 0; i < kTries; ++i) {
        if (pthread_mutex_trylock(mutex) == 0) return true;
        for (int j = 0; j < pause; ++j) __builtin_ia32_pause();
        if (pause < kLongestPause) {
            pause *= 2;
        } else {
            sched_yield();  // there may be more threads than processors
        }
    }
    return false;
}

}  // namespace

void OrmaMutex::Lock() {
    if (!IsValid()) return;
    if (!IsLockedSoon(mutex)) pthread_mutex_lock(mutex);
    ++held;
}

void OrmaMutex::Unlock() {
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
