#include "tool/fleet/engine_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <tuple>

#include "reader/result_names.h"
#include "tool/fleet/engine_queries.h"
#include "tool/open_sessions.h"
#include "tool/report_remarks.h"

namespace ckscribe {

namespace {

using Json = nlohmann::json;

// A report keeps at most so many calls of a kind as examples.
constexpr std::size_t kMostExamples = 1000;

std::string Replaced(std::string text, std::string_view place, std::string_view value) {
    for (std::size_t at = text.find(place); at != text.npos; at = text.find(place, at + value.size()))
        text.replace(at, place.size(), value);
    return text;
}

template <class Number>
std::optional<Number> OptionalOf(const Json& value) {
    return value.is_null() ? std::nullopt : std::optional<Number>(value.get<Number>());
}

std::uint64_t Count(const Json& row, const char* key) { return row.at(key).get<std::uint64_t>(); }
std::string Text(const Json& row, const char* key) { return row.at(key).get<std::string>(); }

// These names live as long as the process.
std::string_view FunctionIn(const Json& row) { return FunctionName(FunctionOfName(Text(row, "function"))); }
std::string_view ResultIn(const Json& row) { return LastingResultName(Text(row, "result")); }

Sighting SeenAt(const Json& row, const char* key) {
    return {{row.at(key).get<std::int64_t>(), TimeScale::kUtc}, {}};
}

ReportedCall CallIn(const Json& row) {
    return {FunctionIn(row), row.at("pid").get<std::uint32_t>(), OptionalOf<std::int64_t>(row.at("tid")),
            OptionalOf<std::uint64_t>(row.at("session")), SeenAt(row, "time")};
}

void AddDistribution(LatencyHistogram& durations, const Json& row) {
    const Json& buckets = row.at("buckets");
    for (std::size_t i = 0; i < buckets.size(); ++i)
        durations.AddBucket(buckets[i].get<std::uint32_t>(), row.at("counts").at(i).get<std::uint64_t>());
    if (!buckets.empty()) durations.AddExact(Count(row, "total_ns"), Count(row, "max_ns"));
}

CallRole RoleNamed(std::string_view name) {
    for (const CallRole role : {CallRole::kOpenSession, CallRole::kCloseSession, CallRole::kCloseAllSessions,
                                CallRole::kFinalize}) {
        if (NameOf(role) == name) return role;
    }
    return CallRole::kOther;
}

class EngineReport {
public:
    EngineReport(Engine& engine, std::uint64_t since)
        : engine(engine), table(engine.Table()), since(fmt::format("{}", since)) {}

    Report Whole() {
        report.unreadable.reset();
        report.source = fmt::format("{} FINAL WHERE time >= {}", table, since);
        TakeTotals();
        TakeFunctions();
        TakeResults();
        ForEachRow(engine_queries::kUnfinished,
                   [this](const Json& row) { report.unfinishedCalls.push_back(CallIn(row)); });
        TakeSessions();
        TakeLogins();
        TakeSlots();
        TakeKeys();
        TakeRepetitions();
        ForEachRow(engine_queries::kPauses, [this](const Json& row) { AddDistribution(report.pauses, row); });
        report.remarks = RemarksOn(report);
        return std::move(report);
    }

private:
    // Gives the rows of an answer to `take`, one after the other.
    void ForEachRow(std::string_view query, const std::function<void(const Json&)>& take) {
        std::string text = Replaced(std::string(query), "{table:Identifier}", table);
        text = Replaced(text, "{since:UInt64}", since) + "\nFORMAT JSONEachRow";
        const std::string answer = engine.Ask(text);
        std::string_view rest = answer;
        try {
            while (!rest.empty()) {
                const std::string_view line = rest.substr(0, rest.find('\n'));
                rest.remove_prefix(std::min(line.size() + 1, rest.size()));
                if (!line.empty()) take(Json::parse(line));
            }
        } catch (const Json::exception&) {
            throw EngineError(
                "The server answers with rows that are none of the table of share/ckscribe/clickhouse.");
        }
    }

    void TakeTotals() {
        std::uint64_t threads = 0;
        ForEachRow(engine_queries::kTotals, [&](const Json& row) {
            const bool isFirst = report.calls == 0;
            report.calls += Count(row, "calls");
            report.errors += Count(row, "errors");
            report.unfinished += Count(row, "unfinished");
            report.processes += Count(row, "processes");
            threads += Count(row, "threads");
            const Sighting first = SeenAt(row, "first_time");
            const Sighting last = SeenAt(row, "last_time");
            if (isFirst || first.time.nanoseconds < report.first.time.nanoseconds) report.first = first;
            if (isFirst || last.time.nanoseconds > report.last.time.nanoseconds) report.last = last;
        });
        report.hasEvents = report.calls != 0;
        if (threads != 0 || report.calls == 0) report.threads = threads;
    }

