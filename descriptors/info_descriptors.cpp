#include "descriptors/info_descriptors.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "descriptors/call_event.h"
#include "descriptors/scalar_descriptors.h"
#include "descriptors/value_descriptor.h"
#include "host/readable_memory.h"
#include "util/json_writer.h"

using namespace ckscribe;

namespace {

// Returns the whole of a fixed field: texts in these structures are padded, not terminated.
template <class Character, std::size_t size>
AbstractDescriptor* Field(const Character (&field)[size]) {
    return new ByteStringDescriptor(field, size, nullptr, BytesAre::kDescription);
}

// Writes the members of a structure into an event: the named children of its descriptor, in their order, each
// under its name. Writes no members of a structure that could not be read or that the event leaves out.
void WriteMembers(JsonWriter& json, const DescriptorComposite& structure,
                  std::initializer_list<std::string_view> names) {
    if (structure.ChildCount() == 0 || AreOutputsLeftOut()) return;
    unsigned i = 0;
    for (const std::string_view name : names) {
        const AbstractDescriptor& member = *structure.ChildAtIndex(i++);
        if (name.empty()) continue;
        json.Key(name);
        member.WriteEventValue(json);
    }
}

}  // namespace

InfoDescriptor::InfoDescriptor(const CK_INFO* source) {
    CK_INFO info;
    if (!CopyReadable(source, &info, sizeof info)) return;
    isGiven = true;
    version = info.cryptokiVersion;
    AddDescriptor(new ByteStringDescriptor(&info.cryptokiVersion, sizeof info.cryptokiVersion, nullptr,
                                           BytesAre::kDescription));
    AddDescriptor(Field(info.manufacturerID));
    AddDescriptor(new FlagsDescriptor(info.flags));
}

SlotInfoDescriptor::SlotInfoDescriptor(const CK_SLOT_INFO* source) {
    CK_SLOT_INFO info;
    if (!CopyReadable(source, &info, sizeof info)) return;
    AddDescriptor(Field(info.slotDescription));
    AddDescriptor(Field(info.manufacturerID));
    AddDescriptor(new FlagsDescriptor(info.flags));
}

TokenInfoDescriptor::TokenInfoDescriptor(const CK_TOKEN_INFO* source) {
    CK_TOKEN_INFO info;
    if (!CopyReadable(source, &info, sizeof info)) return;
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
    isGiven = CopyReadable(source, &info, sizeof info);
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

void InfoDescriptor::WriteEventMembers(JsonWriter& json) const {
    if (!isGiven || AreOutputsLeftOut()) return;
    json.Key("cryptokiVersion");
    json.BeginObject();
    json.Key("major");
    json.Number(version.major);
    json.Key("minor");
    json.Number(version.minor);
    json.EndObject();
    WriteMembers(json, *this, {"", "manufacturerID", "flags"});
}

void SlotInfoDescriptor::WriteEventMembers(JsonWriter& json) const {
    WriteMembers(json, *this, {"slotDescription", "manufacturerID", "flags"});
}

void TokenInfoDescriptor::WriteEventMembers(JsonWriter& json) const {
    WriteMembers(
        json, *this,
        {"label", "manufacturerID", "model", "serialNumber", "flags", "ulMaxSessionCount", "ulSessionCount",
         "ulMaxRwSessionCount", "ulRwSessionCount", "ulMaxPinLen", "ulMinPinLen", "ulTotalPublicMemory",
         "ulFreePublicMemory", "ulTotalPrivateMemory", "ulFreePrivateMemory"});
}

void SessionInfoDescriptor::WriteEventMembers(JsonWriter& json) const {
    if (!isGiven || AreOutputsLeftOut()) return;
    json.Key("slotID");
    json.Number(info.slotID);
    json.Key("state");
    json.Number(info.state);
    json.Key("flags");
    json.Number(info.flags);
    json.Key("ulDeviceError");
    json.Number(info.ulDeviceError);
}
