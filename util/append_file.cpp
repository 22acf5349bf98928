#include "util/append_file.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "util/signal_shield.h"
#include "util/uncancelled_io.h"

namespace {

// Descriptor numbers from here on are not what a host gets, expects or selects on; a lower one is kept only
// where its limit leaves no room above.
constexpr int kFirstDescriptor = 900;

// Whether the descriptor is still this file's and whether the file's size is limited is asked once in so many
// appends and whenever the coarse clock has moved (some milliseconds): neither hardly ever changes, and
// asking every time would cost as much as the append. A file that grows across a limit that was set meanwhile
// is noticed by its short write; only a limit that the file has reached already can go unnoticed for this
// short while.
constexpr unsigned kAppendsPerInspection = 64;

// How long the rest of a record may wait for a reader that has taken its beginning, in milliseconds.
constexpr int kLongestWait = 20;

int MoveOutOfTheWay(int descriptor) {
    const int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, kFirstDescriptor);
    if (moved < 0) return descriptor;
    CloseUncancelled(descriptor);
    return moved;
}

bool FileSizeIsLimited() {
    rlimit limit;
    return getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
}

long CoarseTime() {
#if defined(__FreeBSD__)
    constexpr clockid_t kCoarseClock = CLOCK_MONOTONIC_FAST;
#else
    constexpr clockid_t kCoarseClock = CLOCK_MONOTONIC_COARSE;
#endif
    constexpr long kNanosecondsPerTick = 1'000'000;
    timespec now = {};
    clock_gettime(kCoarseClock, &now);
    return now.tv_sec * 1000 + now.tv_nsec / kNanosecondsPerTick;
}

bool BecomesWritable(int descriptor) {
    pollfd waiting = {descriptor, POLLOUT, 0};
    return PollUncancelled(&waiting, 1, kLongestWait) == 1 && (waiting.revents & POLLOUT) != 0;
}

void WriteWhole(int descriptor, std::string_view text) {
    bool begun = false;
    while (!text.empty()) {
        const ssize_t written = WriteUncancelled(descriptor, text.data(), text.size());
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
    descriptor = OpenUncancelled(path, access | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
    if (descriptor < 0) return false;
    descriptor = MoveOutOfTheWay(descriptor);
    struct stat status = {};
    isRegular = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    device = status.st_dev;
    inode = status.st_ino;
    openAccess = access;
    LookAtLimit();
    // A relative path may mean another file by now.
    if (path != openPath) std::snprintf(openPath, sizeof openPath, "%s", *path == '/' ? path : "");
    if (std::strlen(path) > kLongestPath) *openPath = '\0';
    return true;
}

void AppendFile::Close() {
    if (descriptor >= 0 && IsStillOurs()) CloseUncancelled(descriptor);
    descriptor = -1;
}

bool AppendFile::IsStillOurs() const {
    struct stat status;
    return fstat(descriptor, &status) == 0 && status.st_dev == device && status.st_ino == inode;
}

bool AppendFile::IsInspectionDue() {
    return ++appends >= kAppendsPerInspection || CoarseTime() != inspectionTime;
}

void AppendFile::Inspect() {
    if (!IsStillOurs()) {
        descriptor = -1;
        if (*openPath != '\0') OpenFor(openPath, openAccess);
        return;
    }
    LookAtLimit();
}

void AppendFile::LookAtLimit() {
    mayRaiseSignal = !isRegular || FileSizeIsLimited();
    appends = 0;
    inspectionTime = CoarseTime();
}

void AppendFile::Append(std::string_view text) {
    if (descriptor < 0) return;
    if (IsInspectionDue()) Inspect();
    if (!mayRaiseSignal) {
        const ssize_t written = WriteUncancelled(descriptor, text.data(), text.size());
        if (written == static_cast<ssize_t>(text.size())) return;
        // Perhaps a limit that was set, or a descriptor that was closed, since it was inspected: what is left
        // is written behind the shield.
        Inspect();
        if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
    }
    if (descriptor < 0) return;
    const SignalShield shield;
    WriteWhole(descriptor, text);
}
