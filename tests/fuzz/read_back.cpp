#include "tests/fuzz/read_back.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <vector>

#include "functions/pkcs11_names.h"
#include "reader/call_reader.h"

namespace {

using ckscribe::Call;
using ckscribe::Value;

class OneCall : public ckscribe::CallSink {
public:
    void OnCall(const Call& call) override {
        ++count;
        kept = ckscribe::KeptCall(call);
    }
    void OnUnreadable(const ckscribe::UnreadableStretch&) override { ++unreadable; }

    int count = 0;
    int unreadable = 0;
    ckscribe::KeptCall kept;
};

// Returns bytes as the log writes them, without quotes.
std::string Written(const std::string& bytes) {
    static constexpr char kDigits[] = "0123456789abcdefghijklmnopqrstuv";
    if (bytes.empty()) return "<null>";
    std::size_t controls = 0;
    bool isText = true;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        isText = isText && value <= 126;
        controls += value < 32 ? 1U : 0U;
    }
    std::string written;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        if (!isText || (controls != 0 && bytes.size() - controls <= controls)) {
            written += {kDigits[value >> 4], kDigits[value & 15]};
        } else if (controls != 0 && value < 32) {
            written += {'\\', kDigits[value]};
        } else if (controls != 0 && (byte == '\\' || byte == '"')) {
            written += {byte, byte};
        } else {
            written += byte;
        }
    }
    return written;
}

// Returns whether a reader may take a part of these bytes for their end.
bool HasSeveralEnds(const std::vector<ExpectedChild>& children) {
    for (const ExpectedChild& child : children) {
        const std::string written = child.shape == Shape::kText ? "" : Written(child.bytes);
        for (const char* const closing : {"\" ", "\") ", "\");", "\"));"}) {
            // The last of these characters may be what follows the bytes.
            if ((written + "\" ").find(closing) < written.size()) return true;
        }
        if (written.ends_with('"') || HasSeveralEnds(child.children)) return true;
    }
    return false;
}

class Comparison {
public:
    Comparison(std::string_view log, bool isNew) : log(log), isNew(isNew) {}

    void Compare(const std::vector<ExpectedChild>& expected, const std::vector<Value>& values) {
        Require(expected.size() == values.size(), "as many children");
        for (std::size_t i = 0; i < expected.size(); ++i) Compare(expected[i], values[i]);
    }

    void Require(bool holds, const char* what) const {
        if (holds) return;
        std::fprintf(stderr, "does not come back: %s\nof:%.*s\n", what, static_cast<int>(log.size()),
                     log.data());
        std::abort();
    }

private:
    void Compare(const ExpectedChild& expected, const Value& value) {
        switch (expected.shape) {
            case Shape::kNumber:
                return CompareNumber(expected.numbers[0], value, isNew);
            case Shape::kDecimal:
                return CompareNumber(expected.numbers[0], value, true);
            case Shape::kHex:
            case Shape::kShort:
                return CompareNumber(expected.numbers[0], value, false);
            case Shape::kBoolean:
                return Require(value.boolean == (expected.numbers[0] != 0), "a boolean");
            case Shape::kBytes:
            case Shape::kValue:
                if (value.kind == "PIN") {
                    Require(!value.bytes && (expected.bytes.empty() || expected.bytes == "********"),
                            "a PIN");
                    return;
                }
                return CompareBytes(expected.bytes, value);
            case Shape::kText:
                return Require(value.bytes == expected.bytes && value.isText, "a text");
            case Shape::kMechanism:
                Require(value.children.size() == 1 && value.children[0].name == "parameter", "a parameter");
                CompareType(GetMechanismType(expected.numbers[0]), value);
                return CompareBytes(expected.bytes, value.children[0]);
            case Shape::kAttribute:
                CompareType(GetAttributeType(expected.numbers[0]), value);
                return CompareBytes(expected.bytes, value);
            case Shape::kType:
                CompareType(GetAttributeType(expected.numbers[0]), value);
                return Require(!value.bytes, "a type without a value");
            case Shape::kKeySizes:
                Require(value.children.size() == 3, "three numbers");
                CompareNumber(expected.numbers[0], value.children[0], true);
                CompareNumber(expected.numbers[1], value.children[1], true);
                return CompareNumber(expected.numbers[2], value.children[2], false);
            case Shape::kSession:
                Require(value.children.size() == 4, "four numbers");
                for (std::size_t i = 0; i < 4; ++i)
                    CompareNumber(expected.numbers[i], value.children[i], false);
                return;
            case Shape::kChildren:
                return Compare(expected.children, value.children);
        }
    }

