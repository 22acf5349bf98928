#include "tool/diff/comparable_call.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "util/json_writer.h"

namespace ckscribe {

namespace {

constexpr char kSeparator = '\x1f';
// This mark stands between the two readings of a fact that can be read in two ways.
constexpr char kOr = '|';

// Text logs print these for hidden values, and for values without a name.
constexpr std::string_view kHidden = "********";
constexpr std::string_view kUnknownMechanism = "Unknown Mechanism Type";
constexpr std::string_view kUnknownAttribute = "CKA_XXX";

// Text logs print these functions alike.
constexpr std::string_view kPrintedAlike[] = {"C_GetFunctionStatus", "C_CancelFunction", "UnknownType"};

// These are addresses of numbers. Each stands in front of its number.
constexpr std::string_view kAddresses[] = {"pusEncryptedDataLen", "pusEncryptedPartLen"};

bool IsAmong(std::span<const std::string_view> texts, std::string_view text) {
    return std::ranges::find(texts, text) != texts.end();
}

bool IsOfOneRun(const Value& value) {
    std::string_view name = value.name;
    if (name.ends_with('=')) name.remove_suffix(1);
    return value.kind == "SessionHandle" || value.kind == "ObjectHandle" || value.kind == "Pointer" ||
           IsAmong(kAddresses, name);
}

// Structures are not compared: they say how much memory and how many sessions are in use, and no two runs
// share these.
bool IsComparedList(const Value& value) {
    return value.kind == "SlotIDList" || value.kind == "MechTypeList" || value.kind == "ObjectHandleList";
}

std::string Hex(std::string_view bytes) {
    std::string hex;
    for (const char byte : bytes) hex += fmt::format("{:02x}", static_cast<unsigned char>(byte));
    return hex;
}

// Returns whether the text may be the digits of bytes that the log does not write as a text.
bool IsDigitsOfBytes(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        unsigned value = 0;
        const char* const end = text.data() + i + 2;
        if (std::from_chars(text.data() + i, end, value, 16).ptr != end) return false;
        bytes += static_cast<char>(value);
    }
    const bool hasCapitals = text.find_first_of("ABCDEF") != text.npos;
    return text.size() % 2 == 0 && !hasCapitals && !IsReadableText(bytes);
}

// Returns the bytes of a number as it lies in memory.
std::string BytesOf(std::uint64_t number, std::uint64_t size) {
    std::string bytes;
    for (std::uint64_t i = 0; i < std::min<std::uint64_t>(size, sizeof number); ++i)
        bytes += static_cast<char>(number >> (8 * i) & 0xff);
    return bytes;
}

class Builder {
public:
    explicit Builder(const Call& call) : isFormUnknown(call.format == LogFormat::kNewText) {}

    void Fact(const std::string& fact) { (built.facts += fact) += kSeparator; }
    void Shape(std::string_view part) { (built.shape += part) += ' '; }

    void Add(const Value& value) {
        Shape(value.kind);
        if (IsComparedList(value)) return AddList(value);
        if (value.kind == "Mechanism" || value.kind == "MechanismType") return AddMechanism(value);
        if (value.kind == "AttributeList") return AddAttributes(value);
        if (value.kind == "PIN") return;
        if (value.kind == "ByteString" || value.kind == "Value")
            return AddBytes(value.bytes, value.size, value.isText);
        AddNumber(value);
    }

    Comparable built;

private:
    // A text log has only the low 32 bits of some numbers.
    void AddNumber(const Value& value) {
        if (value.boolean) return AddTwo(*value.boolean ? "true" : "false", "");
        if (!value.number) return AddTwo("", "");
        AddTwo(fmt::format("{}", *value.number & 0xffffffff),
               value.isCut ? "" : fmt::format("{}", *value.number));
    }

    void AddTwo(const std::string& one, const std::string& other) {
        Fact(one);
        Fact(other);
    }

    // Text logs print no bytes and no pointer alike, and hide the size with the bytes.
    void AddBytes(const std::optional<std::string>& bytes, const std::optional<std::uint64_t>& size,
                  bool isText = true) {
        if (bytes == kHidden) return AddTwo("", "");
        const bool isEmpty = bytes ? bytes->empty() : size == 0U;
        if (isEmpty) return AddTwo("nothing", "");
        // The new text format prints bytes and a text of their digits alike.
        if (bytes && isFormUnknown && !isText) {
            const std::string digits = Hex(*bytes);
            return AddTwo(fmt::format("{}{}{}", digits, kOr, Hex(digits)),
                          size ? fmt::format("{}{}{}", *size, kOr, 2 * *size) : "");
        }
        if (bytes && isFormUnknown && IsDigitsOfBytes(*bytes)) {
            return AddTwo(fmt::format("{}{}{}", *bytes, kOr, Hex(*bytes)),
                          size ? fmt::format("{}{}{}", *size / 2, kOr, *size) : "");
        }
        AddTwo(bytes ? Hex(*bytes) : "", size ? fmt::format("{}", *size) : "");
    }

