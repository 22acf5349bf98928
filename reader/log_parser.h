// Reads the records in the text of a log. It looks at each line separately, therefore one log may hold
// records of both text formats and events. It counts lines that are no record in stretches and goes on behind
// them.
//
// A parser keeps only its memory from text to text. Therefore several parsers may read the pieces of one log,
// and LogOrder puts together what they find. One thread at a time may use a parser.
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

// The parser gives up a record of several lines that still lacks its end after so many bytes.
inline constexpr std::size_t kLongestRecord = 8 << 20;

class LogParser {
public:
    enum class Rest {
        kComes,    // the text goes on: what may be a part of a record waits
        kMayCome,  // nothing more for now: a record that is whole needs no line end, a part of one waits
        kIsThere,  // the text ends here
    };

    // With `usesPlainWay` the parser tries the fast readers first (see plain_children.h and plain_event.h).
    // Tests compare both ways.
    explicit LogParser(bool usesPlainWay = true) : events(usesPlainWay), usesPlainWay(usesPlainWay) {}

    // Reads the complete records of `text`, which begins with a line, into `found`; their views point into
    // `text`. Returns how many bytes are done. The caller gives the rest again with more text behind it;
    // where texts end does not change what is found. kEventPadding bytes behind `text` must be readable.
    std::size_t Parse(std::string_view text, Rest rest, FoundInText& found);

private:
    enum class Outcome { kRead, kUnreadable, kNeedsMore };

    // Reads a record of the new format on one line in the fast way. Returns false if that cannot read it;
    // ReadRecord decides then.
    static bool ReadPlainRecord(const char* begin, const char* lineEnd, Record& record);

    Outcome ReadRecord(std::string_view text, std::size_t begin, std::size_t& end, Record& record);
    // Each of these reads the record or the children that begin at `begin`, and sets `end` to the place
    // behind them.
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

// Returns the offset of the last line that looks like the beginning of a record, or 0 if only the first line
// can be one.
std::size_t LastRecordBegin(std::string_view text);

static_assert(kEventPadding >= kPlainPadding);

}  // namespace ckscribe
