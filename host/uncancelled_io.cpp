#include "host/uncancelled_io.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "host/host_shield.h"

namespace ckscribe {

int OpenUncancelled(const char* path, int flags, mode_t mode) {
    if (!isAsynchronousBehindShield) return open(path, flags, mode);
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

ssize_t ReadUncancelled(int descriptor, void* bytes, std::size_t size) {
    if (!isAsynchronousBehindShield) return read(descriptor, bytes, size);
    return syscall(SYS_read, descriptor, bytes, size);
}

ssize_t WriteUncancelled(int descriptor, const void* bytes, std::size_t size) {
    if (!isAsynchronousBehindShield) return write(descriptor, bytes, size);
    return syscall(SYS_write, descriptor, bytes, size);
}

int PollUncancelled(pollfd* descriptors, nfds_t count, int milliseconds) {
    if (!isAsynchronousBehindShield) return poll(descriptors, count, milliseconds);
    constexpr int kMillisecondsPerSecond = 1000;
    constexpr long kNanosecondsPerMillisecond = 1'000'000;
    timespec timeout = {milliseconds / kMillisecondsPerSecond,
                        milliseconds % kMillisecondsPerSecond * kNanosecondsPerMillisecond};
    timespec* const wait = milliseconds < 0 ? nullptr : &timeout;
    // Some kernels have no other poll.
    return static_cast<int>(syscall(SYS_ppoll, descriptors, count, wait, nullptr, std::size_t{0}));
}

int CloseUncancelled(int descriptor) {
    if (!isAsynchronousBehindShield) return close(descriptor);
    return static_cast<int>(syscall(SYS_close, descriptor));
}

int SigtimedwaitUncancelled(const sigset_t* signals, const timespec* timeout) {
    if (!isAsynchronousBehindShield) return sigtimedwait(signals, nullptr, timeout);
#if defined(__linux__)
    // The kernel's set of signals is smaller than that of the C library.
    constexpr std::size_t kKernelsSize = 8;
    return static_cast<int>(syscall(SYS_rt_sigtimedwait, signals, nullptr, timeout, kKernelsSize));
#else
    return static_cast<int>(syscall(SYS_sigtimedwait, signals, nullptr, timeout));
#endif
}

}  // namespace ckscribe
