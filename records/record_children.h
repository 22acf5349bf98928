// What the record builders are written with: the logging levels that they ask for, and one small function for
// each kind of child that a record has.
//
// Each function returns a new descriptor, made for CommandDescriptor::AddDescriptor, which takes it over.
// Everything is copied when the function is called. Pointers may be null or wild, counts and lengths may
// claim more than can be read: what cannot be read is left out, and a number behind such a pointer is 0. A
// label may be null.
//
// Needs the record lock.
#pragma once

#include <p11-kit/pkcs11.h>

#include <cstddef>

#include "descriptors/command_descriptor.h"
#include "descriptors/vendor_structures.h"
#include "host/readable_memory.h"

// The least that "LoggingLevel" must exceed for a record to be made; it selects what calls do to a token.
enum LoggingThreshold : unsigned {
    kDestroying = 0,     // a token, a PIN or an object comes to its end
    kModifying = 1,      // objects and keys come into being, are changed or leave the token
    kAdministering = 2,  // initialising, logging in, changing PINs
    kEverything = 3,
};

inline bool IsLogged(LoggingThreshold threshold) { return LoggingLevel() > threshold; }

// The number behind a pointer; 0 when it cannot be read.
template <class Number>
Number ValueAt(const Number* pointer) {
    Number value{};
    ckscribe::CopyReadable(pointer, &value, sizeof value);
    return value;
}

// A pointer as the number that it is.
inline CK_ULONG AddressOf(const void* pointer) { return reinterpret_cast<CK_ULONG>(pointer); }

// An element of an array, which may have any address; 0 when it cannot be read.
template <class Number>
Number ValueAt(const Number* array, std::size_t index) {
    if (array == nullptr) return Number{};
    return ValueAt(reinterpret_cast<const Number*>(AddressOf(array) + index * sizeof(Number)));
}

// Of a token's label (PKCS#11 C_InitToken): padded with blanks, not terminated.
inline constexpr CK_ULONG kLabelLength = 32;

// Who a call is about.
AbstractDescriptor* Session(CK_SESSION_HANDLE session);
AbstractDescriptor* Slot(CK_SLOT_ID slot);
AbstractDescriptor* Object(CK_OBJECT_HANDLE object);
AbstractDescriptor* UserType(CK_USER_TYPE userType);

// Numbers.
AbstractDescriptor* Flags(CK_FLAGS flags);
AbstractDescriptor* Boolean(CK_BBOOL value, const char* label = nullptr);
AbstractDescriptor* Number(CK_ULONG value, const char* label = nullptr);  // in the format's own way
AbstractDescriptor* DecimalNumber(CK_ULONG value, const char* label = nullptr);
AbstractDescriptor* HexNumber(CK_ULONG value, const char* label = nullptr);
AbstractDescriptor* ShortNumber(CK_ULONG value, const char* label = nullptr);  // signed, 32 bits
AbstractDescriptor* PedId(CK_ULONG id);
AbstractDescriptor* Pointer(const void* address, const char* label = nullptr);  // the address itself

// Bytes.
AbstractDescriptor* Bytes(const void* bytes, CK_ULONG length, const char* label = nullptr);
AbstractDescriptor* Value(const void* bytes, CK_ULONG length, const char* label = nullptr);
AbstractDescriptor* Text(const void* text, CK_ULONG length, const char* label = nullptr);
AbstractDescriptor* Pin(const void* pin, const char* label = "PIN=");  // the mask, never the PIN

// Mechanisms, templates, lists.
AbstractDescriptor* Mechanism(const CK_MECHANISM* mechanism);
AbstractDescriptor* MechanismType(CK_MECHANISM_TYPE type);
AbstractDescriptor* Template(const CK_ATTRIBUTE* attributes, CK_ULONG count);
AbstractDescriptor* TemplateWithoutValues(const CK_ATTRIBUTE* attributes, CK_ULONG count);
AbstractDescriptor* SlotList(const CK_SLOT_ID* slots, CK_ULONG count);
AbstractDescriptor* MechanismTypeList(const CK_MECHANISM_TYPE* types, CK_ULONG count);
AbstractDescriptor* HandleList(const CK_OBJECT_HANDLE* handles, CK_ULONG count);

// Returned structures.
AbstractDescriptor* Info(const CK_INFO* info);
AbstractDescriptor* SlotInfo(const CK_SLOT_INFO* info);
AbstractDescriptor* TokenInfo(const CK_TOKEN_INFO* info);
AbstractDescriptor* SessionInfo(const CK_SESSION_INFO* info);
AbstractDescriptor* MechanismInfo(const CK_MECHANISM_INFO* info);
AbstractDescriptor* MofNStatus(const CA_M_OF_N_STATUS* status);
AbstractDescriptor* HAStatus(const CK_HA_STATUS* status);
