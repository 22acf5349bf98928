#include "tool/call_roles.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "functions/pkcs11_names.h"
#include "tool/call_line.h"

namespace ckscribe {

namespace {

struct RoleRow {
    std::string_view function;
    CallRole role;
};
constexpr RoleRow kRoles[] = {
    {"C_OpenSession", CallRole::kOpenSession},
    {"CA_OpenSession", CallRole::kOpenSession},
    {"C_CloseSession", CallRole::kCloseSession},
    {"C_CloseAllSessions", CallRole::kCloseAllSessions},
    {"C_Finalize", CallRole::kFinalize},
    {"C_Login", CallRole::kLogin},
    {"CA_IndirectLogin", CallRole::kLogin},
    {"C_FindObjectsInit", CallRole::kBeginSearch},
    {"C_FindObjects", CallRole::kSearch},
    {"C_FindObjectsFinal", CallRole::kEndSearch},
    {"C_CreateObject", CallRole::kMakeObject},
    {"C_CopyObject", CallRole::kMakeObject},
    {"C_GenerateKey", CallRole::kMakeObject},
    {"C_UnwrapKey", CallRole::kMakeObject},
    {"C_DeriveKey", CallRole::kMakeObject},
    {"C_GenerateKeyPair", CallRole::kMakeKeyPair},
    {"C_GetAttributeValue", CallRole::kReadAttributes},
    {"C_GetTokenInfo", CallRole::kTokenInfo},
};

// These functions only ask. Calling them with the same question again and again is polling.
struct AskingRow {
    std::string_view function;
    bool hasFurtherInputs;  // beside a slot or a session
};
constexpr AskingRow kAsking[] = {
    {"C_GetInfo", false},         {"C_GetSlotList", true},       {"C_GetSlotInfo", false},
    {"C_GetTokenInfo", false},    {"C_GetMechanismList", false}, {"C_GetMechanismInfo", true},
    {"C_WaitForSlotEvent", true}, {"C_GetSessionInfo", false},   {"CA_WaitForSlotEvent", true},
};

// The names stand in the order of CallRole.
constexpr std::string_view kRoleNames[] = {
    "",           "open session", "close session", "close all sessions",
    "finalize",   "log in",       "begin search",  "search",
    "end search", "make object",  "make key pair", "read attributes",
    "token info"};

std::string Hex(std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string hex;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        hex += {kDigits[value >> 4], kDigits[value & 15]};
    }
    return hex;
}

// Returns the text of a field of fixed size without the blanks at its end.
std::string Trimmed(std::string_view text) {
    const std::size_t last = text.find_last_not_of(std::string_view(" \0", 2));
    return std::string(text.substr(0, last == text.npos ? 0 : last + 1));
}

// Returns the number that an attribute's value means, whether the log shows a number or bytes.
std::optional<std::uint64_t> NumberOfAttribute(const Value& attribute) {
    for (const Value& value : attribute.children) {
        if (value.name == "value" && value.number) return value.number;
    }
    if (!attribute.bytes || attribute.bytes->size() != sizeof(std::uint64_t)) return std::nullopt;
    std::uint64_t number = 0;
    std::memcpy(&number, attribute.bytes->data(), sizeof number);
    return number;
}

std::string TextOfAttribute(const Value& attribute) {
    for (const Value& value : attribute.children) {
        if (value.name == "value" && value.bytes) return *value.bytes;
    }
    return attribute.bytes.value_or("");
}

// Collects the numbers of a kind, also those in lists.
void CollectNumbers(const std::vector<Value>& children, std::string_view kind,
                    std::vector<std::uint64_t>& numbers) {
    for (const Value& child : children) {
        if (child.kind == kind && child.number) numbers.push_back(*child.number);
        if (child.kind != "ObjectHandleList") continue;
        for (const Value& element : child.children) {
            if (element.number) numbers.push_back(*element.number);
        }
    }
}

bool IsOk(const Call& call) { return call.hasEnd && call.result == "CKR_OK"; }

std::vector<std::uint64_t> HandlesIn(const std::vector<Value>& children) {
    std::vector<std::uint64_t> handles;
    CollectNumbers(children, "ObjectHandle", handles);
    return handles;
}

std::vector<ToldObject> MadeObjects(CallRole role, const Call& call) {
    std::vector<ToldObject> objects;
    const std::vector<std::uint64_t> handles = HandlesIn(call.Out());
    std::vector<Value> templates = call.In();
    std::erase_if(templates, [](const Value& value) { return value.kind != "AttributeList"; });
    const std::size_t pairs = role == CallRole::kMakeKeyPair ? 2 : 1;
    for (std::size_t i = 0; i < pairs && i < handles.size() && i < templates.size(); ++i) {
        ObjectInfo info = InfoIn({templates[i]});
        if (role == CallRole::kMakeKeyPair && info.objectClass.empty())
            info.objectClass = i == 0 ? "CKO_PUBLIC_KEY" : "CKO_PRIVATE_KEY";
        objects.push_back({handles[i], std::move(info)});
    }
    return objects;
}

}  // namespace

