#include "host/thread_number.h"

#if defined(__FreeBSD__)
#include <pthread_np.h>
#else
#include <sys/syscall.h>
#include <unistd.h>
#endif

#include "host/thread_local_model.h"

namespace ckscribe {

namespace {

// The attribute serves the same as in host/host_shield.h: a thread's first call allocates nothing.
CKSCRIBE_INITIAL_EXEC constinit thread_local int remembered = 0;

int AskSystem() {
#if defined(__FreeBSD__)
    return pthread_getthreadid_np();
#else
    return static_cast<int>(syscall(SYS_gettid));
#endif
}

}  // namespace

int SystemThreadNumber() {
    if (remembered == 0) remembered = AskSystem();
    return remembered;
}

void ForgetThreadNumber() { remembered = 0; }

}  // namespace ckscribe
