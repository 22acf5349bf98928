// While it lives, the calling thread cannot be cancelled; when it ends, errno is what it was before. Every
// stretch of this library's own work inside an application's call runs behind one: a cancellation must not
// strike while a lock is held, and the application reads the errno that the target left.
#pragma once

#include <pthread.h>

#include <cerrno>

class HostShield {
public:
    HostShield() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancelState); }
    ~HostShield() {
        pthread_setcancelstate(cancelState, nullptr);
        errno = error;
    }
    HostShield(const HostShield&) = delete;
    HostShield& operator=(const HostShield&) = delete;

private:
    const int error = errno;
    int cancelState = PTHREAD_CANCEL_ENABLE;
};
