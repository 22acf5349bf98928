#include "tool/show/call_filter.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <ctime>
#include <span>

#include "functions/pkcs11_names.h"
#include "reader/log_reading.h"
#include "reader/recorded_functions.h"
#include "reader/result_names.h"
#include "tool/harmless_text.h"
#include "tool/log_arguments.h"
#include "tool/messages.h"
#include "tool/nearest_name.h"

namespace ckscribe {

namespace {

struct Unit {
    std::string_view name;
    double nanoseconds;
};
constexpr Unit kUnits[] = {{"ns", 1}, {"us", 1e3}, {"ms", 1e6}, {"s", 1e9}, {"m", 60e9}, {"h", 3600e9}};

// Returns "14:00" or "14:00:05" in seconds of the day.
std::optional<std::int64_t> ParseTimeOfDay(std::string_view text) {
    if (text.size() != 5 && text.size() != 8) return std::nullopt;
    std::int64_t parts[3] = {};
    for (std::size_t i = 0; i < text.size(); i += 3) {
        if (i != 0 && text[i - 1] != ':') return std::nullopt;
        const char* const end = text.data() + i + 2;
        const auto [behind, error] = std::from_chars(text.data() + i, end, parts[i / 3]);
        if (error != std::errc() || behind != end) return std::nullopt;
    }
    if (parts[0] > 23 || parts[1] > 59 || parts[2] > 60) return std::nullopt;
    return (parts[0] * 60 + parts[1]) * 60 + parts[2];
}

std::int64_t OnCalendar(std::int64_t day, std::int64_t second, bool isUtc) {
    const std::int64_t nanoseconds = (day * kSecondsPerDay + second) * kNanosecondsPerSecond;
    return isUtc ? nanoseconds : InUtc({nanoseconds, TimeScale::kLocal}).nanoseconds;
}

std::vector<std::int64_t> NumbersOf(const std::string& option, const std::vector<std::string>& texts) {
    std::vector<std::int64_t> numbers;
    for (const std::string& text : texts) {
        const auto number = ParseLogNumber(text);
        if (!number) throw CLI::ValidationError(option, "not a number: " + text);
        numbers.push_back(*number);
    }
    return numbers;
}

template <class Number>
bool Selects(const std::vector<std::int64_t>& numbers, const std::optional<Number>& number) {
    if (numbers.empty()) return true;
    return number && std::ranges::find(numbers, static_cast<std::int64_t>(*number)) != numbers.end();
}

// A slip in a name selects nothing, and the reader must learn why. It is no error: a log may have names that
// this version does not know.
void SayUnknownName(const std::string& name, std::string_view prefix, std::string_view what,
                    std::span<const std::string_view> known) {
    const std::string prefixed = fmt::format("{}{}", prefix, name);
    const std::string_view nearest =
        std::ranges::find(known, prefixed) != known.end() ? prefixed : FindNearestName(name, known).name;
    Say(fmt::format("{} is no {} that is known here. The nearest one is {}.", InQuotes(name), what, nearest));
}

void SayUnknownFunctions(const std::vector<std::string>& functions) {
    std::vector<std::string_view> known;
    for (std::size_t i = 0; i < FunctionCount(); ++i)
        known.push_back(FunctionName(FunctionIndex{static_cast<std::uint16_t>(i)}));
    for (const std::string& name : functions) {
        if (std::ranges::find(known, name) == known.end()) SayUnknownName(name, "C_", "function", known);
    }
}

void SayUnknownResults(const std::vector<std::string>& results) {
    std::vector<std::string_view> known;
    for (const ReturnValueRow& row : CKR_LookupTable) known.push_back(row.name);
    for (const std::string& name : results) {
        if (name != kUnknownResult && FindResult(name) == nullptr)
            SayUnknownName(name, "CKR_", "result", known);
    }
}

bool IsNamed(const std::vector<std::string>& names, std::string_view name) {
    return names.empty() || std::ranges::find(names, name) != names.end();
}

}  // namespace

std::optional<std::int64_t> ParseDuration(std::string_view text) {
    double amount = 0;
    const char* const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, amount, std::chars_format::fixed);
    if (error != std::errc() || amount < 0) return std::nullopt;
    const std::string_view name(behind, static_cast<std::size_t>(end - behind));
    for (const Unit& unit : kUnits) {
        if (unit.name == name && amount * unit.nanoseconds < 9e18)
            return static_cast<std::int64_t>(amount * unit.nanoseconds + 0.5);
    }
    return std::nullopt;
}

std::optional<std::int64_t> ParseLogNumber(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative) text.remove_prefix(1);
    const bool isHex = text.starts_with("0x");
    if (isHex) text.remove_prefix(2);
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, number, isHex ? 16 : 10);
    if (error != std::errc() || behind != end || text.empty()) return std::nullopt;
    return isNegative ? -static_cast<std::int64_t>(number) : static_cast<std::int64_t>(number);
}

