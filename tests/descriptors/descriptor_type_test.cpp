#include "descriptors/descriptor_type.h"

#include <gtest/gtest.h>

#include <climits>

using namespace ckscribe;

namespace {

constexpr const char* kOwnName = "";

struct Expected {
    int type;
    const char* oldFormat;
    const char* newFormat;
};

constexpr Expected kExpected[] = {
    {0, "Unknown", "Unknown"},
    {1, "Command", kOwnName},
    {2, "Attribute", kOwnName},
    {3, "Value", kOwnName},
    {4, "AttributeList", "AttrList="},
    {5, "SlotID", "Slot="},
    {6, "ObjectHandle", "Obj="},
    {7, "Flags", "Flgs="},
    {8, "SessionHandle", "Sesn="},
    {9, "MechanismType", kOwnName},
    {10, "UserType", "User="},
    {11, "ByteBoolean", kOwnName},
    {12, "SlotIDList", "SlotLst="},
    {13, "MechTypeList", "MechTypeLst="},
    {14, "ByteString", kOwnName},
    {15, "Mechanism", "Mech="},
    {16, "MechanismInfo", "MechInfo="},
    {17, "SessionInfo", "SesInfo="},
    {18, "TokenInfo", "TokenInfo="},
    {19, "SlotInfo", "SlotInfo="},
    {20, "Info", "Info="},
    {21, "UShort", kOwnName},
    {22, "ULong", kOwnName},
    {23, "ObjectHandleList", "ObjHndLst="},
    {24, "MofNStatusInfo", "MofNStatus="},
    {25, "HAMember", "HAMember"},
    {26, "HAStatus", "HAStatus"},
    {27, "Pointer", "Ptr="},
};

TEST(DescriptorType, EachType_HasItsLabelInEachFormat) {
    for (const Expected& row : kExpected) {
        EXPECT_EQ(OldFormatLabel(row.type), row.oldFormat);
        EXPECT_EQ(NewFormatLabel(row.type), row.newFormat);
    }
}

TEST(DescriptorType, NumberIsNoType_LabelIsUnknown) {
    for (const int number : {-1, 28, 256, INT_MIN, INT_MAX}) {
        EXPECT_EQ(OldFormatLabel(number), "Unknown");
        EXPECT_EQ(NewFormatLabel(number), "Unknown");
    }
}

TEST(DescriptorType, OldLabel_GivesItsType) {
    for (const Expected& row : kExpected) EXPECT_EQ(GetDescriptorType(row.oldFormat), row.type);
}

TEST(DescriptorType, TextIsNoOldLabel_GivesTypeZero) {
    for (const char* text :
         {"", "command", "COMMAND", "Command ", "Comman", "Slot=", "Sesn=", "TokenInfo=", "28"}) {
        EXPECT_EQ(GetDescriptorType(text), 0) << text;
    }
}

}  // namespace
