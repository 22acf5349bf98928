// LogFigures counts the calls of one log. A report adds the figures of several logs.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tool/call_roles.h"
#include "tool/open_sessions.h"
#include "tool/report_data.h"

namespace ckscribe {

// A report keeps at most this many examples of each kind.
inline constexpr std::size_t kMostExamples = 1000;

template <class Row>
void KeepRow(std::vector<Row>& rows, const Row& row) {
    if (rows.size() < kMostExamples) rows.push_back(row);
}

// A ResultTable counts the results of a function. It tells numbers without a name apart; a target may give
// another one each time.
class ResultTable {
public:
    // Returns the row of that result, which has no calls if it is new.
    ResultFigures& RowOf(std::string_view result, const std::optional<std::uint64_t>& rv);

    std::vector<ResultFigures>& Rows() { return rows; }

private:
    std::vector<ResultFigures> rows;
    std::map<std::pair<std::string_view, std::uint64_t>, std::size_t> places;
    std::size_t last = 0;  // of `rows`
};

// CallSums are the figures of one function.
struct CallSums {
    CallRole role = CallRole::kOther;
    bool isAsking = false;
    bool isGenerating = false;
    std::uint64_t calls = 0;
    std::uint64_t errors = 0;
    std::uint64_t unfinished = 0;
    LatencyHistogram durations;
    ResultTable results;
};

// Two processes may have the same handle for different things.
struct HandleOfProcess {
    std::uint32_t process = 0;
    std::uint64_t handle = 0;
    friend auto operator<=>(const HandleOfProcess&, const HandleOfProcess&) = default;
};
struct HashOfHandle {
    std::size_t operator()(const HandleOfProcess& handle) const {
        return (handle.process * 0x9e3779b97f4a7c15U ^ handle.handle) * 0xff51afd7ed558ccdU;
    }
};

// A KeyUse says what the log tells of a key, and counts its operations.
struct KeyUse {
    ObjectInfo info;
    std::uint64_t operations = 0;
    std::vector<std::pair<std::string, std::uint64_t>> mechanisms;

    void Count(std::string_view mechanism);
};

// A TimeSpan reaches from the first to the last moment that it has taken.
struct TimeSpan {
    Sighting first;
    Sighting last;

    void Take(const Sighting& began, const Sighting& ended) {
        if (!first.time.IsThere() || began.time.nanoseconds < first.time.nanoseconds) first = began;
        if (!last.time.IsThere() || ended.time.nanoseconds > last.time.nanoseconds) last = ended;
    }
};

struct SlotUse {
    std::uint64_t calls = 0;
    std::string token;
    std::string serial;
};

// The index is a function and a result.
using Repetitions = std::map<std::pair<std::string_view, std::string_view>, Repetition>;

void AddRepetition(Repetitions& all, const Repetition& row);

// One thread at a time uses an object.
class LogFigures {
public:
    void Take(const Call& call);
    void Take(const UnreadableStretch& stretch);

    // Ends the rows of like calls that are still in progress. Call this after the last call of the log.
    void End();

    std::uint64_t ThreadCount() const;

    std::vector<CallSums> functions;  // the index is a FunctionIndex
    std::set<std::uint32_t> processes;
    bool hasThreads = false;
    bool hasEvents = false;
    bool hasText = false;
    std::uint64_t calls = 0;
    std::uint64_t unreadable = 0;
    // The index is a TimeScale: moments of a text log and of an event cannot be compared before the log's
    // days are known.
    std::array<TimeSpan, 4> spans;
    std::vector<ReportedCall> unfinished;
    std::vector<UnreadableStretch> stretches;
    OpenSessions sessions;
    std::map<std::tuple<std::string_view, std::uint32_t, std::uint64_t>, LoginFailure> loginFailures;
    std::map<std::uint64_t, SlotUse> slots;
    std::unordered_map<HandleOfProcess, KeyUse, HashOfHandle> keys;
    Repetitions retries;
    Repetitions polling;
    LatencyHistogram pauses;

private:
    struct ThreadKey {
        std::uint32_t process = 0;
        std::int64_t thread = 0;
        friend bool operator==(const ThreadKey&, const ThreadKey&) = default;
    };
    struct HashOfThread {
        std::size_t operator()(const ThreadKey& key) const {
            return (key.process * 0x9e3779b97f4a7c15U ^ static_cast<std::size_t>(key.thread)) *
                   0xff51afd7ed558ccdU;
        }
    };
    // A CallingThread remembers the latest calls of a thread.
    struct CallingThread {
        std::int64_t lastEnd = 0;  // of events; 0: none
        // The row of like calls in progress.
        FunctionIndex function{};
        std::string_view result;
        bool isFailure = false;
        Question question;  // of a function that only asks
        std::uint64_t length = 0;
        Sighting begin;
        std::uint32_t process = 0;
        std::optional<std::int64_t> thread;
    };

    CallSums& SumsOf(FunctionIndex function);
    void AddFunctions();
    CallingThread& ThreadOf(const Call& call);
    static void TakeResult(CallSums& sums, const Call& call);
    // Takes the call into the rows of like calls and into the pauses between calls.
    void TakeOrder(const CallSums& sums, CallingThread& thread, const Call& call);
    void EndRow(CallingThread& thread);
    void TakeRole(CallRole role, const Call& call);
    void TakeLoginFailure(const Call& call);
    void TakeToken(std::uint64_t number, const Call& call);
    void TakeFields(const CallSums& sums, const Call& call);

    std::unordered_map<ThreadKey, CallingThread, HashOfThread> threads;
    ThreadKey lastKey;
    CallingThread* lastThread = nullptr;
    std::map<HandleOfProcess, ObjectInfo> searches;  // by session
};

}  // namespace ckscribe
