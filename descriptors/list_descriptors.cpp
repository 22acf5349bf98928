#include "descriptors/list_descriptors.h"

#include <cstring>

#include "descriptors/call_event.h"
#include "descriptors/scalar_descriptors.h"
#include "host/readable_memory.h"
#include "util/json_writer.h"

namespace {

template <class Child>
void AddAll(DescriptorComposite& list, const unsigned long* array, unsigned long count) {
    const std::size_t readable = ckscribe::ReadableCount(array, count);
    for (std::size_t i = 0; i < readable; ++i) {
        unsigned long element;
        std::memcpy(&element, array + i, sizeof element);  // the array need not be aligned
        list.AddDescriptor(new Child(element));
    }
}

}  // namespace

void SlotIDListDescriptor::AddAllSlotIDs(const unsigned long* ids, unsigned long count) {
    SetArray(ids, count);
    AddAll<SlotIDDescriptor>(*this, ids, count);
}

void MechTypeListDescriptor::AddAllMechTypes(const unsigned long* types, unsigned long count) {
    SetArray(types, count);
    AddAll<MechanismTypeDescriptor>(*this, types, count);
}

void ObjectHandleListDescriptor::AddAllHandles(const unsigned long* handles, unsigned long count) {
    SetArray(handles, count);
    AddAll<ObjectHandleDescriptor>(*this, handles, count);
}

namespace ckscribe {

void ListDescriptor::WriteEventMembers(JsonWriter& json) const {
    if (isNull || AreOutputsLeftOut()) {
        json.Key("count");
        json.Number(claimedCount);
        return;
    }
    json.Key("values");
    json.BeginArray();
    for (unsigned i = 0; i < ChildCount(); ++i) ChildAtIndex(i)->WriteEventValue(json);
    json.EndArray();
}

}  // namespace ckscribe
