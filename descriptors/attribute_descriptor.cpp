#include "descriptors/attribute_descriptor.h"

#include "functions/pkcs11_names.h"
#include "host/readable_memory.h"

AttributeDescriptor::AttributeDescriptor(const CK_ATTRIBUTE* attribute, unsigned char printValue)
    : printValue(printValue) {
    CK_ATTRIBUTE copy;
    if (!ckscribe::CopyReadable(attribute, &copy, sizeof copy)) return;
    type = copy.type;
    value.SetValue(copy.pValue, copy.ulValueLen);
}

void AttributeDescriptor::PrintParameters(RecordText& out, int indent) const {
    const bool isNew = UseNewLogFormat();
    if (!isNew) out.Append('(');
    out.Append(GetAttributeType(type));
    if (printValue != 0) {
        out.Append(isNew ? '=' : ',');
        value.PrintDescription(out, indent, nullptr);
    }
    if (!isNew) out.Append(')');
}

AttributeListDescriptor::AttributeListDescriptor(const CK_ATTRIBUTE* attributes, unsigned long count,
                                                 unsigned char printValues) {
    AddAllAttributes(attributes, count, printValues);
}

void AttributeListDescriptor::AddAllAttributes(const CK_ATTRIBUTE* attributes, unsigned long count,
                                               unsigned char printValues) {
    const std::size_t readable = ckscribe::ReadableCount(attributes, count);
    for (std::size_t i = 0; i < readable; ++i) {
        AddDescriptor(new AttributeDescriptor(attributes + i, printValues));
    }
}
