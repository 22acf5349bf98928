// The text that a descriptor tree prints itself into: kept in memory until it is taken, or handed on to a
// stdio stream at every flush.
#pragma once

#include <cstdio>

#include "util/text_buffer.h"

class RecordText : public ckscribe::TextBuffer {
public:
    // Text in memory; Flush does nothing.
    RecordText() = default;

    // Text on its way to `stream`, which stays the caller's. Write errors are left to the stream's error
    // flag.
    explicit RecordText(std::FILE* stream) : stream(stream) {}
    ~RecordText() { HandOn(); }

    // Everything written so far leaves this process' memory: the stream is written to and flushed.
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
