#pragma once

// The whole text of a file, as one open, one status query and one read give it.

#include <memory>

namespace ckscribe {

// Opens a file with the given access (O_RDONLY, O_WRONLY | O_CREAT | O_TRUNC, ...); -1 on failure. The file
// is not inherited by programs that the host starts and never becomes its terminal, and a pipe in its place
// does not keep the host waiting. A new file gets mode 0777 less the process's umask.
int OpenFile(const char* path, int access);

struct FileText {
    std::unique_ptr<char[]> text;  // `size` + 1 bytes; NUL after the last byte that was read, and at `size`
    unsigned long size = 0;        // of the file, when it was opened
    bool isWhole = false;          // all `size` bytes were read

    // Reads the file at `path` into a fresh object. False, without a text, when it cannot be opened or asked
    // for its size, when there is no memory, or when not a single byte comes: an empty file, a pipe, a
    // device. A failed or short read is deliberately no failure: the text is empty or ends early, and is not
    // whole. Of a file of 4 GiB or more only the lower 32 bits of the size are asked for.
    bool Read(const char* path);

private:
    bool ReadFrom(int file);
};

}  // namespace ckscribe
