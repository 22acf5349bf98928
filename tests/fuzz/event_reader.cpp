#include "tests/fuzz/event_reader.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string_view>
#include <vector>

namespace {

using nlohmann::json;

constexpr std::string_view kMask = "********";
const std::string kUnavailable(8, '\xFF');

std::string currentEvents;

void Require(bool holds, const std::string& what, const json& where = {}) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\nat %s\nin %s\n", what.c_str(),
                 where.dump(-1, ' ', false, json::error_handler_t::replace).c_str(), currentEvents.c_str());
    std::abort();
}

std::string AsBytes(CK_ULONG number) {
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

CK_ULONG NumberIn(const json& value) {
    if (value.is_string()) {
        const CK_ULONG number = std::stoul(value.get<std::string>());
        Require(number > 1UL << 53, "only numbers above 2^53 are strings", value);
        return number;
    }
    Require(value.is_number_unsigned(), "a number", value);
    Require(value.get<CK_ULONG>() <= 1UL << 53, "numbers above 2^53 are strings", value);
    return value.get<CK_ULONG>();
}

std::string BytesOfHex(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return bytes;
}

// Returns the bytes of an object with "text", "hex" or neither.
std::string BytesIn(const json& object) {
    Require(!(object.contains("text") && object.contains("hex")), "either text or digits", object);
    if (object.contains("text")) return object["text"];
    return object.contains("hex") ? BytesOfHex(object["hex"]) : std::string();
}

void RequireBytes(const json& object, const std::string& expected) {
    const CK_ULONG size = NumberIn(object.at("size"));
    const std::string bytes = BytesIn(object);
    if (size == CK_UNAVAILABLE_INFORMATION) return Require(bytes.empty(), "no bytes of no size", object);
    Require(bytes == expected, "the bytes", object);
    Require(bytes.size() <= size, "the size", object);
}

std::string BytesOfAttribute(const json& attribute) {
    if (!attribute.contains("value")) return BytesIn(attribute);
    const json& value = attribute["value"];
    if (value.is_boolean()) return std::string(1, value.get<bool>() ? '\1' : '\0');
    if (!value.is_array()) return AsBytes(NumberIn(value));
    std::string bytes;
    for (const json& mechanism : value) bytes += AsBytes(NumberIn(mechanism.at("number")));
    return bytes;
}

void RequireAttribute(const json& attribute, const ExpectedChild& child) {
    Require(NumberIn(attribute.at("number")) == child.numbers.at(0), "the attribute's number", attribute);
    if (child.shape == Shape::kType) return;
    if (attribute.contains("unavailable"))
        return Require(child.bytes == kUnavailable, "unavailable", attribute);
    const bool isBoolean = attribute.contains("value") && attribute["value"].is_boolean();
    if (isBoolean) {
        Require(attribute["value"].get<bool>() == (child.bytes.at(0) != '\0'), "the boolean", attribute);
    } else {
        Require(BytesOfAttribute(attribute) == child.bytes, "the attribute's bytes", attribute);
    }
}

void RequireMembers(const json& structure, const std::vector<CK_ULONG>& numbers,
                    const std::vector<const char*>& names) {
    for (std::size_t i = 0; i < names.size() && structure.size() > 1; ++i)
        Require(NumberIn(structure.at(names[i])) == numbers.at(i), names[i], structure);
}

void RequireChild(const json& element, const ExpectedChild& child);

// The children of a structure are its members, in the order of the events' text. A parsed object loses that
// order: each value must only be a member's.
void RequireStructure(const json& structure, const ExpectedChild& child) {
    Require(child.children.empty() == (structure.size() == 1), "a structure has members", structure);
    if (child.children.empty()) return;
    for (const ExpectedChild& member : child.children) {
        bool isThere = false;
        for (const auto& [name, value] : structure.items()) {
            if (name == "kind") continue;
            if (member.shape != Shape::kBytes) {
                isThere |=
                    (value.is_number() || value.is_string()) &&
                    (value.is_number() ? NumberIn(value) == member.numbers.at(0)
                                       : value.get<std::string>() == std::to_string(member.numbers.at(0)));
            } else if (name == "cryptokiVersion") {
                isThere |= member.bytes.size() == 2 &&
                           value["major"].get<int>() == static_cast<unsigned char>(member.bytes[0]) &&
                           value["minor"].get<int>() == static_cast<unsigned char>(member.bytes[1]);
            } else if (value.is_object()) {
                isThere |= value.contains("hex") && BytesOfHex(value["hex"]) == member.bytes;
            } else if (value.is_string()) {
                const std::string text = value;
                isThere |= member.bytes.starts_with(text) &&
                           member.bytes.find_first_not_of(std::string_view(" \0", 2), text.size()) ==
                               member.bytes.npos;
            }
        }
        Require(isThere, "a member of the structure", structure);
    }
}

void RequireList(const json& list, const ExpectedChild& child) {
    if (list.contains("count"))
        return Require(child.children.empty(), "a list without an array is empty", list);
    const json& values = list.at("values");
    Require(values.size() == child.children.size(), "the length of the list", list);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const json& number = values[i].is_object() ? values[i].at("number") : values[i];
        Require(NumberIn(number) == child.children[i].numbers.at(0), "an element of the list", list);
    }
}

