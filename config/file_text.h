#pragma once

// Reads the whole text of a file by one open, one status query and one read.

#include <memory>

namespace ckscribe {

// Opens a file with the given access (O_RDONLY, O_WRONLY | O_CREAT | O_TRUNC, ...). Returns its descriptor,
// which the caller closes, or -1. Programs that the host starts do not inherit the file. The file never
// becomes the host's terminal. A pipe in its place does not block the host. A new file gets mode 0777 less
// the process's umask.
int OpenFile(const char* path, int access);

struct FileText {
    // The array has `size` + 1 bytes. NUL stands after the last byte that was read, and at `size`.
    std::unique_ptr<char[]> text;
    unsigned long size = 0;  // in bytes, when the file was opened
    bool isWhole = false;    // all `size` bytes were read

    // Reads the file at `path` into a fresh object. Returns false and leaves no text if the file cannot be
    // opened or asked for its size, if there is no memory, or if not a single byte comes. No byte comes from
    // an empty file, a pipe or a device. COMPAT: a failed or short read is no failure; the text is empty or
    // ends early, and `isWhole` is false. COMPAT: for a file of 4 GiB or more the read asks only for the
    // lower 32 bits of the size.
    bool Read(const char* path);

private:
    bool ReadFrom(int file);
};

}  // namespace ckscribe
