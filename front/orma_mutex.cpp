#include "front/orma_mutex.h"

void OrmaMutex::Lock() {
    if (!IsValid()) return;
    pthread_mutex_lock(mutex);
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