    void CompareNumber(CK_ULONG expected, const Value& value, bool isWhole) const {
        Require(value.isCut == !isWhole, "whether a number is cut");
        Require(value.number == (isWhole ? expected : static_cast<std::uint32_t>(expected)), "a number");
    }

    void CompareType(std::string_view expected, const Value& value) const {
        Require(value.type == expected, "a type");
    }

    void CompareBytes(const std::string& expected, const Value& value) const {
        Require(value.bytes.has_value(), "bytes");
        // The new format does not say in which form bytes are written.
        const bool isSame = value.bytes == expected || (isNew && Written(*value.bytes) == Written(expected));
        Require(isSame && value.size == value.bytes->size(), "the same bytes");
    }

    std::string_view log;
    bool isNew;
};

// An EventComparison compares the values of events, which lose nothing.
class EventComparison {
public:
    explicit EventComparison(std::string_view events) : events(events) {}

    void Compare(const std::vector<ExpectedChild>& expected, const std::vector<Value>& values) {
        Require(expected.size() == values.size(), "as many children");
        for (std::size_t i = 0; i < expected.size(); ++i) Compare(expected[i], values[i]);
    }

    void Require(bool holds, const char* what) const {
        if (holds) return;
        std::fprintf(stderr, "does not come back: %s\nof:\n%.*s\n", what, static_cast<int>(events.size()),
                     events.data());
        std::abort();
    }

private:
    void Compare(const ExpectedChild& expected, const Value& value) {
        if (value.kind == "PIN") return Require(!value.bytes && !value.number && !value.size, "a PIN");
        switch (expected.shape) {
            case Shape::kNumber:
            case Shape::kHex:
            case Shape::kDecimal:
            case Shape::kShort:
                // The length of a secret has no value.
                return Require(
                    !value.isCut && value.number.value_or(expected.numbers[0]) == expected.numbers[0],
                    "a number");
            case Shape::kBoolean:
                return Require(value.boolean == (expected.numbers[0] != 0), "a boolean");
            case Shape::kBytes:
            case Shape::kValue:
            case Shape::kText:
                return CompareBytes(expected.bytes, value);
            case Shape::kMechanism:
                // A missing mechanism has neither.
                if (!value.number && value.children.empty()) return;
                Require(value.number == expected.numbers[0] && value.children.size() == 1, "a mechanism");
                return CompareBytes(expected.bytes, value.children[0]);
            case Shape::kAttribute:
            case Shape::kType:
                return CompareAttribute(expected, value);
            case Shape::kKeySizes:
            case Shape::kSession:
                Require(value.children.empty() || value.children.size() == expected.numbers.size(),
                        "members");
                for (std::size_t i = 0; i < value.children.size(); ++i)
                    Require(value.children[i].number == expected.numbers[i], "a member");
                return;
            case Shape::kChildren:
                return CompareGroup(expected, value);
        }
    }

    void CompareBytes(const std::string& expected, const Value& value) const {
        Require(value.size.has_value(), "a size");
        const bool hasNoSize = *value.size == CK_UNAVAILABLE_INFORMATION;
        Require(value.bytes.value_or("") == (hasNoSize ? "" : expected), "bytes");
    }