std::optional<std::int64_t> ParseMoment(std::string_view text, const Moment& lastRecord, bool isUtc) {
    if (const auto duration = ParseDuration(text)) return lastRecord.nanoseconds - *duration;
    const std::int64_t lastSecond = lastRecord.nanoseconds / kNanosecondsPerSecond;
    const std::int64_t lastDay = isUtc ? lastSecond / kSecondsPerDay : LocalDayOf(lastSecond);
    if (const auto second = ParseTimeOfDay(text)) return OnCalendar(lastDay, *second, isUtc);
    bool isInUtc = isUtc;
    if (text.ends_with('Z')) {
        isInUtc = true;
        text.remove_suffix(1);
    }
    const auto day = ParseDate(text.substr(0, 10));
    if (!day) return std::nullopt;
    if (text.size() <= 10) return OnCalendar(*day, 0, isInUtc);
    if (text[10] != 'T' && text[10] != ' ') return std::nullopt;
    const auto second = ParseTimeOfDay(text.substr(11));
    if (!second) return std::nullopt;
    return OnCalendar(*day, *second, isInUtc);
}

void CallFilter::AddTo(CLI::App& command) {
    const auto addList = [&command](const char* name, std::vector<std::string>& list, const char* what,
                                    const char* type) {
        command.add_option(name, list, what)->delimiter(',')->allow_extra_args(false)->type_name(type);
    };
    addList("--function", functions, "Calls of these functions: C_Sign,C_Login", "NAMES");
    command.add_flag("--errors", isErrors, "Calls that ended with anything but CKR_OK");
    addList("--result", results, "Calls that ended so: CKR_PIN_INCORRECT", "NAMES");
    addList("--process", processTexts, "Calls of these processes", "NUMBERS");
    addList("--thread", threadTexts, "Calls of these threads", "NUMBERS");
    addList("--session", sessionTexts, "Calls with these sessions", "NUMBERS");
    addList("--object", objectTexts, "Calls with these objects", "NUMBERS");
    command.add_option("--slower", slower, "Calls that took longer: 5ms (events only)")
        ->type_name("DURATION");
    command.add_option("--since", since, "Calls from then on: 14:00, 2026-11-21T14:00, 10m")
        ->type_name("TIME");
    command.add_option("--until", until, "Calls up to then")->type_name("TIME");
    command.add_option("--last", last, "Calls of so long before the log's last record: 10m")
        ->type_name("DURATION");
    command.add_flag("--unfinished", isUnfinished, "Calls without an end");
}

void CallFilter::Prepare(bool inUtc) {
    isUtc = inUtc;
    SayUnknownFunctions(functions);
    SayUnknownResults(results);
    processes = NumbersOf("--process", processTexts);
    threads = NumbersOf("--thread", threadTexts);
    sessions = NumbersOf("--session", sessionTexts);
    objects = NumbersOf("--object", objectTexts);
    if (!slower.empty()) {
        const auto duration = ParseDuration(slower);
        if (!duration) throw CLI::ValidationError("--slower", "not a duration like 5ms: " + slower);
        shortest = static_cast<std::uint64_t>(*duration);
    }
    if (!last.empty() && !ParseDuration(last))
        throw CLI::ValidationError("--last", "not a duration like 10m: " + last);
    for (const auto& [option, text] : {std::pair("--since", &since), std::pair("--until", &until)}) {
        if (!text->empty() && !ParseMoment(*text, {0, TimeScale::kUtc}, isUtc))
            throw CLI::ValidationError(option, "not a time like 14:00, 2026-11-21T14:00 or 10m: " + *text);
    }
}

void CallFilter::SetLog(const Moment& lastRecord) {
    from = to = std::nullopt;
    if (!since.empty()) from = ParseMoment(since, lastRecord, isUtc);
    if (!until.empty()) to = ParseMoment(until, lastRecord, isUtc);
    if (!last.empty()) {
        const std::int64_t begin = lastRecord.nanoseconds - *ParseDuration(last);
        from = std::max(from.value_or(begin), begin);
    }
}

bool CallFilter::Matches(const Call& call) {
    if (isErrors && !call.IsError()) return false;
    if (isUnfinished && !call.IsUnfinished()) return false;
    if (!IsNamed(functions, call.Function())) return false;
    if (!results.empty() && (call.IsUnfinished() || !IsNamed(results, call.result))) return false;
    if (!Selects(processes, std::optional(call.process))) return false;
    if (!Selects(threads, call.thread)) return false;
    if (!Selects(sessions, call.fields.session)) return false;
    if (!Selects(objects, call.fields.object)) return false;
    if (from || to) {
        const Moment time = InUtc(call.Time());
        if (time.scale != TimeScale::kUtc) return false;
        if (from && time.nanoseconds < *from) return false;
        if (to && time.nanoseconds > *to) return false;
    }
    if (shortest) {
        if (call.format != LogFormat::kEvents) hasMissedDurations = true;
        if (!call.nanoseconds || *call.nanoseconds <= *shortest) return false;
    }
    return true;
}

}  // namespace ckscribe
