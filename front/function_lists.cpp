#include "front/function_lists.h"

#include <cstring>

#include "front/overwritten_lists.h"
#include "front/vendor_exports.h"
#include "host/host_shield.h"
#include "host/readable_memory.h"
#include "host/record_lock.h"
#include "host/writable_memory.h"

namespace {

// A caller may give more words than an export declares.
ckscribe::VendorFunction AsVendorFunction(ckscribe::VendorExport* function) {
    return reinterpret_cast<ckscribe::VendorFunction>(reinterpret_cast<void*>(function));
}

void PutOwnEntryPoints(CK_FUNCTION_LIST& list) {
#define C_EVERY_ROW(Name, ...) list.C_##Name = C_##Name;
#include "functions/functions.def"
}

void PutOwnEntryPoints(CK_TOLK_CA_FUNCTION_LIST& list) {
#define CA_EVERY_ROW(Name) list.CA_##Name = AsVendorFunction(CA_##Name);
#include "functions/functions.def"
}

template <class List>
CK_RV HandOutOwnEntryPoints(CK_RV rv, List** result) {
    static List copyOfReadOnlyList;
    if (rv != CKR_OK || result == nullptr || *result == nullptr) return rv;

    ckscribe::BehindHostShield([result] {
        // Two threads may ask for the lists at once, while a third one forks.
        const ckscribe::RecordLock lock(*pCkLogMutex.load(std::memory_order_acquire));
        List own;
        std::memset(&own, 0, sizeof own);  // lists are compared byte by byte
        own.version = (*result)->version;
        PutOwnEntryPoints(own);
        if (std::memcmp(*result, &own, sizeof own) == 0) return;
        if (ckscribe::IsWritable(*result, sizeof own) && ckscribe::overwrittenLists.Remember(*result)) {
            PutOwnEntryPoints(**result);
        } else {
            // An earlier caller may be reading the copy.
            if (std::memcmp(&copyOfReadOnlyList, &own, sizeof own) != 0) copyOfReadOnlyList = own;
            *result = &copyOfReadOnlyList;
        }
    });
    return rv;
}

}  // namespace

CK_RV ckscribe::WithOwnEntryPoints(CK_RV rv, CK_FUNCTION_LIST_PTR_PTR ppFunctionList) {
    return HandOutOwnEntryPoints(rv, ppFunctionList);
}

CK_RV ckscribe::WithOwnEntryPoints(CK_RV rv, CK_TOLK_CA_FUNCTION_LIST** ppList) {
    return HandOutOwnEntryPoints(rv, ppList);
}
