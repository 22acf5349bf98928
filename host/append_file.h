// A file to which text is only ever appended, by any number of processes at once, from inside the process of
// a host.
//
// The host must not notice it:
//  - No signal of a write (SIGPIPE, SIGXFSZ) reaches the host.
//  - The descriptor has a number that the host would not get itself, and programs that the host executes do
//  not
//    inherit it.
//  - Nothing here waits long for another process. A FIFO without a reader can be opened. A full FIFO loses
//  the
//    text, unless it has taken a part; then the rest waits for room, a tenth of a second at most.
//  - A host may close all descriptors, as daemons do, and get the number again for a file of its own. Nothing
//  is
//    written there, and the log is opened again, from whatever directory the host is in by then. If it cannot
//    be opened, it is tried again and again.
//  - A log that somebody deletes is opened again at its path. A log that is renamed is written on.
// A descriptor is looked at every few milliseconds; a change before that is noticed late.
//
// One thread at a time.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
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
    // reads is opened only for appending: a reader in the host's own process would keep it alive when the
    // last other one leaves, for the host's writes as well. A file that is created, now or when it is opened
    // again, gets these permissions.
    bool Open(const char* path, NewFilePermissions permissions = {}) {
        return OpenFor(path, O_RDWR, permissions);
    }
    // Does the same only for appending, as fopen's "a" does. A FIFO that nobody reads is not opened.
    bool OpenForAppendingAlone(const char* path, NewFilePermissions permissions = {}) {
        return OpenFor(path, O_WRONLY, permissions);
    }
    void Close();
    bool IsOpen() const { return descriptor >= 0; }

    // 0 while what is appended gets into the file, as far as the latest look at the descriptor shows. If the
    // host closed the descriptor or somebody deleted the file, and it could not be opened again: the errno
    // that says why.
    int WhyLost() const { return whyLost; }

    static constexpr std::size_t kLongestPath = 1000;

    // The absolute path at which the file is opened again. Empty if it is longer than kLongestPath or not
    // known.
    const char* Path() const { return openPath; }

    // Returns how often the descriptor has been looked at. WhyLost() changes only then.
    unsigned long Inspections() const { return inspections; }

    // Returns whether the file ends with a part of a text: the system took its beginning and not the rest.
    bool EndsInPart() const { return endsInPart; }

    // Appends the whole text with one write where the system takes it in one; a short write is completed, an
    // interrupted one repeated, any other failure given up silently. Does nothing when no file is open.
    // Returns whether the system took the whole text.
    bool Append(std::string_view text);

private:
    bool OpenFor(const char* path, int access, NewFilePermissions permissions);
    bool OpenPath(const char* path);
    void RememberPath(const char* path);
    bool IsOurs(const struct stat& status) const;
    bool IsStillOurs() const;
    bool IsInspectionDue();
    void Inspect();
    bool Reopen();
    void ReplaceFile();
    void LookAtLimit();

    int descriptor = -1;  // also when the host closed it and it could not be opened again yet
    dev_t device = 0;
    ino_t inode = 0;
    bool isRegular = false;
    bool hadName = false;  // when it was opened: it was no file that had been deleted before
    bool mayRaiseSignal = true;
    bool endsInPart = false;
    int whyLost = 0;
    unsigned long inspections = 0;
    unsigned appends = 0;      // since the descriptor was inspected
    long inspectionTime = -1;  // in milliseconds of the coarse clock
    int openAccess = 0;
    NewFilePermissions newFilePermissions;
    // Absolute; empty when there is no file to open again, or no way to.
    char openPath[kLongestPath + 1] = {};
};

}  // namespace ckscribe
