// Reads one line of an events file.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "reader/record.h"
#include "reader/value.h"

namespace ckscribe {

// How many readable bytes must follow the text that EventLineReader is given.
inline constexpr std::size_t kEventPadding = 64;

// Used by one thread at a time.
class EventLineReader {
public:
    // Whether lines that can be read the plain way are read so; see plain_event.h.
    explicit EventLineReader(bool usesPlainWay = true);
    ~EventLineReader();

    // Takes a line (without its end) apart and returns true, or returns false when it is no whole event. Sets
    // all of `record` but its line number. kEventPadding bytes behind the line must be readable.
    bool Read(std::string_view line, Record& record);

private:
    struct Parser;
    std::unique_ptr<Parser> parser;
    const bool usesPlainWay;
};

// The children "in" or "out" of an event's line; none when the line has none.
std::vector<Value> ChildrenOfEvent(std::string_view line, std::string_view member);

// The same member as JSON without white space; empty when the line has none.
std::string MemberOfEvent(std::string_view line, std::string_view member);

}  // namespace ckscribe