    void TakeFunctions() {
        std::map<std::string_view, FunctionFigures> functions;
        ForEachRow(engine_queries::kLatency, [&](const Json& row) {
            FunctionFigures& figures = functions[FunctionIn(row)];
            figures.function = FunctionIn(row);
            figures.calls += Count(row, "calls");
            figures.errors += Count(row, "errors");
            figures.unfinished += Count(row, "unfinished");
            AddDistribution(figures.durations, row);
        });
        for (auto& [name, figures] : functions) report.functions.push_back(std::move(figures));
        std::ranges::stable_sort(report.functions, std::greater(), &FunctionFigures::calls);
    }

    void TakeResults() {
        ForEachRow(engine_queries::kErrors, [this](const Json& row) {
            report.results.push_back({FunctionIn(row), ResultIn(row), OptionalOf<std::uint64_t>(row.at("rv")),
                                      Count(row, "calls"), SeenAt(row, "first_time"),
                                      SeenAt(row, "last_time")});
        });
        std::ranges::stable_sort(report.results, {}, [](const ResultFigures& row) {
            return std::tuple(row.function, -static_cast<std::int64_t>(row.count),
                              row.first.time.nanoseconds);
        });
    }

    void TakeSessions() {
        std::optional<std::pair<std::string, std::string>> log;
        OpenSessions sessions;
        const auto endLog = [&] {
            report.sessionsOpened += sessions.Opened();
            report.sessionsClosed += sessions.Closed();
            report.openSessionCount += sessions.Open().size();
            for (const auto& [handle, session] : sessions.Open()) {
                if (report.openSessions.size() < kMostExamples) report.openSessions.push_back(session.call);
            }
            sessions = OpenSessions();
        };
        ForEachRow(engine_queries::kSessions, [&](const Json& row) {
            const std::pair of(Text(row, "host"), Text(row, "log"));
            if (log && *log != of) endLog();
            log = of;
            sessions.Take(RoleNamed(Text(row, "role")), OptionalOf<std::uint64_t>(row.at("slot")),
                          CallIn(row));
        });
        endLog();
    }

    void TakeLogins() {
        ForEachRow(engine_queries::kLogins, [this](const Json& row) {
            report.loginFailures.push_back({ResultIn(row), row.at("pid").get<std::uint32_t>(),
                                            OptionalOf<std::uint64_t>(row.at("user")), Count(row, "calls"),
                                            SeenAt(row, "first_time"), SeenAt(row, "last_time")});
        });
    }

    void TakeSlots() {
        ForEachRow(engine_queries::kSlots, [this](const Json& row) {
            const std::uint64_t number = Count(row, "slot");
            if (report.slots.empty() || report.slots.back().slot != number)
                report.slots.push_back({number, 0, "", ""});
            SlotFigures& slot = report.slots.back();
            slot.calls += Count(row, "calls");
            if (slot.token.empty()) slot.token = Text(row, "token_label");
            if (slot.serial.empty()) slot.serial = Text(row, "token_serial");
        });
    }

    void TakeKeys() {
        ForEachRow(engine_queries::kKeys, [this](const Json& row) {
            KeyFigures key{row.at("pid").get<std::uint32_t>(),
                           Count(row, "object"),
                           Text(row, "label"),
                           Text(row, "id"),
                           Text(row, "class"),
                           Count(row, "operations"),
                           {}};
            const Json& mechanisms = row.at("mechanisms");
            for (std::size_t i = 0; i < mechanisms.size(); ++i)
                key.mechanisms[mechanisms[i].get<std::string>()] =
                    row.at("counts").at(i).get<std::uint64_t>();
            report.keys.push_back(std::move(key));
        });
    }

    void TakeRepetitions() {
        ForEachRow(engine_queries::kRepetitions, [this](const Json& row) {
            std::vector<Repetition>& rows = Count(row, "fails") != 0 ? report.retries : report.polling;
            rows.push_back({FunctionIn(row), ResultIn(row), Count(row, "rows"), Count(row, "longest"),
                            Count(row, "calls"), row.at("pid").get<std::uint32_t>(),
                            OptionalOf<std::int64_t>(row.at("tid")), SeenAt(row, "time")});
        });
    }

    Engine& engine;
    const std::string_view table;
    const std::string since;
    Report report;
};

}  // namespace

Report ReportFromEngine(Engine& engine, std::uint64_t since) { return EngineReport(engine, since).Whole(); }

}  // namespace ckscribe
