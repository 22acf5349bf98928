// The bytes of a log that were read and that no record was made of yet. Of a very long line it keeps the
// beginning and the end, and how much was between them: in a text record kElisionMark tells it, in an event
// the size that stands beside the bytes.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "reader/byte_buffer.h"
#include "reader/event_line.h"
#include "reader/record_children.h"

namespace ckscribe {

class LogText {
public:
    // Of a longer line the middle is left out.
    static constexpr std::size_t kLongestLine = 3 << 20;
    // How much of its end is kept, at least.
    static constexpr std::size_t kKeptEnd = 64 << 10;

    void Add(std::string_view more);

    // Room behind the text, for reading into. It is valid until the next call of any function here.
    std::span<char> Space(std::size_t count);
    // The first `count` bytes of that room were read.
    void AddFromSpace(std::size_t count);

    // Everything but a long line that has no end yet. kEventPadding bytes behind it are readable.
    std::string_view View() const;

    // Takes that many bytes off the front of the view.
    void Drop(std::size_t count) { begin += count; }

    // The text ends here, also that of a long line.
    void End();

    // Becomes what `other` has behind the first `done` bytes of its view, and leaves `other` its view.
    void TakeBehind(const LogText& other, std::size_t done);

private:
    void DropDone();
    void AddToLongLine(std::string_view more);
    void EndLongLine();

    ByteBuffer bytes;
    std::size_t begin = 0;
    // Where the last line begins, which has no end yet.
    std::size_t lastLine = 0;

    // Of a long line: what follows its beginning, which is at the end of `bytes`.
    bool isLong = false;
    bool isEvent = false;
    std::string lineEnd;
    std::uint64_t leftOut = 0;
};

static_assert(ByteBuffer::kPadding >= kEventPadding);

}  // namespace ckscribe
