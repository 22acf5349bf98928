// These descriptors show the structures in which PKCS#11 describes the library, a slot, a token and a
// session.
//
// Each descriptor copies from the structure what it shows. A null pointer gives a descriptor without children
// (a session shows zeros). Versions and times are not shown.
#pragma once

#include <p11-kit/pkcs11.h>

#include "descriptors/descriptor_composite.h"

class InfoDescriptor : public DescriptorComposite {
public:
    explicit InfoDescriptor(const CK_INFO* info);
    int Type() const override { return ckscribe::kInfo; }
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;

private:
    bool isGiven = false;
    CK_VERSION version{};
};

class SlotInfoDescriptor : public DescriptorComposite {
public:
    explicit SlotInfoDescriptor(const CK_SLOT_INFO* info);
    int Type() const override { return ckscribe::kSlotInfo; }
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;
};

class TokenInfoDescriptor : public DescriptorComposite {
public:
    explicit TokenInfoDescriptor(const CK_TOKEN_INFO* info);
    int Type() const override { return ckscribe::kTokenInfo; }
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;
};

class SessionInfoDescriptor : public AbstractDescriptor {
public:
    explicit SessionInfoDescriptor(const CK_SESSION_INFO* info);
    int Type() const override { return ckscribe::kSessionInfo; }
    void PrintParameters(ckscribe::RecordText& out, int indent) const override;
    void WriteEventMembers(ckscribe::JsonWriter& json) const override;

private:
    bool isGiven = false;
    CK_SESSION_INFO info{};
};
