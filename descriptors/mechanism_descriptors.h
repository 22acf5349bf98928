// These descriptors show a mechanism with its parameter and what a token says about a mechanism.
#pragma once

#include <p11-kit/pkcs11.h>

#include "descriptors/value_descriptor.h"

class MechanismDescriptor : public AbstractDescriptor {
public:
    // Copies the bytes of the parameter. A null mechanism has type 0 and no parameter.
    explicit MechanismDescriptor(const CK_MECHANISM* mechanism);
    int Type() const override { return ckscribe::kMechanism; }
    void PrintParameters(ckscribe::RecordText& out, int indent) const override;
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;
    void TellSubject(ckscribe::CallSubject& subject) const override;

private:
    bool isGiven = false;
    unsigned long type = 0;
    ValueDescriptor parameter;
};

class MechInfoDescriptor : public AbstractDescriptor {
public:
    // A null pointer gives zeros.
    explicit MechInfoDescriptor(const CK_MECHANISM_INFO* info);
    int Type() const override { return ckscribe::kMechanismInfo; }
    void PrintParameters(ckscribe::RecordText& out, int indent) const override;
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;

private:
    bool isGiven = false;
    CK_MECHANISM_INFO info{};
};
