#include "tests/faults/log_records.h"

#include <simdjson.h>

#include <cctype>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include "tests/unwatched.h"

namespace {

// Takes parts off the front of a text. If a part is not there, nothing more is taken and IsWell() is false.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest(text) {}

    bool IsWell() const { return isWell; }
    std::string_view Rest() const { return rest; }

    bool Has(std::string_view literal) {
        if (!isWell || !rest.starts_with(literal)) return false;
        rest.remove_prefix(literal.size());
        return true;
    }
    Scanner& Literal(std::string_view literal) {
        if (!Has(literal)) isWell = false;
        return *this;
    }
    // One or more characters of a kind.
    std::string_view Some(int (*isOfKind)(int)) {
        std::size_t count = 0;
        while (count < rest.size() && isOfKind(static_cast<unsigned char>(rest[count]))) ++count;
        if (count == 0) isWell = false;
        return Take(count);
    }
    std::string_view Number() {
        Has("-");
        return Some(isdigit);
    }
    // Takes what stands in front of a literal on the same line, and the literal.
    std::string_view Before(std::string_view literal) {
        const std::size_t at = rest.substr(0, rest.find('\n')).find(literal);
        if (at == rest.npos) isWell = false;
        const std::string_view text = Take(isWell ? at : 0);
        Literal(literal);
        return text;
    }
    std::string_view Line() { return Take(std::min(rest.find('\n'), rest.size())); }
    std::string_view Take(std::size_t count) {
        const std::string_view taken = isWell ? rest.substr(0, count) : std::string_view();
        rest.remove_prefix(taken.size());
        return taken;
    }

private:
    std::string_view rest;
    bool isWell = true;
};

int IsNamePart(int c) { return isalnum(c) || c == '_'; }

void TakeTimeOfDay(Scanner& scanner) {
    scanner.Some(isdigit);
    scanner.Literal(":").Some(isdigit);
    scanner.Literal(":").Some(isdigit);
}

// "CKR_OK123clks", "***CKR_DATA_INVALID***123clks", "***CKR_UNKNOWN 0x5***123clks".
std::string TakeResult(Scanner& scanner) {
    if (scanner.Has("CKR_OK")) {
        scanner.Number();
        scanner.Literal("clks");
        return "CKR_OK";
    }
    std::string result = "CKR_";
    result += scanner.Literal("***CKR_").Before("***");
    scanner.Number();
    scanner.Literal("clks");
    return result;
}

bool TakeNewRecord(std::string_view& text, LogRecord& record) {
    Scanner scanner(text);
    record.isStart = scanner.Literal("\n").Has("\n");
    TakeTimeOfDay(scanner);
    record.process = std::atoi(std::string(scanner.Literal(" ").Number()).c_str());
    record.thread = scanner.Literal("-").Before(record.isStart ? ":STRT" : ":FINI");
    record.function = scanner.Some(IsNamePart);
    scanner.Literal(" ");
    if (!record.isStart) {
        record.result = TakeResult(scanner);
        scanner.Literal(" ");
    }
    std::string_view children = scanner.Literal("{").Line();
    if (!scanner.IsWell() || !children.ends_with('}')) return false;
    children.remove_suffix(1);
    record.children = children;
    text = scanner.Rest();
    return true;
}

// Takes the text up to the brace that closes a record of the old format. That brace is the only character
// of its line.
bool TakeChildren(Scanner& scanner, std::string& children) {
    constexpr std::string_view kEnd = "\n}";
    const std::string_view rest = scanner.Rest();
    for (std::size_t at = rest.find(kEnd); at != rest.npos; at = rest.find(kEnd, at + 1)) {
        const std::size_t behind = at + kEnd.size();
        if (behind < rest.size() && rest[behind] != '\n') continue;
        children = scanner.Take(at);
        scanner.Literal(kEnd);
        return true;
    }
    return false;
}

bool TakeOldRecord(std::string_view& text, LogRecord& record) {
    Scanner scanner(text);
    record.function = scanner.Literal("\nCommand(").Some(IsNamePart);
    const std::string_view specifier = scanner.Literal(", ").Some(IsNamePart);
    if (specifier != "None") record.function.append("_").append(specifier);
    record.isStart = scanner.Literal(", ").Has("Start");
    if (record.isStart) {
        scanner.Literal(")");
    } else {
        record.result = scanner.Literal("End, ").Before(")");
    }
    record.process = std::atoi(std::string(scanner.Literal(" PID:  ").Number()).c_str());
    const std::size_t calendar = scanner.Literal("  Time:  ").Line().size();
    scanner.Literal("\n");
    if (!record.isStart) {
        scanner.Literal(" // ").Number();
        scanner.Literal(" clock cycles");
    }
    scanner.Literal("\n{");
    if (!scanner.IsWell() || calendar != 24 || !TakeChildren(scanner, record.children)) return false;
    text = scanner.Rest();
    return true;
}

std::string BytesOfHex(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return bytes;
}

// Returns the children with numbers behind "=" and bytes in quotes.
std::string ChildrenOfEvent(simdjson::dom::array elements) {
    std::string children;
    for (const simdjson::dom::element element : elements) {
        simdjson::dom::element value;
        std::string_view text;
        if (element["value"].get(value) == simdjson::SUCCESS) {
            children += '=';
            children += value.get(text) == simdjson::SUCCESS ? std::string(text) : simdjson::minify(value);
        } else if (element["text"].get(text) == simdjson::SUCCESS) {
            children += '"';
            children += text;
            children += '"';
        } else if (element["hex"].get(text) == simdjson::SUCCESS) {
            children += '"' + BytesOfHex(std::string(text)) + '"';
        }
        children += ' ';
    }
    return children;
}

// Throws simdjson_error if the event lacks a field.
void FillFromEvent(simdjson::dom::element event, LogRecord& record) {
    record.isStart = std::string_view(event["event"]) == "start";
    record.function = std::string_view(event["function"]);
    record.function.erase(0, record.function.find('_') + 1);
    record.process = static_cast<int>(std::int64_t(event["pid"]));
    record.thread = std::to_string(std::int64_t(event["tid"]));
    if (!record.isStart) {
        record.result = std::string_view(event["result"]);
        if (record.result == "CKR_UNKNOWN") {
            char number[20];
            std::snprintf(number, sizeof number, " 0x%" PRIx64, std::uint64_t(event["rv"]));
            record.result += number;
        }
    }
    record.children = ChildrenOfEvent(event[record.isStart ? "in" : "out"]);
}

bool TakeEvent(std::string_view& text, LogRecord& record) {
    // A parser that is used again allocates nothing. Logs hold millions of events.
    static thread_local simdjson::dom::parser parser;
    const std::size_t end = text.find('\n');
    if (!text.starts_with(R"({"event":")") || end == text.npos) return false;
    try {
        FillFromEvent(parser.parse(text.data(), end), record);
    } catch (const simdjson::simdjson_error&) {
        return false;
    }
    text.remove_prefix(end + 1);
    return true;
}

}  // namespace

unsigned long LogRecord::FirstNumber() const {
    const std::size_t at = children.find_first_of("=(");
    return at == children.npos ? 0 : std::strtoul(children.c_str() + at + 1, nullptr, 0);
}

ParsedLog ParseLog(std::string_view text) {
    const Unwatched parsing;
    ParsedLog log;
    while (!text.empty()) {
        LogRecord record;
        if (!TakeNewRecord(text, record)) {
            record = {};
            if (!TakeOldRecord(text, record)) {
                record = {};
                if (!TakeEvent(text, record)) break;
            }
        }
        log.records.push_back(record);
    }
    log.remainder = text;
    return log;
}
