// These descriptors show bytes of a call: attribute values, mechanism parameters, texts, data buffers, PINs.
#pragma once

#include <cstddef>

#include "descriptors/abstract_descriptor.h"
#include "descriptors/data_setting.h"
#include "descriptors/value_format.h"

// A ValueDescriptor prints its bytes inside the text of its owner, without a line of their own.
class ValueDescriptor : public AbstractDescriptor {
public:
    // `name` may be null. The bytes are copied as SetValue describes.
    explicit ValueDescriptor(const void* value = nullptr, unsigned long length = 0,
                             const char* name = nullptr,
                             ckscribe::BytesAre bytesAre = ckscribe::BytesAre::kData);
    ~ValueDescriptor() override;

    // Takes a copy of `length` bytes in place of the old value. If the memory cannot be read to its end, the
    // copy holds the part in front. Null or a length of 0 leaves no value. If it throws std::bad_alloc, the
    // descriptor holds no value.
    //
    // COMPAT: the length CK_UNAVAILABLE_INFORMATION (all ones) gives the eight bytes of that word itself. An
    // unavailable attribute prints as sixteen f, because readers of the log look for it.
    //
    // While data are hidden, data become PINDescriptor::cMaskedPIN instead. A value that prints as "<null>"
    // or as sixteen f is not masked.
    void SetValue(const void* value, unsigned long length,
                  ckscribe::BytesAre bytesAre = ckscribe::BytesAre::kData);
    void ReleaseValue();

    int Type() const override { return ckscribe::kValue; }
    void PrintDescription(ckscribe::RecordText& out, int indent, const char* suffix) const override;
    void PrintParameters(ckscribe::RecordText& out, int indent) const override;
    // Writes the size that the call claims and, if events show them, the bytes.
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;
    // Writes the bytes as a text without its padding.
    void WriteEventValue(ckscribe::JsonWriter& json) const override;

    // Returns the form that suits the bytes.
    ValueFormat FormatFromDataValue() const;
    // Prints the bytes in that form, between double quotes.
    void PrintValue(ckscribe::RecordText& out, ValueFormat format) const;

    unsigned long Length() const { return length; }
    // Returns the length that the caller gave, even if the memory is shorter.
    unsigned long ClaimedLength() const { return claimedLength; }
    // Returns the bytes if the event shows them, otherwise an empty text.
    std::string_view BytesInEvents() const;

protected:
    void PrintSimpleText(ckscribe::RecordText& out) const;
    void PrintNumericText(ckscribe::RecordText& out) const;
    void PrintRichText(ckscribe::RecordText& out) const;

private:
    unsigned char* value = nullptr;
    unsigned long length = 0;
    unsigned long claimedLength = 0;
    ckscribe::BytesAre bytesAre = ckscribe::BytesAre::kData;
};

// A ByteStringDescriptor prints its bytes with a label and on a line of their own.
class ByteStringDescriptor : public ValueDescriptor {
public:
    using ValueDescriptor::ValueDescriptor;
    int Type() const override { return ckscribe::kByteString; }
    void PrintDescription(ckscribe::RecordText& out, int indent, const char* suffix) const override;
};

// A PINDescriptor shows a PIN or another secret. It always prints the same mask, whatever the secret and its
// length are.
class PINDescriptor : public ByteStringDescriptor {
public:
    static constexpr char cMaskedPIN[] = "********";
    static constexpr unsigned long cMaskPINlen = 8;
    static constexpr char cLabel[] = "PIN=";

    std::string_view EventKind() const override { return "PIN"; }
    // Returns the label if it says more than the kind.
    std::string_view EventName() const override;
    void WriteEventMembers(ckscribe::JsonWriter&) const override {}

    // `isGiven` is false for a null PIN pointer, which prints as no value. The PIN itself never gets here.
    explicit PINDescriptor(bool isGiven = true, const char* label = cLabel)
        : ByteStringDescriptor(isGiven ? cMaskedPIN : nullptr, isGiven ? cMaskPINlen : 0, label,
                               ckscribe::BytesAre::kDescription) {}
};

// A StringDescriptor prints a text with its length. The characters stand as they are.
class StringDescriptor : public ValueDescriptor {
public:
    using ValueDescriptor::ValueDescriptor;
    int Type() const override { return ckscribe::kByteString; }
    void PrintDescription(ckscribe::RecordText& out, int indent, const char* suffix) const override;
    void PrintParameters(ckscribe::RecordText& out, int indent) const override;
};
