// Each kind of descriptor has a type and prints a label in front of its value.
#pragma once

#include <string_view>

namespace ckscribe {

enum DescriptorType : int {
    kUnknownDescriptor = 0,
    kCommand = 1,
    kAttribute = 2,
    kValue = 3,
    kAttributeList = 4,
    kSlotID = 5,
    kObjectHandle = 6,
    kFlags = 7,
    kSessionHandle = 8,
    kMechanismType = 9,
    kUserType = 10,
    kByteBoolean = 11,
    kSlotIDList = 12,
    kMechTypeList = 13,
    kByteString = 14,
    kMechanism = 15,
    kMechanismInfo = 16,
    kSessionInfo = 17,
    kTokenInfo = 18,
    kSlotInfo = 19,
    kInfo = 20,
    kUShort = 21,
    kULong = 22,
    kObjectHandleList = 23,
    kMofNStatusInfo = 24,
    kHAMember = 25,
    kHAStatus = 26,
    kPointer = 27,
};

// Returns the label of a type in the old format, or "Unknown" for a number that is not a type.
std::string_view OldFormatLabel(int type);

// Returns the label of a type in the new format. It is empty if the descriptor's own name is the label.
std::string_view NewFormatLabel(int type);

}  // namespace ckscribe

// Returns the type of an old-format label. The text must match exactly; any other text gives 0.
int GetDescriptorType(const char* oldFormatLabel);
