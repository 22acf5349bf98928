#pragma once

// The tests of log records share fixed surroundings, both formats and every way to print.

#include <gtest/gtest.h>
#include <sys/types.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include "descriptors/abstract_descriptor.h"
#include "descriptors/record_environment.h"
#include "tests/descriptors/printed_text.h"

inline std::time_t PointInTime(int year, int month, int day, int hour, int minute, int second) {
    std::tm point{};
    point.tm_year = year - 1900;
    point.tm_mon = month - 1;
    point.tm_mday = day;
    point.tm_hour = hour;
    point.tm_min = minute;
    point.tm_sec = second;
    return timegm(&point);
}

// Returns the text that a descriptor prints. Printing into memory and to a stdio stream must give the same
// text.
inline std::string Printed(const AbstractDescriptor& descriptor, int indent = 0,
                           const char* suffix = nullptr) {
    ckscribe::RecordText inMemory;
    descriptor.PrintDescription(inMemory, indent, suffix);
    const std::string text(inMemory.Text());
    EXPECT_EQ(PrintedText([&](std::FILE* stream) { descriptor.PrintDescription(stream, indent, suffix); }),
              text);
    return text;
}

// Returns the pieces in which a descriptor's text reaches the system when it is printed to a stdio stream.
// The last piece is the text that is left in the stream at the end.
inline std::vector<std::string> FlushedPieces(const AbstractDescriptor& descriptor) {
    std::vector<std::string> pieces;
    cookie_io_functions_t functions{};
    functions.write = [](void* cookie, const char* bytes, std::size_t length) {
        static_cast<std::vector<std::string>*>(cookie)->emplace_back(bytes, length);
        return static_cast<ssize_t>(length);
    };
    std::FILE* const stream = fopencookie(&pieces, "w", functions);
    static char buffer[1 << 16];
    std::setvbuf(stream, buffer, _IOFBF, sizeof buffer);
    descriptor.PrintDescription(stream, 0, nullptr);
    pieces.emplace_back("(end)");
    std::fclose(stream);
    return pieces;
}

inline void UseOldFormat() { bUseNewLogFormat.store(0); }
inline void UseNewFormat() { bUseNewLogFormat.store(1); }

// Makes a descriptor, prints it in one format and returns the text.
template <class Descriptor, class... Arguments>
std::string Old(Arguments... arguments) {
    UseOldFormat();
    return Printed(Descriptor(arguments...));
}
template <class Descriptor, class... Arguments>
std::string New(Arguments... arguments) {
    UseNewFormat();
    return Printed(Descriptor(arguments...));
}

// Fixes the surroundings of a record: 10:15:30 on Sun Nov 15 2026, process 1234, thread 567.
class RecordTest : public testing::Test {
protected:
    RecordTest() {
        setenv("TZ", "UTC", 1);
        now = PointInTime(2026, 11, 15, 10, 15, 30);
        ticks = 12345;
        processId = 1234;
        threadId = 567;
        ckscribe::recordEnvironment = {[] { return now; }, [] { return ticks; }, [] { return processId; },
                                       [] { return threadId; }};
        uLoggingLevel.store(4);
        AbstractDescriptor::uInstanceCount = 0;
    }
    ~RecordTest() override {
        // The descriptors that a test has made must be gone with it.
        EXPECT_EQ(AbstractDescriptor::uInstanceCount, 0U);
        AbstractDescriptor::uInstanceCount = 0;
        ckscribe::recordEnvironment = realEnvironment;
        bUseNewLogFormat.store(0);
        uLoggingLevel.store(0);
    }

    static inline std::time_t now;
    static inline std::clock_t ticks;
    static inline int processId;
    static inline int threadId;

private:
    const ckscribe::RecordEnvironment realEnvironment = ckscribe::recordEnvironment;
};
