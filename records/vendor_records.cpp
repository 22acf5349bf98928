// Defines the builders of the vendor's functions whose records show no argument.

#include "records/vendor_records.h"

#include "records/shared_vendor_records.h"
#include "records/vendor_commands.h"

using namespace ckscribe;

#define CA_BARE_ROW(Name, ...)                                   \
    void Name##CmdStart() { StartRecord(kCmd##Name).Capture(); } \
    void Name##CmdEnd(CK_RV rv) { CaptureResult(kCmd##Name, rv); }
#include "functions/functions.def"
