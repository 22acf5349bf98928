// The bytes of a log file, or of standard input: as they are, or unpacked where they are gzip, xz, zstd or
// bzip2.
//
// Used by one thread at a time.
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

    // Opens a file; "-" is standard input. On failure returns false, and Error() says why.
    bool Open(const std::string& path);

    // Reads up to `size` bytes. Returns how many; 0 at the end, and after a failure, of which Error() tells:
    // a compressed file that ends early gives what can be unpacked of it.
    std::size_t Read(char* bytes, std::size_t size);

    // Goes back to the beginning of what is open, or leaves out the next `count` bytes. On failure (standard
    // input, an end that comes sooner) they return false.
    bool Rewind();
    bool Skip(std::uint64_t count);

    // The file is unpacked while it is read.
    bool IsUnpacking() const { return unpacker != nullptr; }

    // Tells this file, as it lies on the disk, from others and from itself after a change.
    std::string Stamp() const;

    // Why nothing more can be read; empty while all is well.
    const std::string& Error() const { return error; }

    // Of the file as it lies on the disk: how much of it was read, how much there is (0: not known), and when
    // it was written last (seconds since 1970 in UTC; of standard input the present).
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
