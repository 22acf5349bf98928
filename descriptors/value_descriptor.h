// Bytes of a call: attribute values, mechanism parameters, texts, data buffers, PINs.
#pragma once

#include <cstddef>

#include "descriptors/abstract_descriptor.h"
#include "descriptors/value_format.h"

// Bytes that are printed inside their owner's text, without a line of their own.
class ValueDescriptor : public AbstractDescriptor {
public:
    // `name` may be null. The bytes are copied, see SetValue.
    explicit ValueDescriptor(const void* value = nullptr, unsigned long length = 0,
                             const char* name = nullptr);
    ~ValueDescriptor() override;

    // Takes a copy of `length` bytes in place of the old one; of memory that cannot be read to its end, the
    // part in front. Null or a length of 0 leaves no value. The length CK_UNAVAILABLE_INFORMATION (all ones)
    // gives the eight bytes of that word itself, so that an unavailable attribute prints as sixteen f; kept,
    // readers of the log look for it. Throws std::bad_alloc, and then holds no value.
    void SetValue(const void* value, unsigned long length);
    void ReleaseValue();

    int Type() const override { return kValue; }
    void PrintDescription(RecordText& out, int indent, const char* suffix) const override;
    void PrintParameters(RecordText& out, int indent) const override;

    // The form that suits the bytes.
    ValueFormat FormatFromDataValue() const;
    // The bytes in that form, between double quotes.
    void PrintValue(RecordText& out, ValueFormat format) const;

    unsigned long Length() const { return length; }

protected:
    void PrintSimpleText(RecordText& out) const;
    void PrintNumericText(RecordText& out) const;
    void PrintRichText(RecordText& out) const;

private:
    unsigned char* value = nullptr;
    unsigned long length = 0;
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

    // `isGiven` is false for a null PIN pointer: it prints as no value. The PIN itself never gets here.
    explicit PINDescriptor(bool isGiven = true, const char* label = cLabel)
        : ByteStringDescriptor(isGiven ? cMaskedPIN : nullptr, isGiven ? cMaskPINlen : 0, label) {}
};

// A text with its length, its characters as they are.
class StringDescriptor : public ValueDescriptor {
public:
    using ValueDescriptor::ValueDescriptor;
    int Type() const override { return kByteString; }
    void PrintDescription(RecordText& out, int indent, const char* suffix) const override;
    void PrintParameters(RecordText& out, int indent) const override;
};
