#include "tool/report_json.h"

#include <fmt/format.h>

#include <algorithm>
#include <ctime>
#include <nlohmann/json.hpp>

#include "tool/result_explanations.h"

namespace ckscribe {

namespace {

using Json = nlohmann::ordered_json;

template <class Number>
Json Optional(const std::optional<Number>& number) {
    return number ? Json(*number) : Json(nullptr);
}

Json Text(std::string_view text) { return text.empty() ? Json(nullptr) : Json(std::string(text)); }

Json Time(const Moment& moment) {
    const ReportTime time = TimeOf(moment);
    return time ? Json(IsoTime(*time)) : Json(nullptr);
}

void SetSighting(Json& json, const std::string& prefix, const Sighting& seen, const Report& report) {
    json[prefix + "time"] = Time(seen.time);
    if (seen.place.line == 0) return;
    const ReportPlace place = report.PlaceOf(seen.place);
    json[prefix + "file"] = place.file;
    json[prefix + "line"] = place.line;
}

Json CallRow(const ReportedCall& call, const Report& report) {
    Json json = {{"function", std::string(call.function)},
                 {"process", call.process},
                 {"thread", Optional(call.thread)}};
    json["session"] = Optional(call.session);
    SetSighting(json, "", call.seen, report);
    return json;
}

Json Durations(const LatencyHistogram& durations) {
    Json json;
    const bool isThere = durations.Count() != 0;
    json["total_ns"] = isThere ? Json(durations.Total()) : Json(nullptr);
    json["p50_ns"] = Optional(durations.Percentile(50));
    json["p95_ns"] = Optional(durations.Percentile(95));
    json["p99_ns"] = Optional(durations.Percentile(99));
    json["max_ns"] = isThere ? Json(durations.Maximum()) : Json(nullptr);
    return json;
}

// Returns the first `top` rows.
template <class Rows, class ToJson>
Json List(const Rows& rows, std::size_t top, const ToJson& toJson) {
    Json list = Json::array();
    for (std::size_t i = 0; i < std::min(top, rows.size()); ++i) list.push_back(toJson(rows[i]));
    return list;
}

Json Repetitions(const std::vector<Repetition>& rows, std::size_t top, const Report& report) {
    return List(rows, top, [&report](const Repetition& row) {
        Json json = {{"function", std::string(row.function)},
                     {"result", std::string(row.result)},
                     {"rows", row.rows},
                     {"longest", row.longest},
                     {"calls", row.calls},
                     {"process", row.process},
                     {"thread", Optional(row.thread)}};
        SetSighting(json, "", row.seen, report);
        return json;
    });
}

}  // namespace

std::string IsoTime(std::int64_t nanosecondsUtc) {
    std::int64_t seconds = nanosecondsUtc / kNanosecondsPerSecond;
    std::int64_t rest = nanosecondsUtc % kNanosecondsPerSecond;
    if (rest < 0) {
        rest += kNanosecondsPerSecond;
        --seconds;
    }
    const auto time = static_cast<std::time_t>(seconds);
    std::tm utc{};
    gmtime_r(&time, &utc);
    std::string text = fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", utc.tm_year + 1900, utc.tm_mon + 1,
                                   utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec);
    if (rest != 0) text += fmt::format(".{:09}", rest);
    return text + "Z";
}

std::string ReportAsJson(const Report& report, std::size_t top) {
    Json json;
    json["calls"] = report.calls;
    json["errors"] = report.errors;
    json["unfinished"] = report.unfinished;
    json["unreadable"] = Optional(report.unreadable);
    json["processes"] = report.processes;
    json["threads"] = Optional(report.threads);
    json["first_time"] = Time(report.first.time);
    json["last_time"] = Time(report.last.time);
    json["calls_per_second"] = Optional(report.CallsPerSecond());

    json["functions"] = List(report.functions, report.functions.size(), [](const FunctionFigures& row) {
        Json function = {{"function", std::string(row.function)},
                         {"calls", row.calls},
                         {"errors", row.errors},
                         {"unfinished", row.unfinished}};
        function.update(Durations(row.durations));
        return function;
    });
    json["results"] = List(report.results, report.results.size(), [&report](const ResultFigures& row) {
        Json result = {{"function", std::string(row.function)},
                       {"result", std::string(row.result)},
                       {"rv", Optional(row.rv)},
                       {"count", row.count}};
        SetSighting(result, "first_", row.first, report);
        SetSighting(result, "last_", row.last, report);
        return result;
    });

    Json explanations = Json::object();
    for (const ResultFigures& row : report.results) {
        if (row.result == "CKR_OK" || explanations.contains(row.result)) continue;
        if (const ResultExplanation* const text = ExplanationOf(row.result))
            explanations[std::string(row.result)] = {{"meaning", std::string(text->meaning)},
                                                     {"cause", std::string(text->cause)}};
    }
    json["explanations"] = std::move(explanations);

    json["remarks"] = List(report.remarks, report.remarks.size(), [](const Remark& remark) {
        return Json{{"sentence", remark.sentence}, {"command", remark.command}};
    });
    json["unfinished_calls"] = List(report.unfinishedCalls, top,
                                    [&report](const ReportedCall& call) { return CallRow(call, report); });
    json["sessions"] = {{"opened", report.sessionsOpened},
                        {"closed", report.sessionsClosed},
                        {"never_closed", report.openSessionCount}};
    json["open_sessions"] =
        List(report.openSessions, top, [&report](const ReportedCall& call) { return CallRow(call, report); });
    json["failed_logins"] = List(report.loginFailures, top, [&report](const LoginFailure& row) {
        Json failure = {{"result", std::string(row.result)},
                        {"process", row.process},
                        {"user", Optional(row.user)},
                        {"count", row.count}};
        SetSighting(failure, "first_", row.first, report);
        SetSighting(failure, "last_", row.last, report);
        return failure;
    });
    json["slots"] = List(report.slots, report.slots.size(), [](const SlotFigures& row) {
        return Json{{"slot", row.slot},
                    {"calls", row.calls},
                    {"token", Text(row.token)},
                    {"serial", Text(row.serial)}};
    });
    json["keys"] = List(report.keys, top, [](const KeyFigures& row) {
        Json key = {{"process", row.process},         {"object", row.object},
                    {"label", Text(row.label)},       {"id", Text(row.id)},
                    {"class", Text(row.objectClass)}, {"operations", row.operations}};
        key["mechanisms"] = Json(row.mechanisms);
        return key;
    });
    json["retries"] = Repetitions(report.retries, top, report);
    json["polling"] = Repetitions(report.polling, top, report);
    json["pauses"] = Durations(report.pauses);
    json["pauses"]["count"] = report.pauses.Count();
    json["unreadable_stretches"] =
        List(report.unreadableStretches, top, [&report](const UnreadableStretch& stretch) {
            const ReportPlace place = report.PlaceOf(stretch.place);
            return Json{{"file", place.file}, {"line", place.line}, {"lines", stretch.lines}};
        });
    json["files"] = Json::array();
    for (std::size_t i = 0; i < report.paths.size(); ++i) {
        const FileReading& file = report.files[i];
        json["files"].push_back({{"file", report.paths[i]},
                                 {"bytes", file.bytes},
                                 {"records", file.records},
                                 {"error", Text(file.error)}});
    }
    // A log may hold names that are not UTF-8.
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace ckscribe
