// These descriptors show an attribute and a template, which is a list of attributes.
#pragma once

#include <p11-kit/pkcs11.h>

#include "descriptors/descriptor_composite.h"
#include "descriptors/shown_attributes.h"
#include "descriptors/value_descriptor.h"

class AttributeDescriptor : public AbstractDescriptor {
public:
    // Takes the type and copies the value (see ValueDescriptor::SetValue). A null attribute has type 0 and no
    // value. If `printValue` is 0, the text leaves the value out.
    AttributeDescriptor(const CK_ATTRIBUTE* attribute, unsigned char printValue);
    int Type() const override { return ckscribe::kAttribute; }
    void PrintParameters(ckscribe::RecordText& out, int indent) const override;
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;

private:
    void WriteValueInEvent(ckscribe::JsonWriter& json) const;

    unsigned long type = 0;
    bool hasBuffer = false;
    ckscribe::AttributeForm form = ckscribe::AttributeForm::kBytes;
    ValueDescriptor value;
    unsigned char printValue;
};

class AttributeListDescriptor : public DescriptorComposite {
public:
    AttributeListDescriptor(const CK_ATTRIBUTE* attributes, unsigned long count, unsigned char printValues);
    // Adds an AttributeDescriptor for each entry that can be read. A null array adds nothing.
    void AddAllAttributes(const CK_ATTRIBUTE* attributes, unsigned long count, unsigned char printValues);
    int Type() const override { return ckscribe::kAttributeList; }
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;
};
