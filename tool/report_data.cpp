#include "tool/report_data.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <tuple>
#include <unordered_map>

#include "tool/call_roles.h"
#include "tool/open_sessions.h"
#include "tool/report_remarks.h"

namespace ckscribe {

namespace {

// The report keeps at most so many examples of each kind.
constexpr std::size_t kMostExamples = 1000;
// A row of so many like calls is no accident any more.
constexpr std::uint64_t kShortestRetry = 2;
constexpr std::uint64_t kShortestPolling = 10;

// The mechanism of these functions makes a key and needs none.
constexpr std::string_view kGenerating[] = {"C_GenerateKey", "C_GenerateKeyPair"};

// Names of results are nearly always the same texts in memory.
bool IsSameName(std::string_view one, std::string_view other) {
    return (one.data() == other.data() && one.size() == other.size()) || one == other;
}

// The results of a function. Numbers without a name are told apart; a target may give another one each time.
class ResultTable {
public:
    // The row of that result, which has no calls if it is new.
    ResultFigures& RowOf(std::string_view result, const std::optional<std::uint64_t>& rv) {
        if (last < rows.size() && IsOf(rows[last], result, rv)) return rows[last];
        const auto [place, isNew] = places.try_emplace({result, NumberIn(result, rv)}, rows.size());
        last = place->second;
        if (isNew) rows.push_back({{}, result, rv, 0, {}, {}});
        return rows[last];
    }

    std::vector<ResultFigures>& Rows() { return rows; }

private:
    static std::uint64_t NumberIn(std::string_view result, const std::optional<std::uint64_t>& rv) {
        return result == "CKR_UNKNOWN" ? rv.value_or(0) : 0;
    }
    static bool IsOf(const ResultFigures& row, std::string_view result,
                     const std::optional<std::uint64_t>& rv) {
        return IsSameName(row.result, result) && (row.rv == rv || result != "CKR_UNKNOWN");
    }

    std::vector<ResultFigures> rows;
    std::map<std::pair<std::string_view, std::uint64_t>, std::size_t> places;
    std::size_t last = 0;  // of `rows`
};

struct Figures {
    CallRole role = CallRole::kOther;
    bool isAsking = false;
    bool isGenerating = false;
    std::uint64_t calls = 0;
    std::uint64_t errors = 0;
    std::uint64_t unfinished = 0;
    LatencyHistogram durations;
    ResultTable results;
};

struct Handle {
    std::uint32_t process = 0;
    std::uint64_t handle = 0;
    friend auto operator<=>(const Handle&, const Handle&) = default;
};
struct HashOfHandle {
    std::size_t operator()(const Handle& handle) const {
        return (handle.process * 0x9e3779b97f4a7c15U ^ handle.handle) * 0xff51afd7ed558ccdU;
    }
};

struct Key {
    ObjectInfo info;
    std::uint64_t operations = 0;
    std::vector<std::pair<std::string, std::uint64_t>> mechanisms;

    void Count(std::string_view mechanism) {
        ++operations;
        for (auto& [name, count] : mechanisms) {
            if (name != mechanism) continue;
            ++count;
            return;
        }
        mechanisms.emplace_back(mechanism, 1);
    }
};

struct Span {
    Sighting first;
    Sighting last;

