#include "reader/log_parser.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "reader/result_names.h"

namespace ckscribe {

namespace {

constexpr std::size_t kLongestBeginning = 200;

// Takes pieces off the front of a text. After the first piece that is missing, it takes nothing more.
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

    // Takes exactly two digits. With `maySpace` the first may be a space.
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

    // Takes the text in front of the next `end` on this line, at most 63 bytes, and leaves `end`.
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

// Takes a result other than CKR_OK: its name, or CKR_UNKNOWN and its number.
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

// Takes "Sun Nov 15 10:15:30 2026".
Moment CalendarTime(Pieces& pieces) {
    constexpr std::string_view kDays = "SunMonTueWedThuFriSat";
    constexpr std::string_view kMonths = "JanFebMarAprMayJunJulAugSepOctNovDec";
    if (pieces.Rest().size() < 24) pieces.Fail();
    if (!pieces.IsWell()) return {};
    const std::size_t dayOfWeek = kDays.find(pieces.Rest().substr(0, 3));
    const std::size_t month = kMonths.find(pieces.Rest().substr(4, 3));
    if (dayOfWeek == kDays.npos || dayOfWeek % 3 != 0 || month == kMonths.npos || month % 3 != 0)
        pieces.Fail();
    if (!pieces.IsWell()) return {};
    Pieces rest(pieces.Rest().substr(7));
    rest.Take(" ");
    const std::int64_t day = rest.TakeTwoDigits(true);
    rest.Take(" ");
    const std::int64_t second = SecondOfDay(rest);
    rest.Take(" ");
    const auto year = rest.TakeNumber<std::int64_t>();
    if (!rest.IsWell() || day < 1 || day > 31 || !HasNanoseconds(year)) pieces.Fail();
    if (!pieces.IsWell()) return {};
    pieces = rest;
    const std::int64_t days =
        DaysSince1970(year, static_cast<unsigned>(month / 3 + 1), static_cast<unsigned>(day));
    return {(days * kSecondsPerDay + second) * kNanosecondsPerSecond, TimeScale::kLocal};
}

void FillField(std::optional<std::uint64_t>& field, std::uint64_t number) {
    if (!field) field = number;
}

// Reads the head of a record in the form that nearly all heads have. Every other form is not plain. It reads
// no byte behind the line feed.
class PlainHead {
public:
    PlainHead(const char* begin, const char* lineEnd) : position(begin), end(lineEnd) {}

    bool IsPlain() const { return isPlain; }
    const char* Position() const { return position; }

    // Takes "10:15:30 ".
    std::int64_t TakeSecondOfDay() {
        constexpr std::ptrdiff_t kSize = 9;
        if (end - position <= kSize || position[2] != ':' || position[5] != ':' || position[8] != ' ')
            return Fail();
        const unsigned hour = TwoDigits(0);
        const unsigned minute = TwoDigits(3);
        const unsigned second = TwoDigits(6);
        if (hour > 23 || minute > 59 || second > 60) return Fail();
        position += kSize;
        return (hour * 60 + minute) * 60 + second;
    }

    std::int64_t TakeNumber() {
        const char* const begin = position;
        std::uint64_t number = 0;
        for (unsigned digit; (digit = static_cast<unsigned char>(*position) - unsigned{'0'}) <= 9; ++position)
            number = number * 10 + digit;
        // A number of more than nine digits may be too large.
        return position == begin || position - begin > 9 ? Fail() : static_cast<std::int64_t>(number);
    }

    std::int64_t TakeSigned() {
        if (*position != '-') return TakeNumber();
        ++position;
        return -TakeNumber();
    }

    void Take(char character) {
        if (*position != character) {
            isPlain = false;
        } else {
            ++position;
        }
    }

    // Takes "STRT" or "FINI", and returns whether it was "STRT".
    bool TakeIsStart() {
        const bool isStart = end - position > 4 && std::memcmp(position, "STRT", 4) == 0;
        if (!isStart && (end - position <= 4 || std::memcmp(position, "FINI", 4) != 0)) return Fail() != 0;
        position += 4;
        return isStart;
    }

    // Takes the name up to the next blank, and the blank.
    const PrintedFunction* TakeName() {
        const char* const begin = position;
        while (position != end && *position != ' ') ++position;
        if (position == end) {
            isPlain = false;
            return nullptr;
        }
        return FindPrinted({begin, static_cast<std::size_t>(position++ - begin)});
    }

