#include "host/writable_memory.h"

#include <fcntl.h>
#include <unistd.h>

#include "host/uncancelled_io.h"

namespace ckscribe {

bool IsWritable(void* address, std::size_t length) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return false;
    const ssize_t wanted = static_cast<ssize_t>(length);
    const bool isWritable = WriteUncancelled(ends[1], address, length) == wanted &&
                            ReadUncancelled(ends[0], address, length) == wanted;
    CloseUncancelled(ends[0]);
    CloseUncancelled(ends[1]);
    return isWritable;
}

}  // namespace ckscribe
