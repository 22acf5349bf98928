// These annotations say which lock a function or an object needs. clang checks them (-Wthread-safety); other
// compilers ignore them.
#pragma once

#if defined(__clang__)
#define CKSCRIBE_THREAD_SAFETY(annotation) __attribute__((annotation))
#else
#define CKSCRIBE_THREAD_SAFETY(annotation)
#endif

// These mark a class whose objects are locks, and a class whose objects hold a lock while they live.
#define CKSCRIBE_LOCK(name) CKSCRIBE_THREAD_SAFETY(capability(name))
#define CKSCRIBE_LOCK_HOLDER CKSCRIBE_THREAD_SAFETY(scoped_lockable)

// These mark functions that take a lock, take it if they return this value, let it go, or need it.
#define CKSCRIBE_ACQUIRES(...) CKSCRIBE_THREAD_SAFETY(acquire_capability(__VA_ARGS__))
#define CKSCRIBE_ACQUIRES_IF(...) CKSCRIBE_THREAD_SAFETY(try_acquire_capability(__VA_ARGS__))
#define CKSCRIBE_RELEASES(...) CKSCRIBE_THREAD_SAFETY(release_capability(__VA_ARGS__))
#define CKSCRIBE_NEEDS(...) CKSCRIBE_THREAD_SAFETY(requires_capability(__VA_ARGS__))

// This marks an object that is touched only under a lock.
#define CKSCRIBE_GUARDED_BY(lock) CKSCRIBE_THREAD_SAFETY(guarded_by(lock))

// This marks a function that the check cannot follow. The comment of the function says why the function is
// right.
#define CKSCRIBE_UNCHECKED CKSCRIBE_THREAD_SAFETY(no_thread_safety_analysis)
