// Puts what was found in the pieces of a log, each for itself, into the order of the whole log: the numbers
// of lines, the days of the new format's records, and stretches that go on from piece to piece.
//
// Used by one thread at a time.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "reader/call.h"
#include "reader/record.h"

namespace ckscribe {

// What a LogParser finds in one piece. Lines count from 0 there, and records of the
// new format have a time of day.
struct FoundInText {
    std::vector<Record> records;
    std::vector<UnreadableStretch> stretches;
    std::uint64_t lines = 0;        // line feeds in what is done with
    bool beginsUnreadable = false;  // the first stretch stands in front of the first record
    bool endsUnreadable = false;    // no record follows the last stretch

    void Clear() {
        records.clear();
        stretches.clear();
        lines = 0;
        beginsUnreadable = endsUnreadable = false;
    }
};

class LogOrder {
public:
    // Takes what was found in the next piece: gives `onStretch` the stretches that have ended, and then
    // `onRecord` each record, with their places in the file and the records' moments in the log.
    template <class OnStretch, class OnRecord>
    void Take(FoundInText& found, const OnStretch& onStretch, const OnRecord& onRecord) {
        for (std::size_t i = 0; i < found.stretches.size(); ++i) {
            UnreadableStretch& stretch = found.stretches[i];
            if (i == 0 && found.beginsUnreadable && open.lines != 0) {
                open.lines += stretch.lines;
                continue;
            }
            GiveOpen(onStretch);
            stretch.place.line += line;
            open = std::move(stretch);
        }
        if (!found.records.empty() && !found.endsUnreadable) GiveOpen(onStretch);
        for (Record& record : found.records) {
            record.line += line;
            if (record.time.scale == TimeScale::kDayOfLog) record.time = TimeInLog(record.time);
            onRecord(record);
        }
        line += found.lines;
    }

    // The file ends: gives a stretch that stands at its end to `onStretch`, and begins to count lines again.
    template <class OnStretch>
    void EndFile(const OnStretch& onStretch) {
        GiveOpen(onStretch);
        line = 1;
    }

    // The date of the log's first day, in days since 1970: from then on the new format's records have a date.
    void SetFirstDay(std::int64_t day) { firstDay = day; }

    // How many days after its first one the last record of the new format was made; nothing without such a
    // record.
    std::optional<std::int64_t> LastDay() const {
        return lastTime ? std::optional<std::int64_t>(days) : std::nullopt;
    }

private:
    template <class OnStretch>
    void GiveOpen(const OnStretch& onStretch) {
        if (open.lines == 0) return;
        onStretch(open);
        open.lines = 0;
    }

    Moment TimeInLog(const Moment& timeOfDay) {
        constexpr std::int64_t kDay = kSecondsPerDay * kNanosecondsPerSecond;
        // A record that another process wrote a moment before midnight may stand behind those of the new day.
        constexpr std::int64_t kNearlyDay = kDay - 600 * kNanosecondsPerSecond;
        const std::int64_t time = timeOfDay.nanoseconds;
        std::int64_t day = days;
        if (lastTime && time < *lastTime - kDay / 2) {
            day = ++days;
            lastTime = time;
        } else if (lastTime && time > *lastTime + kNearlyDay && days > 0) {
            --day;
        } else {
            lastTime = time;
        }
        if (firstDay) return {(*firstDay + day) * kDay + time, TimeScale::kLocal};
        return {day * kDay + time, TimeScale::kDayOfLog};
    }

    std::uint64_t line = 1;  // of the next piece's beginning
    std::optional<std::int64_t> firstDay;
    std::int64_t days = 0;
    std::optional<std::int64_t> lastTime;
    UnreadableStretch open;  // no lines: none
};

}  // namespace ckscribe
