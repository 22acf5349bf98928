#include "util/writable_memory.h"

#include <fcntl.h>
#include <unistd.h>

bool IsWritable(void* address, std::size_t length) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return false;
    const ssize_t wanted = static_cast<ssize_t>(length);
    const bool isWritable =
        write(ends[1], address, length) == wanted && read(ends[0], address, length) == wanted;
    close(ends[0]);
    close(ends[1]);
    return isWritable;
}
