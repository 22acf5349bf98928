// An AppendFile only ever appends text to a file, from inside the process of a host. Any number of processes
// may append at once.
//
// The host must not notice it:
//  - No signal of a write (SIGPIPE, SIGXFSZ) reaches the host.
//  - The descriptor has a number that the host would not get itself. Programs that the host executes do not
//    inherit it.
//  - Nothing here waits long for another process. A FIFO without a reader can be opened. A full FIFO loses
//    the text, unless it has taken a part; then the rest waits for room, a tenth of a second at most.
//  - A host may close all descriptors, as daemons do, and get the number again for a file of its own. Nothing
//    is written there. The log is opened again, from whatever directory the host is in by then. If it cannot
//    be opened, it is tried again and again.
//  - A log that somebody deletes is opened again at its path. A log that is renamed is written on.
// A descriptor is looked at every few milliseconds; a change before that is noticed late.
//
// One thread at a time uses an object.
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

    // Opens `path` for reading and appending and creates it if need be, as fopen's "a+" does. First closes a
    // file that is open. Returns false when it cannot be opened; errno says why. A FIFO that somebody reads
    // is opened only for appending. A reader in the host's own process would keep the FIFO alive when the
    // last other reader leaves, for the host's writes as well. A file that is created, now or when it is
    // opened again, gets these permissions.
    bool Open(const char* path, NewFilePermissions permissions = {}) {
        return OpenFor(path, O_RDWR, permissions);
    }
    // Does the same only for appending, as fopen's "a" does. A FIFO that nobody reads is not opened.
    bool OpenForAppendingAlone(const char* path, NewFilePermissions permissions = {}) {
        return OpenFor(path, O_WRONLY, permissions);
    }
    void Close();
    bool IsOpen() const { return descriptor >= 0; }

    // Returns 0 while what is appended gets into the file, as far as the latest look at the descriptor shows.
    // Returns the errno that says why, if the host closed the descriptor or somebody deleted the file, and it
    // could not be opened again.
    int WhyLost() const { return whyLost; }

    static constexpr std::size_t kLongestPath = 1000;

    // Returns the absolute path at which the file is opened again. Returns an empty text if the path is
    // longer than kLongestPath or not known.
    const char* Path() const { return openPath; }

    // Returns how often the descriptor has been looked at. WhyLost() changes only then.
    unsigned long Inspections() const { return inspections; }

    // Returns whether the file ends with a part of a text: the system took its beginning and not the rest.
    bool EndsInPart() const { return endsInPart; }

    // Appends the whole text with one write where the system takes it in one. Completes a short write,
    // repeats an interrupted one, and gives up silently at any other failure. Does nothing when no file is
    // open. Returns whether the system took the whole text.
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

    // This is -1 also when the host closed the descriptor and the file could not be opened again yet.
    int descriptor = -1;
    dev_t device = 0;
    ino_t inode = 0;
    bool isRegular = false;
    // The file had a name when it was opened: it was no file that had been deleted before.
    bool hadName = false;
    bool mayRaiseSignal = true;
    bool endsInPart = false;
    int whyLost = 0;
    unsigned long inspections = 0;
    unsigned appends = 0;      // since the descriptor was inspected
    long inspectionTime = -1;  // in milliseconds of the coarse clock
    int openAccess = 0;
    NewFilePermissions newFilePermissions;
    // The path is absolute. It is empty when there is no file to open again, or no way to open it.
    char openPath[kLongestPath + 1] = {};
};

}  // namespace ckscribe
