// A file that is only ever appended to, by any number of processes at once, from inside somebody else's
// process.
//
// What the host must not notice: no signal reaches it through a write of ours (SIGPIPE, SIGXFSZ), no
// descriptor number that it would get itself is taken, nothing is inherited by programs that it executes, and
// nothing here waits for another process (a FIFO without a reader is opened all the same; what a full one
// does not take is dropped).
//
// One thread at a time.
#pragma once

#include <fcntl.h>

#include <string_view>

class AppendFile {
public:
    AppendFile() = default;
    ~AppendFile() { Close(); }
    AppendFile(const AppendFile&) = delete;
    AppendFile& operator=(const AppendFile&) = delete;

    // Opens `path` for reading and appending and creates it if need be, as fopen's "a+" does; a file that is
    // open is closed first. Returns false when it cannot be opened; errno says why.
    bool Open(const char* path) { return OpenFor(path, O_RDWR); }
    // The same for appending alone, as fopen's "a" does. A FIFO that nobody reads is not opened.
    bool OpenForAppendingAlone(const char* path) { return OpenFor(path, O_WRONLY); }
    void Close();
    bool IsOpen() const { return descriptor >= 0; }

    // Appends the whole text with one write where the system takes it in one; a short write is completed, an
    // interrupted one repeated, any other failure given up silently. Does nothing when no file is open.
    void Append(std::string_view text);

private:
    bool OpenFor(const char* path, int access);
    bool MayRaiseSignal();

    int descriptor = -1;
    bool isRegular = false;
    bool sizeIsLimited = false;
    unsigned appends = 0;
};
