// M-of-N activation and high-availability groups.
#pragma once

#include "descriptors/descriptor_composite.h"
#include "descriptors/vendor_structures.h"

class MofNStatusInfoDescriptor : public DescriptorComposite {
public:
    // Null gives no children.
    explicit MofNStatusInfoDescriptor(const CA_M_OF_N_STATUS* status);
    int Type() const override { return kMofNStatusInfo; }
};

class HAMemberDescriptor : public DescriptorComposite {
public:
    // Null gives no children. The serial is carried as the name of a byte string without a value; kept, the
    // new format shows it as the label.
    explicit HAMemberDescriptor(const CK_HA_MEMBER* member);
    int Type() const override { return kHAMember; }
};

class HAStatusDescriptor : public DescriptorComposite {
public:
    // Null gives no children. The group's serial is carried like a member's.
    explicit HAStatusDescriptor(const CK_HA_STATUS* status);
    // Adds the first listSize members, at most as many as the structure has.
    void AddAllHAMembers(const CK_HA_STATUS* status);
    int Type() const override { return kHAStatus; }
};
