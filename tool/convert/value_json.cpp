#include "tool/convert/value_json.h"

#include <string>
#include <string_view>

namespace ckscribe {

namespace {

using Json = nlohmann::ordered_json;

// Numbers above 2^53 become strings: not every reader of JSON keeps them exactly.
Json NumberJson(std::uint64_t number) {
    constexpr std::uint64_t kLargestExact = std::uint64_t{1} << 53;
    return number <= kLargestExact ? Json(number) : Json(std::to_string(number));
}

std::string Hex(std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string hex;
    hex.reserve(2 * bytes.size());
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        hex += {kDigits[value >> 4], kDigits[value & 15]};
    }
    return hex;
}

bool IsPrintable(std::string_view bytes) {
    for (const char byte : bytes) {
        if (static_cast<unsigned char>(byte) < 32 || static_cast<unsigned char>(byte) > 126) return false;
    }
    return true;
}

bool IsPlainNumber(const Value& value) {
    return value.number && value.kind.empty() && value.name.empty() && value.children.empty();
}

Json JsonOf(const Value& value) {
    // The element of a list is a plain number.
    if (IsPlainNumber(value)) return NumberJson(*value.number);
    Json json = Json::object();
    if (!value.kind.empty()) json["kind"] = value.kind;
    if (!value.name.empty()) json["name"] = value.name;
    if (!value.type.empty()) json["type"] = value.type;
    if (value.number) json[value.type.empty() ? "value" : "number"] = NumberJson(*value.number);
    if (value.size) json["size"] = *value.size;
    if (value.isUnavailable) json["unavailable"] = true;
    if (value.boolean) json["value"] = *value.boolean;
    if (value.bytes && !value.bytes->empty()) {
        if (IsPrintable(*value.bytes)) {
            json["text"] = *value.bytes;
        } else {
            json["hex"] = Hex(*value.bytes);
        }
    }
    if (value.kind == "AttributeList") {
        json["attributes"] = JsonOf(value.children);
        // All children are attributes.
        for (Json& attribute : json["attributes"]) attribute.erase("kind");
    } else if (value.kind.ends_with("List")) {
        json["values"] = Json::array();
        for (const Value& element : value.children)
            json["values"].push_back(NumberJson(element.number.value_or(0)));
    } else {
        for (const Value& child : value.children) {
            Json member = JsonOf(child);
            if (child.name.empty()) {
                json["children"].push_back(member);
                continue;
            }
            // The key names a member, and its kind says nothing more.
            member.erase("name");
            member.erase("kind");
            const bool isPlain = member.size() == 1 && member.contains("value");
            json[child.name] = isPlain ? member["value"] : member;
        }
    }
    return json;
}

}  // namespace

Json JsonOf(const std::vector<Value>& values) {
    Json list = Json::array();
    for (const Value& value : values) list.push_back(JsonOf(value));
    return list;
}

std::string LineOf(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

}  // namespace ckscribe
