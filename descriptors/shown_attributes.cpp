#include "descriptors/shown_attributes.h"

#include <p11-kit/pkcs11.h>

#include <algorithm>
#include <iterator>

namespace ckscribe {

namespace {

struct Row {
    unsigned long type;
    AttributeForm form;
};

using enum AttributeForm;

constexpr Row kShownAttributes[] = {
    {CKA_CLASS, kNumber},
    {CKA_TOKEN, kBoolean},
    {CKA_PRIVATE, kBoolean},
    {CKA_LABEL, kBytes},
    {CKA_APPLICATION, kBytes},
    {CKA_CERTIFICATE_TYPE, kNumber},
    {CKA_ISSUER, kBytes},
    {CKA_SERIAL_NUMBER, kBytes},
    {CKA_TRUSTED, kBoolean},
    {CKA_CERTIFICATE_CATEGORY, kNumber},
    {CKA_CHECK_VALUE, kCheckValue},
    {CKA_KEY_TYPE, kNumber},
    {CKA_SUBJECT, kBytes},
    {CKA_ID, kId},
    {CKA_SENSITIVE, kBoolean},
    {CKA_ENCRYPT, kBoolean},
    {CKA_DECRYPT, kBoolean},
    {CKA_WRAP, kBoolean},
    {CKA_UNWRAP, kBoolean},
    {CKA_SIGN, kBoolean},
    {CKA_SIGN_RECOVER, kBoolean},
    {CKA_VERIFY, kBoolean},
    {CKA_VERIFY_RECOVER, kBoolean},
    {CKA_DERIVE, kBoolean},
    {CKA_START_DATE, kDate},
    {CKA_END_DATE, kDate},
    {CKA_MODULUS, kBytes},
    {CKA_MODULUS_BITS, kNumber},
    {CKA_PUBLIC_EXPONENT, kBytes},
    {CKA_VALUE_LEN, kNumber},
    {CKA_EXTRACTABLE, kBoolean},
    {CKA_LOCAL, kBoolean},
    {CKA_NEVER_EXTRACTABLE, kBoolean},
    {CKA_ALWAYS_SENSITIVE, kBoolean},
    {CKA_KEY_GEN_MECHANISM, kNumber},
    {CKA_MODIFIABLE, kBoolean},
    {CKA_COPYABLE, kBoolean},
    {CKA_DESTROYABLE, kBoolean},
    {CKA_EC_PARAMS, kBytes},
    {CKA_EC_POINT, kBytes},
    {CKA_ALWAYS_AUTHENTICATE, kBoolean},
    {CKA_WRAP_WITH_TRUSTED, kBoolean},
    {CKA_HW_FEATURE_TYPE, kNumber},
    {CKA_RESET_ON_INIT, kBoolean},
    {CKA_HAS_RESET, kBoolean},
    {CKA_ALLOWED_MECHANISMS, kMechanisms},
};

constexpr bool IsAscending() {
    for (std::size_t i = 1; i < std::size(kShownAttributes); ++i) {
        if (kShownAttributes[i - 1].type >= kShownAttributes[i].type) return false;
    }
    return true;
}
static_assert(IsAscending());

bool CanHaveSize(AttributeForm form, std::size_t size) {
    switch (form) {
        case kBoolean:
            return size == sizeof(CK_BBOOL);
        case kNumber:
            return size == sizeof(CK_ULONG);
        case kDate:
            return size == sizeof(CK_DATE) || size == 0;
        case kMechanisms:
            return size % sizeof(CK_MECHANISM_TYPE) == 0;
        case kCheckValue:
            return size == 3 || size == 0;
        case kBytes:
        case kId:
            return true;
    }
    return false;
}

}  // namespace

ShownAttribute ShownAttributeOf(unsigned long type, std::size_t size) {
    const Row* const row =
        std::lower_bound(std::begin(kShownAttributes), std::end(kShownAttributes), type,
                         [](const Row& left, unsigned long wanted) { return left.type < wanted; });
    const bool isListed = row != std::end(kShownAttributes) && row->type == type;
    if (!isListed || !CanHaveSize(row->form, size)) return {false, kBytes};
    return {true, row->form};
}

}  // namespace ckscribe
