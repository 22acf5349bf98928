// Reads whole logs: files of any kind, standard input, families of rotated files. A thread reads and takes
// the text apart; the caller's thread helps with it, joins the calls and gives them to the sink. Memory stays
// the same whatever the length of the logs.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "reader/call.h"

namespace ckscribe {

// How much of all files was read.
struct ReadingProgress {
    std::uint64_t bytesRead = 0;
    std::uint64_t size = 0;  // 0: not known
};

struct ReadingOptions {
    // The date of each log's last record, in days since 1970, for records of the new format; absent: the day
    // on which its last file was written.
    std::optional<std::int64_t> date;
    // Read each log twice if need be, so that all moments that the sink gets have a date. Otherwise those of
    // the new format are counted from the log's first day, and OnLogEnd tells which that was.
    bool needsDates = false;
    // Called now and then, on the thread of the caller. May be empty.
    std::function<void(const ReadingProgress&)> onProgress;
};

// Calls of one log come between OnLogBegin and OnLogEnd.
class LogSink : public CallSink {
public:
    // `files`: indexes of the log's files among the paths that were given, the oldest first.
    virtual void OnLogBegin(const std::vector<std::uint32_t>& /*files*/) {}
    // With ReadingOptions::needsDates, behind OnLogBegin: when the log's last record was made, in UTC.
    virtual void OnLogSurveyed(const Moment& /*lastRecord*/) {}
    // `firstDay`: of the log's records in the new format, in days since 1970; absent without such records.
    virtual void OnLogEnd(std::optional<std::int64_t> /*firstDay*/) {}
};

struct FileReading {
    std::uint64_t bytes = 0;  // unpacked
    std::uint64_t records = 0;
    std::string error;  // why it could not be read, or not to its end; empty: it could

    // Nothing was found in it, though there is something.
    bool IsUseless() const { return records == 0 && (bytes != 0 || !error.empty()); }
};

// Reads the files and gives their calls to `sink`, which gets nothing any more when this returns. The result
// has a row for each path.
std::vector<FileReading> ReadLogs(const std::vector<std::string>& paths, const ReadingOptions& options,
                                  LogSink& sink);

// The day of a moment on this machine's calendar (days since 1970).
std::int64_t LocalDayOf(std::int64_t secondsUtc);

// A moment on the scale of UTC. `firstDay` as OnLogEnd tells it; without it a moment of that scale stays as
// it is.
Moment InUtc(const Moment& moment, std::optional<std::int64_t> firstDay = std::nullopt);

}  // namespace ckscribe
