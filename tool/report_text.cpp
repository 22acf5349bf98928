#include "tool/report_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <ctime>
#include <vector>

#include "tool/harmless_text.h"
#include "tool/report_remarks.h"
#include "tool/result_explanations.h"

namespace ckscribe {

namespace {

constexpr std::string_view kNothing = "–";

class ReportText {
public:
    ReportText(const Report& report, const ReportTextStyle& style) : report(report), style(style) {}

    std::string Whole() {
        AddSummary();
        AddRemarks();
        AddFunctions();
        AddErrors();
        AddUnfinished();
        AddSessions();
        AddSlots();
        AddKeys();
        AddRepetitions("Retries", "the same failing call in a row", report.retries);
        AddRepetitions("Polling", "the same question in a row", report.polling);
        AddPauses();
        AddFiles();
        return std::move(text);
    }

private:
    template <class... Arguments>
    void Add(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
        fmt::format_to(std::back_inserter(text), format, std::forward<Arguments>(arguments)...);
    }

    void AddTitle(std::string_view title) { Add("\n{}\n", style.palette.Name(title)); }

    // Adds a table. Its first column is left-aligned, the others are right-aligned.
    void AddTable(const std::vector<std::vector<std::string>>& rows) {
        std::vector<std::size_t> widths;
        for (const auto& row : rows) {
            widths.resize(std::max(widths.size(), row.size()));
            for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], Width(row[i]));
        }
        for (const auto& row : rows) {
            std::string line = "  ";
            for (std::size_t i = 0; i < row.size(); ++i) {
                const std::string blanks(widths[i] - Width(row[i]), ' ');
                if (i != 0) line += "  ";
                line += i == 0 ? row[i] + blanks : blanks + row[i];
            }
            line.erase(line.find_last_not_of(' ') + 1);
            text += line + "\n";
        }
    }

    // Counts characters, not bytes.
    static std::size_t Width(std::string_view cell) {
        return static_cast<std::size_t>(std::ranges::count_if(
            cell, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
    }

    std::string TimeText(const Moment& moment) const {
        const ReportTime time = TimeOf(moment);
        if (!time) return std::string(kNothing);
        const auto seconds = static_cast<std::time_t>(*time / kNanosecondsPerSecond);
        std::tm calendar{};
        if (style.isUtc) {
            gmtime_r(&seconds, &calendar);
        } else {
            localtime_r(&seconds, &calendar);
        }
        return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}{}", calendar.tm_year + 1900,
                           calendar.tm_mon + 1, calendar.tm_mday, calendar.tm_hour, calendar.tm_min,
                           calendar.tm_sec, style.isUtc ? " UTC" : "");
    }

    std::string PlaceText(const Place& place) const {
        if (place.line == 0) return "";
        const ReportPlace where = report.PlaceOf(place);
        return fmt::format("{}:{}", Harmless(where.file), where.line);
    }

    std::string SeenText(const Sighting& seen) const {
        const std::string place = PlaceText(seen.place);
        return fmt::format("{}{}{}", TimeText(seen.time), place.empty() ? "" : "  ", place);
    }

    static std::string Who(std::uint32_t process, const std::optional<std::int64_t>& thread) {
        return thread ? fmt::format("process {}, thread {}", process, *thread)
                      : fmt::format("process {}", process);
    }

    template <class Rows>
    std::size_t Shown(const Rows& rows) const {
        return std::min(style.top, rows.size());
    }

    void AddLeftOut(std::uint64_t all, std::size_t shown) {
        if (all > shown)
            Add("  {}\n", style.palette.Quiet(fmt::format("and {} more", WithCommas(all - shown))));
    }

