// Replaces the place where the C++ runtime keeps what a thread has thrown and caught. Only a library with a
// C++ runtime of its own may contain this file.
//
// The runtime allocates its own place when a thread throws for the first time. The system's loader does
// that, and ends the process if there is no memory. But this library throws just because there is no
// memory. The place below is part of every thread from its beginning. It costs 16 of the bytes that the
// system's loader keeps ready for libraries that are loaded late.
//
// Other runtimes (FreeBSD's) keep more than this and do not let the place be replaced.

#include <exception>

#ifdef __GLIBCXX__

#include <cxxabi.h>

#include "host/thread_local_model.h"

namespace __cxxabiv1 {

// The C++ ABI prescribes this layout.
struct __cxa_eh_globals {
    void* caughtExceptions;
    unsigned int uncaughtExceptions;
};

namespace {

CKSCRIBE_INITIAL_EXEC constinit thread_local __cxa_eh_globals globals = {};

}  // namespace

extern "C" {
__cxa_eh_globals* __cxa_get_globals() noexcept { return &globals; }
__cxa_eh_globals* __cxa_get_globals_fast() noexcept { return &globals; }
}

}  // namespace __cxxabiv1

#endif
