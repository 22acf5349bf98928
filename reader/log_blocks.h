// Reads the files of one log in blocks. A block begins with a record and nearly always ends with one,
// therefore several threads can read records from blocks at once.
//
// One thread at a time may use it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "reader/log_family.h"
#include "reader/log_source.h"
#include "reader/log_text.h"

namespace ckscribe {

struct LogBlock {
    LogText memory;  // the next block's beginning may stand behind the text
    std::string_view text;
    std::uint32_t file = 0;
    bool endsFile = false;
    std::string error;            // of the file, see LogSource
    std::uint64_t bytes = 0;      // unpacked, read for this block
    std::uint64_t bytesRead = 0;  // of the file on disk, so far
    std::int64_t writtenAt = 0;   // when the file was written last
};

class LogBlocks {
public:
    // LogBlocks reads so many bytes of a file at once. A block and its records fit into a processor's cache.
    static constexpr std::size_t kSize = 256 << 10;

    // Reads the files of `family`, which are indexes of `paths`. Both outlive this object.
    LogBlocks(const std::vector<std::string>& paths, const LogFamily& family)
        : paths(paths), family(family) {}

    // Reads the next block into `block` and uses its memory again. Returns false when there is none. Each
    // file has at least one block, even a file that cannot be read.
    bool Read(LogBlock& block);

private:
    const std::vector<std::string>& paths;
    const LogFamily& family;
    std::size_t next = 0;  // of `family`
    std::unique_ptr<LogSource> source;
    bool hasMore = false;
    LogText rest;
};

}  // namespace ckscribe
