// Takes the text of a log apart into records. Each line is looked at for itself, so that a log may hold
// records of both text formats and events. What is no record is counted in stretches, and nothing stops.
//
// Used by one thread at a time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reader/event_line.h"
#include "reader/record.h"
#include "reader/record_children.h"

namespace ckscribe {

class LogParser {
public:
    struct Found {
        std::vector<Record> records;
        std::vector<UnreadableStretch> stretches;
    };

    enum class Rest {
        kComes,      // the text goes on: what may be a part of a record waits
        kMayCome,    // nothing more for now: a record that is whole needs no line end, a part of one waits
        kIsTooLong,  // a record that still lacks its end is given up
        kIsThere,    // the text ends here
    };

    // Reads the whole records of `text`, which begins with a line, and adds them to `found`; their views
    // point into `text`. Returns how much of it is done with: the rest must come again with more behind it.
    // kEventPadding bytes behind `text` must be readable.
    std::size_t Parse(std::string_view text, Rest rest, Found& found);

    // Ends the stretch of unreadable lines at the end of a file, and begins to count lines again.
    void EndFile(Found& found);

    // The date of the log's first day, in days since 1970: from then on the new format's records have a date.
    void SetFirstDay(std::int64_t day) { firstDay = day; }

    // How many days after its first one the last record of the new format was made; nothing without such a
    // record.
    std::optional<std::int64_t> LastDay() const {
        return lastSecond ? std::optional<std::int64_t>(days) : std::nullopt;
    }

    // The next line's number, from 1.
    std::uint64_t Line() const { return line; }

private:
    enum class Outcome { kRead, kUnreadable, kNeedsMore };

    Outcome ReadRecord(std::string_view text, std::size_t begin, std::size_t& end, Record& record);
    // Each reads what begins at `begin`; sets `end` to what is behind it.
    Outcome ReadNewRecord(std::string_view text, std::size_t begin, std::size_t& end, Record& record);
    Outcome ReadOldRecord(std::string_view text, std::size_t begin, std::size_t& end, Record& record);
    Outcome ReadEvent(std::string_view text, std::size_t begin, std::size_t& end, Record& record);
    Outcome ReadBody(std::string_view text, std::size_t begin, std::size_t& end, bool isNew, Record& record);
    void SetFields(Record& record);
    Moment TimeOfDay(std::int64_t second);
    void AddUnreadable(std::string_view bad);
    void EndStretch(Found& found);

    EventLineReader events;
    ChildrenReader children;
    bool isAllThere = false;
    std::uint64_t line = 1;
    std::optional<std::int64_t> firstDay;
    std::int64_t days = 0;
    std::optional<std::int64_t> lastSecond;

    // The stretch that the latest lines belong to; no lines: none.
    std::uint64_t stretchLine = 0;
    std::uint64_t stretchLines = 0;
    std::string stretchBeginning;
};

}  // namespace ckscribe
