// What a call says about sessions, objects and tokens: what a report, whoever makes it, follows from call to
// call.
//
// Pure functions: any thread may call them at any time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reader/call.h"

namespace ckscribe {

// What a function does that a report follows.
enum class CallRole : std::uint8_t {
    kOther,
    kOpenSession,
    kCloseSession,
    kCloseAllSessions,
    kFinalize,
    kLogin,
    kBeginSearch,
    kSearch,
    kEndSearch,
    kMakeObject,
    kMakeKeyPair,
    kReadAttributes,
    kTokenInfo,
};

CallRole RoleOf(std::string_view function);

// The role as the queries of share/ckscribe/clickhouse name it: "open session". Of kOther it is empty.
std::string_view NameOf(CallRole role);

// The function only asks; calling it again and again is polling.
bool IsAsking(std::string_view function);

struct ObjectInfo {
    std::string label;  // empty: not known
    std::string id;     // as hexadecimal digits
    std::string objectClass;
    bool IsEmpty() const { return label.empty() && id.empty() && objectClass.empty(); }
};

// What the attributes in a call's inputs or outputs tell.
ObjectInfo InfoIn(const std::vector<Value>& children);

struct ToldObject {
    std::uint64_t handle = 0;
    ObjectInfo info;
};

// The objects that a call of this role made, found or read, with what it tells of each. Calls that failed
// tell nothing.
std::vector<ToldObject> ObjectsToldBy(CallRole role, const Call& call);

struct ToldToken {
    std::string label;
    std::string serial;
};

// The token that a call of kTokenInfo describes.
ToldToken TokenToldBy(const Call& call);

}  // namespace ckscribe
