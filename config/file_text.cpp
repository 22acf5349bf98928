#include "config/file_text.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <new>

#if defined(__linux__)
#include <sys/syscall.h>
#endif

#include "util/host_shield.h"

int OpenFile(const char* path, int access) {
    const int flags = access | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
#if defined(__linux__)
    if (isAsynchronousBehindShield) return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, 0777));
#endif
    return open(path, flags, 0777);
}

bool FileText::Read(const char* path) {
    const int file = OpenFile(path, O_RDONLY);
    if (file < 0) return false;
    const bool isRead = ReadFrom(file);
    close(file);
    return isRead;
}

bool FileText::ReadFrom(int file) {
    struct stat status;
    if (fstat(file, &status) != 0) return false;
    size = static_cast<unsigned long>(status.st_size);
    if (size >= PTRDIFF_MAX) return false;
    text.reset(new (std::nothrow) char[size + 1]);
    if (text == nullptr) return false;
    const ssize_t got = read(file, text.get(), static_cast<std::uint32_t>(size));
    if (got == 0) {
        text.reset();
        return false;
    }
    text[got < 0 ? 0 : static_cast<unsigned long>(got)] = text[size] = '\0';
    isWhole = static_cast<unsigned long>(got) == size;
    return true;
}
