#include "descriptors/group_descriptors.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>

#include "descriptors/scalar_descriptors.h"
#include "descriptors/value_descriptor.h"
#include "host/readable_memory.h"

namespace {

// Makes the descriptor of a serial. A serial that fills its field has no terminator.
template <std::size_t size>
AbstractDescriptor* Serial(const char (&field)[size]) {
    char serial[size + 1] = {};
    std::memcpy(serial, field, size);
    return new ByteStringDescriptor(nullptr, 0, serial);
}

}  // namespace

MofNStatusInfoDescriptor::MofNStatusInfoDescriptor(const CA_M_OF_N_STATUS* source) {
    CA_M_OF_N_STATUS status;
    if (!ckscribe::CopyReadable(source, &status, sizeof status)) return;
    for (const unsigned long word : status.words) AddDescriptor(new ULongDescriptor(word));
}

HAMemberDescriptor::HAMemberDescriptor(const CK_HA_MEMBER* source) {
    CK_HA_MEMBER member;
    if (!ckscribe::CopyReadable(source, &member, sizeof member)) return;
    AddDescriptor(Serial(member.memberSerial));
    AddDescriptor(new UShortDescriptor(member.memberStatus));
}

HAStatusDescriptor::HAStatusDescriptor(const CK_HA_STATUS* source) {
    CK_HA_STATUS status;
    if (!ckscribe::CopyReadable(source, &status, sizeof status)) return;
    AddDescriptor(Serial(status.groupSerial));
    AddAllHAMembers(&status);
    AddDescriptor(new UShortDescriptor(status.listSize));
}

void HAStatusDescriptor::AddAllHAMembers(const CK_HA_STATUS* status) {
    const std::size_t count = std::min<std::size_t>(status->listSize, std::size(status->memberList));
    for (std::size_t i = 0; i < count; ++i) AddDescriptor(new HAMemberDescriptor(&status->memberList[i]));
}
