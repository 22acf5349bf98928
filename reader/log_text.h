// Holds the bytes of a log that were read and that belong to no record yet. It keeps only the beginning and
// the end of a very long line. The count of the bytes between them stands between two kElisionMark in a text
// record; in an event the size beside the bytes says it. One thread at a time may use it.
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
    // LogText leaves out the middle of a line that is longer than this, in bytes.
    static constexpr std::size_t kLongestLine = 3 << 20;
    // It keeps at least so many bytes of such a line's end.
    static constexpr std::size_t kKeptEnd = 64 << 10;

    void Add(std::string_view more);

    // Returns room for `count` bytes behind the text. It is valid until the next call of any function here.
    std::span<char> Space(std::size_t count);
    // Adds the first `count` bytes of that room to the text.
    void AddFromSpace(std::size_t count);

    // Returns all text but a long line that has no end yet. kEventPadding bytes behind it are readable.
    std::string_view View() const;

    // Takes `count` bytes off the front of the view.
    void Drop(std::size_t count) { begin += count; }

    // Ends the text, and with it a long line without an end.
    void End();

    // Becomes a copy of what `other` holds behind the first `done` bytes of its view. `other` keeps its text.
    void TakeBehind(const LogText& other, std::size_t done);

private:
    void DropDone();
    void AddToLongLine(std::string_view more);
    void EndLongLine();

    ByteBuffer bytes;
    std::size_t begin = 0;
    // The last line begins here and has no end yet.
    std::size_t lastLine = 0;

    // While the last line is long, `bytes` ends with its beginning, and these hold what follows.
    bool isLong = false;
    bool isEvent = false;
    std::string lineEnd;
    std::uint64_t leftOut = 0;
};

static_assert(ByteBuffer::kPadding >= kEventPadding);

}  // namespace ckscribe
