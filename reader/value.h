// A Value is one argument or result as a record shows it: a tree of plain values, equal for all formats of
// logs.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ckscribe {

// A Value keeps at most so many bytes. Its size is always known.
inline constexpr std::size_t kLargestKeptValue = 1 << 20;

struct Value {
    // `kind` is the name that the old format prints: "SessionHandle", "ByteString", "AttributeList", "PIN"
    // ... It is empty for a member of a structure, and for an element of a list, without a kind of its own.
    std::string kind;
    // `name` is the label without its '=' ("tknPresent"), or the name of a structure's member. It is often
    // empty.
    std::string name;

    // `number` is the number of a handle, a length, flags or a user type. Where a text log has room only for
    // the low 32 bits, `isCut` is true and the number holds these.
    std::optional<std::uint64_t> number;
    bool isCut = false;
    std::optional<bool> boolean;

    // `type` is the name of a mechanism or of an attribute's type ("CKM_RSA_PKCS"). `number` is its number if
    // the log says it.
    std::string type;

    // `bytes` holds at most kLargestKeptValue bytes, and `size` counts all bytes. Bytes that a log hides have
    // only a size.
    std::optional<std::string> bytes;
    std::optional<std::uint64_t> size;
    // `isText` is true if the log shows the bytes as a text.
    bool isText = false;
    // `isUnavailable` is true for an attribute that the token did not give.
    bool isUnavailable = false;

    // `children` holds the elements of a list, the attributes of a template, the members of a structure, or a
    // mechanism's parameter.
    std::vector<Value> children;
    bool isGroup = false;

    friend bool operator==(const Value&, const Value&) = default;
};

}  // namespace ckscribe
