#include "records/vendor_children.h"

#include <algorithm>

namespace {

void AddSize(CommandDescriptor& command, const CK_ULONG* size, const char* label) {
    command.AddDescriptor(Pointer(size));
    AddNumberAt(command, size, label);
}

}  // namespace

void AddNumberAt(CommandDescriptor& command, const CK_ULONG* number, const char* label) {
    if (number != nullptr) command.AddDescriptor(Number(ValueAt(number), label));
}

void AddBytes(CommandDescriptor& command, const void* bytes, CK_ULONG length, const char* label) {
    if (bytes != nullptr) command.AddDescriptor(Bytes(bytes, length, label));
}

void AddText(CommandDescriptor& command, const void* text, CK_ULONG length, const char* label) {
    if (text == nullptr) return;
    command.AddDescriptor(Text(text, length, label));
    command.AddDescriptor(Value(text, length, label));
}

void capsOrPolicyArrayAdd(CommandDescriptor& command, CK_ULONG count, const CK_ULONG* ids,
                          const CK_ULONG* values) {
    command.AddDescriptor(Number(count, "cnt="));
    const CK_ULONG shown =
        std::max(ckscribe::ReadableCount(ids, count), ckscribe::ReadableCount(values, count));
    for (CK_ULONG i = 0; i < shown; ++i) {
        command.AddDescriptor(Number(ValueAt(ids, i), "id="));
        command.AddDescriptor(Number(ValueAt(values, i), "val="));
    }
}

void capsOrPolicyPtrsAdd(CommandDescriptor& command, const CK_ULONG* ids, const CK_ULONG* idCount,
                         const CK_ULONG* values, const CK_ULONG* valueCount) {
    command.AddDescriptor(Pointer(ids, "IDs="));
    AddSize(command, idCount, "idSize=");
    command.AddDescriptor(Pointer(values, "vals="));
    AddSize(command, valueCount, "valSize=");
}

void capsOrPolicyDescAdd(CommandDescriptor& command, const CK_ULONG* ids, const CK_ULONG* idCount,
                         const CK_ULONG* values, const CK_ULONG* valueCount) {
    AddSize(command, idCount, "idSize=");
    AddSize(command, valueCount, "valSize=");
    if (ids == nullptr || values == nullptr) return;
    const CK_ULONG shownIds = ckscribe::ReadableCount(ids, ValueAt(idCount));
    const CK_ULONG shownValues = ckscribe::ReadableCount(values, ValueAt(valueCount));
    for (CK_ULONG i = 0; i < std::max(shownIds, shownValues); ++i) {
        if (i < shownIds) command.AddDescriptor(Number(ValueAt(ids, i), "id="));
        if (i < shownValues) command.AddDescriptor(Number(ValueAt(values, i), "val="));
    }
}
