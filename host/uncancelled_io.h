// open, read, write, poll, close and sigtimedwait for what runs behind the host shield (host/host_shield.h):
// no cancellation of the thread strikes in them. They take, return and set errno as the system's functions of
// these names do.
//
// The system's functions are places where a thread may be cancelled. The GNU C library lets a cancellation
// strike there that was sent to a thread which can be cancelled at any instruction before the thread put
// cancellations off; for such a thread alone the kernel is asked directly. Elsewhere that does no harm.
#pragma once

#include <poll.h>
#include <signal.h>
#include <sys/types.h>
#include <time.h>

#include <cstddef>

namespace ckscribe {

int OpenUncancelled(const char* path, int flags, mode_t mode);
ssize_t ReadUncancelled(int descriptor, void* bytes, std::size_t size);
ssize_t WriteUncancelled(int descriptor, const void* bytes, std::size_t size);
int PollUncancelled(pollfd* descriptors, nfds_t count, int milliseconds);
int CloseUncancelled(int descriptor);
int SigtimedwaitUncancelled(const sigset_t* signals, const timespec* timeout);

}  // namespace ckscribe
