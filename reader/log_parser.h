// Takes the text of a log apart into records. Each line is looked at for itself, so that a log may hold
// records of both text formats and events. What is no record is counted in stretches, and nothing stops.
//
// A parser keeps nothing from text to text but its memory: several may read the pieces of one log, and
// LogOrder puts together what they find. Used by one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "reader/event_line.h"
#include "reader/log_order.h"
#include "reader/plain_children.h"
#include "reader/record.h"
#include "reader/record_children.h"

namespace ckscribe {

// A record of several lines that still lacks its end after so many bytes is given up.
inline constexpr std::size_t kLongestRecord = 8 << 20;

class LogParser {
public:
    enum class Rest {
        kComes,    // the text goes on: what may be a part of a record waits
        kMayCome,  // nothing more for now: a record that is whole needs no line end, a part of one waits
        kIsThere,  // the text ends here
    };

    // Whether records that can be read the plain way are read so; see plain_children.h and plain_event.h.
    explicit LogParser(bool usesPlainWay = true) : events(usesPlainWay), usesPlainWay(usesPlainWay) {}

    // Reads the whole records of `text`, which begins with a line, into `found`; their views point into
    // `text`. Returns how much of it is done with: the rest must come again with more behind it, and what is
    // found does not depend on where texts end. kEventPadding bytes behind `text` must be readable.
    std::size_t Parse(std::string_view text, Rest rest, FoundInText& found);

private:
    enum class Outcome { kRead, kUnreadable, kNeedsMore };

    // Reads what stands on one line in the plainest way, or returns false: then ReadRecord must see.
    static bool ReadPlainRecord(const char* begin, const char* lineEnd, Record& record);

    Outcome ReadRecord(std::string_view text, std::size_t begin, std::size_t& end, Record& record);
    // Each reads what begins at `begin`; sets `end` to what is behind it.
    Outcome ReadNewRecord(std::string_view text, std::size_t begin, std::size_t& end, Record& record);
    Outcome ReadOldRecord(std::string_view text, std::size_t begin, std::size_t& end, Record& record);
    Outcome ReadEvent(std::string_view text, std::size_t begin, std::size_t& end, Record& record);
    Outcome ReadBody(std::string_view text, std::size_t begin, std::size_t& end, bool isNew, Record& record);
    void SetFields(Record& record);

    EventLineReader events;
    ChildrenReader children;
    const bool usesPlainWay;
    bool isAllThere = false;
};

// Where the last line begins that looks like the beginning of a record; 0 if no other does.
std::size_t LastRecordBegin(std::string_view text);

static_assert(kEventPadding >= kPlainPadding);

}  // namespace ckscribe
