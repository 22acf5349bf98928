// What a record shows of one argument or result: a tree of plain values, the same for all formats of logs.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ckscribe {

// The most bytes of a value that are kept; its size is always known.
inline constexpr std::size_t kLargestKeptValue = 1 << 20;

struct Value {
    // The old format's name of the descriptor: "SessionHandle", "ByteString", "AttributeList", "PIN" ... A
    // member of a structure or an element of a list without a kind of its own has none.
    std::string kind;
    // The label, without its '=': "tknPresent"; the name of a structure's member; often none.
    std::string name;

    // A number: handles, lengths, flags, user types. Where a text log has room for the low 32 bits only,
    // `isCut` is true and the number holds those.
    std::optional<std::uint64_t> number;
    bool isCut = false;
    std::optional<bool> boolean;

    // The name of a mechanism or of an attribute's type ("CKM_RSA_PKCS"); `number` is its number where the
    // log says it.
    std::string type;

    // Bytes: at most kLargestKeptValue of them, and how many there were. Bytes that a log hides have a size
    // only.
    std::optional<std::string> bytes;
    std::optional<std::uint64_t> size;
    // The log shows the bytes as a text.
    bool isText = false;
    // An attribute that the token did not give.
    bool isUnavailable = false;

    // Elements of a list, attributes of a template, members of a structure, a mechanism's parameter.
    std::vector<Value> children;
    bool isGroup = false;

    friend bool operator==(const Value&, const Value&) = default;
};

}  // namespace ckscribe