CallRole RoleOf(std::string_view function) {
    const auto* const row = std::ranges::find(kRoles, function, &RoleRow::function);
    return row == std::end(kRoles) ? CallRole::kOther : row->role;
}

std::string_view NameOf(CallRole role) { return kRoleNames[static_cast<std::size_t>(role)]; }

bool IsAsking(std::string_view function) {
    return std::ranges::find(kAsking, function, &AskingRow::function) != std::end(kAsking);
}

Question QuestionOf(const Call& call) {
    Question question{call.fields.slot, call.fields.session, {}};
    const auto* const row = std::ranges::find(kAsking, call.Function(), &AskingRow::function);
    // To take the inputs apart costs as much as all the rest.
    if (row == std::end(kAsking) || !row->hasFurtherInputs) return question;
    std::vector<Value> inputs = call.In();
    std::erase_if(inputs, [](const Value& value) { return value.kind == "Pointer"; });
    question.further = ValuesText(inputs);
    return question;
}

ObjectInfo InfoIn(const std::vector<Value>& children) {
    ObjectInfo info;
    for (const Value& list : children) {
        if (list.kind != "AttributeList") continue;
        for (const Value& attribute : list.children) {
            if (attribute.type == "CKA_LABEL") {
                info.label = TextOfAttribute(attribute);
            } else if (attribute.type == "CKA_ID") {
                info.id = Hex(TextOfAttribute(attribute));
            } else if (attribute.type == "CKA_CLASS") {
                if (const auto number = NumberOfAttribute(attribute)) {
                    info.objectClass = GetObjectClass(*number);
                } else if (const std::string name = TextOfAttribute(attribute); name.starts_with("CKO_")) {
                    info.objectClass = name;
                }
            }
        }
    }
    return info;
}

std::vector<ToldObject> ObjectsToldBy(CallRole role, const Call& call) {
    std::vector<ToldObject> objects;
    if (!IsOk(call)) return objects;
    switch (role) {
        case CallRole::kSearch:
            for (const std::uint64_t handle : HandlesIn(call.Out())) objects.push_back({handle, {}});
            return objects;
        case CallRole::kMakeObject:
        case CallRole::kMakeKeyPair:
            return MadeObjects(role, call);
        case CallRole::kReadAttributes:
            if (call.fields.object) objects.push_back({*call.fields.object, InfoIn(call.Out())});
            return objects;
        default:
            return objects;
    }
}

ToldToken TokenToldBy(const Call& call) {
    // A row of digits may have been read as a number. Here it is a text.
    const auto text = [](const Value& member) {
        if (member.number) return std::to_string(*member.number);
        return Trimmed(member.bytes.value_or(""));
    };
    ToldToken token;
    for (const Value& info : call.Out()) {
        if (info.kind != "TokenInfo") continue;
        for (const Value& member : info.children) {
            if (member.name == "label") token.label = text(member);
            if (member.name == "serialNumber") token.serial = text(member);
        }
    }
    return token;
}

}  // namespace ckscribe
