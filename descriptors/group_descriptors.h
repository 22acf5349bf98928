// These descriptors show M-of-N activation and high-availability groups.
#pragma once

#include "descriptors/descriptor_composite.h"
#include "descriptors/vendor_structures.h"

class MofNStatusInfoDescriptor : public DescriptorComposite {
public:
    // If `status` is null, the descriptor has no children.
    explicit MofNStatusInfoDescriptor(const CA_M_OF_N_STATUS* status);
    int Type() const override { return ckscribe::kMofNStatusInfo; }
};

class HAMemberDescriptor : public DescriptorComposite {
public:
    // If `member` is null, the descriptor has no children. COMPAT: the serial is the name of a byte string
    // without a value. The new format shows it as the label, and readers of the log expect it there.
    explicit HAMemberDescriptor(const CK_HA_MEMBER* member);
    int Type() const override { return ckscribe::kHAMember; }
};

class HAStatusDescriptor : public DescriptorComposite {
public:
    // If `status` is null, the descriptor has no children. The group carries its serial as a member does.
    explicit HAStatusDescriptor(const CK_HA_STATUS* status);
    // Adds the first listSize members, but never more than the structure has.
    void AddAllHAMembers(const CK_HA_STATUS* status);
    int Type() const override { return ckscribe::kHAStatus; }
};