    void Take(const Sighting& began, const Sighting& ended) {
        if (!first.time.IsThere() || began.time.nanoseconds < first.time.nanoseconds) first = began;
        if (!last.time.IsThere() || ended.time.nanoseconds > last.time.nanoseconds) last = ended;
    }
};

struct Slot {
    std::uint64_t calls = 0;
    std::string token;
    std::string serial;
};

void FillInfo(ObjectInfo& info, const ObjectInfo& other) {
    if (info.label.empty()) info.label = other.label;
    if (info.id.empty()) info.id = other.id;
    if (info.objectClass.empty()) info.objectClass = other.objectClass;
}

ReportedCall Reported(const Call& call) {
    return {
        call.Function(), call.process, call.thread, call.fields.session, {call.Time(), call.FirstPlace()}};
}

template <class Row>
void KeepRow(std::vector<Row>& rows, const Row& row) {
    if (rows.size() < kMostExamples) rows.push_back(row);
}

using RepetitionKey = std::pair<std::string_view, std::string_view>;
using Repetitions = std::map<RepetitionKey, Repetition>;

void AddRepetition(Repetitions& all, const Repetition& row) {
    Repetition& sum = all[{row.function, row.result}];
    const std::uint64_t rows = sum.rows + row.rows;
    const std::uint64_t calls = sum.calls + row.calls;
    // If rows are equally long, the one that began first counts, whatever the order of the threads.
    const auto rank = [](const Repetition& one) {
        return std::tuple(-static_cast<std::int64_t>(one.longest), one.seen.time.nanoseconds, one.process,
                          one.thread);
    };
    if (sum.rows == 0 || rank(row) < rank(sum)) sum = row;
    sum.rows = rows;
    sum.calls = calls;
}

}  // namespace

ReportTime TimeOf(const Moment& moment) {
    if (moment.scale != TimeScale::kUtc) return std::nullopt;
    return moment.nanoseconds;
}

std::optional<double> Report::CallsPerSecond() const {
    const ReportTime from = TimeOf(first.time);
    const ReportTime to = TimeOf(last.time);
    if (!from || !to || *to - *from < kNanosecondsPerSecond) return std::nullopt;
    return static_cast<double>(calls) * kNanosecondsPerSecond / static_cast<double>(*to - *from);
}

// The figures of one thread of a log.
struct ReportBuilder::OfThread {
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

struct ReportBuilder::OfLog {
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

    std::vector<Figures> functions;
    std::unordered_map<ThreadKey, OfThread, HashOfThread> threads;
    ThreadKey lastKey;
    OfThread* lastThread = nullptr;
    std::set<std::uint32_t> processes;
    std::uint64_t threadCount = 0;
    bool hasThreads = false;
    bool hasOldText = false;
    bool hasEvents = false;
    bool hasText = false;
    std::uint64_t calls = 0;
    std::uint64_t unreadable = 0;
    // By TimeScale: moments of a text log and of an event cannot be compared before the log's days are known.
    std::array<Span, 4> spans;
    std::vector<ReportedCall> unfinished;
    std::vector<UnreadableStretch> stretches;
    OpenSessions sessions;
    std::map<std::tuple<std::string_view, std::uint32_t, std::uint64_t>, LoginFailure> loginFailures;
    std::map<std::uint64_t, Slot> slots;
    std::unordered_map<Handle, Key, HashOfHandle> keys;
    std::map<Handle, ObjectInfo> searches;  // by session
    Repetitions retries;
    Repetitions polling;
    LatencyHistogram pauses;

    Figures& FiguresOf(FunctionIndex function) {
        if (IndexOf(function) >= functions.size()) AddFunctions();
        return functions[IndexOf(function)];
    }

    void AddFunctions() {
        const std::size_t known = functions.size();
        functions.resize(FunctionCount());
        for (std::size_t i = known; i < functions.size(); ++i) {
            const std::string_view name = FunctionName(FunctionIndex(i));
            functions[i].role = RoleOf(name);
            functions[i].isAsking = IsAsking(name);
            functions[i].isGenerating = std::ranges::find(kGenerating, name) != std::end(kGenerating);
        }
    }

    OfThread& ThreadOf(const Call& call) {
        const ThreadKey key{call.process, call.thread.value_or(0)};
        if (lastThread != nullptr && key == lastKey) return *lastThread;
        const auto [found, isNew] = threads.try_emplace(key);
        if (isNew) {
            processes.insert(call.process);
            found->second.process = call.process;
            found->second.thread = call.thread;
        }
        lastKey = key;
        lastThread = &found->second;
        return *lastThread;
    }

    void TakeResult(Figures& figures, const Call& call) {
        const Sighting seen{call.Time(), call.FirstPlace()};
        ResultFigures& row = figures.results.RowOf(call.result, call.rv);
        if (row.count++ == 0) {
            row.function = call.Function();
            row.first = seen;
        }
        row.last = seen;
    }

