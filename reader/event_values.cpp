#include "reader/event_values.h"

#include "reader/known_names.h"

namespace ckscribe {

namespace {

bool TakeDigits(std::string_view& text, std::size_t count, std::int64_t& number) {
    if (text.size() < count) return false;
    number = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (text[i] < '0' || text[i] > '9') return false;
        number = number * 10 + (text[i] - '0');
    }
    text.remove_prefix(count);
    return true;
}

bool Take(std::string_view& text, char character) {
    if (!text.starts_with(character)) return false;
    text.remove_prefix(1);
    return true;
}

// Takes "2026-11-21T".
bool TakeDate(std::string_view& text, std::int64_t& days) {
    std::int64_t year, month, day;
    if (!TakeDigits(text, 4, year) || !Take(text, '-') || !TakeDigits(text, 2, month) || !Take(text, '-') ||
        !TakeDigits(text, 2, day) || !Take(text, 'T'))
        return false;
    if (month < 1 || month > 12 || day < 1 || day > 31 || !HasNanoseconds(year)) return false;
    days = DaysSince1970(year, static_cast<unsigned>(month), static_cast<unsigned>(day));
    return true;
}

// Takes "12:33:".
bool TakeMinute(std::string_view& text, std::int64_t& seconds) {
    std::int64_t hour, minute;
    if (!TakeDigits(text, 2, hour) || !Take(text, ':') || !TakeDigits(text, 2, minute) || !Take(text, ':'))
        return false;
    seconds = (hour * 60 + minute) * 60;
    return hour <= 23 && minute <= 59;
}

}  // namespace

KnownNames& RunNames() {
    static KnownNames names(std::size_t{1} << 24);
    return names;
}

std::uint32_t EventValues::NumberOfRun(std::string_view run) {
    std::size_t hash = run.size();
    for (const char character : run.substr(run.size() < 4 ? 0 : run.size() - 4))
        hash = hash * 31 + static_cast<unsigned char>(character);
    Run& known = runs[(hash ^ hash >> 4) % runs.size()];
    if (known.number == 0 || known.name != run) known = {std::string(run), RunNames().NumberOf(run)};
    return known.number;
}

bool EventValues::ReadTime(std::string_view text, Moment& moment) {
    constexpr std::size_t kMinuteSize = 17;
    const bool hasDate = text.size() > kMinuteSize && text[4] == '-';
    std::int64_t began = 0;
    if (hasDate && text.substr(0, kMinuteSize) == lastMinute) {
        began = lastMinuteBegan;
        text.remove_prefix(kMinuteSize);
    } else {
        const std::string_view minute = text.substr(0, kMinuteSize);
        std::int64_t days = 0;
        if ((hasDate && !TakeDate(text, days)) || !TakeMinute(text, began)) return false;
        began += days * kSecondsPerDay;
        if (hasDate) {
            lastMinute = minute;
            lastMinuteBegan = began;
        }
    }
    std::int64_t second, nanoseconds = 0;
    if (!TakeDigits(text, 2, second) || second > 60) return false;
    if (text.empty()) {
        moment = {(began + second) * kNanosecondsPerSecond,
                  hasDate ? TimeScale::kLocal : TimeScale::kDayOfLog};
        return true;
    }
    if (Take(text, '.')) {
        const std::size_t digits = text.size() - 1;
        if (digits == 0 || digits > 9 || !TakeDigits(text, digits, nanoseconds)) return false;
        for (std::size_t i = digits; i < 9; ++i) nanoseconds *= 10;
    }
    moment = {(began + second) * kNanosecondsPerSecond + nanoseconds, TimeScale::kUtc};
    return hasDate && text == "Z";
}

}  // namespace ckscribe
