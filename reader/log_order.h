// Puts what LogParser finds in each piece of a log into the order of the whole log. It counts the lines and
// the days of the new format's records, and joins stretches that go on from piece to piece.
//
// One thread at a time may use it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "reader/call.h"
#include "reader/record.h"

namespace ckscribe {

// A LogParser finds this in one piece. Lines count from 0 in the piece, and records of the new format have
// only a time of day.
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
    // Takes what was found in the next piece. Gives `onStretch` the stretches that have ended, and then
    // `onRecord` each record. Both have their places in the file, and records have their moments in the log.
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

    // Ends the file: gives a stretch that stands at its end to `onStretch`, and counts lines from 1 again.
    template <class OnStretch>
    void EndFile(const OnStretch& onStretch) {
        GiveOpen(onStretch);
        line = 1;
    }

    // Sets the date of the log's first day, in days since 1970. From now on Take gives the new format's
    // records a date.
    void SetFirstDay(std::int64_t day) { firstDay = day; }

    // Returns how many days lie between the first record of the new format and the last one, or nothing
    // without such a record.
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
        // A record that another process wrote a moment before midnight may stand behind records of the new
        // day.
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
