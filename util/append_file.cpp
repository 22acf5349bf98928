#include "util/append_file.h"

#include <poll.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "util/signal_shield.h"

namespace {

// Descriptor numbers from here on are not what a host gets, expects or selects on; a lower one is kept only
// where its limit leaves no room above.
constexpr int kFirstDescriptor = 900;

// The limit of the file size is asked for once in so many appends: it hardly ever changes, and asking every
// time would cost a quarter of the append. A file that grows across a new limit is noticed by its short
// write; a new limit that the file has reached already, or that it fills exactly, may go unnoticed for so
// many appends.
constexpr unsigned kAppendsPerLimitCheck = 16;

// How long the rest of a record may wait for a reader that has taken its beginning, in milliseconds.
constexpr int kLongestWait = 20;

int MoveOutOfTheWay(int descriptor) {
    const int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, kFirstDescriptor);
    if (moved < 0) return descriptor;
    close(descriptor);
    return moved;
}

bool FileSizeIsLimited() {
    rlimit limit;
    return getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
}

bool BecomesWritable(int descriptor) {
    pollfd waiting = {descriptor, POLLOUT, 0};
    return poll(&waiting, 1, kLongestWait) == 1 && (waiting.revents & POLLOUT) != 0;
}

void WriteWhole(int descriptor, std::string_view text) {
    bool begun = false;
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
            begun = true;
        } else if (written < 0 && errno == EINTR) {
            continue;
        } else if (written < 0 && errno == EAGAIN && begun && BecomesWritable(descriptor)) {
            continue;
        } else {
            return;
        }
    }
}

}  // namespace

bool AppendFile::OpenFor(const char* path, int access) {
    Close();
    // O_RDWR also keeps a FIFO from needing a reader or losing its last one.
    descriptor = open(path, access | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
    if (descriptor < 0) return false;
    descriptor = MoveOutOfTheWay(descriptor);
    struct stat status;
    isRegular = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    appends = 0;
    return true;
}

void AppendFile::Close() {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

bool AppendFile::MayRaiseSignal() {
    if (!isRegular) return true;
    if (appends++ % kAppendsPerLimitCheck == 0) sizeIsLimited = FileSizeIsLimited();
    return sizeIsLimited;
}

void AppendFile::Append(std::string_view text) {
    if (descriptor < 0) return;
    if (!MayRaiseSignal()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written == static_cast<ssize_t>(text.size())) return;
        // Perhaps a limit that was set since the last look: what is left is written behind the shield.
        appends = 0;
        if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
    }
    const SignalShield shield;
    WriteWhole(descriptor, text);
}