    void AddSummary() {
        Add("{}\n", style.palette.Name("Calls"));
        Add("  {}, {}, {}\n", Counted(report.calls, "call", "calls"),
            Counted(report.errors, "error", "errors"),
            Counted(report.unfinished, "unfinished", "unfinished"));
        const std::string threads =
            report.threads ? Counted(*report.threads, "thread", "threads") : "threads not known";
        Add("  {}, {}\n", Counted(report.processes, "process", "processes"), threads);
        if (report.calls != 0) {
            Add("  from {} to {}", TimeText(report.first.time), TimeText(report.last.time));
            if (const auto rate = report.CallsPerSecond()) Add(", {:.1f} calls a second", *rate);
            Add("\n");
        }
        if (report.unreadable.value_or(0) != 0)
            Add("  {}\n", style.palette.Notable(Counted(*report.unreadable, "stretch cannot be read",
                                                        "stretches cannot be read")));
        if (report.hasText && report.calls != 0) {
            Add("  {}\n",
                style.palette.Quiet("Text logs hold no durations. The key Events of the section CkLog2 makes "
                                    "the library write them (docs/events.md)."));
        }
    }

    void AddRemarks() {
        if (report.remarks.empty()) return;
        AddTitle("What stands out");
        for (const Remark& remark : report.remarks) {
            Add("  {}\n    {}\n", Harmless(remark.sentence), style.palette.Quiet(Harmless(remark.command)));
        }
    }

    void AddFunctions() {
        if (report.functions.empty()) return;
        AddTitle("Functions");
        std::vector<std::vector<std::string>> rows = {
            {"function", "calls", "errors", "unfinished", "total", "p50", "p95", "p99", "max"}};
        for (std::size_t i = 0; i < Shown(report.functions); ++i) {
            const FunctionFigures& row = report.functions[i];
            const LatencyHistogram& durations = row.durations;
            const auto percentile = [&durations](double percent) {
                const auto value = durations.Percentile(percent);
                return value ? DurationText(*value) : std::string(kNothing);
            };
            const bool isThere = durations.Count() != 0;
            rows.push_back({Harmless(row.function), WithCommas(row.calls), WithCommas(row.errors),
                            WithCommas(row.unfinished),
                            isThere ? DurationText(durations.Total()) : std::string(kNothing), percentile(50),
                            percentile(95), percentile(99),
                            isThere ? DurationText(durations.Maximum()) : std::string(kNothing)});
        }
        AddTable(rows);
        AddLeftOut(report.functions.size(), Shown(report.functions));
    }

    void AddErrors() {
        std::vector<const ResultFigures*> errors;
        for (const ResultFigures& row : report.results) {
            if (row.result != "CKR_OK") errors.push_back(&row);
        }
        if (errors.empty()) return;
        std::ranges::stable_sort(errors, std::greater(), &ResultFigures::count);
        AddTitle("Errors");
        std::vector<std::string_view> explained;
        for (std::size_t i = 0; i < Shown(errors); ++i) {
            const ResultFigures& row = *errors[i];
            const std::string number =
                row.result == "CKR_UNKNOWN" && row.rv ? fmt::format(" 0x{:x}", *row.rv) : "";
            Add("  {}  {}  {}{}\n", WithCommas(row.count), Harmless(row.function),
                style.palette.Bad(Harmless(row.result)), number);
            Add("      first {}\n", SeenText(row.first));
            Add("      last  {}\n", SeenText(row.last));
            const ResultExplanation* const explanation = ExplanationOf(row.result);
            if (explanation == nullptr || std::ranges::find(explained, row.result) != explained.end())
                continue;
            explained.push_back(row.result);
            Add("      {}\n      {}\n", explanation->meaning, explanation->cause);
        }
        AddLeftOut(errors.size(), Shown(errors));
    }

    void AddCalls(const std::vector<ReportedCall>& calls, std::uint64_t all) {
        for (std::size_t i = 0; i < Shown(calls); ++i) {
            const ReportedCall& call = calls[i];
            const std::string session = call.session ? fmt::format(", session {}", *call.session) : "";
            Add("  {}  {}{}  {}\n", Harmless(call.function), Who(call.process, call.thread), session,
                SeenText(call.seen));
        }
        AddLeftOut(all, Shown(calls));
    }

    void AddUnfinished() {
        if (report.unfinished == 0) return;
        AddTitle("Calls without an end");
        AddCalls(report.unfinishedCalls, report.unfinished);
    }

