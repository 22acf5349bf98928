// A file that is only ever appended to, by any number of processes at once, from inside somebody else's
// process.
//
// What the host must not notice: no signal reaches it through a write of ours (SIGPIPE, SIGXFSZ), no
// descriptor number that it would get itself is taken, nothing is inherited by programs that it executes, and
// nothing here waits long for another process (a FIFO without a reader is opened all the same; what a full
// one does not take is dropped, unless it has taken a part: then the rest waits up to a tenth of a second). A
// host that closes all descriptors, as daemons do, and gets the number again for something of its own finds
// nothing written there, and the file is opened again, whatever directory the host is in by then; when it
// cannot be opened, again and again.
//
// One thread at a time.
#pragma once

#include <fcntl.h>
#include <sys/types.h>

#include <cstddef>
#include <string_view>

#include "host/file_creation.h"

namespace ckscribe {

class AppendFile {
public:
    AppendFile() = default;
    ~AppendFile() { Close(); }
    AppendFile(const AppendFile&) = delete;
    AppendFile& operator=(const AppendFile&) = delete;

    // Opens `path` for reading and appending and creates it if need be, as fopen's "a+" does; a file that is
    // open is closed first. Returns false when it cannot be opened; errno says why. A FIFO that somebody
    // reads is opened for appending alone: a reader in the host's own process would keep it alive when the
    // last other one leaves, for the host's writes as well. A file that is created, now or when it is opened
    // again, gets these permissions.
    bool Open(const char* path, NewFilePermissions permissions = {}) {
        return OpenFor(path, O_RDWR, permissions);
    }
    // The same for appending alone, as fopen's "a" does. A FIFO that nobody reads is not opened.
    bool OpenForAppendingAlone(const char* path, NewFilePermissions permissions = {}) {
        return OpenFor(path, O_WRONLY, permissions);
    }
    void Close();
    bool IsOpen() const { return descriptor >= 0; }

    // Appends the whole text with one write where the system takes it in one; a short write is completed, an
    // interrupted one repeated, any other failure given up silently. Does nothing when no file is open.
    void Append(std::string_view text);

private:
    bool OpenFor(const char* path, int access, NewFilePermissions permissions);
    bool OpenPath(const char* path);
    void RememberPath(const char* path);
    bool IsStillOurs() const;
    bool IsInspectionDue();
    void Inspect();
    void LookAtLimit();

    static constexpr std::size_t kLongestPath = 1000;

    int descriptor = -1;  // also when the host closed it and it could not be opened again yet
    dev_t device = 0;
    ino_t inode = 0;
    bool isRegular = false;
    bool mayRaiseSignal = true;
    unsigned appends = 0;      // since the descriptor was inspected
    long inspectionTime = -1;  // in milliseconds of the coarse clock
    int openAccess = 0;
    NewFilePermissions newFilePermissions;
    // Absolute; empty when there is no file to open again, or no way to.
    char openPath[kLongestPath + 1] = {};
};

}  // namespace ckscribe
