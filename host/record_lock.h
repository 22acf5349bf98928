// Records are built and printed under one lock, the record lock.
#pragma once

#include <atomic>

#include "host/orma_mutex.h"
#include "host/thread_safety.h"

// This is null before the first start-up. Afterwards it always points to the same mutex, because a thread may
// hold the mutex while another starts the library again. With two mutexes two records could be printed at
// once.
extern std::atomic<OrmaMutex*> pCkLogMutex;

namespace ckscribe {

// Names the record lock in annotations. The lock itself is behind a pointer, which the check cannot follow.
class CKSCRIBE_LOCK("record lock") RecordLockName {};
extern const RecordLockName theRecordLock;  // never defined

// Holds the record lock while it lives.
class CKSCRIBE_LOCK_HOLDER RecordLock {
public:
    // `mutex` is what pCkLogMutex points to.
    explicit RecordLock(OrmaMutex& mutex) CKSCRIBE_ACQUIRES(theRecordLock) : mutex(mutex) { mutex.Lock(); }
    ~RecordLock() CKSCRIBE_RELEASES() { mutex.Unlock(); }
    RecordLock(const RecordLock&) = delete;
    RecordLock& operator=(const RecordLock&) = delete;

private:
    OrmaMutex& mutex;
};

}  // namespace ckscribe
