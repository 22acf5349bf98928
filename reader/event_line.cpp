#include "reader/event_line.h"

#include <simdjson.h>

#include <charconv>

#include "reader/event_values.h"
#include "reader/plain_event.h"
#include "reader/result_names.h"

namespace ckscribe {

static_assert(kEventPadding >= simdjson::SIMDJSON_PADDING);

struct EventLineReader::Parser {
    simdjson::ondemand::parser json;
    EventValues values;
};

namespace {

using simdjson::ondemand::json_type;

// Returns a string as it stands in the line, without its quotes. Names, times and runs hold no escapes.
std::string_view PlainString(simdjson::ondemand::value& value) {
    std::string_view token = value.raw_json_token();
    while (token.ends_with(' ')) token.remove_suffix(1);
    if (token.size() < 2 || token.front() != '"' || token.back() != '"') return {};
    token = token.substr(1, token.size() - 2);
    return token.find('\\') == token.npos ? token : std::string_view();
}

// Reads a JSON number, or a string of decimal digits, which stands for a number above 2^53.
bool ReadNumber(simdjson::ondemand::value& value, std::uint64_t& number) {
    if (value.get_uint64().get(number) == simdjson::SUCCESS) return true;
    return value.get_uint64_in_string().get(number) == simdjson::SUCCESS;
}

bool ReadOptional(simdjson::ondemand::value& value, std::optional<std::uint64_t>& number) {
    std::uint64_t read = 0;
    if (!ReadNumber(value, read)) return false;
    number = read;
    return true;
}

bool IsKey(std::string_view key, std::string_view name) { return key == name; }

}  // namespace

EventLineReader::EventLineReader(bool usesPlainWay)
    : parser(std::make_unique<Parser>()), usesPlainWay(usesPlainWay) {}
EventLineReader::~EventLineReader() = default;

bool EventLineReader::Read(std::string_view line, Record& record) {
    record = Record{};
    if (usesPlainWay && ReadPlainEvent(line, parser->values, record)) return true;
    record = Record{};
    record.text = line;
    simdjson::ondemand::document document;
    if (parser->json.iterate(line.data(), line.size(), line.size() + kEventPadding).get(document) !=
        simdjson::SUCCESS)
        return false;
    simdjson::ondemand::object object;
    if (document.get_object().get(object) != simdjson::SUCCESS) return false;

    unsigned found = 0;
    for (auto read : object) {
        simdjson::ondemand::field field;
        if (std::move(read).get(field) != simdjson::SUCCESS) return false;
        const char* const start = field.key().raw();
        std::size_t length = 0;
        while (start[length] != '"' && length < 32) ++length;
        const std::string_view key(start, length);
        simdjson::ondemand::value value = field.value();
        std::uint64_t number = 0;
        if (IsKey(key, "event")) {
            const std::string_view event = PlainString(value);
            if (event != "start" && event != "end") return false;
            record.isStart = event == "start";
            found |= kHasEvent;
        } else if (IsKey(key, "time")) {
            if (!parser->values.ReadTime(PlainString(value), record.time)) return false;
        } else if (IsKey(key, "ns")) {
            if (!ReadNumber(value, record.nanoseconds)) return false;
            record.hasNanoseconds = true;
        } else if (IsKey(key, "run")) {
            const std::string_view run = PlainString(value);
            if (run.empty()) return false;
            record.run = parser->values.NumberOfRun(run);
            found |= kHasRun;
        } else if (IsKey(key, "pid")) {
            if (!ReadNumber(value, number)) return false;
            record.process = static_cast<std::uint32_t>(number);
            found |= kHasProcess;
        } else if (IsKey(key, "tid")) {
            // Threads of text logs may have negative numbers.
            if (value.get_int64().get(record.thread) != simdjson::SUCCESS) return false;
            record.hasThread = true;
        } else if (IsKey(key, "call")) {
            if (!ReadNumber(value, record.number)) return false;
            found |= kHasCall;
        } else if (IsKey(key, "function")) {
            const std::string_view name = PlainString(value);
            if (name.empty()) return false;
            record.function = FunctionOfName(name);
            found |= kHasFunction;
        } else if (IsKey(key, "rv")) {
            if (!ReadNumber(value, record.rv)) return false;
            record.hasRv = true;
        } else if (IsKey(key, "result")) {
            const std::string_view name = PlainString(value);
            if (name.empty()) return false;
            record.result = LastingResultName(name);
        } else if (IsKey(key, "session")) {
            if (!ReadOptional(value, record.fields.session)) return false;
        } else if (IsKey(key, "slot")) {
            if (!ReadOptional(value, record.fields.slot)) return false;
        } else if (IsKey(key, "object")) {
            if (!ReadOptional(value, record.fields.object)) return false;
        } else if (IsKey(key, "user")) {
            if (!ReadOptional(value, record.fields.user)) return false;
        } else if (IsKey(key, "mechanism")) {
            record.fields.mechanism = PlainString(value);
        } else if (IsKey(key, "mechanism_number")) {
            if (!ReadOptional(value, record.fields.mechanismNumber)) return false;
        }
    }
    // Nothing may stand behind the object.
    return HasAllOfAnEvent(found, record) && document.current_location().error() == simdjson::OUT_OF_BOUNDS;
}

// ---- Children
// ----------------------------------------------------------------------------------------------

namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;

Value ValueOf(const element& json);

void AddChildren(Value& value, const element& list) {
    simdjson::dom::array array;
    value.isGroup = true;
    if (list.get(array) != simdjson::SUCCESS) return;
    for (const element child : array) value.children.push_back(ValueOf(child));
}

void SetBytes(Value& value, std::string_view text) {
    value.bytes = std::string(text.substr(0, kLargestKeptValue));
    if (!value.size) value.size = text.size();
}

int HexDigit(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    return 0;
}

std::string BytesOfHex(std::string_view hex) {
    std::string bytes;
    bytes.reserve(hex.size() / 2);
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(HexDigit(hex[i]) << 4 | HexDigit(hex[i + 1]));
    return bytes;
}

// Sets `value` to the number, the boolean or the text that stands in `json`.
void SetPlain(Value& value, const element& json) {
    switch (json.type()) {
        case element_type::BOOL:
            value.boolean = bool(json);
            return;
        case element_type::UINT64:
            value.number = std::uint64_t(json);
            return;
        case element_type::INT64:
            value.number = static_cast<std::uint64_t>(std::int64_t(json));
            return;
        case element_type::STRING: {
            const std::string_view text = json;
            std::uint64_t number = 0;
            const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
            // Smaller numbers stand without quotes. Digits in quotes that are not above 2^53 are a text, for
            // example a serial number.
            constexpr std::uint64_t kLargestPlain = std::uint64_t{1} << 53;
            const bool isNumber = error == std::errc() && end == text.data() + text.size();
            if (isNumber && number > kLargestPlain && !text.starts_with('0')) {
                value.number = number;
            } else {
                SetBytes(value, text);
                value.isText = true;
            }
            return;
        }
        default:
            return;
    }
}

// Reads the members that a child of any kind has. Every other member becomes a value of its own with the
// member's name.
Value ValueOf(const element& json) {
    Value value;
    simdjson::dom::object object;
    if (json.get(object) != simdjson::SUCCESS) {
        SetPlain(value, json);
        return value;
    }
    // The number of an attribute or a mechanism is the number of its type.
    const bool hasTypeNumber = object["number"].error() == simdjson::SUCCESS;
    for (const auto& [key, member] : object) {
        std::string_view text;
        const bool isString = member.get(text) == simdjson::SUCCESS;
        if (key == "kind" && isString) {
            value.kind = text;
        } else if (key == "name" && isString) {
            value.name = text;
        } else if (key == "type" && isString) {
            value.type = text;
        } else if (key == "size") {
            Value size;
            SetPlain(size, member);
            value.size = size.number;
        } else if (key == "hex" && isString) {
            SetBytes(value, "");
            const std::string bytes = BytesOfHex(text.substr(0, 2 * kLargestKeptValue));
            value.bytes = bytes;
            if (value.size == 0) value.size = text.size() / 2;
        } else if (key == "text" && isString) {
            SetBytes(value, text);
            value.isText = true;
        } else if (key == "unavailable") {
            value.isUnavailable = true;
        } else if (key == "number") {
            SetPlain(value, member);
        } else if (key == "value") {
            Value plain;
            if (member.type() == element_type::ARRAY) {
                AddChildren(plain, member);
            } else {
                SetPlain(plain, member);
            }
            if (plain.boolean) {
                value.boolean = plain.boolean;
            } else if (plain.number && !hasTypeNumber) {
                value.number = plain.number;
            } else {
                plain.name = "value";
                value.children.push_back(plain);
            }
        } else if (key == "children" || key == "values" || key == "attributes") {
            AddChildren(value, member);
        } else {
            Value other = ValueOf(member);
            if (member.type() == element_type::ARRAY) AddChildren(other, member);
            other.name = key;
            value.children.push_back(other);
        }
    }
    return value;
}

}  // namespace

std::vector<Value> ChildrenOfEvent(std::string_view line, std::string_view member) {
    thread_local simdjson::dom::parser parser;
    simdjson::dom::array children;
    element document;
    std::vector<Value> values;
    if (parser.parse(line.data(), line.size()).get(document) != simdjson::SUCCESS ||
        document[member].get(children) != simdjson::SUCCESS)
        return values;
    for (const element child : children) values.push_back(ValueOf(child));
    return values;
}

std::string MemberOfEvent(std::string_view line, std::string_view member) {
    thread_local simdjson::dom::parser parser;
    simdjson::dom::array children;
    element document;
    if (parser.parse(line.data(), line.size()).get(document) != simdjson::SUCCESS ||
        document[member].get(children) != simdjson::SUCCESS)
        return {};
    return simdjson::minify(children);
}

}  // namespace ckscribe
