// Builders of the vendor's functions whose records show no argument.

#include "records/vendor_records.h"

#include "descriptors/command_descriptor.h"
#include "records/vendor_commands.h"

namespace {

void CaptureBareRecord(CommandType type, CommandPhase phase, CK_RV rv) {
    CommandDescriptor(type, phase, rv).Capture();
}

}  // namespace

#define CA_BARE_ROW(Name, ...)                                               \
    void Name##CmdStart() { CaptureBareRecord(kCmd##Name, kStart, CKR_OK); } \
    void Name##CmdEnd(CK_RV rv) { CaptureBareRecord(kCmd##Name, kEnd, rv); }
#include "front/functions.def"
