// A record builder uses these parts: the record, the question whether it is wanted, and one small function
// for each kind of child.
//
// XxxChild returns a new descriptor. Hand it to AddDescriptor of the record, which then owns it. XxxChild
// copies everything that it is given. Pointers may be null or wild, and counts and lengths may be too large.
// Bytes that cannot be read are left out, and a number that cannot be read is 0. A label may be null.
//
// The caller holds the record lock.
#pragma once

#include <p11-kit/pkcs11.h>

#include <cstddef>

#include "descriptors/command_descriptor.h"
#include "descriptors/vendor_structures.h"
#include "functions/logging_levels.h"
#include "host/readable_memory.h"

namespace ckscribe {

// A StartRecord is the root of a start record, which is written before a call is forwarded. After the last
// child is added, Capture() writes the record.
class StartRecord : public CommandDescriptor {
public:
    explicit StartRecord(CommandType type, CommandSpecifier specifier = CommandSpecifier::kSingle)
        : CommandDescriptor(type, specifier, CommandPhase::kStart, CKR_OK) {}
};

// An EndRecord is the root of an end record, which is written after a call has returned `rv`.
class EndRecord : public CommandDescriptor {
public:
    EndRecord(CommandType type, CK_RV rv) : EndRecord(type, CommandSpecifier::kSingle, rv) {}
    EndRecord(CommandType type, CommandSpecifier specifier, CK_RV rv)
        : CommandDescriptor(type, specifier, CommandPhase::kEnd, rv) {}
};

// Returns whether "LoggingLevel" lets this command of the standard be logged.
inline bool LevelSelects(CommandType type) { return LevelInForce() >= LevelOf(type); }

// Returns the number behind a pointer, or 0 if the number cannot be read.
template <class Number>
Number ValueAt(const Number* pointer) {
    Number value{};
    CopyReadable(pointer, &value, sizeof value);
    return value;
}

// Returns the address as a number.
inline CK_ULONG AsNumber(const void* pointer) { return reinterpret_cast<CK_ULONG>(pointer); }

// Returns an element of an array at any address, or 0 if the element cannot be read.
template <class Number>
Number ValueAt(const Number* array, std::size_t index) {
    if (array == nullptr) return Number{};
    return ValueAt(reinterpret_cast<const Number*>(AsNumber(array) + index * sizeof(Number)));
}

// A token's label has this many bytes (PKCS#11 C_InitToken). It is padded with blanks and has no terminator.
inline constexpr CK_ULONG kLabelLength = 32;

// These children say whom a call is about.
AbstractDescriptor* SessionChild(CK_SESSION_HANDLE session);
AbstractDescriptor* SlotChild(CK_SLOT_ID slot);
AbstractDescriptor* SlotAddressChild(const CK_SLOT_ID* slot);  // records show the address, events the slot
AbstractDescriptor* ObjectChild(CK_OBJECT_HANDLE object);
AbstractDescriptor* UserTypeChild(CK_USER_TYPE userType);

// These are numbers.
AbstractDescriptor* FlagsChild(CK_FLAGS flags);
AbstractDescriptor* BooleanChild(CK_BBOOL value, const char* label = nullptr);
AbstractDescriptor* NumberChild(CK_ULONG value,
                                const char* label = nullptr);  // hexadecimal in the old format, else decimal
AbstractDescriptor* DecimalNumberChild(CK_ULONG value, const char* label = nullptr);
AbstractDescriptor* HexNumberChild(CK_ULONG value, const char* label = nullptr);
AbstractDescriptor* ShortNumberChild(CK_ULONG value, const char* label = nullptr);  // signed, 32 bits
AbstractDescriptor* PedIdChild(CK_ULONG id);
AbstractDescriptor* PointerChild(const void* address, const char* label = nullptr);  // the address itself

// These are bytes of data: "HideData" decides where they are shown.
AbstractDescriptor* BytesChild(const void* bytes, CK_ULONG length, const char* label = nullptr);
AbstractDescriptor* ValueChild(const void* bytes, CK_ULONG length, const char* label = nullptr);
AbstractDescriptor* TextChild(const void* text, CK_ULONG length, const char* label = nullptr);
AbstractDescriptor* PinChild(const void* pin, const char* label = "PIN=");  // the mask, never the PIN
AbstractDescriptor* PinLengthChild(CK_ULONG length);                        // 0 where data are hidden

// These are bytes that name something: labels of tokens and containers, names of hosts and files. They are
// always shown.
AbstractDescriptor* NameChild(const void* name, CK_ULONG length, const char* label = nullptr);
AbstractDescriptor* NameValueChild(const void* name, CK_ULONG length, const char* label = nullptr);
AbstractDescriptor* NameTextChild(const void* name, CK_ULONG length, const char* label = nullptr);

// These are mechanisms, templates and lists.
AbstractDescriptor* MechanismChild(const CK_MECHANISM* mechanism);
AbstractDescriptor* MechanismTypeChild(CK_MECHANISM_TYPE type);
AbstractDescriptor* TemplateChild(const CK_ATTRIBUTE* attributes, CK_ULONG count);
AbstractDescriptor* TemplateWithoutValuesChild(const CK_ATTRIBUTE* attributes, CK_ULONG count);
AbstractDescriptor* SlotListChild(const CK_SLOT_ID* slots, CK_ULONG count);
AbstractDescriptor* MechanismTypeListChild(const CK_MECHANISM_TYPE* types, CK_ULONG count);
AbstractDescriptor* HandleListChild(const CK_OBJECT_HANDLE* handles, CK_ULONG count);

// These are structures that the target returns.
AbstractDescriptor* InfoChild(const CK_INFO* info);
AbstractDescriptor* SlotInfoChild(const CK_SLOT_INFO* info);
AbstractDescriptor* TokenInfoChild(const CK_TOKEN_INFO* info);
AbstractDescriptor* SessionInfoChild(const CK_SESSION_INFO* info);
AbstractDescriptor* MechanismInfoChild(const CK_MECHANISM_INFO* info);
AbstractDescriptor* MofNStatusChild(const CA_M_OF_N_STATUS* status);
AbstractDescriptor* HAStatusChild(const CK_HA_STATUS* status);

}  // namespace ckscribe
