// A DescriptorComposite holds other descriptors and prints them between braces.
#pragma once

#include "descriptors/abstract_descriptor.h"

class DescriptorComposite : public AbstractDescriptor {
public:
    DescriptorComposite() = default;
    ~DescriptorComposite() override;

    // Appends `child`, which belongs to this composite from then on. Ignores null. If the list cannot grow,
    // deletes the child and throws std::bad_alloc.
    void AddDescriptor(AbstractDescriptor* child);

    // Returns the i-th child in the order of adding. `i` must be below ChildCount().
    AbstractDescriptor* ChildAtIndex(unsigned i) const { return children[i]; }
    unsigned ChildCount() const { return childCount; }

    // Forgets the children without deleting them.
    void ResetChildrenBuffer();

    void PrintContent(ckscribe::RecordText& out, int indent, const char* suffix) const override;
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;
    virtual void PrintChildrenDescription(ckscribe::RecordText& out, int indent) const;

private:
    void Grow();

    unsigned childCount = 0;
    AbstractDescriptor** children = nullptr;  // doubles when it is full
};
