#include "descriptors/scalar_descriptors.h"

#include <cstdint>

#include "descriptors/call_event.h"
#include "descriptors/data_setting.h"
#include "descriptors/event_names.h"
#include "host/readable_memory.h"
#include "util/json_writer.h"

using namespace ckscribe;

namespace {

unsigned long Low32Bits(unsigned long value) { return static_cast<std::uint32_t>(value); }

}  // namespace

ULongDescriptor::ULongDescriptor(unsigned long value, const char* name, ULongFormat format)
    : AbstractDescriptor(name), value(value), format(format) {
    if (format == ULongFormat::kDefault)
        this->format = UseNewLogFormat() ? ULongFormat::kDecimal : ULongFormat::kHexadecimal;
}

void ULongDescriptor::PrintParameters(RecordText& out, int) const {
    const bool inParentheses = !UseNewLogFormat();
    if (inParentheses) out.Append('(');
    if (format == ULongFormat::kHexadecimal) {
        out.AppendHex(Low32Bits(value));
    } else {
        out.AppendDecimal(value);
    }
    if (inParentheses) out.Append(')');
    out.Flush();
}

SlotAddressDescriptor::SlotAddressDescriptor(const unsigned long* address)
    : SlotIDDescriptor(reinterpret_cast<std::uintptr_t>(address)),
      isReadable(CopyReadable(address, &slot, sizeof slot)) {}

PinLengthDescriptor::PinLengthDescriptor(unsigned long length)
    : ULongDescriptor(IsDataHiddenInLog() ? 0 : length) {}

PtrDescriptor::PtrDescriptor(const void* address, const char* name)
    : ULongDescriptor(reinterpret_cast<std::uintptr_t>(address), name, ULongFormat::kHexadecimal) {}

void UShortDescriptor::PrintParameters(RecordText& out, int) const {
    if (UseNewLogFormat()) {
        out.AppendDecimal(static_cast<long>(static_cast<std::int32_t>(Low32Bits(value))));
    } else {
        out.Append('(');
        out.AppendHex(Low32Bits(value));
        out.Append(')');
    }
    out.Flush();
}

void ByteDescriptor::PrintParameters(RecordText& out, int) const {
    out.AppendHex(static_cast<unsigned long>(value));
    out.Flush();
}

void ByteBooleanDescriptor::PrintParameters(RecordText& out, int) const {
    out.Append(value != 0 ? "true" : "false");
    out.Flush();
}

void ULongDescriptor::WriteEventMembers(JsonWriter& json) const {
    json.Key("value");
    WriteEventValue(json);
}

void ULongDescriptor::WriteEventValue(JsonWriter& json) const { json.Number(value); }

void SlotIDDescriptor::TellSubject(CallSubject& subject) const {
    subject.Tell(CallSubject::kSlot, &CallSubject::slot, Value());
}

void SlotAddressDescriptor::WriteEventMembers(JsonWriter& json) const {
    if (!isReadable) return;
    json.Key("value");
    json.Number(slot);
}

void SlotAddressDescriptor::TellSubject(CallSubject& subject) const {
    if (isReadable) subject.Tell(CallSubject::kSlot, &CallSubject::slot, slot);
}

void ObjectHandleDescriptor::TellSubject(CallSubject& subject) const {
    subject.Tell(CallSubject::kObject, &CallSubject::object, Value());
}

void SessionHandleDescriptor::TellSubject(CallSubject& subject) const {
    subject.Tell(CallSubject::kSession, &CallSubject::session, Value());
}

void UShortDescriptor::WriteEventMembers(JsonWriter& json) const {
    json.Key("value");
    WriteEventValue(json);
}

void UShortDescriptor::WriteEventValue(JsonWriter& json) const { json.Number(value); }

void MechanismTypeDescriptor::WriteEventMembers(JsonWriter& json) const {
    ckscribe::WriteMechanismType(json, Value());
}

void MechanismTypeDescriptor::WriteEventValue(JsonWriter& json) const {
    AbstractDescriptor::WriteEventValue(json);
}

void MechanismTypeDescriptor::TellSubject(CallSubject& subject) const {
    subject.Tell(CallSubject::kMechanism, &CallSubject::mechanism, Value());
}

void UserTypeDescriptor::TellSubject(CallSubject& subject) const {
    subject.Tell(CallSubject::kUser, &CallSubject::user, Value());
}

void ByteDescriptor::WriteEventMembers(JsonWriter& json) const {
    json.Key("value");
    WriteEventValue(json);
}

void ByteDescriptor::WriteEventValue(JsonWriter& json) const { json.Number(value); }

void ByteBooleanDescriptor::WriteEventValue(JsonWriter& json) const { json.Boolean(value != 0); }
