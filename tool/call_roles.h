// Reads from a call what it says about sessions, objects and tokens. Reports follow these from call to call.
//
// These functions are pure: any thread may call them at any time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reader/call.h"

namespace ckscribe {

// A report follows functions that do one of these.
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

// Returns the role's name in the queries of share/ckscribe/clickhouse: "open session". The name of kOther is
// empty.
std::string_view NameOf(CallRole role);

// Returns whether the function only asks. Calling it with the same question again and again is polling.
bool IsAsking(std::string_view function);

// Two calls of an asking function ask the same if their questions are equal. Addresses do not count: they say
// where the answer goes.
struct Question {
    std::optional<std::uint64_t> slot;
    std::optional<std::uint64_t> session;
    std::string further;
    friend bool operator==(const Question&, const Question&) = default;
};
Question QuestionOf(const Call& call);

struct ObjectInfo {
    std::string label;  // empty: not known
    std::string id;     // as hexadecimal digits
    std::string objectClass;
    bool IsEmpty() const { return label.empty() && id.empty() && objectClass.empty(); }
};

// Returns what the attributes among a call's inputs or outputs say about an object.
ObjectInfo InfoIn(const std::vector<Value>& children);

struct ToldObject {
    std::uint64_t handle = 0;
    ObjectInfo info;
};

// Returns the objects that a call of this role made, found or read, with what it says of each. A failed call
// has none.
std::vector<ToldObject> ObjectsToldBy(CallRole role, const Call& call);

struct ToldToken {
    std::string label;
    std::string serial;
};

// Returns the token that a call of kTokenInfo describes.
ToldToken TokenToldBy(const Call& call);

}  // namespace ckscribe
