// A descriptor tree prints itself into a RecordText. The text stays in memory until it is taken, or goes to a
// stdio stream at every flush.
#pragma once

#include <cstdio>

#include "util/text_buffer.h"

namespace ckscribe {

class RecordText : public TextBuffer {
public:
    // The text stays in memory; Flush does nothing.
    RecordText() = default;

    // The text goes to `stream`, which stays the caller's. Write errors show only in the error flag of the
    // stream.
    explicit RecordText(std::FILE* stream) : stream(stream) {}
    ~RecordText() { HandOn(); }

    // Hands everything written so far to the operating system: writes it to the stream and flushes the
    // stream.
    void Flush() {
        if (stream == nullptr) return;
        HandOn();
        std::fflush(stream);
    }

private:
    void HandOn() {
        if (stream == nullptr) return;
        std::fwrite(Text().data(), 1, Text().size(), stream);
        Clear();
    }

    std::FILE* stream = nullptr;
};

}  // namespace ckscribe
