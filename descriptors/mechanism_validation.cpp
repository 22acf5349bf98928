#include "descriptors/mechanism_validation.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <limits>

#include "functions/mechanism_names.h"

using namespace ckscribe;

namespace {

constexpr std::uint32_t kInvalid = CKR_MECHANISM_PARAM_INVALID << 16;

struct Lengths {
    unsigned long least;
    unsigned long most;
    bool noneAllowed;  // a null pointer with length 0 is valid, too

    constexpr bool Allow(unsigned long length) const { return least <= length && length <= most; }
};

constexpr Lengths Exactly(unsigned long length) { return {length, length, false}; }
constexpr Lengths ExactlyOrNone(unsigned long length) { return {length, length, true}; }
constexpr Lengths AtLeast(unsigned long least) {
    return {least, std::numeric_limits<unsigned long>::max(), false};
}

// A ContentCheck says whether the content of a parameter is valid. The parameter has the length of its
// mechanism.
using ContentCheck = bool (*)(const void* parameter);

// Returns the word (unsigned long or pointer) at that index of a parameter. The parameter may lie at any
// address.
unsigned long Word(const void* parameter, std::size_t index) {
    unsigned long word;
    std::memcpy(&word, static_cast<const char*>(parameter) + index * sizeof word, sizeof word);
    return word;
}

// The parameter holds only the requested MAC length.
template <unsigned long kFullLength>
bool MacLengthAtMost(const void* parameter) {
    return Word(parameter, 0) <= kFullLength;
}

// The parameter holds effective bits and MAC length.
bool IsRc2MacLengthValid(const void* parameter) { return Word(parameter, 1) <= 8; }

// The parameter holds word size, rounds and MAC length. The MAC length may be up to two words.
bool IsRc5MacLengthValid(const void* parameter) {
    const unsigned long wordSize = Word(parameter, 0);
    const unsigned long macLength = Word(parameter, 2);
    return macLength <= wordSize || macLength - wordSize <= wordSize;
}

// The parameter holds initialisation vector, password, password length, salt, salt length and iterations.
bool ArePasswordAndSaltPresent(const void* parameter) {
    const unsigned long password = Word(parameter, 1);
    const unsigned long passwordLength = Word(parameter, 2);
    const unsigned long salt = Word(parameter, 3);
    const unsigned long saltLength = Word(parameter, 4);
    return (password != 0 || passwordLength == 0) && (salt != 0 || saltLength == 0);
}

struct ParameterRule {
    CK_MECHANISM_TYPE mechanism;
    Lengths lengths;
    ContentCheck isContentValid = nullptr;
};

// The rules stand in ascending order of the mechanisms. A mechanism that stands here as a number has no name
// in this library.
constexpr ParameterRule kParameterRules[] = {
    {MechanismNumber("CKM_RSA_PKCS_OAEP"), Exactly(40)},
    {MechanismNumber("CKM_RSA_PKCS_PSS"), Exactly(24)},
    {MechanismNumber("CKM_SHA1_RSA_PKCS_PSS"), Exactly(24)},
    {MechanismNumber("CKM_DH_PKCS_DERIVE"), AtLeast(1)},
    {MechanismNumber("CKM_X9_42_DH_DERIVE"), Exactly(40)},
    {MechanismNumber("CKM_X9_42_DH_HYBRID_DERIVE"), Exactly(72)},
    {MechanismNumber("CKM_SHA256_RSA_PKCS_PSS"), Exactly(24)},
    {MechanismNumber("CKM_SHA384_RSA_PKCS_PSS"), Exactly(24)},
    {MechanismNumber("CKM_SHA512_RSA_PKCS_PSS"), Exactly(24)},
    {MechanismNumber("CKM_SHA224_RSA_PKCS_PSS"), Exactly(24)},
    {MechanismNumber("CKM_RC2_ECB"), AtLeast(8)},
    {MechanismNumber("CKM_RC2_CBC"), Exactly(16)},
    {MechanismNumber("CKM_RC2_MAC"), AtLeast(8)},
    {MechanismNumber("CKM_RC2_MAC_GENERAL"), Exactly(16), IsRc2MacLengthValid},
    {MechanismNumber("CKM_RC2_CBC_PAD"), Exactly(16)},
    {MechanismNumber("CKM_DES_CBC"), Exactly(8)},
    {MechanismNumber("CKM_DES_MAC"), ExactlyOrNone(8)},
    {MechanismNumber("CKM_DES_MAC_GENERAL"), Exactly(8), MacLengthAtMost<8>},
    {MechanismNumber("CKM_DES_CBC_PAD"), Exactly(8)},
    {MechanismNumber("CKM_DES3_ECB"), AtLeast(0)},
    {MechanismNumber("CKM_DES3_CBC"), Exactly(8)},
    {MechanismNumber("CKM_DES3_MAC"), ExactlyOrNone(8)},
    {MechanismNumber("CKM_DES3_MAC_GENERAL"), Exactly(8), MacLengthAtMost<8>},
    {MechanismNumber("CKM_DES3_CBC_PAD"), Exactly(8)},
    {MechanismNumber("CKM_DES3_CMAC_GENERAL"), Exactly(8), MacLengthAtMost<8>},
    {MechanismNumber("CKM_DES3_CMAC"), ExactlyOrNone(8)},
    {MechanismNumber("CKM_DES_OFB64"), Exactly(8)},
    {MechanismNumber("CKM_DES_OFB8"), Exactly(8)},
    {MechanismNumber("CKM_DES_CFB64"), Exactly(8)},
    {MechanismNumber("CKM_DES_CFB8"), Exactly(8)},
    {MechanismNumber("CKM_MD2_HMAC_GENERAL"), Exactly(8), MacLengthAtMost<16>},
    {MechanismNumber("CKM_MD5_HMAC_GENERAL"), Exactly(8), MacLengthAtMost<16>},
    {MechanismNumber("CKM_SHA_1_HMAC_GENERAL"), Exactly(8), MacLengthAtMost<20>},
    {MechanismNumber("CKM_SHA256_HMAC_GENERAL"), Exactly(8), MacLengthAtMost<32>},
    {MechanismNumber("CKM_SHA224_HMAC_GENERAL"), Exactly(8), MacLengthAtMost<28>},
    {MechanismNumber("CKM_SHA384_HMAC_GENERAL"), Exactly(8), MacLengthAtMost<48>},
    {MechanismNumber("CKM_SHA512_HMAC_GENERAL"), Exactly(8), MacLengthAtMost<64>},
    {MechanismNumber("CKM_CAST_CBC"), Exactly(8)},
    {MechanismNumber("CKM_CAST_MAC"), ExactlyOrNone(8)},
    {MechanismNumber("CKM_CAST_MAC_GENERAL"), Exactly(8), MacLengthAtMost<8>},
    {MechanismNumber("CKM_CAST_CBC_PAD"), Exactly(8)},
    {MechanismNumber("CKM_CAST3_CBC"), Exactly(8)},
    {MechanismNumber("CKM_CAST3_MAC"), ExactlyOrNone(8)},
    {MechanismNumber("CKM_CAST3_MAC_GENERAL"), Exactly(8), MacLengthAtMost<8>},
    {MechanismNumber("CKM_CAST3_CBC_PAD"), Exactly(8)},
    {MechanismNumber("CKM_CAST5_CBC"), Exactly(8)},
    {MechanismNumber("CKM_CAST5_MAC"), ExactlyOrNone(8)},
    {MechanismNumber("CKM_CAST5_MAC_GENERAL"), Exactly(8), MacLengthAtMost<8>},
    {MechanismNumber("CKM_CAST5_CBC_PAD"), Exactly(8)},
    {MechanismNumber("CKM_RC5_ECB"), Exactly(16)},
    {MechanismNumber("CKM_RC5_CBC"), Exactly(32)},
    {MechanismNumber("CKM_RC5_MAC"), Exactly(16)},
    {MechanismNumber("CKM_RC5_MAC_GENERAL"), Exactly(24), IsRc5MacLengthValid},
    {MechanismNumber("CKM_RC5_CBC_PAD"), Exactly(32)},
    {MechanismNumber("CKM_CONCATENATE_BASE_AND_KEY"), Exactly(8)},
    {MechanismNumber("CKM_EXTRACT_KEY_FROM_KEY"), Exactly(8)},
    {MechanismNumber("CKM_SSL3_MASTER_KEY_DERIVE"), Exactly(40)},
    {MechanismNumber("CKM_PBE_MD2_DES_CBC"), Exactly(48)},
    {MechanismNumber("CKM_PBE_MD5_DES_CBC"), Exactly(48)},
    {MechanismNumber("CKM_PBE_MD5_CAST_CBC"), Exactly(48)},
    {MechanismNumber("CKM_PBE_MD5_CAST3_CBC"), Exactly(48)},
    {MechanismNumber("CKM_PBE_SHA1_CAST5_CBC"), Exactly(48), ArePasswordAndSaltPresent},
    {MechanismNumber("CKM_PBE_SHA1_RC4_128"), Exactly(48), ArePasswordAndSaltPresent},
    {MechanismNumber("CKM_PBE_SHA1_RC4_40"), Exactly(48), ArePasswordAndSaltPresent},
    {MechanismNumber("CKM_PBE_SHA1_DES3_EDE_CBC"), Exactly(48), ArePasswordAndSaltPresent},
    {MechanismNumber("CKM_PBE_SHA1_DES2_EDE_CBC"), Exactly(48), ArePasswordAndSaltPresent},
    {MechanismNumber("CKM_PBE_SHA1_RC2_128_CBC"), Exactly(48), ArePasswordAndSaltPresent},
    {MechanismNumber("CKM_PBE_SHA1_RC2_40_CBC"), Exactly(48), ArePasswordAndSaltPresent},
    {MechanismNumber("CKM_PKCS5_PBKD2"), Exactly(72)},
    {MechanismNumber("CKM_ARIA_CBC"), Exactly(16)},
    {MechanismNumber("CKM_ARIA_MAC"), ExactlyOrNone(16)},
    {MechanismNumber("CKM_ARIA_MAC_GENERAL"), Exactly(8), MacLengthAtMost<16>},
    {MechanismNumber("CKM_ARIA_CBC_PAD"), Exactly(16)},
    {MechanismNumber("CKM_ARIA_ECB_ENCRYPT_DATA"), Exactly(16)},
    {MechanismNumber("CKM_ARIA_CBC_ENCRYPT_DATA"), Exactly(32)},
    {MechanismNumber("CKM_ECDH1_DERIVE"), Exactly(40)},
    {MechanismNumber("CKM_ECDH1_COFACTOR_DERIVE"), Exactly(40)},
    {MechanismNumber("CKM_AES_ECB"), AtLeast(0)},
    {MechanismNumber("CKM_AES_CBC"), Exactly(16)},
    {MechanismNumber("CKM_AES_MAC"), ExactlyOrNone(16)},
    {MechanismNumber("CKM_AES_MAC_GENERAL"), Exactly(8), MacLengthAtMost<16>},
    {MechanismNumber("CKM_AES_CBC_PAD"), Exactly(16)},
    {MechanismNumber("CKM_AES_CTR"), Exactly(24)},
    {MechanismNumber("CKM_AES_CMAC_GENERAL"), Exactly(8), MacLengthAtMost<16>},
    {MechanismNumber("CKM_AES_CMAC"), ExactlyOrNone(16)},
    {MechanismNumber("CKM_DES_ECB_ENCRYPT_DATA"), Exactly(16)},
    {MechanismNumber("CKM_DES_CBC_ENCRYPT_DATA"), Exactly(24)},
    {MechanismNumber("CKM_DES3_ECB_ENCRYPT_DATA"), Exactly(16)},
    {MechanismNumber("CKM_DES3_CBC_ENCRYPT_DATA"), Exactly(24)},
    {MechanismNumber("CKM_AES_ECB_ENCRYPT_DATA"), Exactly(16)},
    {MechanismNumber("CKM_AES_CBC_ENCRYPT_DATA"), Exactly(32)},
    {MechanismNumber("CKM_CAST5_MAC_OLD_XXX"), Exactly(8)},
    {0x801C, Exactly(8)},
    {MechanismNumber("CKM_PBE_SHA1_DES3_EDE_CBC_OLD"), Exactly(48)},
    {MechanismNumber("CKM_PBE_SHA1_DES2_EDE_CBC_OLD"), Exactly(48)},
    {MechanismNumber("CKM_XOR_BASE_AND_KEY"), Exactly(8)},
    {MechanismNumber("CKM_SEED_CBC"), Exactly(16)},
    {MechanismNumber("CKM_SEED_CBC_PAD"), Exactly(16)},
    {MechanismNumber("CKM_SEED_MAC"), ExactlyOrNone(16)},
    {MechanismNumber("CKM_SEED_MAC_GENERAL"), Exactly(8), MacLengthAtMost<16>},
    {MechanismNumber("CKM_DES3_CTR"), Exactly(16)},
    {MechanismNumber("CKM_AES_CFB8"), Exactly(16)},
    {MechanismNumber("CKM_AES_CFB128"), Exactly(16)},
    {MechanismNumber("CKM_AES_OFB"), Exactly(16)},
    {MechanismNumber("CKM_AES_GCM"), Exactly(48)},
    {MechanismNumber("CKM_ARIA_CFB8"), Exactly(16)},
    {MechanismNumber("CKM_ARIA_CFB128"), Exactly(16)},
    {MechanismNumber("CKM_ARIA_OFB"), Exactly(16)},
    {MechanismNumber("CKM_ARIA_CTR"), Exactly(24)},
    {MechanismNumber("CKM_AES_GMAC"), Exactly(48)},
    {MechanismNumber("CKM_ARIA_CMAC"), ExactlyOrNone(16)},
    {MechanismNumber("CKM_ARIA_CMAC_GENERAL"), Exactly(8), MacLengthAtMost<16>},
    {MechanismNumber("CKM_SEED_CMAC"), ExactlyOrNone(16)},
    {MechanismNumber("CKM_SEED_CMAC_GENERAL"), Exactly(8), MacLengthAtMost<16>},
    {MechanismNumber("CKM_DES3_CBC_PAD_IPSEC"), Exactly(8)},
    {MechanismNumber("CKM_AES_CBC_PAD_IPSEC"), Exactly(16)},
    {MechanismNumber("CKM_ARIA_L_CBC"), Exactly(16)},
    {MechanismNumber("CKM_ARIA_L_CBC_PAD"), Exactly(16)},
    {MechanismNumber("CKM_ARIA_L_MAC"), ExactlyOrNone(16)},
    {MechanismNumber("CKM_ARIA_L_MAC_GENERAL"), Exactly(8), MacLengthAtMost<16>},
    {MechanismNumber("CKM_SEED_CTR"), Exactly(24)},
    {0x80000200, Exactly(72)},
    {0x80000201, Exactly(80)},
    {0x80000202, Exactly(72)},
    {0x80000203, Exactly(80)},
    {0x80000204, Exactly(72)},
    {0x80000205, Exactly(80)},
    {MechanismNumber("CKM_DES2_DUKPT_PIN"), Exactly(16)},
    {MechanismNumber("CKM_DES2_DUKPT_MAC"), Exactly(16)},
    {MechanismNumber("CKM_DES2_DUKPT_MAC_RESP"), Exactly(16)},
    {MechanismNumber("CKM_DES2_DUKPT_DATA"), Exactly(16)},
    {MechanismNumber("CKM_DES2_DUKPT_DATA_RESP"), Exactly(16)},
    {MechanismNumber("CKM_ECIES"), Exactly(88)},
    {MechanismNumber("CKM_XOR_BASE_AND_DATA_W_KDF"), Exactly(24)},
    {MechanismNumber("CKM_NIST_PRF_KDF"), Exactly(56)},
    {MechanismNumber("CKM_PRF_KDF"), Exactly(56)},
};
static_assert(std::adjacent_find(std::begin(kParameterRules), std::end(kParameterRules),
                                 [](const ParameterRule& rule, const ParameterRule& next) {
                                     return rule.mechanism >= next.mechanism;
                                 }) == std::end(kParameterRules));

const ParameterRule* RuleFor(CK_MECHANISM_TYPE mechanism) {
    const ParameterRule* rule = std::lower_bound(
        std::begin(kParameterRules), std::end(kParameterRules), mechanism,
        [](const ParameterRule& known, CK_MECHANISM_TYPE type) { return known.mechanism < type; });
    const bool isListed = rule != std::end(kParameterRules) && rule->mechanism == mechanism;
    return isListed ? rule : nullptr;
}

bool IsParameterValid(const CK_MECHANISM& mechanism) {
    const void* parameter = mechanism.pParameter;
    const unsigned long length = mechanism.ulParameterLen;
    if (parameter == nullptr && length != 0) return false;

    const ParameterRule* rule = RuleFor(mechanism.mechanism);
    if (rule == nullptr) return length == 0;
    if (parameter == nullptr && rule->lengths.noneAllowed) return true;
    if (!rule->lengths.Allow(length)) return false;
    return rule->isContentValid == nullptr || rule->isContentValid(parameter);
}

}  // namespace

MechanismParamResult ValidateCkMechanismParam(CK_MECHANISM* mechanism) {
    const bool isValid = mechanism != nullptr && IsParameterValid(*mechanism);
    return {isValid ? 0 : kInvalid};
}