    void AddSessions() {
        if (report.sessionsOpened == 0 && report.loginFailures.empty()) return;
        AddTitle("Sessions");
        Add("  {} opened, {} closed, {} never closed\n", WithCommas(report.sessionsOpened),
            WithCommas(report.sessionsClosed), WithCommas(report.openSessionCount));
        AddCalls(report.openSessions, report.openSessionCount);
        for (std::size_t i = 0; i < Shown(report.loginFailures); ++i) {
            const LoginFailure& row = report.loginFailures[i];
            const std::string user = row.user ? fmt::format(" as user {}", *row.user) : "";
            Add("  {} of process {}{} failed with {}\n", Counted(row.count, "login", "logins"), row.process,
                user, style.palette.Bad(Harmless(row.result)));
            Add("      first {}\n", SeenText(row.first));
            Add("      last  {}\n", SeenText(row.last));
        }
        AddLeftOut(report.loginFailures.size(), Shown(report.loginFailures));
    }

    void AddSlots() {
        if (report.slots.empty()) return;
        AddTitle("Slots");
        for (std::size_t i = 0; i < Shown(report.slots); ++i) {
            const SlotFigures& row = report.slots[i];
            Add("  slot {}  {}", row.slot, Counted(row.calls, "call", "calls"));
            if (!row.token.empty()) Add("  token {}", InQuotes(row.token));
            if (!row.serial.empty()) Add("  serial number {}", InQuotes(row.serial));
            Add("\n");
        }
        AddLeftOut(report.slots.size(), Shown(report.slots));
    }

    void AddKeys() {
        if (report.keys.empty()) return;
        AddTitle("Keys and other objects");
        for (std::size_t i = 0; i < Shown(report.keys); ++i) {
            const KeyFigures& row = report.keys[i];
            Add("  object {} of process {}", row.object, row.process);
            if (!row.label.empty()) Add("  {}", InQuotes(row.label));
            if (!row.id.empty()) Add("  ID {}", row.id);
            if (!row.objectClass.empty()) Add("  {}", row.objectClass);
            Add("  {}", Counted(row.operations, "operation", "operations"));
            std::string mechanisms;
            for (const auto& [mechanism, count] : row.mechanisms)
                mechanisms += fmt::format("{}{} {}", mechanisms.empty() ? "" : ", ", Harmless(mechanism),
                                          WithCommas(count));
            if (!mechanisms.empty()) Add(": {}", mechanisms);
            Add("\n");
        }
        AddLeftOut(report.keys.size(), Shown(report.keys));
    }

    void AddRepetitions(std::string_view title, std::string_view meaning,
                        const std::vector<Repetition>& rows) {
        if (rows.empty()) return;
        AddTitle(fmt::format("{} ({})", title, meaning));
        for (std::size_t i = 0; i < Shown(rows); ++i) {
            const Repetition& row = rows[i];
            Add("  {}  {}  {}; the longest row has {}: {}, {}\n", Harmless(row.function),
                Harmless(row.result), Counted(row.rows, "row", "rows"), Counted(row.longest, "call", "calls"),
                Who(row.process, row.thread), SeenText(row.seen));
        }
        AddLeftOut(rows.size(), Shown(rows));
    }

    void AddPauses() {
        if (report.pauses.Count() == 0) return;
        AddTitle("Time between the calls of a thread");
        Add("  p50 {}, p95 {}, p99 {}, max {}\n", DurationText(*report.pauses.Percentile(50)),
            DurationText(*report.pauses.Percentile(95)), DurationText(*report.pauses.Percentile(99)),
            DurationText(report.pauses.Maximum()));
    }

    void AddFiles() {
        for (std::size_t i = 0; i < report.paths.size(); ++i) {
            if (!report.files[i].error.empty())
                Add("\n{}: {}\n", Harmless(report.paths[i]), style.palette.Bad(report.files[i].error));
        }
    }

    const Report& report;
    const ReportTextStyle& style;
    std::string text;
};

}  // namespace

std::string ReportAsText(const Report& report, const ReportTextStyle& style) {
    return ReportText(report, style).Whole();
}

}  // namespace ckscribe
