#include "host/writable_memory.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "host/uncancelled_io.h"

namespace ckscribe {

namespace {

Writability AfterTransfer(ssize_t transferred, std::size_t length) {
    if (transferred < 0 && errno != EFAULT) return Writability::kUnknown;
    return transferred == static_cast<ssize_t>(length) ? Writability::kYes : Writability::kNo;
}

}  // namespace

Writability WritabilityOf(void* address, std::size_t length) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return Writability::kUnknown;
    Writability result = AfterTransfer(WriteUncancelled(ends[1], address, length), length);
    if (result == Writability::kYes)
        result = AfterTransfer(ReadUncancelled(ends[0], address, length), length);
    CloseUncancelled(ends[0]);
    CloseUncancelled(ends[1]);
    return result;
}

}  // namespace ckscribe
