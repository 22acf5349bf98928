#include "descriptors/pkcs11_arrays.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <span>

namespace {

constexpr unsigned long kNoClass = ~0UL;

}  // namespace

unsigned long attributeClass(const CK_ATTRIBUTE* attributes, unsigned long count) {
    const std::span entries(attributes, count);
    const auto entry = std::find_if(entries.begin(), entries.end(), [](const CK_ATTRIBUTE& attribute) {
        return attribute.type == CKA_CLASS;
    });
    if (entry == entries.end()) return kNoClass;

    unsigned long objectClass;
    if (entry->pValue == nullptr || entry->ulValueLen < sizeof objectClass) return kNoClass;
    std::memcpy(&objectClass, entry->pValue, sizeof objectClass);
    return objectClass;
}

CK_RV CopyULONGArrayTo32Array(unsigned long* in, unsigned long* inCount, unsigned int* out,
                              unsigned int* outCount) {
    if (*inCount > *outCount) return CKR_BUFFER_TOO_SMALL;
    for (unsigned long i = 0; i < *inCount; ++i) {
        if (in[i] > std::numeric_limits<unsigned int>::max()) return CKR_DATA_LEN_RANGE;
        out[i] = static_cast<unsigned int>(in[i]);
    }
    *outCount = static_cast<unsigned int>(*inCount);
    return CKR_OK;
}

CK_RV Copy32ArrayToULONGArray(unsigned int* in, unsigned int* inCount, unsigned long* out,
                              unsigned long* outCount) {
    if (*inCount > *outCount) return CKR_BUFFER_TOO_SMALL;
    std::copy_n(in, *inCount, out);
    *outCount = *inCount;
    return CKR_OK;
}
