#include "host/stack_words.h"

#include <cerrno>

#include "host/readable_memory.h"

namespace ckscribe {

std::size_t ReadableStackWords(const unsigned long* first, std::size_t count) {
    const std::uintptr_t begin = reinterpret_cast<std::uintptr_t>(first);
    const std::uintptr_t nextPage = (begin - sizeof *first) / kPageSize * kPageSize + kPageSize;
    const int error = errno;
    const bool isNextPageThere = KernelCanRead(nextPage);
    errno = error;
    return isNextPageThere ? count : (nextPage - begin) / sizeof *first;
}

}  // namespace ckscribe
