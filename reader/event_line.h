// Reads one line of an events file.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "reader/record.h"
#include "reader/value.h"

namespace ckscribe {

// EventLineReader may read so many bytes behind the line that it is given.
inline constexpr std::size_t kEventPadding = 64;

// One thread at a time may use a reader.
class EventLineReader {
public:
    // With `usesPlainWay` the reader tries ReadPlainEvent first (see plain_event.h). Tests compare both ways.
    explicit EventLineReader(bool usesPlainWay = true);
    ~EventLineReader();

    // Reads a line (without its end) into `record` and returns true. Returns false if the line is no whole
    // event. Sets all of `record` but its line number. kEventPadding bytes behind the line must be readable.
    bool Read(std::string_view line, Record& record);

private:
    struct Parser;
    std::unique_ptr<Parser> parser;
    const bool usesPlainWay;
};

// Returns the children of the member "in" or "out" of an event's line, or none when the line has no such
// member.
std::vector<Value> ChildrenOfEvent(std::string_view line, std::string_view member);

// Returns the same member as JSON without white space, or an empty text when the line has no such member.
std::string MemberOfEvent(std::string_view line, std::string_view member);

}  // namespace ckscribe
