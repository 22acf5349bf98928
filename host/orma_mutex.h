// An OrmaMutex is a recursive mutex. This library has two: the record lock and the start lock. The start lock
// is taken first.
#pragma once

#include <pthread.h>

#include "host/thread_safety.h"

// Any thread may lock and unlock. The same thread may lock several times and must unlock as often. Results
// of the system's calls are not examined.
class CKSCRIBE_LOCK("mutex") OrmaMutex {
public:
    OrmaMutex() { __init(); }
    // A copy is a fresh mutex and takes nothing from its source.
    OrmaMutex(const OrmaMutex&) { __init(); }
    // Each object keeps its own mutex.
    OrmaMutex& operator=(const OrmaMutex&) { return *this; }
    virtual ~OrmaMutex() { __fini(); }

    bool IsValid() const { return mutex != nullptr; }

    // Both do nothing if the object is not valid.
    void Lock() CKSCRIBE_ACQUIRES();
    void Unlock() CKSCRIBE_RELEASES();

    // Locks the mutex if no thread holds it, this one included, and waits for nothing. Returns whether it has
    // locked the mutex.
    bool LockIfFree() CKSCRIBE_ACQUIRES_IF(true);

    // Makes the mutex anew, free and valid, whatever its state: a child made by fork may call this function
    // for a locked mutex. Returns the result of pthread_mutex_init; the object is valid even if that failed.
    int __init();
    // Destroys the mutex. The object is not valid until __init.
    void __fini();

private:
    pthread_mutex_t* mutex = nullptr;  // &theMutex while usable, else null
    pthread_mutex_t theMutex;
    pthread_mutexattr_t attributes;
    int held = 0;  // how many locks are held now
};

namespace ckscribe {

// Holds a mutex while it lives.
class CKSCRIBE_LOCK_HOLDER OrmaLock {
public:
    explicit OrmaLock(OrmaMutex& mutex) CKSCRIBE_ACQUIRES(mutex) : mutex(mutex) { mutex.Lock(); }
    ~OrmaLock() CKSCRIBE_RELEASES() { mutex.Unlock(); }
    OrmaLock(const OrmaLock&) = delete;
    OrmaLock& operator=(const OrmaLock&) = delete;

private:
    OrmaMutex& mutex;
};

}  // namespace ckscribe