    void CompareAttribute(const ExpectedChild& expected, const Value& value) const {
        Require(value.number == expected.numbers[0], "the number of an attribute");
        if (expected.shape == Shape::kType) return;
        if (value.isUnavailable) return Require(expected.bytes == std::string(8, '\xff'), "unavailable");
        if (value.boolean) return Require(*value.boolean == (expected.bytes.at(0) != '\0'), "a boolean");
        std::string bytes = value.bytes.value_or("");
        for (const Value& part : value.children) {
            if (part.name != "value") continue;
            if (part.number) AddNumber(bytes, *part.number);
            for (const Value& mechanism : part.children) AddNumber(bytes, mechanism.number.value_or(0));
        }
        Require(bytes == expected.bytes, "the bytes of an attribute");
    }

    static void AddNumber(std::string& bytes, std::uint64_t number) {
        bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
    }

    // Members of a structure stand in the order of the records, and elements of a list are numbers.
    void CompareGroup(const ExpectedChild& expected, const Value& value) {
        Require(expected.children.size() == value.children.size(), "as many members");
        for (std::size_t i = 0; i < value.children.size(); ++i) {
            const Value& member = value.children[i];
            const ExpectedChild& child = expected.children[i];
            const bool isVersion = member.name == "cryptokiVersion";
            if (isVersion && member.children.size() == 2) {
                for (std::size_t j = 0; j < 2; ++j)
                    Require(member.children[j].number == static_cast<unsigned char>(child.bytes.at(j)),
                            "a version");
            } else if (member.kind.empty() && child.shape == Shape::kBytes) {
                // Texts of fixed length come without the blanks at their end.
                const std::string bytes =
                    member.number ? std::to_string(*member.number) : member.bytes.value_or("");
                const std::size_t last = child.bytes.find_last_not_of(std::string_view(" \0", 2));
                const std::string trimmed = child.bytes.substr(0, last == child.bytes.npos ? 0 : last + 1);
                Require(bytes == child.bytes || bytes == trimmed ||
                            (bytes.starts_with(trimmed) && child.bytes.starts_with(bytes)) ||
                            (member.number && std::stoul("0" + trimmed) == *member.number),
                        "a text of fixed length");
            } else {
                Compare(child, member);
            }
        }
    }

    std::string_view events;
};

}  // namespace

void RequireReadBack(std::string_view log, const std::string& function, const ExpectedRecord& start,
                     const ExpectedRecord& end) {
    const bool isNew = log.find("Command(") != 1;
    OneCall sink;
    ckscribe::CallReader reader(sink);
    reader.Feed(log);
    reader.Finish();
    const Call& call = sink.kept.Get();
    Comparison comparison(log, isNew);
    comparison.Require(sink.unreadable == 0, "everything is read");
    comparison.Require(sink.count == 1, "one call");
    comparison.Require(call.hasStart && call.hasEnd, "a start and an end");
    comparison.Require(call.Function() == (start.command == "UnknownType" ? start.command : function),
                       "the function");
    comparison.Require(call.rv == end.rv, "the result");
    if (HasSeveralEnds(start.children) || HasSeveralEnds(end.children)) return;
    comparison.Compare(start.children, call.In());
    comparison.Compare(end.children, call.Out());
}

void RequireEventsReadBack(std::string_view events, const std::string& function, const ExpectedRecord& start,
                           const ExpectedRecord& end) {
    OneCall sink;
    ckscribe::CallReader reader(sink);
    reader.Feed(events);
    reader.Finish();
    const Call& call = sink.kept.Get();
    EventComparison comparison(events);
    comparison.Require(sink.unreadable == 0, "everything is read");
    comparison.Require(sink.count == 1, "one call");
    comparison.Require(call.hasStart && call.hasEnd, "a start and an end");
    comparison.Require(call.Function() == function, "the function");
    comparison.Require(call.rv == end.rv, "the result");
    comparison.Compare(start.children, call.In());
    // Records show the address of the slot, and events show the slot.
    if (function != "C_WaitForSlotEvent") comparison.Compare(end.children, call.Out());
}
