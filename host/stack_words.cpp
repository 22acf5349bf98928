#include "host/stack_words.h"

#include <cerrno>

#include "host/readable_memory.h"

namespace ckscribe {

namespace {

std::size_t ReadableWords(const unsigned long* first, std::size_t count) {
    const std::uintptr_t begin = reinterpret_cast<std::uintptr_t>(first);
    const std::uintptr_t nextPage = (begin - sizeof *first) / kPageSize * kPageSize + kPageSize;
    const std::size_t before = (nextPage - begin) / sizeof *first;
    if (before >= count) return count;
    const int error = errno;
    const bool isNextPageThere = KernelCanRead(nextPage);
    errno = error;
    return isNextPageThere ? count : before;
}

}  // namespace

void CopyStackWordsWithCare(const unsigned long* first, unsigned long* words, std::size_t count) {
    const std::size_t readable = ReadableWords(first, count);
    // The source is volatile: otherwise the loop becomes a call of memcpy, which a sanitizer checks.
    const volatile unsigned long* const source = first;
    for (std::size_t i = 0; i < count; ++i) words[i] = i < readable ? source[i] : 0;
}

}  // namespace ckscribe
