#include "reader/log_parser.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "reader/result_names.h"

namespace ckscribe {

namespace {

constexpr std::int64_t kHalfDay = kSecondsPerDay / 2;
// A record that another process wrote a moment before midnight may stand behind those of the new day.
constexpr std::int64_t kNearlyDay = kSecondsPerDay - 600;
constexpr std::size_t kLongestBeginning = 200;

// Takes pieces off the front of a text. After the first one that is not there, nothing is taken any more.
class Pieces {
public:
    explicit Pieces(std::string_view text) : rest(text) {}

    bool IsWell() const { return isWell; }
    std::string_view Rest() const { return rest; }

    bool TryTake(std::string_view literal) {
        if (!isWell || !rest.starts_with(literal)) return false;
        rest.remove_prefix(literal.size());
        return true;
    }
    void Take(std::string_view literal) { isWell = TryTake(literal); }

    // Exactly two digits; the first may be a space.
    std::int64_t TakeTwoDigits(bool maySpace = false) {
        if (!isWell || rest.size() < 2) return Fail();
        const char first = maySpace && rest[0] == ' ' ? '0' : rest[0];
        if (first < '0' || first > '9' || rest[1] < '0' || rest[1] > '9') return Fail();
        const std::int64_t number = (first - '0') * 10 + (rest[1] - '0');
        rest.remove_prefix(2);
        return number;
    }

    template <class Number>
    Number TakeNumber(int base = 10) {
        Number number = 0;
        if (!isWell) return number;
        const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number, base);
        if (error != std::errc()) return static_cast<Number>(Fail());
        rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
        return number;
    }

    // What stands in front of the next `end`, on this line.
    std::string_view TakeUntil(char end) {
        const std::size_t most = std::min<std::size_t>(rest.size(), 64);
        const void* const found = isWell ? std::memchr(rest.data(), end, most) : nullptr;
        if (found == nullptr) {
            isWell = false;
            return {};
        }
        const auto length = static_cast<std::size_t>(static_cast<const char*>(found) - rest.data());
        const std::string_view taken = rest.substr(0, length);
        rest.remove_prefix(length);
        return taken;
    }

    std::int64_t Fail() {
        isWell = false;
        return 0;
    }

private:
    std::string_view rest;
    bool isWell = true;
};

// A result that is no CKR_OK: its name, or CKR_UNKNOWN and its number.
void TakeResult(Pieces& pieces, std::string_view name, Record& record) {
    record.hasRv = true;
    if (name.starts_with(kUnknownResult)) {
        Pieces number(name.substr(kUnknownResult.size()));
        number.Take(" 0x");
        record.result = kUnknownResult;
        record.rv = number.TakeNumber<std::uint64_t>(16);
        if (!number.IsWell() || !number.Rest().empty()) pieces.Fail();
        return;
    }
    const ResultName* const result = FindResult(name);
    if (result == nullptr) {
        pieces.Fail();
        return;
    }
    record.result = result->name;
    record.rv = result->value;
}

std::int64_t SecondOfDay(Pieces& pieces) {
    const std::int64_t hour = pieces.TakeTwoDigits();
    pieces.Take(":");
    const std::int64_t minute = pieces.TakeTwoDigits();
    pieces.Take(":");
    const std::int64_t second = pieces.TakeTwoDigits();
    if (hour > 23 || minute > 59 || second > 60) pieces.Fail();
    return (hour * 60 + minute) * 60 + second;
}

// "Sun Nov 15 10:15:30 2026"
Moment CalendarTime(Pieces& pieces) {
    constexpr std::string_view kDays = "SunMonTueWedThuFriSat";
    constexpr std::string_view kMonths = "JanFebMarAprMayJunJulAugSepOctNovDec";
    if (pieces.Rest().size() < 24) pieces.Fail();
    if (!pieces.IsWell()) return {};
    const std::size_t dayOfWeek = kDays.find(pieces.Rest().substr(0, 3));
    const std::size_t month = kMonths.find(pieces.Rest().substr(4, 3));
    if (dayOfWeek % 3 != 0 || month % 3 != 0) pieces.Fail();
    if (!pieces.IsWell()) return {};
    Pieces rest(pieces.Rest().substr(7));
    rest.Take(" ");
    const std::int64_t day = rest.TakeTwoDigits(true);
    rest.Take(" ");
    const std::int64_t second = SecondOfDay(rest);
    rest.Take(" ");
    const auto year = rest.TakeNumber<std::int64_t>();
    if (!rest.IsWell() || day < 1 || day > 31) pieces.Fail();
    pieces = rest;
    const std::int64_t days =
        DaysSince1970(year, static_cast<unsigned>(month / 3 + 1), static_cast<unsigned>(day));
    return {(days * kSecondsPerDay + second) * kNanosecondsPerSecond, TimeScale::kLocal};
}

void FillField(std::optional<std::uint64_t>& field, std::uint64_t number) {
    if (!field) field = number;
}

}  // namespace

