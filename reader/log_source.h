// Gives the bytes of a log file, or of standard input. It unpacks gzip, xz, zstd and bzip2.
//
// One thread at a time may use it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

struct archive;

namespace ckscribe {

class LogSource {
public:
    LogSource();
    ~LogSource();
    LogSource(const LogSource&) = delete;
    LogSource& operator=(const LogSource&) = delete;

    // Opens a file; "-" is standard input. Returns false on failure; Error() then says why.
    bool Open(const std::string& path);

    // Reads at most `size` bytes and returns their count. Returns 0 at the end and after a failure; Error()
    // says which. A compressed file that ends too early gives the bytes that can be unpacked.
    std::size_t Read(char* bytes, std::size_t size);

    // Rewind goes back to the beginning of the open file; Skip leaves out the next `count` bytes. They return
    // false on failure (standard input cannot go back; the end may come sooner).
    bool Rewind();
    bool Skip(std::uint64_t count);

    // Returns whether the source unpacks the file.
    bool IsUnpacking() const { return unpacker != nullptr; }

    // Returns a text that differs between two files, and between two states of one file on the disk.
    std::string Stamp() const;

    // Returns why nothing more can be read, or an empty text while there is no failure.
    const std::string& Error() const { return error; }

    // These speak of the file as it lies on the disk. They return the bytes that were read, the file's size
    // in bytes (0: not known), and the time of its last change. That time is in seconds since 1970 in UTC;
    // for standard input it is the present.
    std::uint64_t BytesRead() const { return bytesRead; }
    std::uint64_t Size() const { return size; }
    std::int64_t WrittenAt() const { return writtenAt; }

private:
    struct Unpacker;

    std::size_t ReadFile(char* bytes, std::size_t count);
    static long ReadForUnpacker(archive*, void* source, const void** bytes);
    bool Begin();
    void Close();

    int descriptor = -1;
    std::uint64_t bytesRead = 0;
    std::uint64_t size = 0;
    std::int64_t writtenAt = 0;
    std::string error;
    std::string head;  // what was read to look at the format
    std::unique_ptr<Unpacker> unpacker;
};

}  // namespace ckscribe
