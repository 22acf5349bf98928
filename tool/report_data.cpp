#include "tool/report_data.h"

#include <algorithm>
#include <functional>
#include <tuple>

#include "tool/log_figures.h"
#include "tool/report_remarks.h"

namespace ckscribe {

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

namespace {

// A LogDay is the day on which a log began, in days since 1970, if anything tells it.
using LogDay = std::optional<std::int64_t>;

void PutInUtc(Sighting& seen, LogDay firstDay) { seen.time = InUtc(seen.time, firstDay); }

}  // namespace

// Total adds the figures of logs. Each function adds one kind of them.
struct ReportBuilder::Total {
    Report report;
    std::vector<CallSums> functions;
    bool hasThreads = false;
    Repetitions retries;
    Repetitions polling;
    std::map<std::uint64_t, SlotUse> slots;

    void AddCounts(LogFigures& log) {
        report.calls += log.calls;
        report.unreadable = report.unreadable.value_or(0) + log.unreadable;
        report.processes += log.processes.size();
        report.hasEvents |= log.hasEvents;
        report.hasText |= log.hasText;
        report.sessionsOpened += log.sessions.Opened();
        report.sessionsClosed += log.sessions.Closed();
        report.openSessionCount += log.sessions.Open().size();
        report.pauses.Add(log.pauses);
        if (!log.hasThreads) return;
        hasThreads = true;
        report.threads = report.threads.value_or(0) + log.ThreadCount();
    }

    void AddTimes(const LogFigures& log, LogDay firstDay) {
        TimeSpan whole{report.first, report.last};
        for (TimeSpan span : log.spans) {
            if (!span.first.time.IsThere()) continue;
            PutInUtc(span.first, firstDay);
            PutInUtc(span.last, firstDay);
            whole.Take(span.first, span.last);
        }
        report.first = whole.first;
        report.last = whole.last;
    }

    void AddFunctions(LogFigures& log, LogDay firstDay) {
        if (log.functions.size() > functions.size()) functions.resize(log.functions.size());
        for (std::size_t i = 0; i < log.functions.size(); ++i) {
            CallSums& added = log.functions[i];
            CallSums& sums = functions[i];
            sums.calls += added.calls;
            sums.errors += added.errors;
            sums.unfinished += added.unfinished;
            sums.durations.Add(added.durations);
            report.errors += added.errors;
            report.unfinished += added.unfinished;
            for (ResultFigures& result : added.results.Rows()) AddResult(sums.results, result, firstDay);
        }
    }

    static void AddResult(ResultTable& results, ResultFigures& added, LogDay firstDay) {
        PutInUtc(added.first, firstDay);
        PutInUtc(added.last, firstDay);
        ResultFigures& row = results.RowOf(added.result, added.rv);
        if (row.count == 0) {
            row = added;
            return;
        }
        row.count += added.count;
        if (added.first.time.nanoseconds < row.first.time.nanoseconds) row.first = added.first;
        if (added.last.time.nanoseconds > row.last.time.nanoseconds) row.last = added.last;
    }

    void AddExamples(LogFigures& log, LogDay firstDay) {
        for (ReportedCall& call : log.unfinished) {
            PutInUtc(call.seen, firstDay);
            KeepRow(report.unfinishedCalls, call);
        }
        for (const UnreadableStretch& stretch : log.stretches) KeepRow(report.unreadableStretches, stretch);
        for (auto& [handle, session] : log.sessions.Open()) {
            PutInUtc(session.call.seen, firstDay);
            KeepRow(report.openSessions, session.call);
        }
        for (auto& [key, failure] : log.loginFailures) {
            PutInUtc(failure.first, firstDay);
            PutInUtc(failure.last, firstDay);
            report.loginFailures.push_back(failure);
        }
    }

    void AddSlots(const LogFigures& log) {
        for (const auto& [number, slot] : log.slots) {
            SlotUse& sum = slots[number];
            sum.calls += slot.calls;
            if (sum.token.empty()) sum.token = slot.token;
            if (sum.serial.empty()) sum.serial = slot.serial;
        }
    }

    void AddKeys(const LogFigures& log) {
        for (const auto& [handle, key] : std::map(log.keys.begin(), log.keys.end())) {
            if (key.operations == 0 && key.info.IsEmpty()) continue;
            report.keys.push_back({handle.process,
                                   handle.handle,
                                   key.info.label,
                                   key.info.id,
                                   key.info.objectClass,
                                   key.operations,
                                   {key.mechanisms.begin(), key.mechanisms.end()}});
        }
    }

    static void AddRepetitions(Repetitions& sum, const Repetitions& added, LogDay firstDay) {
        for (auto [key, row] : added) {
            PutInUtc(row.seen, firstDay);
            AddRepetition(sum, row);
        }
    }

    // Puts the figures of functions into the report.
    void FinishFunctions();
};

void ReportBuilder::Total::FinishFunctions() {
    for (std::size_t i = 0; i < functions.size(); ++i) {
        CallSums& sums = functions[i];
        if (sums.calls == 0) continue;
        report.functions.push_back({FunctionName(FunctionIndex(i)), sums.calls, sums.errors, sums.unfinished,
                                    std::move(sums.durations)});
        // Equally frequent results stand in the order of their first calls, whatever the order in which logs
        // are read.
        std::vector<ResultFigures>& results = sums.results.Rows();
        std::ranges::stable_sort(results, {}, [](const ResultFigures& row) {
            return std::tuple(-static_cast<std::int64_t>(row.count), row.first.time.nanoseconds);
        });
        report.results.insert(report.results.end(), results.begin(), results.end());
    }
    std::ranges::sort(report.functions, [](const FunctionFigures& one, const FunctionFigures& other) {
        return std::tuple(other.calls, one.function) < std::tuple(one.calls, other.function);
    });
    std::ranges::stable_sort(report.results, {}, &ResultFigures::function);
}

ReportBuilder::ReportBuilder() : total(std::make_unique<Total>()) {}
ReportBuilder::~ReportBuilder() = default;

void ReportBuilder::OnLogBegin(const std::vector<std::uint32_t>&) { log = std::make_unique<LogFigures>(); }

void ReportBuilder::OnCall(const Call& call) { log->Take(call); }

void ReportBuilder::OnUnreadable(const UnreadableStretch& stretch) { log->Take(stretch); }

void ReportBuilder::OnLogEnd(LogDay firstDay) {
    log->End();
    total->AddCounts(*log);
    total->AddTimes(*log, firstDay);
    total->AddFunctions(*log, firstDay);
    total->AddExamples(*log, firstDay);
    total->AddSlots(*log);
    total->AddKeys(*log);
    total->AddRepetitions(total->retries, log->retries, firstDay);
    total->AddRepetitions(total->polling, log->polling, firstDay);
    log.reset();
}

Report ReportBuilder::Finish(const std::vector<std::string>& paths, const std::vector<FileReading>& files) {
    total->FinishFunctions();
    Report report = std::move(total->report);
    report.paths = paths;
    report.files = files;
    if (!total->hasThreads && report.calls == 0) report.threads = 0;
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
