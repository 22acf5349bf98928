// These descriptors show arrays of slots, mechanism types and object handles. A null array adds nothing. If
// an array cannot be read to its end, the elements in front are added.
#pragma once

#include "descriptors/descriptor_composite.h"

namespace ckscribe {

// The lists share this base class, which writes them into events.
class ListDescriptor : public DescriptorComposite {
public:
    // Writes the elements. Writes only the count that came with the array if the array is null, or if the
    // event leaves out what output arguments hold.
    void WriteEventMembers(JsonWriter& json) const override;

protected:
    void SetArray(const unsigned long* array, unsigned long count) {
        isNull = array == nullptr;
        claimedCount = count;
    }

private:
    bool isNull = true;
    unsigned long claimedCount = 0;
};

}  // namespace ckscribe

class SlotIDListDescriptor : public ckscribe::ListDescriptor {
public:
    SlotIDListDescriptor(const unsigned long* ids, unsigned long count) { AddAllSlotIDs(ids, count); }
    void AddAllSlotIDs(const unsigned long* ids, unsigned long count);
    int Type() const override { return ckscribe::kSlotIDList; }
};

class MechTypeListDescriptor : public ckscribe::ListDescriptor {
public:
    MechTypeListDescriptor(const unsigned long* types, unsigned long count) { AddAllMechTypes(types, count); }
    void AddAllMechTypes(const unsigned long* types, unsigned long count);
    int Type() const override { return ckscribe::kMechTypeList; }
};

class ObjectHandleListDescriptor : public ckscribe::ListDescriptor {
public:
    ObjectHandleListDescriptor(const unsigned long* handles, unsigned long count) {
        AddAllHandles(handles, count);
    }
    void AddAllHandles(const unsigned long* handles, unsigned long count);
    int Type() const override { return ckscribe::kObjectHandleList; }
};
