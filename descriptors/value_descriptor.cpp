#include "descriptors/value_descriptor.h"

#include <p11-kit/pkcs11.h>

#include <cstring>

#include "descriptors/byte_kinds.h"
#include "descriptors/call_event.h"
#include "descriptors/event_bytes.h"
#include "descriptors/rich_text.h"
#include "host/readable_memory.h"
#include "util/json_writer.h"

using namespace ckscribe;

namespace {

constexpr CK_ULONG kUnavailable = CK_UNAVAILABLE_INFORMATION;

// An events file that shows no data needs only their size, unless a text log is written beside it.
bool IsSizeOfDataEnough() {
    return currentCallEvent != nullptr && !IsDataShownInEvents() &&
           AbstractDescriptor::isStreamOpen.load(std::memory_order_relaxed) == 0;
}

}  // namespace

ValueDescriptor::ValueDescriptor(const void* bytes, unsigned long count, const char* name, BytesAre bytesAre)
    : AbstractDescriptor(name) {
    SetValue(bytes, count, bytesAre);
}

ValueDescriptor::~ValueDescriptor() { ReleaseValue(); }

void ValueDescriptor::SetValue(const void* bytes, unsigned long count, BytesAre areWhat) {
    ReleaseValue();
    claimedLength = count;
    bytesAre = areWhat;
    const bool isUnavailable = count == kUnavailable;
    if (isUnavailable) {
        bytes = &kUnavailable;
        count = sizeof kUnavailable;
    }
    if (bytesAre == BytesAre::kData && IsSizeOfDataEnough()) return;
    std::size_t readable = ReadableLength(bytes, count);
    if (readable == 0) return;
    if (IsDataHiddenInLog() && bytesAre == BytesAre::kData && !isUnavailable) {
        bytes = PINDescriptor::cMaskedPIN;
        readable = PINDescriptor::cMaskPINlen;
    }
    value = static_cast<unsigned char*>(TreeMemory::Take(readable));
    std::memcpy(value, bytes, readable);
    length = readable;
}

std::string_view ValueDescriptor::BytesInEvents() const {
    const bool areShown =
        IsDataShownInEvents() || (bytesAre == BytesAre::kDescription && !AreOutputsLeftOut());
    if (!areShown || claimedLength == kUnavailable) return {};
    return {reinterpret_cast<const char*>(value), length};
}

void ValueDescriptor::WriteEventMembers(JsonWriter& json) const {
    json.Key("size");
    json.Number(claimedLength);
    ckscribe::WriteBytes(json, BytesInEvents());
}

void ValueDescriptor::ReleaseValue() {
    TreeMemory::GiveBack(value, length);
    value = nullptr;
    length = 0;
}

ValueFormat ValueDescriptor::FormatFromDataValue() const {
    const ByteKinds kinds = KindsOf(value, length);
    if (!kinds.isText) return ValueFormat::kNumeric;
    if (kinds.controls == 0) return ValueFormat::kSimpleText;
    const unsigned long printable = length - kinds.controls;
    return printable <= kinds.controls ? ValueFormat::kNumeric : ValueFormat::kRichText;
}

void ValueDescriptor::PrintValue(RecordText& out, ValueFormat format) const {
    out.Append('"');
    if (value == nullptr) {
        out.Append("<null>");
    } else if (format == ValueFormat::kNumeric) {
        PrintNumericText(out);
    } else if (format == ValueFormat::kRichText) {
        PrintRichText(out);
    } else {
        PrintSimpleText(out);
    }
    out.Append('"');
}

void ValueDescriptor::PrintSimpleText(RecordText& out) const {
    out.Append({reinterpret_cast<const char*>(value), length});
}

void ValueDescriptor::PrintNumericText(RecordText& out) const { out.AppendHexBytes(value, length); }

void ValueDescriptor::PrintRichText(RecordText& out) const {
    ckscribe::PutRichText({reinterpret_cast<const char*>(value), length},
                          [&out](char character) { out.Append(character); });
}

void ValueDescriptor::PrintParameters(RecordText& out, int) const {
    const ValueFormat format = FormatFromDataValue();
    if (UseNewLogFormat()) return PrintValue(out, format);
    out.Append('(');
    out.Append(GetValueFormat(format));
    PrintValue(out, format);
    out.Append(')');
}

void ValueDescriptor::PrintDescription(RecordText& out, int indent, const char* suffix) const {
    if (!UseNewLogFormat()) {
        out.Append(GetDescriptorType());
        out.Flush();
    }
    PrintParameters(out, indent);
    PrintContent(out, indent, suffix);
}

void ByteStringDescriptor::PrintDescription(RecordText& out, int indent, const char* suffix) const {
    AbstractDescriptor::PrintDescription(out, indent, suffix);
}

void ValueDescriptor::WriteEventValue(JsonWriter& json) const {
    ckscribe::WritePaddedText(json, BytesInEvents());
}

std::string_view PINDescriptor::EventName() const {
    const std::string_view name = ByteStringDescriptor::EventName();
    return name == EventKind() ? std::string_view() : name;
}

void StringDescriptor::PrintDescription(RecordText& out, int indent, const char* suffix) const {
    AbstractDescriptor::PrintDescription(out, indent, suffix);
}

void StringDescriptor::PrintParameters(RecordText& out, int) const {
    out.Append('(');
    out.AppendDecimal(static_cast<long>(static_cast<int>(Length())));
    out.Append(",\"");
    if (Length() != 0) PrintSimpleText(out);
    out.Append("\")");
}
