#include "records/vendor_children.h"

#include <algorithm>

namespace ckscribe {

namespace {

void AddSize(CommandDescriptor& record, const CK_ULONG* size, const char* label) {
    record.AddDescriptor(PointerChild(size));
    AddNumberAt(record, size, label);
}

}  // namespace

void AddNumberAt(CommandDescriptor& record, const CK_ULONG* number, const char* label) {
    if (number != nullptr) record.AddDescriptor(NumberChild(ValueAt(number), label));
}

void AddBytes(CommandDescriptor& record, const void* bytes, CK_ULONG length, const char* label) {
    if (bytes != nullptr) record.AddDescriptor(BytesChild(bytes, length, label));
}

void AddText(CommandDescriptor& record, const void* text, CK_ULONG length, const char* label) {
    if (text == nullptr) return;
    record.AddDescriptor(TextChild(text, length, label));
    record.AddDescriptor(ValueChild(text, length, label));
}

void AddBytesOfUnshownLength(CommandDescriptor& record, const void* bytes, CK_ULONG length,
                             const char* label) {
    const bool isUnavailable =
        length == CK_UNAVAILABLE_INFORMATION;  // it prints as sixteen f, whatever the bytes are
    AddBytes(record, bytes, isUnavailable ? length : std::min(length, kLongestOfUnshownLength), label);
}

CK_ULONG LengthOfText(const void* text) {
    return std::min<CK_ULONG>(ReadableTextLength(text), kLongestOfUnshownLength);
}

void AddPinLengthAt(CommandDescriptor& record, const CK_ULONG* length) {
    if (length != nullptr) record.AddDescriptor(PinLengthChild(ValueAt(length)));
}

void AddName(CommandDescriptor& record, const void* name, CK_ULONG length) {
    if (name != nullptr) record.AddDescriptor(NameChild(name, length));
}

void AddNameText(CommandDescriptor& record, const void* name, CK_ULONG length, const char* label) {
    if (name == nullptr) return;
    record.AddDescriptor(NameTextChild(name, length, label));
    record.AddDescriptor(NameValueChild(name, length, label));
}

}  // namespace ckscribe

using namespace ckscribe;

void capsOrPolicyArrayAdd(CommandDescriptor& record, CK_ULONG count, const CK_ULONG* ids,
                          const CK_ULONG* values) {
    record.AddDescriptor(NumberChild(count, "cnt="));
    const CK_ULONG shown = std::max(ReadableCount(ids, count), ReadableCount(values, count));
    for (CK_ULONG i = 0; i < shown; ++i) {
        record.AddDescriptor(NumberChild(ValueAt(ids, i), "id="));
        record.AddDescriptor(NumberChild(ValueAt(values, i), "val="));
    }
}

void capsOrPolicyPtrsAdd(CommandDescriptor& record, const CK_ULONG* ids, const CK_ULONG* idCount,
                         const CK_ULONG* values, const CK_ULONG* valueCount) {
    record.AddDescriptor(PointerChild(ids, "IDs="));
    AddSize(record, idCount, "idSize=");
    record.AddDescriptor(PointerChild(values, "vals="));
    AddSize(record, valueCount, "valSize=");
}

void capsOrPolicyDescAdd(CommandDescriptor& record, const CK_ULONG* ids, const CK_ULONG* idCount,
                         const CK_ULONG* values, const CK_ULONG* valueCount) {
    AddSize(record, idCount, "idSize=");
    AddSize(record, valueCount, "valSize=");
    if (ids == nullptr || values == nullptr) return;
    const CK_ULONG shownIds = ReadableCount(ids, ValueAt(idCount));
    const CK_ULONG shownValues = ReadableCount(values, ValueAt(valueCount));
    for (CK_ULONG i = 0; i < std::max(shownIds, shownValues); ++i) {
        if (i < shownIds) record.AddDescriptor(NumberChild(ValueAt(ids, i), "id="));
        if (i < shownValues) record.AddDescriptor(NumberChild(ValueAt(values, i), "val="));
    }
}
