#include "descriptors/attribute_descriptor.h"

#include <cstring>

#include "descriptors/event_bytes.h"
#include "descriptors/event_names.h"
#include "functions/pkcs11_names.h"
#include "host/readable_memory.h"
#include "util/json_writer.h"

using namespace ckscribe;

AttributeDescriptor::AttributeDescriptor(const CK_ATTRIBUTE* attribute, unsigned char printValue)
    : printValue(printValue) {
    CK_ATTRIBUTE copy;
    if (!CopyReadable(attribute, &copy, sizeof copy)) return;
    type = copy.type;
    hasBuffer = copy.pValue != nullptr;
    const ShownAttribute shown = ShownAttributeOf(type, copy.ulValueLen);
    form = shown.form;
    value.SetValue(copy.pValue, copy.ulValueLen, shown.isShown ? BytesAre::kDescription : BytesAre::kData);
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

void AttributeDescriptor::WriteEventMembers(JsonWriter& json) const {
    ckscribe::WriteAttributeType(json, type);
    const bool isSizeKnown = printValue != 0 || hasBuffer;
    if (!isSizeKnown) return;
    if (printValue != 0 && value.ClaimedLength() == CK_UNAVAILABLE_INFORMATION) {
        json.Key("unavailable");
        json.Boolean(true);
        return;
    }
    json.Key("size");
    json.Number(value.ClaimedLength());
    if (printValue != 0) WriteValueInEvent(json);
}

namespace {

void WriteMechanisms(JsonWriter& json, std::string_view bytes) {
    json.BeginArray();
    for (; bytes.size() >= sizeof(CK_MECHANISM_TYPE); bytes.remove_prefix(sizeof(CK_MECHANISM_TYPE))) {
        CK_MECHANISM_TYPE mechanism;
        std::memcpy(&mechanism, bytes.data(), sizeof mechanism);
        json.BeginObject();
        ckscribe::WriteMechanismType(json, mechanism);
        json.EndObject();
    }
    json.EndArray();
}

unsigned long NumberIn(std::string_view bytes) {
    unsigned long number;
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
}

}  // namespace

void AttributeDescriptor::WriteValueInEvent(JsonWriter& json) const {
    const std::string_view bytes = value.BytesInEvents();
    if (bytes.empty()) return;
    const bool isWhole = bytes.size() == value.ClaimedLength();
    if (form == AttributeForm::kBoolean && isWhole) {
        json.Key("value");
        json.Boolean(bytes[0] != 0);
    } else if (form == AttributeForm::kNumber && isWhole) {
        json.Key("value");
        json.Number(NumberIn(bytes));
    } else if (form == AttributeForm::kMechanisms && isWhole) {
        json.Key("value");
        WriteMechanisms(json, bytes);
    } else if (form == AttributeForm::kId) {
        ckscribe::WriteBytesInHex(json, bytes);
    } else {
        ckscribe::WriteBytes(json, bytes);
    }
}

AttributeListDescriptor::AttributeListDescriptor(const CK_ATTRIBUTE* attributes, unsigned long count,
                                                 unsigned char printValues) {
    AddAllAttributes(attributes, count, printValues);
}

void AttributeListDescriptor::AddAllAttributes(const CK_ATTRIBUTE* attributes, unsigned long count,
                                               unsigned char printValues) {
    const std::size_t readable = ReadableCount(attributes, count);
    for (std::size_t i = 0; i < readable; ++i) {
        AddDescriptor(new AttributeDescriptor(attributes + i, printValues));
    }
}

void AttributeListDescriptor::WriteEventMembers(JsonWriter& json) const {
    json.Key("attributes");
    json.BeginArray();
    for (unsigned i = 0; i < ChildCount(); ++i) ChildAtIndex(i)->WriteEventValue(json);
    json.EndArray();
}
