// These tables are made from the rows of record_children.def. They say which children the records of each
// function have, in their order, and how each is written.
//
// Any thread may call these at any time.
#pragma once

#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>

#include "reader/recorded_functions.h"

namespace ckscribe {

// A child fills the member of CallFields that its kind names here.
enum class FieldKind : std::uint8_t { kNone, kSlot, kSession, kObject, kUser, kMechanism };

enum class ChildShape : std::uint8_t {
    kNumber,   // is hexadecimal in the old format and decimal in the new one
    kHex,      // the low 32 bits
    kDecimal,  // all 64 bits
    // kShort is the low 32 bits, hexadecimal in the old format and signed decimal in the new one.
    kShort,
    kBoolean,
    kBytes,
    kValue,      // bytes without a line of their own
    kText,       // bytes with their count
    kMechanism,  // a type and the bytes of its parameter
    kAttribute,  // a type and, for some lists, the bytes of its value
    kKeySizes,   // smallest, largest, flags
    kSession,    // slot, state, flags, error
    kSerial,     // a serial number in place of a label, and no bytes
    kPolicies,   // pairs of "id=" and "val="
    kGroup,
    kAny,
};

struct ChildKind {
    std::string_view word;  // the kind's name in record_children.def
    ChildShape shape;
    std::string_view newLabel;
    bool hasOwnLabel;  // the new format prints the child's name
    std::string_view oldLabel;
    FieldKind field = FieldKind::kNone;
    std::string_view kind = {};  // where a value's kind is not the old label
};

inline constexpr ChildKind kChildKinds[] = {
    {"session", ChildShape::kNumber, "Sesn=", false, "SessionHandle", FieldKind::kSession},
    {"slot", ChildShape::kNumber, "Slot=", false, "SlotID", FieldKind::kSlot},
    {"object", ChildShape::kNumber, "Obj=", false, "ObjectHandle", FieldKind::kObject},
    {"flags", ChildShape::kNumber, "Flgs=", false, "Flags"},
    {"ulong", ChildShape::kNumber, "", true, "ULong"},
    {"hex", ChildShape::kHex, "", true, "ULong"},
    {"dec", ChildShape::kDecimal, "", true, "ULong"},
    {"ptr", ChildShape::kHex, "Ptr=", false, "Pointer"},
    {"ushort", ChildShape::kShort, "", true, "UShort"},
    {"pedid", ChildShape::kShort, "", true, "UShort"},
    {"user", ChildShape::kShort, "User=", false, "UserType", FieldKind::kUser},
    {"mechtype", ChildShape::kShort, "", true, "MechanismType"},
    {"bool", ChildShape::kBoolean, "", true, "ByteBoolean"},
    {"bytes", ChildShape::kBytes, "", true, "ByteString"},
    {"pin", ChildShape::kBytes, "", true, "ByteString", FieldKind::kNone, "PIN"},
    {"value", ChildShape::kValue, "", false, "Value"},
    {"string", ChildShape::kText, "", true, "ByteString"},
    {"mech", ChildShape::kMechanism, "Mech=", false, "Mechanism", FieldKind::kMechanism},
    {"attribute", ChildShape::kAttribute, "", false, "Attribute"},
    {"template", ChildShape::kGroup, "AttrList=", false, "AttributeList"},
    {"names", ChildShape::kGroup, "AttrList=", false, "AttributeList"},
    {"slots", ChildShape::kGroup, "SlotLst=", false, "SlotIDList"},
    {"mechtypes", ChildShape::kGroup, "MechTypeLst=", false, "MechTypeList"},
    {"handles", ChildShape::kGroup, "ObjHndLst=", false, "ObjectHandleList"},
    {"info", ChildShape::kGroup, "Info=", false, "Info"},
    {"slotinfo", ChildShape::kGroup, "SlotInfo=", false, "SlotInfo"},
    {"tokeninfo", ChildShape::kGroup, "TokenInfo=", false, "TokenInfo"},
    {"sessioninfo", ChildShape::kSession, "SesInfo=", false, "SessionInfo"},
    {"mechinfo", ChildShape::kKeySizes, "MechInfo=", false, "MechanismInfo"},
    {"mofn", ChildShape::kGroup, "MofNStatus=", false, "MofNStatusInfo"},
    {"ha", ChildShape::kGroup, "HAStatus", false, "HAStatus"},
    {"member", ChildShape::kGroup, "HAMember", false, "HAMember"},
    {"serial", ChildShape::kSerial, "", true, "ByteString"},
    {"policies", ChildShape::kPolicies, "", true, "ULong"},
    {"any", ChildShape::kAny, "", false, ""},
    // These are parts of children that have no line of their own.
    {"part", ChildShape::kNumber, "", false, "", FieldKind::kNone, ""},
    {"parameter", ChildShape::kBytes, "", false, "", FieldKind::kNone, "ByteString"},
};

// Returns the index of a kind in kChildKinds.
constexpr std::uint8_t KindOf(std::string_view word) {
    for (std::uint8_t i = 0; i < std::size(kChildKinds); ++i) {
        if (kChildKinds[i].word == word) return i;
    }
    throw "no such kind";
}

// A ChildElement is one place of a list. It holds one child, or several if it is repeated.
struct ChildElement {
    std::uint8_t kind = 0;  // index of kChildKinds
    bool isOptional = false;
    bool isRepeated = false;
    // The new format prints `label`; without its '=' it is the value's name. Where no label is printed, the
    // value's name is `name`.
    std::string_view label = {};
    std::string_view name = {};
};

// Returns the list of a function's start or end record, which lives as long as the process.
std::span<const ChildElement> ChildrenOfRecord(FunctionIndex function, bool isStart);

// Returns the list of the children inside a group of this kind, which lives as long as the process.
std::span<const ChildElement> MembersOf(std::uint8_t kind);

}  // namespace ckscribe
