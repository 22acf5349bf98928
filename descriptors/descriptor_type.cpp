#include "descriptors/descriptor_type.h"

#include <iterator>

using namespace ckscribe;

namespace {

struct Labels {
    std::string_view oldFormat;
    std::string_view newFormat;  // empty: the descriptor's own name
};

constexpr std::string_view kOwnName;

// The index of this table is the type. COMPAT: HAMember and HAStatus have no "=" in the new format, because
// readers of the log know their labels without it.
constexpr Labels kLabels[] = {
    {"Unknown", "Unknown"},
    {"Command", kOwnName},
    {"Attribute", kOwnName},
    {"Value", kOwnName},
    {"AttributeList", "AttrList="},
    {"SlotID", "Slot="},
    {"ObjectHandle", "Obj="},
    {"Flags", "Flgs="},
    {"SessionHandle", "Sesn="},
    {"MechanismType", kOwnName},
    {"UserType", "User="},
    {"ByteBoolean", kOwnName},
    {"SlotIDList", "SlotLst="},
    {"MechTypeList", "MechTypeLst="},
    {"ByteString", kOwnName},
    {"Mechanism", "Mech="},
    {"MechanismInfo", "MechInfo="},
    {"SessionInfo", "SesInfo="},
    {"TokenInfo", "TokenInfo="},
    {"SlotInfo", "SlotInfo="},
    {"Info", "Info="},
    {"UShort", kOwnName},
    {"ULong", kOwnName},
    {"ObjectHandleList", "ObjHndLst="},
    {"MofNStatusInfo", "MofNStatus="},
    {"HAMember", "HAMember"},
    {"HAStatus", "HAStatus"},
    {"Pointer", "Ptr="},
};
static_assert(std::size(kLabels) == kPointer + 1);

const Labels& LabelsOf(int type) {
    const bool known = type >= 0 && type < static_cast<int>(std::size(kLabels));
    return kLabels[known ? type : kUnknownDescriptor];
}

}  // namespace

namespace ckscribe {

std::string_view OldFormatLabel(int type) { return LabelsOf(type).oldFormat; }

std::string_view NewFormatLabel(int type) { return LabelsOf(type).newFormat; }

}  // namespace ckscribe

int GetDescriptorType(const char* oldFormatLabel) {
    for (const Labels& labels : kLabels) {
        if (labels.oldFormat == oldFormatLabel) return static_cast<int>(&labels - kLabels);
    }
    return kUnknownDescriptor;
}
