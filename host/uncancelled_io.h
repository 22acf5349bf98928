// Code behind the host shield (host/host_shield.h) calls these in place of open, read, write, poll, close and
// sigtimedwait: no cancellation of the thread strikes in them. They take, return and set errno as the
// system's functions of these names do.
//
// The system's functions are places where a thread may be cancelled. Suppose a thread can be cancelled at any
// instruction, somebody cancels it, and then it puts cancellations off: the GNU C library still lets that
// cancellation strike there. These functions ask the kernel directly only for such a thread. Other C
// libraries do not need that, and it does no harm there.
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
