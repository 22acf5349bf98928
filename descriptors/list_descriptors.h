// Arrays of slots, mechanism types and object handles. A null array adds nothing; of an array that cannot be
// read to its end, the elements in front are added.
#pragma once

#include "descriptors/descriptor_composite.h"

class SlotIDListDescriptor : public DescriptorComposite {
public:
    SlotIDListDescriptor(const unsigned long* ids, unsigned long count) { AddAllSlotIDs(ids, count); }
    void AddAllSlotIDs(const unsigned long* ids, unsigned long count);
    int Type() const override { return kSlotIDList; }
};

class MechTypeListDescriptor : public DescriptorComposite {
public:
    MechTypeListDescriptor(const unsigned long* types, unsigned long count) { AddAllMechTypes(types, count); }
    void AddAllMechTypes(const unsigned long* types, unsigned long count);
    int Type() const override { return kMechTypeList; }
};

class ObjectHandleListDescriptor : public DescriptorComposite {
public:
    ObjectHandleListDescriptor(const unsigned long* handles, unsigned long count) {
        AddAllHandles(handles, count);
    }
    void AddAllHandles(const unsigned long* handles, unsigned long count);
    int Type() const override { return kObjectHandleList; }
};
