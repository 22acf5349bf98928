#include "host/file_creation.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "host/uncancelled_io.h"

namespace ckscribe {

namespace {

// The umask belongs to the whole process and is not changed. It can take bits away from the new file for an
// instant, until fchmod gives them back. Nobody has more rights than asked for in between.
int Create(const char* path, int flags, mode_t permissions) {
    const int descriptor = OpenUncancelled(path, flags | O_CREAT, permissions);
    if (descriptor >= 0) fchmod(descriptor, permissions);
    return descriptor;
}

bool IsSymbolicLink(const char* path) {
    struct stat status;
    return lstat(path, &status) == 0 && S_ISLNK(status.st_mode);
}

}  // namespace

int OpenOrCreate(const char* path, int flags, NewFilePermissions permissions) {
    if (!permissions) return OpenUncancelled(path, flags | O_CREAT, 0666);
    constexpr int kTries = 2;
    for (int i = 0; i < kTries; ++i) {
        const int existing = OpenUncancelled(path, flags, 0);
        if (existing >= 0 || errno != ENOENT) return existing;
        const int created = Create(path, flags | O_EXCL, *permissions);
        if (created >= 0 || errno != EEXIST) return created;
        // Another process has created the file meanwhile, or the path is a symbolic link to no file yet.
    }
    if (IsSymbolicLink(path)) return Create(path, flags, *permissions);
    // Other processes create and remove the file all the time. Their file keeps the permissions that it has.
    return OpenUncancelled(path, flags | O_CREAT, *permissions);
}

}  // namespace ckscribe
