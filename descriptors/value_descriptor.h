// Bytes of a call: attribute values, mechanism parameters, texts, data buffers, PINs.
#pragma once

#include <cstddef>

#include "descriptors/abstract_descriptor.h"
#include "descriptors/data_setting.h"
#include "descriptors/value_format.h"

// Bytes that are printed inside their owner's text, without a line of their own.
class ValueDescriptor : public AbstractDescriptor {
public:
    // `name` may be null. The bytes are copied, see SetValue.
    explicit ValueDescriptor(const void* value = nullptr, unsigned long length = 0,
                             const char* name = nullptr,
                             ckscribe::BytesAre bytesAre = ckscribe::BytesAre::kData);
    ~ValueDescriptor() override;

    // Takes a copy of `length` bytes in place of the old one; of memory that cannot be read to its end, the
    // part in front. Null or a length of 0 leaves no value. The length CK_UNAVAILABLE_INFORMATION (all ones)
    // gives the eight bytes of that word itself, so that an unavailable attribute prints as sixteen f; kept,
    // readers of the log look for it. Throws std::bad_alloc, and then holds no value.
    //
    // While data are hidden, data become PINDescriptor::cMaskedPIN instead: a value that would be printed as
    // "<null>" or as sixteen f still is.
    void SetValue(const void* value, unsigned long length,
                  ckscribe::BytesAre bytesAre = ckscribe::BytesAre::kData);
    void ReleaseValue();

    int Type() const override { return kValue; }
    void PrintDescription(RecordText& out, int indent, const char* suffix) const override;
    void PrintParameters(RecordText& out, int indent) const override;
    // The size that the call claims, and the bytes themselves if they are shown.
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;
    // As a text without its padding.
    void WriteEventValue(ckscribe::JsonWriter& json) const override;

    // The form that suits the bytes.
    ValueFormat FormatFromDataValue() const;
    // The bytes in that form, between double quotes.
    void PrintValue(RecordText& out, ValueFormat format) const;

    unsigned long Length() const { return length; }
    // The length that was given, of whatever memory.
    unsigned long ClaimedLength() const { return claimedLength; }
    // The bytes if events show them, and none otherwise.
    std::string_view BytesInEvents() const;

protected:
    void PrintSimpleText(RecordText& out) const;
    void PrintNumericText(RecordText& out) const;
    void PrintRichText(RecordText& out) const;

private:
    unsigned char* value = nullptr;
    unsigned long length = 0;
    unsigned long claimedLength = 0;
    ckscribe::BytesAre bytesAre = ckscribe::BytesAre::kData;
};

// Bytes with a label and a line of their own.
class ByteStringDescriptor : public ValueDescriptor {
public:
    using ValueDescriptor::ValueDescriptor;
    int Type() const override { return kByteString; }
    void PrintDescription(RecordText& out, int indent, const char* suffix) const override;
};

// A PIN or another secret: always the same mask, whatever was given and however long it is.
class PINDescriptor : public ByteStringDescriptor {
public:
    static constexpr char cMaskedPIN[] = "********";
    static constexpr unsigned long cMaskPINlen = 8;
    static constexpr char cLabel[] = "PIN=";

    std::string_view EventKind() const override { return "PIN"; }
    // The label, where it says more than the kind.
    std::string_view EventName() const override;
    void WriteEventMembers(ckscribe::JsonWriter&) const override {}

    // `isGiven` is false for a null PIN pointer: it prints as no value. The PIN itself never gets here.
    explicit PINDescriptor(bool isGiven = true, const char* label = cLabel)
        : ByteStringDescriptor(isGiven ? cMaskedPIN : nullptr, isGiven ? cMaskPINlen : 0, label,
                               ckscribe::BytesAre::kDescription) {}
};

// A text with its length, its characters as they are.
class StringDescriptor : public ValueDescriptor {
public:
    using ValueDescriptor::ValueDescriptor;
    int Type() const override { return kByteString; }
    void PrintDescription(RecordText& out, int indent, const char* suffix) const override;
    void PrintParameters(RecordText& out, int indent) const override;
};
