#include "records/record_children.h"

#include "descriptors/attribute_descriptor.h"
#include "descriptors/group_descriptors.h"
#include "descriptors/info_descriptors.h"
#include "descriptors/list_descriptors.h"
#include "descriptors/mechanism_descriptors.h"
#include "descriptors/scalar_descriptors.h"
#include "descriptors/value_descriptor.h"

namespace ckscribe {

AbstractDescriptor* SessionChild(CK_SESSION_HANDLE session) { return new SessionHandleDescriptor(session); }
AbstractDescriptor* SlotChild(CK_SLOT_ID slot) { return new SlotIDDescriptor(slot); }
AbstractDescriptor* SlotAddressChild(const CK_SLOT_ID* slot) { return new SlotAddressDescriptor(slot); }
AbstractDescriptor* ObjectChild(CK_OBJECT_HANDLE object) { return new ObjectHandleDescriptor(object); }
AbstractDescriptor* UserTypeChild(CK_USER_TYPE userType) { return new UserTypeDescriptor(userType); }

AbstractDescriptor* FlagsChild(CK_FLAGS flags) { return new FlagsDescriptor(flags); }
AbstractDescriptor* BooleanChild(CK_BBOOL value, const char* label) {
    return new ByteBooleanDescriptor(value, label);
}
AbstractDescriptor* NumberChild(CK_ULONG value, const char* label) {
    return new ULongDescriptor(value, label);
}
AbstractDescriptor* DecimalNumberChild(CK_ULONG value, const char* label) {
    return new ULongDescriptor(value, label, ULongFormat::kDecimal);
}
AbstractDescriptor* HexNumberChild(CK_ULONG value, const char* label) {
    return new ULongDescriptor(value, label, ULongFormat::kHexadecimal);
}
AbstractDescriptor* ShortNumberChild(CK_ULONG value, const char* label) {
    return new UShortDescriptor(value, label);
}
AbstractDescriptor* PedIdChild(CK_ULONG id) { return new PedIdDescriptor(id); }
AbstractDescriptor* PointerChild(const void* address, const char* label) {
    return new PtrDescriptor(address, label);
}

AbstractDescriptor* BytesChild(const void* bytes, CK_ULONG length, const char* label) {
    return new ByteStringDescriptor(bytes, length, label);
}
AbstractDescriptor* ValueChild(const void* bytes, CK_ULONG length, const char* label) {
    return new ValueDescriptor(bytes, length, label);
}
AbstractDescriptor* TextChild(const void* text, CK_ULONG length, const char* label) {
    return new StringDescriptor(text, length, label);
}
AbstractDescriptor* PinChild(const void* pin, const char* label) {
    return new PINDescriptor(pin != nullptr, label);
}

AbstractDescriptor* PinLengthChild(CK_ULONG length) { return new PinLengthDescriptor(length); }

AbstractDescriptor* NameChild(const void* name, CK_ULONG length, const char* label) {
    return new ByteStringDescriptor(name, length, label, BytesAre::kDescription);
}
AbstractDescriptor* NameValueChild(const void* name, CK_ULONG length, const char* label) {
    return new ValueDescriptor(name, length, label, BytesAre::kDescription);
}
AbstractDescriptor* NameTextChild(const void* name, CK_ULONG length, const char* label) {
    return new StringDescriptor(name, length, label, BytesAre::kDescription);
}

AbstractDescriptor* MechanismChild(const CK_MECHANISM* mechanism) {
    return new MechanismDescriptor(mechanism);
}
AbstractDescriptor* MechanismTypeChild(CK_MECHANISM_TYPE type) { return new MechanismTypeDescriptor(type); }
AbstractDescriptor* TemplateChild(const CK_ATTRIBUTE* attributes, CK_ULONG count) {
    return new AttributeListDescriptor(attributes, count, 1);
}
AbstractDescriptor* TemplateWithoutValuesChild(const CK_ATTRIBUTE* attributes, CK_ULONG count) {
    return new AttributeListDescriptor(attributes, count, 0);
}
AbstractDescriptor* SlotListChild(const CK_SLOT_ID* slots, CK_ULONG count) {
    return new SlotIDListDescriptor(slots, count);
}
AbstractDescriptor* MechanismTypeListChild(const CK_MECHANISM_TYPE* types, CK_ULONG count) {
    return new MechTypeListDescriptor(types, count);
}
AbstractDescriptor* HandleListChild(const CK_OBJECT_HANDLE* handles, CK_ULONG count) {
    return new ObjectHandleListDescriptor(handles, count);
}

AbstractDescriptor* InfoChild(const CK_INFO* info) { return new InfoDescriptor(info); }
AbstractDescriptor* SlotInfoChild(const CK_SLOT_INFO* info) { return new SlotInfoDescriptor(info); }
AbstractDescriptor* TokenInfoChild(const CK_TOKEN_INFO* info) { return new TokenInfoDescriptor(info); }
AbstractDescriptor* SessionInfoChild(const CK_SESSION_INFO* info) { return new SessionInfoDescriptor(info); }
AbstractDescriptor* MechanismInfoChild(const CK_MECHANISM_INFO* info) { return new MechInfoDescriptor(info); }
AbstractDescriptor* MofNStatusChild(const CA_M_OF_N_STATUS* status) {
    return new MofNStatusInfoDescriptor(status);
}
AbstractDescriptor* HAStatusChild(const CK_HA_STATUS* status) { return new HAStatusDescriptor(status); }

}  // namespace ckscribe
