#include "front/vendor_exports.h"

#include "front/function_lists.h"
#include "front/vendor_call.h"
#include "records/vendor_records.h"

#define CA_ROW(Name, Type, ...)                                               \
    CK_RV CA_##Name(VENDOR_REGISTERS) {                                       \
        return ckscribe::VendorCall<decltype(Name##CmdStart)>::Logged(        \
            "CA_" #Name, ckscribe::EntryOf(Type), &CryptokiBridge::CA_##Name, \
            ckscribe::ReceivedWords(VENDOR_RECEIVED));                        \
    }
#define CA_BARE_ROW CA_ROW
#include "functions/functions.def"

// CA_GetFunctionList is never logged. COMPAT: a null argument is answered before the library starts, with the
// code of CKR_DATA_INVALID instead of CKR_ARGUMENTS_BAD.
CK_RV CA_GetFunctionList(VENDOR_REGISTERS) {
    if (w0 == 0) return CKR_DATA_INVALID;
    ckscribe::StartLibrary();
    // The list is the target's memory: the target stays until the list has been overwritten.
    ckscribe::CallsInTarget::Line& line = bridge.KeepTarget();
    const CK_RV rv =
        ckscribe::WithOwnEntryPoints(ckscribe::ForwardedWords(&CryptokiBridge::CA_GetFunctionList,
                                                              ckscribe::ReceivedWords(VENDOR_RECEIVED)),
                                     reinterpret_cast<CK_TOLK_CA_FUNCTION_LIST**>(w0));
    ckscribe::CallsInTarget::Leave(line);
    return rv;
}
