// Reads whole logs: files of any kind, standard input, families of rotated files. A second thread reads the
// files and finds records. The caller's thread finds records, too, joins them to calls and gives these to the
// sink. Memory does not grow with the length of the logs.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "reader/call.h"

namespace ckscribe {

// Says how many bytes of all files were read, and how many there are.
struct ReadingProgress {
    std::uint64_t bytesRead = 0;
    std::uint64_t size = 0;  // 0: not known
};

struct ReadingOptions {
    // `date` is the date of each log's last record of the new format, in days since 1970. If it is absent,
    // ReadLogs takes the day on which the log's last file was written.
    std::optional<std::int64_t> date;
    // If `needsDates` is true, ReadLogs reads each log twice, and all moments that the sink gets have a date.
    // If it is false, moments of the new format count from the log's first day, and OnLogEnd gives the date
    // of that day.
    bool needsDates = false;
    // ReadLogs calls `onProgress` after each block, on the thread of the caller. It may be empty.
    std::function<void(const ReadingProgress&)> onProgress;
};

// The calls of one log come between OnLogBegin and OnLogEnd.
class LogSink : public CallSink {
public:
    // `files` holds the indexes of the log's files among the paths that were given, the oldest first.
    virtual void OnLogBegin(const std::vector<std::uint32_t>& /*files*/) {}
    // With ReadingOptions::needsDates, OnLogSurveyed follows OnLogBegin and says when the log's last record
    // was made, in UTC.
    virtual void OnLogSurveyed(const Moment& /*lastRecord*/) {}
    // `firstDay` is the date of the log's first record of the new format, in days since 1970. It is absent
    // without such records.
    virtual void OnLogEnd(std::optional<std::int64_t> /*firstDay*/) {}
};

struct FileReading {
    std::uint64_t bytes = 0;  // unpacked
    std::uint64_t records = 0;
    // `error` says why the file could not be read, or not to its end. It is empty if the file could be read.
    std::string error;

    // Returns whether the file gave no record, and is not empty or could not be read.
    bool IsUseless() const { return records == 0 && (bytes != 0 || !error.empty()); }
};

// Reads the files and gives their calls to `sink`, which gets nothing more after ReadLogs returns. The result
// has a row for each path.
std::vector<FileReading> ReadLogs(const std::vector<std::string>& paths, const ReadingOptions& options,
                                  LogSink& sink);

// Returns the day of a moment on this machine's calendar, in days since 1970.
std::int64_t LocalDayOf(std::int64_t secondsUtc);

// Converts a moment to UTC. `firstDay` is the date from OnLogEnd; without it a moment that counts from the
// log's first day stays unchanged.
Moment InUtc(const Moment& moment, std::optional<std::int64_t> firstDay = std::nullopt);

}  // namespace ckscribe
