#include "reader/plain_event.h"

#include <cstring>

#include "reader/event_line.h"
#include "reader/result_names.h"

namespace ckscribe {

namespace {

// So many bytes are counted at once: the counts fit into a byte.
constexpr std::size_t kPart = 64;
// The pattern that begins at a byte reaches so many bytes behind it.
constexpr std::size_t kAhead = 4;
static_assert(kEventPadding >= kAhead);

// Counts the characters that decide whether a line is whole. The compiler makes vector instructions of the
// loop.
struct Marks {
    // `odd` is not 0 if there are control characters, letters that are not English, escapes, or a text.
    unsigned char odd = 0;
    signed char quotes = 0;
    signed char braces = 0;    // opening ones less closing ones
    signed char brackets = 0;  // likewise
    signed char lists = 0;     // ends of lists in front of a further member
    signed char results = 0;   // those of them in front of "out"
};

Marks MarksOf(const signed char* text, std::size_t size) {
    Marks marks;
    for (std::size_t i = 0; i < size; ++i) {
        const signed char one = text[i];
        const signed char two = text[i + 1];
        const signed char three = text[i + 2];
        const bool isText = (one == '"') & (two == 't') & (three == 'e');
        marks.odd = static_cast<unsigned char>(marks.odd | (one < ' ') | (one == '\\') | isText);
        marks.quotes = static_cast<signed char>(marks.quotes + (one == '"'));
        marks.braces = static_cast<signed char>(marks.braces + (one == '{') - (one == '}'));
        marks.brackets = static_cast<signed char>(marks.brackets + (one == '[') - (one == ']'));
        const bool isList = (one == ']') & (two == ',') & (three == '"');
        marks.lists = static_cast<signed char>(marks.lists + isList);
        const bool isResult = isList & (text[i + 3] == 'o') & (text[i + 4] == 'u');
        marks.results = static_cast<signed char>(marks.results + isResult);
    }
    return marks;
}

// Returns whether the braces, brackets and quotes of a line match: each that opens closes, and no string
// holds any of them. Only the list of an end's arguments is followed by another member, the list of its
// results.
bool IsWhole(std::string_view line, bool isStart) {
    const auto* const text = reinterpret_cast<const signed char*>(line.data());
    unsigned odd = 0;
    int quotes = 0, braces = 0, brackets = 0, lists = 0, results = 0;
    for (std::size_t i = 0; i < line.size(); i += kPart) {
        const std::size_t size = line.size() - i;
        const Marks marks = size >= kPart ? MarksOf(text + i, kPart) : MarksOf(text + i, size);
        odd |= marks.odd;
        quotes += marks.quotes;
        braces += marks.braces;
        brackets += marks.brackets;
        lists += marks.lists;
        results += marks.results;
    }
    return odd == 0 && quotes % 2 == 0 && braces == 0 && brackets == 0 && lists == results &&
           results == (isStart ? 0 : 1);
}

// Takes members off the front of a line. The line ends with "]}", therefore no search goes beyond its end.
class Members {
public:
    explicit Members(std::string_view line) : position(line.data()), end(line.data() + line.size()) {}

    // Takes a key with its colon, as in `"session":`. Returns it without quotes, or an empty text when there
    // is none.
    std::string_view TakeKey() {
        if (!Take('"')) return {};
        const std::string_view key = TakeToQuote();
        return Take(':') ? key : std::string_view();
    }
    // Takes a string; `text` is without its quotes.
    bool TakeString(std::string_view& text) {
        if (!Take('"')) return false;
        text = TakeToQuote();
        return !text.empty();
    }
    bool TakeNumber(std::uint64_t& number) {
        const char* const begin = position;
        number = 0;
        for (unsigned digit; (digit = static_cast<unsigned char>(*position) - unsigned{'0'}) <= 9; ++position)
            number = number * 10 + digit;
        // A number of more than 19 digits may be too large, and JSON has no zeros in front.
        return position != begin && position - begin <= 19 && (*begin != '0' || position - begin == 1);
    }
    bool TakeNumber(std::optional<std::uint64_t>& field) {
        std::uint64_t number = 0;
        const bool isTaken = TakeNumber(number);
        field = number;
        return isTaken;
    }
    bool Take(char character) {
        if (position == end || *position != character) return false;
        ++position;
        return true;
    }

private:
    std::string_view TakeToQuote() {
        const char* const begin = position;
        while (position != end && *position != '"') ++position;
        if (position == end) return {};
        return {begin, static_cast<std::size_t>(position++ - begin)};
    }

    const char* position;
    const char* const end;
};

template <std::size_t size>
bool Is(std::string_view key, const char (&name)[size]) {
    return key.size() == size - 1 && std::memcmp(key.data(), name, size - 1) == 0;
}

}  // namespace

bool ReadPlainEvent(std::string_view line, EventValues& values, Record& record) {
    Members members(line);
    if (!line.ends_with("]}") || !members.Take('{')) return false;
    unsigned found = 0;
    while (true) {
        const std::string_view key = members.TakeKey();
        std::uint64_t number = 0;
        std::string_view text;
        bool isTaken = true;
        if (Is(key, "in")) break;
        if (Is(key, "session")) {
            isTaken = members.TakeNumber(record.fields.session);
        } else if (Is(key, "time")) {
            isTaken = members.TakeString(text) && values.ReadTime(text, record.time);
        } else if (Is(key, "event")) {
            isTaken = members.TakeString(text) && (Is(text, "start") || Is(text, "end"));
            record.isStart = Is(text, "start");
            found |= kHasEvent;
        } else if (Is(key, "ns")) {
            isTaken = members.TakeNumber(record.nanoseconds);
            record.hasNanoseconds = true;
        } else if (Is(key, "run")) {
            isTaken = members.TakeString(text);
            if (isTaken) record.run = values.NumberOfRun(text);
            found |= kHasRun;
        } else if (Is(key, "pid")) {
            isTaken = members.TakeNumber(number);
            record.process = static_cast<std::uint32_t>(number);
            found |= kHasProcess;
        } else if (Is(key, "tid")) {
            isTaken = members.TakeNumber(number);
            record.thread = static_cast<std::int64_t>(number);
            record.hasThread = true;
        } else if (Is(key, "call")) {
            isTaken = members.TakeNumber(record.number);
            found |= kHasCall;
        } else if (Is(key, "function")) {
            isTaken = members.TakeString(text);
            if (isTaken) record.function = FunctionOfName(text);
            found |= kHasFunction;
        } else if (Is(key, "rv")) {
            isTaken = members.TakeNumber(record.rv);
            record.hasRv = true;
        } else if (Is(key, "result")) {
            isTaken = members.TakeString(text);
            if (isTaken) record.result = LastingResultName(text);
        } else if (Is(key, "object")) {
            isTaken = members.TakeNumber(record.fields.object);
        } else if (Is(key, "mechanism")) {
            isTaken = members.TakeString(record.fields.mechanism);
        } else if (Is(key, "mechanism_number")) {
            isTaken = members.TakeNumber(record.fields.mechanismNumber);
        } else if (Is(key, "slot")) {
            isTaken = members.TakeNumber(record.fields.slot);
        } else if (Is(key, "user")) {
            isTaken = members.TakeNumber(record.fields.user);
        } else {
            return false;
        }
        if (!isTaken || !members.Take(',')) return false;
    }
    record.text = line;
    return members.Take('[') && HasAllOfAnEvent(found, record) && IsWhole(line, record.isStart);
}

}  // namespace ckscribe
