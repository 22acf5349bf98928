#include "tool/call_line.h"

#include <fmt/core.h>

#include <algorithm>
#include <ctime>
#include <string_view>

#include "reader/log_reading.h"
#include "tool/harmless_text.h"

namespace ckscribe {

namespace {

// A line shows at most so many bytes or elements of one value.
constexpr std::size_t kMostBytes = 256;
constexpr std::size_t kMostElements = 32;

struct KindLabel {
    std::string_view kind;
    std::string_view label;
};

// These labels name values whose record gives them no name. Kinds that say enough without a label have none.
constexpr KindLabel kLabels[] = {
    {"SessionHandle", "session"},
    {"ObjectHandle", "object"},
    {"SlotID", "slot"},
    {"UserType", "user"},
    {"Flags", "flags"},
    {"Pointer", "pointer"},
    {"SlotIDList", "slots"},
    {"MechTypeList", "mechanisms"},
    {"ObjectHandleList", "objects"},
    {"MechanismType", ""},
    {"Mechanism", ""},
    {"AttributeList", ""},
    {"ByteString", ""},
    {"ULong", ""},
    {"UShort", ""},
    {"ByteBoolean", ""},
    {"Value", ""},
    {"Attribute", ""},
    {"MechanismInfo", ""},
    {"SessionInfo", ""},
    {"TokenInfo", ""},
    {"SlotInfo", ""},
    {"Info", ""},
    {"", ""},
};

std::string LabelOf(const Value& value) {
    std::string_view name = value.name;
    while (name.ends_with('=')) name.remove_suffix(1);
    if (!name.empty()) return Harmless(name);
    const auto* const found = std::ranges::find(kLabels, std::string_view(value.kind), &KindLabel::kind);
    return found == std::end(kLabels) ? Harmless(value.kind) : std::string(found->label);
}

std::string TextOfBytes(const Value& value) {
    const std::string_view bytes = *value.bytes;
    const std::string_view shown = bytes.substr(0, kMostBytes);
    std::string text;
    if (value.isText) {
        text = InQuotes(shown);
    } else {
        for (const char each : shown) text += fmt::format("{:02x}", static_cast<unsigned char>(each));
    }
    const std::uint64_t size = value.size.value_or(bytes.size());
    if (bytes.empty() && !value.isText) return "<0 bytes>";
    return size > shown.size() ? fmt::format("{}... <{} bytes>", text, size) : text;
}

std::string TextOfNumber(const Value& value) {
    const bool isHexadecimal = value.kind == "Flags" || value.kind == "Pointer" || value.name == "flags";
    return isHexadecimal ? fmt::format("{:#x}", *value.number) : fmt::format("{}", *value.number);
}

std::string TextOfChildren(const Value& value) {
    const auto& children = value.children;
    std::string text;
    for (std::size_t i = 0; i < std::min(children.size(), kMostElements); ++i)
        text += fmt::format("{}{}", i == 0 ? "" : " ", ValuesText({children[i]}));
    if (children.size() > kMostElements) text += fmt::format(" ... {} in all", children.size());
    const bool isStructure =
        !children.empty() && (!children.front().name.empty() || !children.front().type.empty());
    return isStructure || value.kind == "AttributeList" ? '{' + text + '}' : '[' + text + ']';
}

// Returns the value without its label.
std::string PlainText(const Value& value) {
    if (value.kind == "PIN") return "********";
    if (value.isUnavailable) return "<unavailable>";
    if (value.bytes) return TextOfBytes(value);
    if (value.boolean) return *value.boolean ? "true" : "false";
    if (!value.children.empty() || value.isGroup) return TextOfChildren(value);
    if (value.number && value.type.empty()) return TextOfNumber(value);
    if (value.size) return fmt::format("<{} bytes>", *value.size);
    return "";
}

// Returns a type and what belongs to it: "CKM_RSA_PKCS", "CKM_AES_CBC(<16 bytes>)", "mechanism 0x80000123".
std::string TextOfTyped(const Value& value) {
    std::string text =
        value.type.empty() ? fmt::format("{:#x}", value.number.value_or(0)) : Harmless(value.type);
    std::string inner;
    for (const Value& child : value.children)
        inner += fmt::format("{}{}", inner.empty() ? "" : " ", ValuesText({child}));
    return inner.empty() ? text : text + '(' + inner + ')';
}

bool IsMechanism(const Value& value) { return value.kind == "Mechanism" || value.kind == "MechanismType"; }

// Returns whether a list was only asked for its length. It shows "count=2".
bool IsCountOnly(const Value& value) {
    return value.children.size() == 1 && value.children.front().name == "count" && !value.kind.empty();
}

std::string TextOf(const Value& value) {
    if (IsCountOnly(value)) return ValuesText(value.children);
    const std::string label = LabelOf(value);
    const std::string prefix = label.empty() ? "" : label + '=';
    if (IsMechanism(value)) return prefix + TextOfTyped(value);
    if (value.type.empty() && value.kind != "Attribute") return prefix + PlainText(value);
    // This is an attribute. It has no value if the caller only asks for it.
    const std::string name =
        value.type.empty() ? fmt::format("{:#x}", value.number.value_or(0)) : Harmless(value.type);
    Value rest = value;
    rest.type.clear();
    rest.number.reset();
    if (rest.children.size() == 1 && rest.children.front().name == "value") {
        rest = rest.children.front();
        rest.name.clear();
    }
    const std::string text = PlainText(rest);
    return text.empty() ? name : name + '=' + text;
}

}  // namespace

std::string ValuesText(const std::vector<Value>& values) {
    std::string text;
    for (const Value& value : values) {
        const std::string each = TextOf(value);
        if (!text.empty() && !each.empty()) text += ", ";
        text += each;
    }
    return text;
}

std::string TimeText(const Moment& told, bool isUtc) {
    if (!told.IsThere()) return "-";
    const Moment time = isUtc ? InUtc(told) : told;
    const std::time_t seconds = time.nanoseconds / kNanosecondsPerSecond;
    std::tm parts{};
    if (time.scale == TimeScale::kUtc && !isUtc)
        localtime_r(&seconds, &parts);
    else
        gmtime_r(&seconds, &parts);
    const std::string text = fmt::format("{:02}:{:02}:{:02}", parts.tm_hour, parts.tm_min, parts.tm_sec);
    if (!told.IsPrecise()) return text;
    return fmt::format("{}.{:03}", text, time.nanoseconds % kNanosecondsPerSecond / 1'000'000);
}

std::string ResultText(const Call& call) {
    if (!call.hasEnd) return "?";
    const std::string name = Harmless(call.result);
    return call.result == "CKR_UNKNOWN" && call.rv ? fmt::format("{} {:#x}", name, *call.rv) : name;
}

std::string SecondsText(std::uint64_t nanoseconds) {
    return fmt::format("{}.{:06}", nanoseconds / 1'000'000'000, nanoseconds % 1'000'000'000 / 1000);
}

namespace {

// Leaves out the addresses that a function of the standard got: its record shows what lies behind them. Null
// pointers stay, and so do all addresses of a vendor's function, whose record may have nothing else.
std::vector<Value> WithoutAddresses(const Call& call, std::vector<Value> values) {
    if (call.Function().starts_with("C_"))
        std::erase_if(values,
                      [](const Value& value) { return value.kind == "Pointer" && value.number != 0; });
    return values;
}

}  // namespace

std::string CallLine(const Call& call, const CallLineStyle& style) {
    const Palette& palette = style.palette;
    const std::string result = ResultText(call);
    std::string line =
        fmt::format("{} {} {}({}) = {}", palette.Quiet(TimeText(call.Time(), style.isUtc)),
                    call.thread.value_or(call.process), palette.Name(Harmless(call.Function())),
                    ValuesText(WithoutAddresses(call, call.In())),
                    result == "CKR_OK" ? palette.Good(result)
                    : call.hasEnd      ? palette.Bad(result)
                                       : palette.Notable(result));
    const std::vector<Value> values = WithoutAddresses(call, call.Out());
    const std::string returned = ValuesText(values);
    // A single structure has braces of its own.
    const bool hasBraces = returned.starts_with('{') && values.size() == 1;
    if (!returned.empty()) line += hasBraces ? ' ' + returned : " {" + returned + '}';
    if (call.nanoseconds) line += ' ' + palette.Quiet('<' + SecondsText(*call.nanoseconds) + '>');
    return line;
}

}  // namespace ckscribe
