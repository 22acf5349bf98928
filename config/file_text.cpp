#include "config/file_text.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdint>
#include <new>

#include "host/uncancelled_io.h"

namespace ckscribe {

int OpenFile(const char* path, int access) {
    return OpenUncancelled(path, access | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0777);
}

bool FileText::Read(const char* path) {
    const int file = OpenFile(path, O_RDONLY);
    if (file < 0) return false;
    const bool isRead = ReadFrom(file);
    CloseUncancelled(file);
    return isRead;
}

bool FileText::ReadFrom(int file) {
    struct stat status;
    if (fstat(file, &status) != 0) return false;
    size = static_cast<unsigned long>(status.st_size);
    if (size >= PTRDIFF_MAX) return false;
    text.reset(new (std::nothrow) char[size + 1]);
    if (text == nullptr) return false;
    const ssize_t got = ReadUncancelled(file, text.get(), static_cast<std::uint32_t>(size));
    if (got == 0) {
        text.reset();
        return false;
    }
    text[got < 0 ? 0 : static_cast<unsigned long>(got)] = text[size] = '\0';
    isWhole = static_cast<unsigned long>(got) == size;
    return true;
}

}  // namespace ckscribe