std::size_t LogParser::Parse(std::string_view text, Rest rest, Found& found) {
    const bool maySkip = rest == Rest::kIsThere || rest == Rest::kIsTooLong;
    std::size_t position = 0;
    while (position < text.size()) {
        if (text[position] == '\n') {
            ++position;
            ++line;
            continue;
        }
        std::size_t end = position;
        Record record;
        isAllThere = rest == Rest::kIsThere;
        Outcome outcome = ReadRecord(text, position, end, record);
        if (outcome == Outcome::kNeedsMore && rest == Rest::kMayCome) {
            isAllThere = true;
            record = Record{};
            if (ReadRecord(text, position, end, record) == Outcome::kRead) outcome = Outcome::kRead;
        }
        if (outcome == Outcome::kNeedsMore && !maySkip) break;
        if (outcome == Outcome::kRead) {
            if (stretchLines != 0) EndStretch(found);
            record.line = line;
            if (record.format != LogFormat::kEvents) {
                const char* const begin = text.data() + position;
                record.bodyOffset = static_cast<std::size_t>(record.text.data() - begin);
                record.text = text.substr(position, end - position);
                line += static_cast<std::uint64_t>(std::count(begin, text.data() + end, '\n'));
            }
            found.records.push_back(record);
        } else {
            end = text.find('\n', position);
            if (end == text.npos && !maySkip) break;
            end = std::min(end, text.size());
            AddUnreadable(text.substr(position, end - position));
        }
        position = end;
        if (position < text.size()) {
            ++position;
            ++line;
        }
    }
    return position;
}

LogParser::Outcome LogParser::ReadRecord(std::string_view text, std::size_t begin, std::size_t& end,
                                         Record& record) {
    const char first = text[begin];
    if (first >= '0' && first <= '9') return ReadNewRecord(text, begin, end, record);
    if (first == '{') return ReadEvent(text, begin, end, record);
    if (first == 'C') return ReadOldRecord(text, begin, end, record);
    return Outcome::kUnreadable;
}

void LogParser::EndFile(Found& found) {
    EndStretch(found);
    line = 1;
}

void LogParser::AddUnreadable(std::string_view bad) {
    if (stretchLines == 0) {
        stretchLine = line;
        stretchBeginning = bad.substr(0, kLongestBeginning);
    }
    ++stretchLines;
}

void LogParser::EndStretch(Found& found) {
    if (stretchLines == 0) return;
    found.stretches.push_back({{0, stretchLine}, stretchLines, stretchBeginning});
    stretchLines = 0;
}

Moment LogParser::TimeOfDay(std::int64_t second) {
    std::int64_t day = days;
    if (lastSecond && second < *lastSecond - kHalfDay) {
        day = ++days;
        lastSecond = second;
    } else if (lastSecond && second > *lastSecond + kNearlyDay && days > 0) {
        --day;
    } else {
        lastSecond = second;
    }
    if (firstDay)
        return {((*firstDay + day) * kSecondsPerDay + second) * kNanosecondsPerSecond, TimeScale::kLocal};
    return {(day * kSecondsPerDay + second) * kNanosecondsPerSecond, TimeScale::kDayOfLog};
}

// "10:15:30 01234-567:STRTLogout {Sesn=5 }", "10:15:30 01234-567:FINILogout ***CKR_PIN_INCORRECT***12345clks
// {}"
LogParser::Outcome LogParser::ReadNewRecord(std::string_view text, std::size_t begin, std::size_t& end,
                                            Record& record) {
    // A head that is cut by the end of the text is told from a bad one by the missing line end.
    const auto isCut = [&] { return !isAllThere && text.find('\n', begin) == text.npos; };
    Pieces pieces(text.substr(begin));
    const std::int64_t second = SecondOfDay(pieces);
    pieces.Take(" ");
    record.process = pieces.TakeNumber<std::uint32_t>();
    pieces.Take("-");
    record.thread = pieces.TakeNumber<std::int32_t>();
    record.hasThread = true;
    pieces.Take(":");
    record.isStart = pieces.TryTake("STRT");
    if (!record.isStart) pieces.Take("FINI");
    record.printed = FindPrinted(pieces.TakeUntil(' '));
    pieces.Take(" ");
    if (!record.isStart) {
        if (pieces.TryTake("CKR_OK")) {
            record.result = "CKR_OK";
            record.hasRv = true;
        } else {
            pieces.Take("***");
            TakeResult(pieces, pieces.TakeUntil('*'), record);
            pieces.Take("***");
        }
        (void)pieces.TakeNumber<std::int64_t>();
        pieces.Take("clks ");
    }
    if (!pieces.IsWell() || record.printed == nullptr)
        return isCut() ? Outcome::kNeedsMore : Outcome::kUnreadable;
    record.format = LogFormat::kNewText;
    const std::size_t body = text.size() - pieces.Rest().size();
    const Outcome outcome = ReadBody(text, body, end, true, record);
    if (outcome == Outcome::kRead) record.time = TimeOfDay(second);
    return outcome;
}