    // Takes the call into the rows of like calls and into the pauses between calls.
    void TakeOrder(const Figures& figures, OfThread& thread, const Call& call) {
        if (call.IsUnfinished()) return;
        Question question = figures.isAsking ? QuestionOf(call) : Question();
        if (thread.length != 0 && thread.function == call.function &&
            IsSameName(thread.result, call.result) && thread.question == question) {
            ++thread.length;
        } else {
            EndRow(thread);
            const bool isNews = call.IsError() && !(figures.isAsking && call.result == "CKR_NO_EVENT");
            thread.function = call.function;
            thread.result = call.result;
            thread.isFailure = isNews;
            thread.question = std::move(question);
            thread.length = figures.isAsking || isNews ? 1 : 0;
            thread.begin = {call.Time(), call.FirstPlace()};
        }
        if (!call.start.IsPrecise() || !call.nanoseconds) return;
        if (thread.lastEnd != 0 && call.start.nanoseconds > thread.lastEnd)
            pauses.Add(static_cast<std::uint64_t>(call.start.nanoseconds - thread.lastEnd));
        thread.lastEnd = call.end.nanoseconds;
    }

    void EndRow(OfThread& thread) {
        if (thread.length < (thread.isFailure ? kShortestRetry : kShortestPolling)) return;
        AddRepetition(thread.isFailure ? retries : polling,
                      {FunctionName(thread.function), thread.result, 1, thread.length, thread.length,
                       thread.process, thread.thread, thread.begin});
        thread.length = 0;
    }

    void TakeRole(CallRole role, const Call& call) {
        const bool isOk = call.hasEnd && call.IsOk();
        const Handle session{call.process, call.fields.session.value_or(0)};
        switch (role) {
            case CallRole::kOther:
                return;
            case CallRole::kOpenSession:
            case CallRole::kCloseSession:
            case CallRole::kCloseAllSessions:
            case CallRole::kFinalize:
                if (isOk) sessions.Take(role, call.fields.slot, Reported(call));
                return;
            case CallRole::kLogin:
                if (call.IsError()) TakeLoginFailure(call);
                return;
            case CallRole::kBeginSearch:
                searches[session] = InfoIn(call.In());
                return;
            case CallRole::kSearch: {
                const auto search = searches.find(session);
                if (search == searches.end() || search->second.IsEmpty()) return;
                for (const ToldObject& found : ObjectsToldBy(role, call))
                    FillInfo(keys[{call.process, found.handle}].info, search->second);
                return;
            }
            case CallRole::kEndSearch:
                searches.erase(session);
                return;
            case CallRole::kMakeObject:
            case CallRole::kMakeKeyPair:
                // The handle may have belonged to another object before.
                for (ToldObject& made : ObjectsToldBy(role, call))
                    keys[{call.process, made.handle}].info = std::move(made.info);
                return;
            case CallRole::kReadAttributes:
                for (const ToldObject& read : ObjectsToldBy(role, call)) {
                    if (!read.info.IsEmpty()) FillInfo(keys[{call.process, read.handle}].info, read.info);
                }
                return;
            case CallRole::kTokenInfo:
                if (isOk && call.fields.slot) TakeToken(*call.fields.slot, call);
                return;
        }
    }

    void TakeLoginFailure(const Call& call) {
        const Sighting seen{call.Time(), call.FirstPlace()};
        const std::uint64_t user = call.fields.user.value_or(~std::uint64_t{0});
        LoginFailure& failure = loginFailures[{call.result, call.process, user}];
        if (failure.count++ == 0) failure = {call.result, call.process, call.fields.user, 1, seen, seen};
        failure.last = seen;
    }

    void TakeToken(std::uint64_t number, const Call& call) {
        Slot& slot = slots[number];
        if (!slot.token.empty() || !slot.serial.empty()) return;
        ToldToken token = TokenToldBy(call);
        slot.token = std::move(token.label);
        slot.serial = std::move(token.serial);
    }

