// Reads the files of one log in blocks that begin and, nearly always, end where a record does, so that each
// can be taken apart for itself.
//
// Used by one thread at a time.
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
    std::uint64_t bytesRead = 0;  // of the file as it lies on the disk, so far
    std::int64_t writtenAt = 0;   // when the file was written last
};

class LogBlocks {
public:
    // How much of a file is read at once. Small enough for a block and its records to stay in a processor's
    // own memory.
    static constexpr std::size_t kSize = 256 << 10;

    // The files of `family`, which are indexes of `paths`; both outlive this.
    LogBlocks(const std::vector<std::string>& paths, const LogFamily& family)
        : paths(paths), family(family) {}

    // Reads the next block into `block`, whose memory serves again. Returns false when there is none. Each
    // file has a block at least, also one that cannot be read.
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
