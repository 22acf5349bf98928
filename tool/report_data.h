// `ckscribe report` finds these numbers and short lists in logs. They stay small whatever the size of the
// logs. The text, the JSON and the page print them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "reader/latency_histogram.h"
#include "reader/log_reading.h"
#include "reader/recorded_functions.h"

namespace ckscribe {

// A ReportTime is a moment in nanoseconds since 1970 in UTC. It is absent where the log does not say it.
using ReportTime = std::optional<std::int64_t>;

// A ReportPlace names a line of a file.
struct ReportPlace {
    std::string file;
    std::uint64_t line = 0;
};

// A sighting says where and when a log shows something.
struct Sighting {
    Moment time;
    Place place;
};

struct FunctionFigures {
    std::string_view function;
    std::uint64_t calls = 0;
    std::uint64_t errors = 0;
    std::uint64_t unfinished = 0;
    LatencyHistogram durations;  // of the calls whose log tells them
};

struct ResultFigures {
    std::string_view function;
    std::string_view result;          // "CKR_UNKNOWN" for a number without a name
    std::optional<std::uint64_t> rv;  // absent where a text log names what this library does not know
    std::uint64_t count = 0;
    Sighting first;
    Sighting last;
};

// The report shows a ReportedCall by itself.
struct ReportedCall {
    std::string_view function;
    std::uint32_t process = 0;
    std::optional<std::int64_t> thread;
    std::optional<std::uint64_t> session;
    Sighting seen;
};

struct LoginFailure {
    std::string_view result;
    std::uint32_t process = 0;
    std::optional<std::uint64_t> user;
    std::uint64_t count = 0;
    Sighting first;
    Sighting last;
};

// These are the figures of a key or another object that operations used.
struct KeyFigures {
    std::uint32_t process = 0;
    std::uint64_t object = 0;
    std::string label;  // empty: the log does not reveal it
    std::string id;     // as hexadecimal digits
    std::string objectClass;
    std::uint64_t operations = 0;                     // that were begun with it
    std::map<std::string, std::uint64_t> mechanisms;  // and with which
};

struct SlotFigures {
    std::uint64_t slot = 0;
    std::uint64_t calls = 0;  // that name the slot
    std::string token;        // label; empty: the log does not reveal it
    std::string serial;
};

// A Repetition stands for successive calls of one thread that did the same: they failed alike, or asked for
// the same.
struct Repetition {
    std::string_view function;
    std::string_view result;
    std::uint64_t rows = 0;     // how often it happened
    std::uint64_t longest = 0;  // calls in the longest row
    std::uint64_t calls = 0;    // in all rows
    std::uint32_t process = 0;  // of the longest row
    std::optional<std::int64_t> thread;
    Sighting seen;  // where the longest row began
};

// A Remark is a sentence of "what stands out", with the command that shows its evidence.
struct Remark {
    std::string sentence;
    std::string command;
};

struct Report {
    std::vector<std::string> paths;
    std::vector<FileReading> files;  // one for each path
    // A report from an engine has no files: its queries read calls from this ("calls FINAL WHERE ...").
    std::string source;

    std::uint64_t calls = 0;
    std::uint64_t errors = 0;
    std::uint64_t unfinished = 0;
    std::optional<std::uint64_t> unreadable = 0;  // absent where an engine has the calls
    std::uint64_t processes = 0;
    std::optional<std::uint64_t> threads;  // absent for logs of the old format only
    bool hasEvents = false;                // some log tells durations
    bool hasText = false;                  // some log does not
    Sighting first;
    Sighting last;

    std::vector<FunctionFigures> functions;              // most calls first
    std::vector<ResultFigures> results;                  // by function, most frequent first
    std::vector<ReportedCall> unfinishedCalls;           // the first of them
    std::vector<UnreadableStretch> unreadableStretches;  // the first of them
    std::uint64_t sessionsOpened = 0;
    std::uint64_t sessionsClosed = 0;
    std::vector<ReportedCall> openSessions;  // the first that were never closed
    std::uint64_t openSessionCount = 0;
    std::vector<LoginFailure> loginFailures;
    std::vector<SlotFigures> slots;
    std::vector<KeyFigures> keys;     // most operations first
    std::vector<Repetition> retries;  // of failing calls, the longest row first
    std::vector<Repetition> polling;  // of calls that only ask
    LatencyHistogram pauses;          // between the end of a thread's call and its next one; events only
    std::vector<Remark> remarks;

    // Returns the place of a sighting.
    ReportPlace PlaceOf(const Place& place) const { return {paths.at(place.file), place.line}; }
    // Returns the calls per second over the whole span, or nothing if the span is shorter than a second.
    std::optional<double> CallsPerSecond() const;
};

ReportTime TimeOf(const Moment& moment);

class LogFigures;

// Makes a report from the calls of logs that it takes one after the other.
class ReportBuilder : public LogSink {
public:
    ReportBuilder();
    ~ReportBuilder() override;

    void OnLogBegin(const std::vector<std::uint32_t>& files) override;
    void OnCall(const Call& call) override;
    void OnUnreadable(const UnreadableStretch& stretch) override;
    void OnLogEnd(std::optional<std::int64_t> firstDay) override;

    // Returns the report of all calls that it has taken. `paths` went to ReadLogs, and `files` is its result.
    Report Finish(const std::vector<std::string>& paths, const std::vector<FileReading>& files);

private:
    struct Total;

    std::unique_ptr<LogFigures> log;
    std::unique_ptr<Total> total;
};

}  // namespace ckscribe