    // Takes "CKR_OK123clks ", or "***", the name of another result and "***123clks ".
    bool TakeResult(Record& record) {
        constexpr std::string_view kOk = "CKR_OK";
        constexpr std::string_view kClocks = "clks ";
        if (Starts(kOk)) {
            position += kOk.size();
            record.result = kOk;
            record.hasRv = true;
        } else {
            Pieces pieces({position, static_cast<std::size_t>(end - position)});
            pieces.Take("***");
            ckscribe::TakeResult(pieces, pieces.TakeUntil('*'), record);
            pieces.Take("***");
            if (!pieces.IsWell()) return false;
            position = pieces.Rest().data();
        }
        if (*position == '-') ++position;
        const char* const digits = position;
        while (*position >= '0' && *position <= '9') ++position;
        if (position == digits || position - digits > 18 || !Starts(kClocks)) return false;
        position += kClocks.size();
        return true;
    }

private:
    bool Starts(std::string_view literal) const {
        return static_cast<std::size_t>(end - position) > literal.size() &&
               std::memcmp(position, literal.data(), literal.size()) == 0;
    }
    // Returns the number of two digits, or 100 or more where there are no two digits.
    unsigned TwoDigits(int offset) const {
        const unsigned tens = static_cast<unsigned char>(position[offset]) - unsigned{'0'};
        const unsigned ones = static_cast<unsigned char>(position[offset + 1]) - unsigned{'0'};
        return tens > 9 || ones > 9 ? 100 : tens * 10 + ones;
    }
    std::int64_t Fail() {
        isPlain = false;
        return 0;
    }

