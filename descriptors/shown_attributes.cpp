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

using Form = AttributeForm;

constexpr Row kShownAttributes[] = {
    {CKA_CLASS, Form::kNumber},
    {CKA_TOKEN, Form::kBoolean},
    {CKA_PRIVATE, Form::kBoolean},
    {CKA_LABEL, Form::kBytes},
    {CKA_APPLICATION, Form::kBytes},
    {CKA_CERTIFICATE_TYPE, Form::kNumber},
    {CKA_ISSUER, Form::kBytes},
    {CKA_SERIAL_NUMBER, Form::kBytes},
    {CKA_TRUSTED, Form::kBoolean},
    {CKA_CERTIFICATE_CATEGORY, Form::kNumber},
    {CKA_CHECK_VALUE, Form::kCheckValue},
    {CKA_KEY_TYPE, Form::kNumber},
    {CKA_SUBJECT, Form::kBytes},
    {CKA_ID, Form::kId},
    {CKA_SENSITIVE, Form::kBoolean},
    {CKA_ENCRYPT, Form::kBoolean},
    {CKA_DECRYPT, Form::kBoolean},
    {CKA_WRAP, Form::kBoolean},
    {CKA_UNWRAP, Form::kBoolean},
    {CKA_SIGN, Form::kBoolean},
    {CKA_SIGN_RECOVER, Form::kBoolean},
    {CKA_VERIFY, Form::kBoolean},
    {CKA_VERIFY_RECOVER, Form::kBoolean},
    {CKA_DERIVE, Form::kBoolean},
    {CKA_START_DATE, Form::kDate},
    {CKA_END_DATE, Form::kDate},
    {CKA_MODULUS, Form::kBytes},
    {CKA_MODULUS_BITS, Form::kNumber},
    {CKA_PUBLIC_EXPONENT, Form::kBytes},
    {CKA_VALUE_LEN, Form::kNumber},
    {CKA_EXTRACTABLE, Form::kBoolean},
    {CKA_LOCAL, Form::kBoolean},
    {CKA_NEVER_EXTRACTABLE, Form::kBoolean},
    {CKA_ALWAYS_SENSITIVE, Form::kBoolean},
    {CKA_KEY_GEN_MECHANISM, Form::kNumber},
    {CKA_MODIFIABLE, Form::kBoolean},
    {CKA_COPYABLE, Form::kBoolean},
    {CKA_DESTROYABLE, Form::kBoolean},
    {CKA_EC_PARAMS, Form::kBytes},
    {CKA_EC_POINT, Form::kBytes},
    {CKA_ALWAYS_AUTHENTICATE, Form::kBoolean},
    {CKA_WRAP_WITH_TRUSTED, Form::kBoolean},
    {CKA_HW_FEATURE_TYPE, Form::kNumber},
    {CKA_RESET_ON_INIT, Form::kBoolean},
    {CKA_HAS_RESET, Form::kBoolean},
    {CKA_ALLOWED_MECHANISMS, Form::kMechanisms},
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
        case Form::kBoolean:
            return size == sizeof(CK_BBOOL);
        case Form::kNumber:
            return size == sizeof(CK_ULONG);
        case Form::kDate:
            return size == sizeof(CK_DATE) || size == 0;
        case Form::kMechanisms:
            return size % sizeof(CK_MECHANISM_TYPE) == 0;
        case Form::kCheckValue:
            return size == 3 || size == 0;
        case Form::kBytes:
        case Form::kId:
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
    if (!isListed || !CanHaveSize(row->form, size)) return {false, Form::kBytes};
    return {true, row->form};
}

}  // namespace ckscribe
