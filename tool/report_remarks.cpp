#include "tool/report_remarks.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "tool/shell_text.h"

namespace ckscribe {

namespace {

constexpr std::size_t kMostRemarks = 10;
constexpr std::size_t kMostOfAKind = 3;
// A call stands out if it takes so many times as long as the median of its function, and at least so many
// nanoseconds.
constexpr std::uint64_t kMuchLonger = 100;
constexpr std::uint64_t kLong = 100'000'000;
constexpr std::uint64_t kManyRetries = 3;

// Evidence selects the calls that a remark is about.
struct Evidence {
    std::optional<std::uint32_t> process = std::nullopt;
    std::vector<std::string_view> functions = {};
    std::string_view result = {};
    bool isUnfinished = false;
    std::optional<std::uint64_t> slowerMilliseconds = std::nullopt;
};

// Returns the options with which `ckscribe show` shows the evidence.
std::string OptionsOf(const Evidence& evidence) {
    std::vector<std::string> options;
    if (evidence.isUnfinished) options.emplace_back("--unfinished");
    if (evidence.process) options.push_back(fmt::format("--process {}", *evidence.process));
    if (!evidence.functions.empty())
        options.push_back("--function " + ShellWord(fmt::format("{}", fmt::join(evidence.functions, ","))));
    if (!evidence.result.empty()) options.push_back("--result " + ShellWord(std::string(evidence.result)));
    if (evidence.slowerMilliseconds)
        options.push_back(fmt::format("--slower {}ms", *evidence.slowerMilliseconds));
    return fmt::format("{}", fmt::join(options, " "));
}

// Returns the text as a string of a query that stands in double quotes in a shell command.
std::string InQuery(std::string_view text) {
    std::string quoted = "'";
    for (const char character : text) {
        const bool isPlain = (character >= 'a' && character <= 'z') ||
                             (character >= 'A' && character <= 'Z') ||
                             (character >= '0' && character <= '9') || character == '_';
        quoted += isPlain ? character : '?';
    }
    return quoted + "'";
}

// Returns the query that gets the evidence from the engine.
std::string QueryFor(const Evidence& evidence, const std::string& source) {
    std::string query = "SELECT * FROM " + source;
    const auto add = [&query](const std::string& condition) { query += " AND " + condition; };
    if (evidence.isUnfinished) add("version = 1");
    if (evidence.process) add(fmt::format("pid = {}", *evidence.process));
    std::vector<std::string> functions;
    for (const std::string_view function : evidence.functions) functions.push_back(InQuery(function));
    if (!functions.empty()) add(fmt::format("function IN ({})", fmt::join(functions, ", ")));
    if (!evidence.result.empty()) add("result = " + InQuery(evidence.result));
    if (evidence.slowerMilliseconds) add(fmt::format("ns >= {}", *evidence.slowerMilliseconds * 1'000'000));
    return "clickhouse-client --query \"" + query + " ORDER BY time FORMAT Vertical\"";
}

}  // namespace

std::string WithCommas(std::uint64_t number) {
    std::string text = std::to_string(number);
    for (std::size_t i = text.size(); i > 3;) text.insert(i -= 3, 1, ',');
    return text;
}

std::string Counted(std::uint64_t number, std::string_view one, std::string_view several) {
    return WithCommas(number) + " " + std::string(number == 1 ? one : several);
}

std::string DurationText(std::uint64_t nanoseconds) {
    const auto amount = static_cast<double>(nanoseconds);
    if (nanoseconds < 1'000) return fmt::format("{} ns", nanoseconds);
    if (nanoseconds < 1'000'000) return fmt::format("{:.3g} us", amount / 1e3);
    if (nanoseconds < 1'000'000'000) return fmt::format("{:.3g} ms", amount / 1e6);
    return fmt::format("{:.4g} s", amount / 1e9);
}

std::string FilesAsWords(const std::vector<std::string>& paths) {
    std::string words;
    for (const std::string& path : paths) {
        if (!words.empty()) words += ' ';
        words += ShellWord(path);
    }
    return words;
}

std::vector<Remark> RemarksOn(const Report& report) {
    std::vector<Remark> remarks;
    const std::string files = FilesAsWords(report.paths);
    const auto show = [&](const Evidence& evidence) {
        return report.source.empty() ? "ckscribe show " + OptionsOf(evidence) + " " + files
                                     : QueryFor(evidence, report.source);
    };

    if (report.unfinished != 0) {
        remarks.push_back({fmt::format("{} never came back.", Counted(report.unfinished, "call", "calls")),
                           show({.isUnfinished = true})});
    }
    std::vector<const ResultFigures*> errors;
    for (const ResultFigures& row : report.results) {
        if (row.result != "CKR_OK") errors.push_back(&row);
    }
    std::ranges::stable_sort(errors, std::greater(), &ResultFigures::count);
    for (std::size_t i = 0; i < std::min(errors.size(), kMostOfAKind); ++i) {
        const ResultFigures& row = *errors[i];
        remarks.push_back({fmt::format("{} answered {} {}.", row.function, row.result,
                                       row.count == 1 ? "once" : WithCommas(row.count) + " times"),
                           show({.functions = {row.function}, .result = row.result})});
    }
    std::size_t retries = 0;
    for (const Repetition& row : report.retries) {
        if (row.longest < kManyRetries || retries++ == kMostOfAKind) break;
        remarks.push_back(
            {fmt::format("Process {} called {} {} times in a row and got {} each time.", row.process,
                         row.function, WithCommas(row.longest), row.result),
             show({.process = row.process, .functions = {row.function}, .result = row.result})});
    }
    if (report.openSessionCount != 0) {
        remarks.push_back({fmt::format("{} never closed.",
                                       Counted(report.openSessionCount, "session was", "sessions were")),
                           show({.functions = {"C_OpenSession", "C_CloseSession", "C_CloseAllSessions"}})});
    }
    const FunctionFigures* slowest = nullptr;
    for (const FunctionFigures& row : report.functions) {
        const std::uint64_t maximum = row.durations.Maximum();
        if (maximum < kLong || maximum / kMuchLonger < row.durations.Percentile(50).value_or(maximum))
            continue;
        if (slowest == nullptr || maximum > slowest->durations.Maximum()) slowest = &row;
    }
    if (slowest != nullptr) {
        const std::uint64_t maximum = slowest->durations.Maximum();
        remarks.push_back(
            {fmt::format("One {} took {}; half of them take no longer than {}.", slowest->function,
                         DurationText(maximum), DurationText(*slowest->durations.Percentile(50))),
             show({.functions = {slowest->function}, .slowerMilliseconds = maximum / 1'000'000})});
    }
    std::size_t polling = 0;
    for (const Repetition& row : report.polling) {
        if (polling++ == kMostOfAKind) break;
        remarks.push_back({fmt::format("Process {} polls: it called {} {} times in a row.", row.process,
                                       row.function, WithCommas(row.longest)),
                           show({.process = row.process, .functions = {row.function}})});
    }
    if (report.unreadable.value_or(0) != 0) {
        remarks.push_back({fmt::format("{} cannot be read.", Counted(*report.unreadable, "stretch of the log",
                                                                     "stretches of the logs")),
                           "ckscribe report --unreadable " + files});
    }
    if (remarks.size() > kMostRemarks) remarks.resize(kMostRemarks);
    return remarks;
}

}  // namespace ckscribe