    const char* position;
    const char* const end;
    bool isPlain = true;
};

void AddUnreadable(FoundInText& found, std::uint64_t line, std::string_view bad) {
    if (!found.endsUnreadable) {
        found.beginsUnreadable = found.beginsUnreadable || (found.records.empty() && found.stretches.empty());
        found.stretches.push_back({{0, line}, 0, std::string(bad.substr(0, kLongestBeginning))});
        found.endsUnreadable = true;
    }
    ++found.stretches.back().lines;
}

}  // namespace

std::size_t LastRecordBegin(std::string_view text) {
    std::size_t end = text.size();
    while (end > 1) {
        const std::size_t feed = text.rfind('\n', end - 1);
        if (feed == text.npos) return 0;
        const std::string_view line = text.substr(feed + 1, 8);
        const bool isNew = line.size() > 2 && line[0] >= '0' && line[0] <= '9' && line[2] == ':';
        if (isNew || line.starts_with("Command(") || line.starts_with("{\"")) return feed + 1;
        end = feed;
    }
    return 0;
}

std::size_t LogParser::Parse(std::string_view text, Rest rest, FoundInText& found) {
    found.Clear();
    std::uint64_t line = 0;
    std::size_t position = 0;
    while (position < text.size()) {
        const char* const begin = text.data() + position;
        if (*begin == '\n') {
            ++position;
            ++line;
            continue;
        }
        Record& record = found.records.emplace_back();
        if (usesPlainWay && *begin >= '0' && *begin <= '9') {
            const void* const lineEnd = std::memchr(begin, '\n', text.size() - position);
            if (lineEnd != nullptr && ReadPlainRecord(begin, static_cast<const char*>(lineEnd), record)) {
                record.line = line++;
                position += record.text.size() + 1;
                found.endsUnreadable = false;
                continue;
            }
            record = Record{};
        }
        const bool maySkip = rest == Rest::kIsThere || text.size() - position > kLongestRecord;
        std::size_t end = position;
        isAllThere = rest == Rest::kIsThere;
        Outcome outcome = ReadRecord(text, position, end, record);
        if (outcome == Outcome::kNeedsMore && rest == Rest::kMayCome) {
            isAllThere = true;
            record = Record{};
            if (ReadRecord(text, position, end, record) == Outcome::kRead) outcome = Outcome::kRead;
        }
        if (outcome == Outcome::kNeedsMore && !maySkip) {
            found.records.pop_back();
            break;
        }
        if (outcome == Outcome::kRead) {
            record.line = line;
            found.endsUnreadable = false;
            if (record.format != LogFormat::kEvents) {
                record.bodyOffset = static_cast<std::size_t>(record.text.data() - begin);
                record.text = text.substr(position, end - position);
                line += static_cast<std::uint64_t>(std::count(begin, text.data() + end, '\n'));
            }
        } else {
            found.records.pop_back();
            end = text.find('\n', position);
            if (end == text.npos && !maySkip) break;
            end = std::min(end, text.size());
            AddUnreadable(found, line, text.substr(position, end - position));
        }
        position = end;
        if (position < text.size()) {
            ++position;
            ++line;
        }
    }
    found.lines = line;
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

// Nearly all lines have the form that this function reads.
bool LogParser::ReadPlainRecord(const char* begin, const char* lineEnd, Record& record) {
    PlainHead head(begin, lineEnd);
    const std::int64_t second = head.TakeSecondOfDay();
    record.process = static_cast<std::uint32_t>(head.TakeNumber());
    head.Take('-');
    record.thread = head.TakeSigned();
    record.hasThread = true;
    head.Take(':');
    record.isStart = head.TakeIsStart();
    record.printed = head.TakeName();
    if (!head.IsPlain() || record.printed == nullptr) return false;
    if (!record.isStart && !head.TakeResult(record)) return false;

    const PrintedFunction& printed = *record.printed;
    const char* const body = head.Position();
    PlainOutcome outcome = PlainOutcome::kCannotBeRead;
    for (unsigned i = 0; i < printed.count && outcome == PlainOutcome::kCannotBeRead; ++i) {
        record.function = printed.functions[i];
        outcome = ReadPlainChildren(body, lineEnd, record.function, record.isStart, record.fields);
    }
    if (outcome == PlainOutcome::kCannotBeRead && body[0] == '{' && body + 2 == lineEnd) {
        // This is the end of a failed call, which has no children.
        record.function = printed.functions[0];
        record.isFunctionCertain = printed.count == 1;
        record.fields = CallFields{};
    } else if (outcome != PlainOutcome::kRead) {
        return false;
    }
    record.format = LogFormat::kNewText;
    record.time = {second * kNanosecondsPerSecond, TimeScale::kDayOfLog};
    record.text = {begin, static_cast<std::size_t>(lineEnd - begin)};
    record.bodyOffset = static_cast<std::size_t>(body - begin);
    return true;
}

// Reads "10:15:30 01234-567:STRTLogout {Sesn=5 }" or "10:15:30 01234-567:FINILogout
// ***CKR_PIN_INCORRECT***12345clks {}".
LogParser::Outcome LogParser::ReadNewRecord(std::string_view text, std::size_t begin, std::size_t& end,
                                            Record& record) {
    // Only a head without a line end may be cut by the end of the text. Any other bad head stays bad.
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
    record.time = {second * kNanosecondsPerSecond, TimeScale::kDayOfLog};
    return outcome;
}

// Reads "Command(Logout, None, End, CKR_OK) PID:  1234  Time:  Sun Nov 15 10:15:30 2026" and the lines behind
// it.
LogParser::Outcome LogParser::ReadOldRecord(std::string_view text, std::size_t begin, std::size_t& end,
                                            Record& record) {
    const auto isCut = [&] {
        // The head has two or three lines.
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

// Reads the children. They decide between functions that print the same name.
LogParser::Outcome LogParser::ReadBody(std::string_view text, std::size_t begin, std::size_t& end, bool isNew,
                                       Record& record) {
    const ChildrenFormat format{isNew, record.isStart};
    const std::string_view body = text.substr(begin);
    const PrintedFunction& printed = *record.printed;
    record.function = printed.functions[0];
    ChildrenEnd read;
    for (unsigned i = 0; i < printed.count && read.outcome == ChildrenOutcome::kUnreadable; ++i) {
        read = children.Read(body, printed.functions[i], format, isAllThere);
        record.function = printed.functions[i];
    }
    if (read.outcome == ChildrenOutcome::kUnreadable) {
        // A failed call of the vendor's comes here, too: its end has no children.
        read = children.ReadAnything(body, format, isAllThere);
        record.function = printed.functions[0];
        record.isFunctionCertain = printed.count == 1;
    }
    if (read.outcome == ChildrenOutcome::kNeedsMore) return Outcome::kNeedsMore;
    if (read.outcome == ChildrenOutcome::kUnreadable) return Outcome::kUnreadable;
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
