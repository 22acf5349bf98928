// Checks the numbers and sizes of PKCS#11 on which the log's format rests. They come from the header that the
// distribution ships. A header that changes one of them stops the compiler here, before it changes a record.
// The numbers of the name tables are stated once more in tests/descriptors/expected_names.h.
#include <p11-kit/pkcs11.h>

// Builders and exports compare with these numbers.
static_assert(CKR_OK == 0);
static_assert(CKR_HOST_MEMORY == 0x2);
static_assert(CKR_GENERAL_ERROR == 0x5);
static_assert(CKR_ARGUMENTS_BAD == 0x7);
static_assert(CKR_DATA_INVALID == 0x20);
static_assert(CKR_FUNCTION_NOT_SUPPORTED == 0x54);
static_assert(CKR_BUFFER_TOO_SMALL == 0x150);
static_assert(CKA_CLASS == 0x0);
static_assert(CKM_SSL3_KEY_AND_MAC_DERIVE == 0x372);
static_assert(CK_UNAVAILABLE_INFORMATION == ~0UL);

// Every argument of a vendor's function is one machine word, except a boolean, which is one byte.
static_assert(sizeof(CK_ULONG) == 8 && sizeof(CK_RV) == 8 && sizeof(CK_FLAGS) == 8);
static_assert(sizeof(CK_SLOT_ID) == 8 && sizeof(CK_SESSION_HANDLE) == 8 && sizeof(CK_OBJECT_HANDLE) == 8);
static_assert(sizeof(CK_MECHANISM_TYPE) == 8 && sizeof(CK_USER_TYPE) == 8 && sizeof(CK_BBOOL) == 1);

// Records copy these structures whole.
static_assert(sizeof(CK_ATTRIBUTE) == 24 && sizeof(CK_MECHANISM) == 24);
static_assert(sizeof(CK_INFO) == 88 && sizeof(CK_SLOT_INFO) == 112 && sizeof(CK_TOKEN_INFO) == 208);
static_assert(sizeof(CK_SESSION_INFO) == 32 && sizeof(CK_MECHANISM_INFO) == 24);
