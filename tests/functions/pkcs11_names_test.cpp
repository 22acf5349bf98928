#include "functions/pkcs11_names.h"

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <span>
#include <string>

#include "functions/name_table.h"
#include "tests/descriptors/expected_names.h"

using namespace ckscribe;

namespace {

using Names = std::map<unsigned long, std::string>;

Names NamesOf(std::span<const ExpectedName> expected) {
    Names names;
    for (const ExpectedName& row : expected) names[row.value] = row.name;
    return names;
}

// Checks every value that can have a name, and its neighbours. The values are the ranges of the standard and
// of the vendor, the ends of 32 and 64 bits, and values whose lower half is that of a named value.
template <typename Check>
void ForEveryValueAround(const Names& names, Check check) {
    for (unsigned long value = 0; value < 0x9000; ++value) check(value);
    for (unsigned long value = 0x7FFFF000; value < 0x80009000; ++value) check(value);
    for (const auto& [value, name] : names) {
        check(value | 0x100000000);
        check(value | 0xFFFFFFFF00000000);
        check(value ^ 0x80000000);
    }
    check(0xFFFFFFFF);
    check(0x7FFFFFFFFFFFFFFF);
    check(0xFFFFFFFFFFFFFFFF);
}

void ExpectExactlyTheseNames(const Names& names, std::string_view (*function)(unsigned long),
                             const char* unknown) {
    ForEveryValueAround(names, [&](unsigned long value) {
        const auto expected = names.find(value);
        EXPECT_EQ(function(value), expected == names.end() ? unknown : expected->second.c_str())
            << std::hex << value;
    });
}

TEST(Pkcs11Names, Attributes_HaveTheseNamesAndNoOthers) {
    const Names names = NamesOf(kExpectedAttributes);
    ASSERT_EQ(names.size(), 73u);
    ExpectExactlyTheseNames(names, GetAttributeType, "CKA_XXX");
}

TEST(Pkcs11Names, ObjectClasses_HaveTheseNamesAndNoOthers) {
    const Names names = NamesOf(kExpectedObjectClasses);
    ASSERT_EQ(names.size(), 16u);
    ExpectExactlyTheseNames(names, GetObjectClass, "CKO_UNKNOWN");
}

TEST(Pkcs11Names, KeyTypes_HaveTheseNamesAndNoOthers) {
    const Names names = NamesOf(kExpectedKeyTypes);
    ASSERT_EQ(names.size(), 25u);
    ExpectExactlyTheseNames(names, GetKeyType, "CKK_UNKNOWN");
}

TEST(Pkcs11Names, Mechanisms_HaveTheseNamesAndNoOthers) {
    const Names names = NamesOf(kExpectedMechanisms);
    ASSERT_EQ(names.size(), 309u);
    ExpectExactlyTheseNames(names, GetMechanismType, "Unknown Mechanism Type");
}

TEST(Pkcs11Names, CertificateTypes_OnlyX509HasAName) {
    ExpectExactlyTheseNames({{0, "CKC_X_509"}}, GetCertificateType, "CKC_UNKNOWN");
}

// Some names have another number in today's standard. They keep the vendor's number, and the standard's
// number is unknown.
TEST(Pkcs11Names, VendorAndStandardDifferInANumber_NameBelongsToTheVendorsNumber) {
    EXPECT_EQ(GetMechanismType(0x8000011C), "CKM_AES_GCM");
    EXPECT_EQ(GetMechanismType(0x1087), "Unknown Mechanism Type");
    EXPECT_EQ(GetMechanismType(0x1089), "CKM_AES_CMAC_GENERAL");
    EXPECT_EQ(GetMechanismType(0x108B), "Unknown Mechanism Type");
    EXPECT_EQ(GetMechanismType(0x80000123), "CKM_ECDSA_SHA256");
    EXPECT_EQ(GetMechanismType(0x1044), "Unknown Mechanism Type");
    EXPECT_EQ(GetKeyType(0x80000011), "CKK_SEED");
    EXPECT_EQ(GetKeyType(0x2F), "CKK_UNKNOWN");
}

TEST(Pkcs11Names, NumberIsNotInTheSet_NameIsUnknown) {
    EXPECT_EQ(GetAttributeType(0x86), "CKA_XXX");     // CKA_TRUSTED
    EXPECT_EQ(GetAttributeType(0x166), "CKA_XXX");    // CKA_KEY_GEN_MECHANISM
    EXPECT_EQ(GetObjectClass(7), "CKO_UNKNOWN");      // CKO_MECHANISM
    EXPECT_EQ(GetKeyType(0x20), "CKK_UNKNOWN");       // CKK_BLOWFISH
    EXPECT_EQ(GetCertificateType(1), "CKC_UNKNOWN");  // CKC_X_509_ATTR_CERT
    EXPECT_EQ(GetErrorCode(0x140), "CKR_UNKNOWN");    // CKR_CURVE_NOT_SUPPORTED
}

TEST(ReturnValueNames, ReturnValuesOfRecords_HaveTheNamesOfTheLookUpWithTwoDifferences) {
    Names names = NamesOf(kExpectedReturnValues);
    ASSERT_EQ(names.size(), 188u);
    names[0x80000020] = "CKR_PARTITION_DISABLED";
    names.erase(0x80000040);
    names.erase(0x80000041);
    ExpectExactlyTheseNames(names, GetErrorCode, "CKR_UNKNOWN");
}

TEST(ReturnValueNames, ValuesThatTheHeaderLacks_HaveTheirNames) {
    EXPECT_EQ(GetErrorCode(0), "CKR_OK");
    EXPECT_EQ(GetErrorCode(0x52), "CKR_FUNCTION_PARALLEL");
    EXPECT_EQ(GetErrorCode(0xB2), "CKR_SESSION_EXCLUSIVE_EXISTS");
    EXPECT_EQ(GetErrorCode(0x141), "CKR_INSERTION_CALLBACK_NOT_SUPPORTED");
    EXPECT_EQ(GetErrorCode(0x80000999), "CKR_UNKNOWN");
}

TEST(ReturnValueNames, TableOfTheLookUp_HasTheseRowsInThisOrder) {
    ASSERT_EQ(std::size(kExpectedReturnValues), 191u);
    ASSERT_EQ(std::size(CKR_LookupTable), 191u);
    for (std::size_t i = 0; i < std::size(CKR_LookupTable); ++i) {
        EXPECT_STREQ(CKR_LookupTable[i].name, kExpectedReturnValues[i].name) << i;
        EXPECT_EQ(CKR_LookupTable[i].value, kExpectedReturnValues[i].value) << i;
    }
}

TEST(GetErrorCodeForString, NameOfTheTable_GivesItsValue) {
    for (const ExpectedName& row : kExpectedReturnValues) {
        unsigned long value = 0xDEAD;
        EXPECT_EQ(GetErrorCodeForString(row.name, &value), 0u) << row.name;
        EXPECT_EQ(value, row.value) << row.name;
    }
}

TEST(GetErrorCodeForString, NameOfAWrongPin_GivesItsValue) {
    unsigned long value = 0xDEAD;
    EXPECT_EQ(GetErrorCodeForString("CKR_PIN_INCORRECT", &value), 0u);
    EXPECT_EQ(value, 0xA0u);
}

TEST(GetErrorCodeForString, NamesThatRecordsDoNotShow_GiveTheirValues) {
    unsigned long value = 0;
    EXPECT_EQ(GetErrorCodeForString("CKR_ECC_ECC_RESULT_AT_INF", &value), 0u);
    EXPECT_EQ(value, 0x80000040u);
    EXPECT_EQ(GetErrorCodeForString("CKR_AGAIN", &value), 0u);
    EXPECT_EQ(value, 0x80000041u);
}

class NoSuchReturnValue : public testing::TestWithParam<const char*> {};

TEST_P(NoSuchReturnValue, UnknownName_IsABadArgumentAndSetsZero) {
    unsigned long value = 0xDEAD;
    EXPECT_EQ(GetErrorCodeForString(GetParam(), &value), 7u);
    EXPECT_EQ(value, 0u);
}

INSTANTIATE_TEST_SUITE_P(GetErrorCodeForString, NoSuchReturnValue,
                         testing::Values(nullptr, "", "ckr_ok", "CKR_O", "CKR_OK ", " CKR_OK",
                                         "CKR_PIN_INCORRECT1", "CKR_UNKNOWN", "CKR_PARTITION_DISABLED",
                                         "CKA_CLASS"));

constexpr NameRow kOneRow[] = {{5, "five"}};
constexpr NameRow kFourRows[] = {{1, "one"}, {3, "three"}, {5, "five"}, {0xFFFFFFFFFFFFFFFF, "last"}};
constexpr NameRow kDescending[] = {{3, "three"}, {1, "one"}};
constexpr NameRow kDoubles[] = {{1, "one"}, {3, "three"}, {3, "three again"}};

TEST(NameTable, TableOutOfOrderOrWithADouble_IsNotStrictlyAscending) {
    EXPECT_TRUE(IsStrictlyAscending(kOneRow));
    EXPECT_TRUE(IsStrictlyAscending(kFourRows));
    EXPECT_FALSE(IsStrictlyAscending(kDescending));
    EXPECT_FALSE(IsStrictlyAscending(kDoubles));
}

TEST(NameTable, NameOf_FindsFirstMiddleAndLastAndNothingBetween) {
    EXPECT_EQ(NameOf(kFourRows, 0, "none"), "none");
    EXPECT_EQ(NameOf(kFourRows, 1, "none"), "one");
    EXPECT_EQ(NameOf(kFourRows, 2, "none"), "none");
    EXPECT_EQ(NameOf(kFourRows, 3, "none"), "three");
    EXPECT_EQ(NameOf(kFourRows, 4, "none"), "none");
    EXPECT_EQ(NameOf(kFourRows, 5, "none"), "five");
    EXPECT_EQ(NameOf(kFourRows, 6, "none"), "none");
    EXPECT_EQ(NameOf(kFourRows, 0xFFFFFFFFFFFFFFFF, "none"), "last");
    EXPECT_EQ(NameOf(kOneRow, 4, "none"), "none");
    EXPECT_EQ(NameOf(kOneRow, 5, "none"), "five");
}

}  // namespace