void RequireChildren(const json& elements, const std::vector<ExpectedChild>& children) {
    Require(elements.size() == children.size(), "the number of children", elements);
    for (std::size_t i = 0; i < children.size(); ++i) RequireChild(elements[i], children[i]);
}

void RequireComposite(const json& element, const ExpectedChild& child) {
    if (element.contains("attributes")) {
        const json& attributes = element["attributes"];
        Require(attributes.size() == child.children.size(), "the number of attributes", element);
        for (std::size_t i = 0; i < attributes.size(); ++i)
            RequireAttribute(attributes[i], child.children[i]);
    } else if (element.contains("values") || element.contains("count")) {
        RequireList(element, child);
    } else if (element["kind"] == "HAStatus" || element["kind"] == "HAMember" ||
               element["kind"] == "MofNStatusInfo") {
        RequireChildren(element.at("children"), child.children);
    } else {
        RequireStructure(element, child);
    }
}

// The length of a secret has no value.
void RequireNumber(const json& element, CK_ULONG expected) {
    if (element["kind"] == "MechanismType")
        return Require(NumberIn(element.at("number")) == expected, "the mechanism", element);
    if (element.contains("value")) Require(NumberIn(element["value"]) == expected, "the number", element);
}

void RequireChild(const json& element, const ExpectedChild& child) {
    const std::string kind = element.at("kind");
    if (kind == "PIN") {
        Require(child.bytes == kMask || child.bytes.empty(), "a mask for a secret", element);
        for (const auto& member : element.items())
            Require(member.key() == "kind" || member.key() == "name", "nothing of a secret", element);
        return;
    }
    switch (child.shape) {
        case Shape::kNumber:
        case Shape::kHex:
        case Shape::kDecimal:
        case Shape::kShort:
            return RequireNumber(element, child.numbers.at(0));
        case Shape::kBoolean:
            return Require(element.at("value").get<bool>() == (child.numbers.at(0) != 0), "the boolean",
                           element);
        case Shape::kBytes:
        case Shape::kValue:
        case Shape::kText:
            return RequireBytes(element, child.bytes);
        case Shape::kMechanism:
            if (element.size() == 1) return;
            Require(NumberIn(element.at("number")) == child.numbers.at(0), "the mechanism", element);
            return RequireBytes(element.at("parameter"), child.bytes);
        case Shape::kKeySizes:
            return RequireMembers(element, child.numbers, {"ulMinKeySize", "ulMaxKeySize", "flags"});
        case Shape::kSession:
            return RequireMembers(element, child.numbers, {"slotID", "state", "flags", "ulDeviceError"});
        case Shape::kAttribute:
        case Shape::kType:
            return RequireAttribute(element, child);
        case Shape::kChildren:
            return RequireComposite(element, child);
    }
}

std::vector<json> Lines(const std::string& events) {
    std::vector<json> lines;
    for (std::size_t at = 0; at < events.size();) {
        const std::size_t end = events.find('\n', at);
        Require(end != events.npos, "every event ends its line");
        lines.push_back(json::parse(events.begin() + static_cast<std::ptrdiff_t>(at),
                                    events.begin() + static_cast<std::ptrdiff_t>(end), nullptr, false));
        Require(!lines.back().is_discarded() && lines.back().is_object(), "every line is an object");
        at = end + 1;
    }
    return lines;
}

void RequireHead(const json& event, const char* kind, const std::string& function) {
    Require(event["event"] == kind && event["function"] == function, "which event it is", event);
    Require(event["pid"] == getpid() && event["tid"] == gettid(), "process and thread", event);
}

}  // namespace

void RequireEvents(const std::string& events, const std::string& function, const ExpectedRecord& start,
                   const ExpectedRecord& end, CK_RV rv) {
    currentEvents = events;
    const std::vector<json> lines = Lines(events);
    Require(lines.size() == 2, "a call has two events");
    RequireHead(lines[0], "start", function);
    RequireHead(lines[1], "end", function);
    Require(lines[0]["call"] == lines[1]["call"] && lines[0]["run"] == lines[1]["run"],
            "both are of one call");
    Require(NumberIn(lines[1]["rv"]) == rv, "the result");
    Require(!lines[0].contains("out"), "no output of a call that begins");
    Require(lines[0]["in"] == lines[1]["in"], "the input of both");
    RequireChildren(lines[0]["in"], start.children);
    // Records show the address of the slot, and events show the slot.
    if (function != "C_WaitForSlotEvent") RequireChildren(lines[1]["out"], end.children);
}
