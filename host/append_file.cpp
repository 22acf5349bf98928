#include "host/append_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ctime>

#include "host/file_size_limit.h"
#include "host/signal_shield.h"
#include "host/uncancelled_io.h"

namespace ckscribe {

namespace {

// A host does not get, expect or select on descriptor numbers from this one on. Our descriptor moves there,
// unless the host's limit leaves no room.
constexpr int kFirstDescriptor = 900;

// The descriptor and the limit of the file size are inspected once in so many appends, and whenever the
// coarse clock has moved (some milliseconds). Both hardly ever change, and an inspection costs as much as
// an append. If the file grows across a new limit, the short write shows it. Only a limit that the file has
// reached already can go unnoticed for this short while.
constexpr unsigned kAppendsPerInspection = 64;

// If a reader has taken the beginning of a record, the rest waits for the reader at most this long, in
// milliseconds.
constexpr long kLongestWait = 100;

constexpr int kOpenFlags = O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

int MoveOutOfTheWay(int descriptor) {
    const int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, kFirstDescriptor);
    if (moved < 0) return descriptor;
    CloseUncancelled(descriptor);
    return moved;
}

bool IsFifo(const char* path) {
    struct stat status;
    return stat(path, &status) == 0 && S_ISFIFO(status.st_mode);
}

int OpenToAppend(const char* path, int access, NewFilePermissions permissions) {
    if (access == O_RDWR && IsFifo(path)) {
        const int alone = OpenUncancelled(path, O_WRONLY | kOpenFlags, 0);
        if (alone >= 0) return alone;
    }
    return OpenOrCreate(path, access | kOpenFlags, permissions);
}

// Returns the time of the clock that the system reads without entering the kernel. The clock moves on some
// milliseconds at a time.
long CoarseMilliseconds() {
#if defined(__FreeBSD__)
    constexpr clockid_t kCoarseClock = CLOCK_MONOTONIC_FAST;
#else
    constexpr clockid_t kCoarseClock = CLOCK_MONOTONIC_COARSE;
#endif
    constexpr long kNanosecondsPerMillisecond = 1'000'000;
    timespec now = {};
    clock_gettime(kCoarseClock, &now);
    return now.tv_sec * 1000 + now.tv_nsec / kNanosecondsPerMillisecond;
}

bool BecomesWritable(int descriptor, long deadline) {
    for (;;) {
        const long left = deadline - CoarseMilliseconds();
        if (left <= 0) return false;
        pollfd waiting = {descriptor, POLLOUT, 0};
        const int ready = PollUncancelled(&waiting, 1, static_cast<int>(left));
        if (ready == 1) return (waiting.revents & POLLOUT) != 0;
        if (ready == 0 || errno != EINTR) return false;
    }
}

// Returns how many bytes the system took. Gives up at the first failure.
std::size_t WriteMost(int descriptor, std::string_view text) {
    std::size_t taken = 0;
    long deadline = 0;  // 0: there is none yet
    while (taken < text.size()) {
        const ssize_t written = WriteUncancelled(descriptor, text.data() + taken, text.size() - taken);
        if (written > 0) {
            taken += static_cast<std::size_t>(written);
        } else if (written < 0 && errno == EINTR) {
            continue;
        } else if (written < 0 && errno == EAGAIN && taken != 0) {
            if (deadline == 0) deadline = CoarseMilliseconds() + kLongestWait;
            if (!BecomesWritable(descriptor, deadline)) break;
        } else {
            break;
        }
    }
    return taken;
}

}  // namespace

bool AppendFile::OpenFor(const char* path, int access, NewFilePermissions permissions) {
    Close();
    openAccess = access;
    newFilePermissions = permissions;
    if (!OpenPath(path)) return false;
    RememberPath(path);
    return true;
}

bool AppendFile::OpenPath(const char* path) {
    const int opened = OpenToAppend(path, openAccess, newFilePermissions);
    if (opened < 0) return false;
    descriptor = MoveOutOfTheWay(opened);
    struct stat status = {};
    isRegular = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    hadName = isRegular && status.st_nlink != 0;
    device = status.st_dev;
    inode = status.st_ino;
    endsInPart = false;
    LookAtLimit();
    return true;
}

// A relative path may lead elsewhere when the file has to be opened again.
void AppendFile::RememberPath(const char* path) {
    std::size_t length = 0;
    if (*path != '/') {
        char directory[kLongestPath];
        if (getcwd(directory, sizeof directory) == nullptr || *directory != '/') return;
        length = std::strlen(directory);
        std::memcpy(openPath, directory, length);
        openPath[length++] = '/';
    }
    const std::size_t rest = std::strlen(path);
    if (rest > kLongestPath - length) {
        *openPath = '\0';
        return;
    }
    std::memcpy(openPath + length, path, rest + 1);
}

void AppendFile::Close() {
    if (descriptor >= 0 && IsStillOurs()) CloseUncancelled(descriptor);
    descriptor = -1;
    whyLost = 0;
    *openPath = '\0';
}

bool AppendFile::IsOurs(const struct stat& status) const {
    return status.st_dev == device && status.st_ino == inode;
}

bool AppendFile::IsStillOurs() const {
    struct stat status;
    if (fstat(descriptor, &status) == 0) return IsOurs(status);
    return errno != EBADF;
}

bool AppendFile::IsInspectionDue() {
    return ++appends >= kAppendsPerInspection || CoarseMilliseconds() != inspectionTime;
}

void AppendFile::Inspect() {
    ++inspections;
    LookAtLimit();
    struct stat status;
    const bool isKnown = descriptor >= 0 && fstat(descriptor, &status) == 0;
    if (descriptor >= 0 && !isKnown && errno != EBADF) {
        ReplaceFile();  // a file server forgot the file, or a disk fails
    } else if (!isKnown || !IsOurs(status)) {
        descriptor = -1;
        Reopen();
    } else if (hadName && status.st_nlink == 0) {
        ReplaceFile();
    }
}

// Somebody removed the file, perhaps because a new one has its name by now. Nobody can read what is appended
// to a file without a name; while there is no other file, text is appended there all the same.
void AppendFile::ReplaceFile() {
    const int before = descriptor;
    if (Reopen()) CloseUncancelled(before);
}

bool AppendFile::Reopen() {
    errno = ENOENT;  // for a path that is not known
    const bool isOpened = *openPath != '\0' && OpenPath(openPath);
    whyLost = isOpened ? 0 : errno;
    return isOpened;
}

void AppendFile::LookAtLimit() {
    mayRaiseSignal = !isRegular || IsFileSizeLimited();
    appends = 0;
    inspectionTime = CoarseMilliseconds();
}

bool AppendFile::Append(std::string_view text) {
    if (descriptor < 0 && *openPath == '\0') return false;
    if (IsInspectionDue()) Inspect();
    if (descriptor >= 0 && !mayRaiseSignal) {
        const ssize_t written = WriteUncancelled(descriptor, text.data(), text.size());
        if (written == static_cast<ssize_t>(text.size())) {
            endsInPart = false;
            return true;
        }
        // Since the inspection a limit may have been set, or the descriptor closed. The rest is written
        // behind the shield.
        Inspect();
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
            endsInPart = true;
        }
    }
    if (descriptor < 0) return false;
    const SignalShield shield;
    const std::size_t taken = WriteMost(descriptor, WithinFileSizeLimit(descriptor, text));
    const bool isWhole = taken == text.size();
    if (taken != 0) endsInPart = !isWhole;
    return isWhole;
}

}  // namespace ckscribe
