#include "records/record_children.h"

#include "descriptors/attribute_descriptor.h"
#include "descriptors/group_descriptors.h"
#include "descriptors/info_descriptors.h"
#include "descriptors/list_descriptors.h"
#include "descriptors/mechanism_descriptors.h"
#include "descriptors/scalar_descriptors.h"
#include "descriptors/value_descriptor.h"

AbstractDescriptor* Session(CK_SESSION_HANDLE session) { return new SessionHandleDescriptor(session); }
AbstractDescriptor* Slot(CK_SLOT_ID slot) { return new SlotIDDescriptor(slot); }
AbstractDescriptor* Object(CK_OBJECT_HANDLE object) { return new ObjectHandleDescriptor(object); }
AbstractDescriptor* UserType(CK_USER_TYPE userType) { return new UserTypeDescriptor(userType); }

AbstractDescriptor* Flags(CK_FLAGS flags) { return new FlagsDescriptor(flags); }
AbstractDescriptor* Boolean(CK_BBOOL value, const char* label) {
    return new ByteBooleanDescriptor(value, label);
}
AbstractDescriptor* Number(CK_ULONG value, const char* label) { return new ULongDescriptor(value, label); }
AbstractDescriptor* DecimalNumber(CK_ULONG value, const char* label) {
    return new ULongDescriptor(value, label, kDecimal);
}
AbstractDescriptor* HexNumber(CK_ULONG value, const char* label) {
    return new ULongDescriptor(value, label, kHexadecimal);
}
AbstractDescriptor* ShortNumber(CK_ULONG value, const char* label) {
    return new UShortDescriptor(value, label);
}
AbstractDescriptor* PedId(CK_ULONG id) { return new PedIdDescriptor(id); }
AbstractDescriptor* Pointer(const void* address, const char* label) {
    return new PtrDescriptor(address, label);
}

AbstractDescriptor* Bytes(const void* bytes, CK_ULONG length, const char* label) {
    return new ByteStringDescriptor(bytes, length, label);
}
AbstractDescriptor* Value(const void* bytes, CK_ULONG length, const char* label) {
    return new ValueDescriptor(bytes, length, label);
}
AbstractDescriptor* Text(const void* text, CK_ULONG length, const char* label) {
    return new StringDescriptor(text, length, label);
}
AbstractDescriptor* Pin(const void* pin, const char* label) {
    return new PINDescriptor(pin != nullptr, label);
}

AbstractDescriptor* Mechanism(const CK_MECHANISM* mechanism) { return new MechanismDescriptor(mechanism); }
AbstractDescriptor* MechanismType(CK_MECHANISM_TYPE type) { return new MechanismTypeDescriptor(type); }
AbstractDescriptor* Template(const CK_ATTRIBUTE* attributes, CK_ULONG count) {
    return new AttributeListDescriptor(attributes, count, 1);
}
AbstractDescriptor* TemplateWithoutValues(const CK_ATTRIBUTE* attributes, CK_ULONG count) {
    return new AttributeListDescriptor(attributes, count, 0);
}
AbstractDescriptor* SlotList(const CK_SLOT_ID* slots, CK_ULONG count) {
    return new SlotIDListDescriptor(slots, count);
}
AbstractDescriptor* MechanismTypeList(const CK_MECHANISM_TYPE* types, CK_ULONG count) {
    return new MechTypeListDescriptor(types, count);
}
AbstractDescriptor* HandleList(const CK_OBJECT_HANDLE* handles, CK_ULONG count) {
    return new ObjectHandleListDescriptor(handles, count);
}

AbstractDescriptor* Info(const CK_INFO* info) { return new InfoDescriptor(info); }
AbstractDescriptor* SlotInfo(const CK_SLOT_INFO* info) { return new SlotInfoDescriptor(info); }
AbstractDescriptor* TokenInfo(const CK_TOKEN_INFO* info) { return new TokenInfoDescriptor(info); }
AbstractDescriptor* SessionInfo(const CK_SESSION_INFO* info) { return new SessionInfoDescriptor(info); }
AbstractDescriptor* MechanismInfo(const CK_MECHANISM_INFO* info) { return new MechInfoDescriptor(info); }
AbstractDescriptor* MofNStatus(const CA_M_OF_N_STATUS* status) {
    return new MofNStatusInfoDescriptor(status);
}
AbstractDescriptor* HAStatus(const CK_HA_STATUS* status) { return new HAStatusDescriptor(status); }