    void TakeFields(const Figures& figures, const Call& call) {
        if (call.fields.slot) ++slots[*call.fields.slot].calls;
        // A call that makes an object does not use it.
        if (!figures.isGenerating && call.fields.object && !call.fields.mechanism.empty() &&
            !call.IsError()) {
            keys[{call.process, *call.fields.object}].Count(call.fields.mechanism);
        }
    }
};

// The figures of all logs.
struct ReportBuilder::Total {
    Report report;
    std::vector<Figures> functions;
    bool hasThreads = false;
    Repetitions retries;
    Repetitions polling;
    std::map<std::uint64_t, Slot> slots;
};

ReportBuilder::ReportBuilder() : total(std::make_unique<Total>()) {}
ReportBuilder::~ReportBuilder() = default;

void ReportBuilder::OnLogBegin(const std::vector<std::uint32_t>&) { log = std::make_unique<OfLog>(); }

void ReportBuilder::OnCall(const Call& call) {
    OfLog& of = *log;
    Figures& figures = of.FiguresOf(call.function);
    OfThread& thread = of.ThreadOf(call);
    ++of.calls;
    ++figures.calls;
    if (call.format == LogFormat::kEvents && !call.run.empty()) {
        of.hasEvents = true;
    } else {
        of.hasText = true;
    }
    of.hasThreads |= call.thread.has_value();
    const Sighting began{call.Time(), call.FirstPlace()};
    of.spans[static_cast<std::size_t>(began.time.scale)].Take(
        began, call.hasEnd ? Sighting{call.end, call.endPlace} : began);
    if (call.hasEnd) {
        if (call.IsError()) ++figures.errors;
        if (call.nanoseconds) figures.durations.Add(*call.nanoseconds);
        of.TakeResult(figures, call);
    } else {
        ++figures.unfinished;
        KeepRow(of.unfinished, Reported(call));
    }
    of.TakeOrder(figures, thread, call);
    of.TakeFields(figures, call);
    of.TakeRole(figures.role, call);
}

void ReportBuilder::OnUnreadable(const UnreadableStretch& stretch) {
    ++log->unreadable;
    KeepRow(log->stretches, stretch);
}

void ReportBuilder::OnLogEnd(std::optional<std::int64_t> firstDay) {
    OfLog& of = *log;
    Report& report = total->report;
    for (auto& [key, thread] : of.threads) of.EndRow(thread);
    const auto fix = [firstDay](Sighting& seen) { seen.time = InUtc(seen.time, firstDay); };

    report.calls += of.calls;
    report.unreadable = report.unreadable.value_or(0) + of.unreadable;
    report.processes += of.processes.size();
    if (of.hasThreads) {
        total->hasThreads = true;
        const auto hasNumber = [](const auto& thread) { return thread.second.thread.has_value(); };
        report.threads = report.threads.value_or(0) +
                         static_cast<std::uint64_t>(std::ranges::count_if(of.threads, hasNumber));
    }
    report.hasEvents |= of.hasEvents;
    report.hasText |= of.hasText;
    Span whole{report.first, report.last};
    for (Span& span : of.spans) {
        if (!span.first.time.IsThere()) continue;
        fix(span.first);
        fix(span.last);
        whole.Take(span.first, span.last);
    }
    report.first = whole.first;
    report.last = whole.last;

    if (of.functions.size() > total->functions.size()) total->functions.resize(of.functions.size());
    for (std::size_t i = 0; i < of.functions.size(); ++i) {
        Figures& sum = total->functions[i];
        Figures& figures = of.functions[i];
        sum.calls += figures.calls;
        sum.errors += figures.errors;
        sum.unfinished += figures.unfinished;
        sum.durations.Add(figures.durations);
        report.errors += figures.errors;
        report.unfinished += figures.unfinished;
        for (ResultFigures& result : figures.results.Rows()) {
            fix(result.first);
            fix(result.last);
            ResultFigures& same = sum.results.RowOf(result.result, result.rv);
            if (same.count == 0) {
                same = result;
                continue;
            }
            same.count += result.count;
            if (result.first.time.nanoseconds < same.first.time.nanoseconds) same.first = result.first;
            if (result.last.time.nanoseconds > same.last.time.nanoseconds) same.last = result.last;
        }
    }
    for (ReportedCall& call : of.unfinished) {
        fix(call.seen);
        KeepRow(report.unfinishedCalls, call);
    }
    for (const UnreadableStretch& stretch : of.stretches) KeepRow(report.unreadableStretches, stretch);
    report.sessionsOpened += of.sessions.Opened();
    report.sessionsClosed += of.sessions.Closed();
    report.openSessionCount += of.sessions.Open().size();
    for (auto& [handle, session] : of.sessions.Open()) {
        fix(session.call.seen);
        KeepRow(report.openSessions, session.call);
    }
    for (auto& [key, failure] : of.loginFailures) {
        fix(failure.first);
        fix(failure.last);
        report.loginFailures.push_back(failure);
    }
    for (const auto& [number, slot] : of.slots) {
        Slot& sum = total->slots[number];
        sum.calls += slot.calls;
        if (sum.token.empty()) sum.token = slot.token;
        if (sum.serial.empty()) sum.serial = slot.serial;
    }
    for (const auto& [handle, key] : std::map(of.keys.begin(), of.keys.end())) {
        if (key.operations == 0 && key.info.IsEmpty()) continue;
        report.keys.push_back({handle.process,
                               handle.handle,
                               key.info.label,
                               key.info.id,
                               key.info.objectClass,
                               key.operations,
                               {key.mechanisms.begin(), key.mechanisms.end()}});
    }
    for (auto [key, row] : of.retries) {
        fix(row.seen);
        AddRepetition(total->retries, row);
    }
    for (auto [key, row] : of.polling) {
        fix(row.seen);
        AddRepetition(total->polling, row);
    }
    report.pauses.Add(of.pauses);
    log.reset();
}

Report ReportBuilder::Finish(const std::vector<std::string>& paths, const std::vector<FileReading>& files) {
    Report report = std::move(total->report);
    report.paths = paths;
    report.files = files;
    if (!total->hasThreads && report.calls == 0) report.threads = 0;
    for (std::size_t i = 0; i < total->functions.size(); ++i) {
        Figures& figures = total->functions[i];
        if (figures.calls == 0) continue;
        report.functions.push_back({FunctionName(FunctionIndex(i)), figures.calls, figures.errors,
                                    figures.unfinished, std::move(figures.durations)});
        // Equally frequent results stand in the order of their first calls, whatever the order in which logs
        // are read.
        std::vector<ResultFigures>& results = figures.results.Rows();
        std::ranges::stable_sort(results, {}, [](const ResultFigures& row) {
            return std::tuple(-static_cast<std::int64_t>(row.count), row.first.time.nanoseconds);
        });
        report.results.insert(report.results.end(), results.begin(), results.end());
    }
    std::ranges::sort(report.functions, [](const FunctionFigures& one, const FunctionFigures& other) {
        return std::tuple(other.calls, one.function) < std::tuple(one.calls, other.function);
    });
    std::ranges::stable_sort(report.results, {}, &ResultFigures::function);
    std::ranges::stable_sort(report.loginFailures, std::greater(), &LoginFailure::count);
    std::ranges::stable_sort(report.keys, std::greater(), &KeyFigures::operations);
    for (const auto& [number, slot] : total->slots)
        report.slots.push_back({number, slot.calls, slot.token, slot.serial});
    for (const auto& [key, row] : total->retries) report.retries.push_back(row);
    for (const auto& [key, row] : total->polling) report.polling.push_back(row);
    std::ranges::stable_sort(report.retries, std::greater(), &Repetition::longest);
    std::ranges::stable_sort(report.polling, std::greater(), &Repetition::longest);
    report.remarks = RemarksOn(report);
    return report;
}

}  // namespace ckscribe
