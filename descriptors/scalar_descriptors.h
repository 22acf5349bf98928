// These descriptors show the numbers of a call: handles, identifiers, flags, counts, lengths, addresses,
// booleans.
//
// COMPAT: a hexadecimal number shows the low 32 bits of its value, because readers of the log expect fields
// of this width.
#pragma once

#include "descriptors/abstract_descriptor.h"

enum class ULongFormat : int {
    // The number is hexadecimal in the old format and decimal in the new one.
    kDefault = 0,
    kHexadecimal = 1,
    kDecimal = 2,
};

class ULongDescriptor : public AbstractDescriptor {
public:
    explicit ULongDescriptor(unsigned long value, const char* name = nullptr,
                             ULongFormat format = ULongFormat::kDefault);
    void SetValue(unsigned long newValue) { value = newValue; }
    int Type() const override { return ckscribe::kULong; }
    void PrintParameters(ckscribe::RecordText& out, int indent) const override;
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;
    void WriteEventValue(ckscribe::JsonWriter& json) const override;
    unsigned long Value() const { return value; }

private:
    unsigned long value;
    ULongFormat format;
};

class SlotIDDescriptor : public ULongDescriptor {
public:
    explicit SlotIDDescriptor(unsigned long slot) : ULongDescriptor(slot) {}
    int Type() const override { return ckscribe::kSlotID; }
    void TellSubject(ckscribe::CallSubject& subject) const override;
};

class ObjectHandleDescriptor : public ULongDescriptor {
public:
    explicit ObjectHandleDescriptor(unsigned long handle) : ULongDescriptor(handle) {}
    int Type() const override { return ckscribe::kObjectHandle; }
    void TellSubject(ckscribe::CallSubject& subject) const override;
};

class FlagsDescriptor : public ULongDescriptor {
public:
    explicit FlagsDescriptor(unsigned long flags) : ULongDescriptor(flags) {}
    int Type() const override { return ckscribe::kFlags; }
};

class SessionHandleDescriptor : public ULongDescriptor {
public:
    explicit SessionHandleDescriptor(unsigned long handle) : ULongDescriptor(handle) {}
    int Type() const override { return ckscribe::kSessionHandle; }
    void TellSubject(ckscribe::CallSubject& subject) const override;
};

namespace ckscribe {

// This descriptor shows a slot whose address the call gives.
//
// COMPAT: records show the address in place of the slot, as readers of the log expect. Events show the slot.
// If the address cannot be read, events show no value.
class SlotAddressDescriptor : public SlotIDDescriptor {
public:
    explicit SlotAddressDescriptor(const unsigned long* address);
    void WriteEventMembers(JsonWriter& json) const override;
    void TellSubject(CallSubject& subject) const override;

private:
    unsigned long slot = 0;
    bool isReadable;
};

// This descriptor shows the length of a PIN or of another secret. The text log shows 0 where it hides data.
// Events never show the length.
class PinLengthDescriptor : public ULongDescriptor {
public:
    explicit PinLengthDescriptor(unsigned long length);
    void WriteEventMembers(JsonWriter&) const override {}
};

}  // namespace ckscribe

// This descriptor shows an address. Its label is fixed: a name given to it is never printed.
class PtrDescriptor : public ULongDescriptor {
public:
    explicit PtrDescriptor(const void* address, const char* name = nullptr);
    int Type() const override { return ckscribe::kPointer; }
};

// The new format shows this number as a signed one of 32 bits.
class UShortDescriptor : public AbstractDescriptor {
public:
    explicit UShortDescriptor(unsigned long value, const char* name = nullptr)
        : AbstractDescriptor(name), value(value) {}
    void SetValue(unsigned long newValue) { value = newValue; }
    int Type() const override { return ckscribe::kUShort; }
    void PrintParameters(ckscribe::RecordText& out, int indent) const override;
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;
    void WriteEventValue(ckscribe::JsonWriter& json) const override;
    unsigned long Value() const { return value; }

private:
    unsigned long value;
};

class MechanismTypeDescriptor : public UShortDescriptor {
public:
    using UShortDescriptor::UShortDescriptor;
    int Type() const override { return ckscribe::kMechanismType; }
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;
    void WriteEventValue(ckscribe::JsonWriter& json) const override;
    void TellSubject(ckscribe::CallSubject& subject) const override;
};

class UserTypeDescriptor : public UShortDescriptor {
public:
    using UShortDescriptor::UShortDescriptor;
    int Type() const override { return ckscribe::kUserType; }
    void TellSubject(ckscribe::CallSubject& subject) const override;
};

// COMPAT: the label is that of any UShortDescriptor, because readers of the log expect it.
class PedIdDescriptor : public UShortDescriptor {
public:
    using UShortDescriptor::UShortDescriptor;
};

// COMPAT: a byte has no type of its own and prints "Unknown" as its label, because readers of the log expect
// it.
class ByteDescriptor : public AbstractDescriptor {
public:
    explicit ByteDescriptor(unsigned char value, const char* name = nullptr)
        : AbstractDescriptor(name), value(value) {}
    void SetValue(unsigned char newValue) { value = newValue; }
    void PrintParameters(ckscribe::RecordText& out, int indent) const override;
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;
    void WriteEventValue(ckscribe::JsonWriter& json) const override;

protected:
    unsigned char value;
};

class ByteBooleanDescriptor : public ByteDescriptor {
public:
    using ByteDescriptor::ByteDescriptor;
    int Type() const override { return ckscribe::kByteBoolean; }
    void PrintParameters(ckscribe::RecordText& out, int indent) const override;
    void WriteEventValue(ckscribe::JsonWriter& json) const override;
};
