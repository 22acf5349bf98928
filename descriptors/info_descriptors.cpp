#include "descriptors/info_descriptors.h"

#include <cstddef>
#include <cstdint>

#include "descriptors/scalar_descriptors.h"
#include "descriptors/value_descriptor.h"
#include "host/readable_memory.h"

namespace {

// The whole of a fixed field: texts in these structures are padded, not terminated.
template <class Character, std::size_t size>
AbstractDescriptor* Field(const Character (&field)[size]) {
    return new ByteStringDescriptor(field, size);
}

}  // namespace

InfoDescriptor::InfoDescriptor(const CK_INFO* source) {
    CK_INFO info;
    if (!ckscribe::CopyReadable(source, &info, sizeof info)) return;
    AddDescriptor(new ByteStringDescriptor(&info.cryptokiVersion, sizeof info.cryptokiVersion));
    AddDescriptor(Field(info.manufacturerID));
    AddDescriptor(new FlagsDescriptor(info.flags));
}

SlotInfoDescriptor::SlotInfoDescriptor(const CK_SLOT_INFO* source) {
    CK_SLOT_INFO info;
    if (!ckscribe::CopyReadable(source, &info, sizeof info)) return;
    AddDescriptor(Field(info.slotDescription));
    AddDescriptor(Field(info.manufacturerID));
    AddDescriptor(new FlagsDescriptor(info.flags));
}

TokenInfoDescriptor::TokenInfoDescriptor(const CK_TOKEN_INFO* source) {
    CK_TOKEN_INFO info;
    if (!ckscribe::CopyReadable(source, &info, sizeof info)) return;
    AddDescriptor(Field(info.label));
    AddDescriptor(Field(info.manufacturerID));
    AddDescriptor(Field(info.model));
    AddDescriptor(Field(info.serialNumber));
    AddDescriptor(new FlagsDescriptor(info.flags));
    AddDescriptor(new UShortDescriptor(info.ulMaxSessionCount));
    AddDescriptor(new UShortDescriptor(info.ulSessionCount));
    AddDescriptor(new UShortDescriptor(info.ulMaxRwSessionCount));
    AddDescriptor(new UShortDescriptor(info.ulRwSessionCount));
    AddDescriptor(new UShortDescriptor(info.ulMaxPinLen));
    AddDescriptor(new UShortDescriptor(info.ulMinPinLen));
    AddDescriptor(new ULongDescriptor(info.ulTotalPublicMemory));
    AddDescriptor(new ULongDescriptor(info.ulFreePublicMemory));
    AddDescriptor(new ULongDescriptor(info.ulTotalPrivateMemory));
    AddDescriptor(new ULongDescriptor(info.ulFreePrivateMemory));
}

SessionInfoDescriptor::SessionInfoDescriptor(const CK_SESSION_INFO* source) {
    ckscribe::CopyReadable(source, &info, sizeof info);
}

void SessionInfoDescriptor::PrintParameters(RecordText& out, int) const {
    const auto number = [&out](unsigned long value) {
        if (UseNewLogFormat()) {
            out.AppendDecimal(static_cast<long>(static_cast<std::int32_t>(value)));
        } else {
            out.AppendHex(static_cast<std::uint32_t>(value));
        }
    };
    out.Append('(');
    number(info.slotID);
    out.Append(',');
    number(info.state);
    out.Append(',');
    out.AppendHex(static_cast<std::uint32_t>(info.flags));
    out.Append(',');
    out.AppendHex(static_cast<std::uint32_t>(info.ulDeviceError));
    out.Append(')');
}
