#include "functions/pkcs11_names.h"

#include <p11-kit/pkcs11.h>

#include "functions/mechanism_names.h"
#include "functions/name_table.h"

namespace ckscribe {

namespace {

// STANDARD(name) takes its number from the PKCS#11 header.
#define STANDARD(name) \
    { name, #name }

constexpr NameRow kAttributeNames[] = {
    STANDARD(CKA_CLASS),
    STANDARD(CKA_TOKEN),
    STANDARD(CKA_PRIVATE),
    STANDARD(CKA_LABEL),
    STANDARD(CKA_APPLICATION),
    STANDARD(CKA_VALUE),
    STANDARD(CKA_CERTIFICATE_TYPE),
    STANDARD(CKA_ISSUER),
    STANDARD(CKA_SERIAL_NUMBER),
    STANDARD(CKA_KEY_TYPE),
    STANDARD(CKA_SUBJECT),
    STANDARD(CKA_ID),
    STANDARD(CKA_SENSITIVE),
    STANDARD(CKA_ENCRYPT),
    STANDARD(CKA_DECRYPT),
    STANDARD(CKA_WRAP),
    STANDARD(CKA_UNWRAP),
    STANDARD(CKA_SIGN),
    STANDARD(CKA_SIGN_RECOVER),
    STANDARD(CKA_VERIFY),
    STANDARD(CKA_VERIFY_RECOVER),
    STANDARD(CKA_DERIVE),
    STANDARD(CKA_START_DATE),
    STANDARD(CKA_END_DATE),
    STANDARD(CKA_MODULUS),
    STANDARD(CKA_MODULUS_BITS),
    STANDARD(CKA_PUBLIC_EXPONENT),
    STANDARD(CKA_PRIVATE_EXPONENT),
    STANDARD(CKA_PRIME_1),
    STANDARD(CKA_PRIME_2),
    STANDARD(CKA_EXPONENT_1),
    STANDARD(CKA_EXPONENT_2),
    STANDARD(CKA_COEFFICIENT),
    STANDARD(CKA_PRIME),
    STANDARD(CKA_SUBPRIME),
    STANDARD(CKA_BASE),
    STANDARD(CKA_PRIME_BITS),
    {CKA_SUB_PRIME_BITS, "CKA_SUBPRIME_BITS"},
    STANDARD(CKA_VALUE_BITS),
    STANDARD(CKA_VALUE_LEN),
    STANDARD(CKA_EXTRACTABLE),
    STANDARD(CKA_LOCAL),
    STANDARD(CKA_NEVER_EXTRACTABLE),
    STANDARD(CKA_ALWAYS_SENSITIVE),
    STANDARD(CKA_MODIFIABLE),
    STANDARD(CKA_ECDSA_PARAMS),
    STANDARD(CKA_EC_POINT),
    STANDARD(CKA_HW_FEATURE_TYPE),
    STANDARD(CKA_RESET_ON_INIT),
    STANDARD(CKA_HAS_RESET),
    STANDARD(CKA_VENDOR_DEFINED),
    {0x80000001, "CKA_CCM_PRIVATE"},
    {0x80000002, "CKA_FINGERPRINT_SHA1"},
    {0x80000003, "CKA_PKC_TCTRUST"},
    {0x80000004, "CKA_PKC_MERV"},
    {0x80000005, "CKA_OUID"},
    {0x80000006, "CKA_X9_31_GENERATED"},
    {0x80000007, "CKA_PKC_ECC"},
    {0x80000008, "CKA_EKM_UID"},
    {0x80000011, "CKA_ROLE_DESCRIPTORS"},
    {0x80000012, "CKA_USER_VALUE"},
    {0x80000013, "CKA_INITIALIZER"},
    {0x80000014, "CKA_POLICY"},
    {0x80000015, "CKA_ACTIVE"},
    {0x80000101, "CKA_USAGE_COUNT"},
    {0x80000140, "CKA_SECURITY_MODE"},
    {0x80000150, "CKA_TEMPERATURE_STR"},
    {0x80000151, "CKA_SLOT_ID"},
    {0x80000200, "CKA_USAGE_LIMIT"},
    {0x80001000, "CKA_GENERIC_1"},
    {0x80001001, "CKA_GENERIC_2"},
    {0x80001002, "CKA_GENERIC_3"},
    {0x80001003, "CKA_FINGERPRINT_SHA256"},
};

constexpr NameRow kObjectClassNames[] = {
    STANDARD(CKO_DATA),
    STANDARD(CKO_CERTIFICATE),
    STANDARD(CKO_PUBLIC_KEY),
    STANDARD(CKO_PRIVATE_KEY),
    STANDARD(CKO_SECRET_KEY),
    STANDARD(CKO_HW_FEATURE),
    STANDARD(CKO_DOMAIN_PARAMETERS),
    {0x80000001, "CKO_TOKEN_ROLE_POLICY_SET"},
    {0x80000002, "CKO_TOKEN_ROLE_POLICY"},
    {0x80000003, "CKO_TOKEN_ROLE_DESCRIPTOR"},
    {0x80000004, "CKO_TOKEN_ROLE_STATE"},
    {0x80000201, "CKO_CERTIFICATE_REQUEST"},
    {0x80000202, "CKO_CRL"},
    {0x8000020A, "CKO_ADAPTER"},
    {0x8000020B, "CKO_SLOT"},
    {0x8000020C, "CKO_FM"},
};

constexpr NameRow kKeyTypeNames[] = {
    STANDARD(CKK_RSA),
    STANDARD(CKK_DSA),
    STANDARD(CKK_DH),
    STANDARD(CKK_ECDSA),
    STANDARD(CKK_X9_42_DH),
    STANDARD(CKK_GENERIC_SECRET),
    STANDARD(CKK_RC2),
    STANDARD(CKK_RC4),
    STANDARD(CKK_DES),
    STANDARD(CKK_DES2),
    STANDARD(CKK_DES3),
    STANDARD(CKK_CAST),
    STANDARD(CKK_CAST3),
    {CKK_CAST128, "CKK_CAST5"},
    STANDARD(CKK_RC5),
    STANDARD(CKK_IDEA),
    STANDARD(CKK_SKIPJACK),
    STANDARD(CKK_BATON),
    STANDARD(CKK_JUNIPER),
    STANDARD(CKK_CDMF),
    STANDARD(CKK_AES),
    STANDARD(CKK_ARIA),
    STANDARD(CKK_VENDOR_DEFINED),
    {0x80000010, "CKK_KCDSA"},
    {0x80000011, "CKK_SEED"},
};

constexpr NameRow kCertificateNames[] = {
    STANDARD(CKC_X_509),
};

#undef STANDARD

static_assert(IsStrictlyAscending(kAttributeNames));
static_assert(IsStrictlyAscending(kObjectClassNames));
static_assert(IsStrictlyAscending(kKeyTypeNames));
static_assert(IsStrictlyAscending(kCertificateNames));

}  // namespace

}  // namespace ckscribe

using namespace ckscribe;

std::string_view GetAttributeType(unsigned long type) { return NameOf(kAttributeNames, type, "CKA_XXX"); }

std::string_view GetObjectClass(unsigned long objectClass) {
    return NameOf(kObjectClassNames, objectClass, "CKO_UNKNOWN");
}

std::string_view GetKeyType(unsigned long type) { return NameOf(kKeyTypeNames, type, "CKK_UNKNOWN"); }

std::string_view GetCertificateType(unsigned long type) {
    return NameOf(kCertificateNames, type, "CKC_UNKNOWN");
}

std::string_view GetMechanismType(unsigned long mechanismType) {
    return NameOf(kMechanismNames, mechanismType, "Unknown Mechanism Type");
}
