#include "reader/log_blocks.h"

#include "reader/log_parser.h"

namespace ckscribe {

bool LogBlocks::Read(LogBlock& block) {
    if (source == nullptr) {
        if (next == family.size()) return false;
        source = std::make_unique<LogSource>();
        hasMore = source->Open(paths[family[next]]);
    }
    LogText& memory = block.memory;
    memory.TakeBehind(rest, 0);
    block.bytes = 0;
    std::size_t size = 0;
    // A record that is longer than a block needs several reads.
    while (hasMore && size == 0) {
        for (std::size_t count = 0; count < kSize;) {
            const std::span<char> space = memory.Space(kSize - count);
            const std::size_t more = source->Read(space.data(), space.size());
            if (more == 0) {
                hasMore = false;
                break;
            }
            memory.AddFromSpace(more);
            count += more;
            block.bytes += more;
        }
        const std::string_view view = memory.View();
        size = LastRecordBegin(view);
        if (size == 0 && view.size() > kLongestRecord) size = view.size();
    }
    if (!hasMore) {
        memory.End();
        size = memory.View().size();
    }
    block.text = memory.View().substr(0, size);
    rest.TakeBehind(memory, size);
    block.file = family[next];
    block.endsFile = !hasMore;
    block.error = source->Error();
    block.bytesRead = source->BytesRead();
    block.writtenAt = source->WrittenAt();
    if (!hasMore) {
        rest = LogText();
        source.reset();
        ++next;
    }
    return true;
}

}  // namespace ckscribe