    // Adds the elements that the log shows, and their count. If the caller gave no room, a text log shows an
    // empty list, and an event shows how many elements there would be.
    void AddList(const Value& value) {
        const bool isCount = value.children.size() == 1 && value.children.front().name == "count";
        if (isCount) return AddTwo("", fmt::format("{}", value.children.front().number.value_or(0)));
        const std::size_t count = value.children.size();
        std::string elements = value.kind == "ObjectHandleList" ? fmt::format("{} handles", count) : "[";
        if (value.kind != "ObjectHandleList") {
            for (const Value& element : value.children)
                elements += fmt::format("{} ", element.number.value_or(0) & 0xffffffff);
        }
        AddTwo(elements, count == 0 ? "" : fmt::format("{}", count));
    }

    void AddMechanism(const Value& value) {
        Fact(value.type == kUnknownMechanism ? "" : value.type);
        // A text log shows the number of a mechanism that is asked about, and no name.
        Fact(value.number ? fmt::format("{}", *value.number & 0xffffffff) : "");
    }

    void AddAttributes(const Value& list) {
        Shape(fmt::format("{}", list.children.size()));
        for (const Value& attribute : list.children) {
            Fact(attribute.type == kUnknownAttribute ? "" : attribute.type);
            AddValue(attribute);
        }
    }

    // Text logs print the bytes of an attribute as they lie in memory.
    void AddValue(const Value& attribute) {
        if (attribute.isUnavailable) return AddTwo("unavailable", "");
        if (attribute.boolean) return AddBytes(std::string(1, *attribute.boolean ? '\1' : '\0'), 1);
        const bool isNumber = attribute.children.size() == 1 && attribute.children.front().number;
        if (!isNumber) return AddBytes(attribute.bytes, attribute.size, attribute.isText);
        const std::uint64_t size = attribute.size.value_or(sizeof(std::uint64_t));
        AddBytes(BytesOf(*attribute.children.front().number, size), size);
    }

    const bool isFormUnknown;
};

}  // namespace

std::vector<Value> ComparedInputs(const Call& call) {
    std::vector<Value> values = call.In();
    std::erase_if(values, IsOfOneRun);
    return values;
}

std::vector<Value> ComparedOutputs(const Call& call) {
    std::vector<Value> values = call.Out();
    std::erase_if(values, [](const Value& value) { return !IsComparedList(value); });
    return values;
}

Comparable ComparableQuestion(const Call& call) {
    Builder builder(call);
    builder.Shape(IsAmong(kPrintedAlike, call.Function()) ? kPrintedAlike[0] : call.Function());
    for (const Value& value : ComparedInputs(call)) builder.Add(value);
    return builder.built;
}

Comparable ComparableAnswer(const Call& call) {
    Builder builder(call);
    if (!call.hasEnd) {
        builder.Shape("?");
        return builder.built;
    }
    builder.Shape(call.rv ? fmt::format("{:#x}", *call.rv) : std::string(call.result));
    for (const Value& value : ComparedOutputs(call)) builder.Add(value);
    return builder.built;
}

namespace {

// Returns whether two facts are equal in one of their readings.
bool IsFactAlike(std::string_view one, std::string_view other) {
    if (one.empty() || other.empty() || one == other) return true;
    const auto readings = [](std::string_view fact) {
        const std::size_t end = fact.find(kOr);
        return end == fact.npos ? std::pair(fact, fact)
                                : std::pair(fact.substr(0, end), fact.substr(end + 1));
    };
    const auto [first, second] = readings(one);
    const auto [otherFirst, otherSecond] = readings(other);
    return first == otherFirst || first == otherSecond || second == otherFirst || second == otherSecond;
}

}  // namespace

bool AreFactsAlike(std::string_view one, std::string_view other) {
    while (!one.empty() && !other.empty()) {
        const std::size_t oneEnd = one.find(kSeparator);
        const std::size_t otherEnd = other.find(kSeparator);
        if (!IsFactAlike(one.substr(0, oneEnd), other.substr(0, otherEnd))) return false;
        one.remove_prefix(oneEnd + 1);
        other.remove_prefix(otherEnd + 1);
    }
    return one.empty() && other.empty();
}

}  // namespace ckscribe