// "Command(Logout, None, End, CKR_OK) PID:  1234  Time:  Sun Nov 15 10:15:30 2026" and the lines that follow.
LogParser::Outcome LogParser::ReadOldRecord(std::string_view text, std::size_t begin, std::size_t& end,
                                            Record& record) {
    const auto isCut = [&] {
        // Of the two or three lines of the head.
        std::size_t lineEnd = begin;
        for (int i = 0; i < 3 && lineEnd != text.npos; ++i) lineEnd = text.find('\n', lineEnd + 1);
        return !isAllThere && lineEnd == text.npos;
    };
    Pieces pieces(text.substr(begin));
    pieces.Take("Command(");
    const std::string_view command = pieces.TakeUntil(',');
    pieces.Take(", ");
    const std::string_view specifier = pieces.TakeUntil(',');
    pieces.Take(", ");
    record.isStart = pieces.TryTake("Start");
    if (!record.isStart) {
        pieces.Take("End, ");
        const std::string_view name = pieces.TakeUntil(')');
        if (name == "CKR_OK") {
            record.result = "CKR_OK";
            record.hasRv = true;
        } else {
            TakeResult(pieces, name, record);
        }
    }
    pieces.Take(") PID:  ");
    record.process = static_cast<std::uint32_t>(pieces.TakeNumber<std::int32_t>());
    pieces.Take("  Time:  ");
    record.time = CalendarTime(pieces);
    pieces.Take("\n");
    if (!record.isStart) {
        pieces.Take(" // ");
        (void)pieces.TakeNumber<std::int64_t>();
        pieces.Take(" clock cycles");
    }
    if (!pieces.IsWell()) return isCut() ? Outcome::kNeedsMore : Outcome::kUnreadable;
    record.printed = FindPrinted(command, specifier);
    if (record.printed == nullptr) return Outcome::kUnreadable;
    record.format = LogFormat::kOldText;
    return ReadBody(text, text.size() - pieces.Rest().size(), end, false, record);
}

// Children, by which functions with the same name are told apart.
LogParser::Outcome LogParser::ReadBody(std::string_view text, std::size_t begin, std::size_t& end, bool isNew,
                                       Record& record) {
    const ChildrenFormat format{isNew, record.isStart};
    const std::string_view body = text.substr(begin);
    const PrintedFunction& printed = *record.printed;
    record.function = printed.functions[0];
    ChildrenEnd read;
    bool needsMore = false;
    for (unsigned i = 0; i < printed.count && read.outcome != ChildrenOutcome::kRead; ++i) {
        read = children.Read(body, printed.functions[i], format, isAllThere);
        record.function = printed.functions[i];
        needsMore |= read.outcome == ChildrenOutcome::kNeedsMore;
    }
    if (read.outcome != ChildrenOutcome::kRead) {
        // Also the end of a failed call of the vendor's, which has no children.
        if (!needsMore) read = children.ReadAnything(body, format, isAllThere);
        record.function = printed.functions[0];
        record.isFunctionCertain = printed.count == 1;
    }
    if (read.outcome != ChildrenOutcome::kRead)
        return needsMore || read.outcome == ChildrenOutcome::kNeedsMore ? Outcome::kNeedsMore
                                                                        : Outcome::kUnreadable;
    end = begin + read.end;
    record.text = body.substr(0, read.end);
    SetFields(record);
    return Outcome::kRead;
}

void LogParser::SetFields(Record& record) {
    CallFields& fields = record.fields;
    for (const ChildToken& token : children.Tokens()) {
        if (token.depth != 0) continue;
        switch (FieldOf(token)) {
            case FieldKind::kNone:
                break;
            case FieldKind::kSlot:
                FillField(fields.slot, token.number);
                break;
            case FieldKind::kSession:
                FillField(fields.session, token.number);
                break;
            case FieldKind::kObject:
                FillField(fields.object, token.number);
                break;
            case FieldKind::kUser:
                FillField(fields.user, token.number);
                break;
            case FieldKind::kMechanism:
                if (fields.mechanism.empty()) fields.mechanism = token.type;
                break;
        }
    }
}

LogParser::Outcome LogParser::ReadEvent(std::string_view text, std::size_t begin, std::size_t& end,
                                        Record& record) {
    end = text.find('\n', begin);
    if (end == text.npos) {
        if (!isAllThere) return Outcome::kNeedsMore;
        end = text.size();
    }
    return events.Read(text.substr(begin, end - begin), record) ? Outcome::kRead : Outcome::kUnreadable;
}

}  // namespace ckscribe
