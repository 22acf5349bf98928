#include "descriptors/mechanism_validation.h"

#include <gtest/gtest.h>

#include <cstring>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr std::uint32_t kValid = 0;
constexpr std::uint32_t kInvalid = 0x710000;

// The parameter has exactly that many zero bytes on the heap, and a sanitizer sees it if one byte too many is
// read.
class Parameter {
public:
    explicit Parameter(std::size_t length) : bytes(new char[length]()), size(length) {}

    // Makes a parameter of unsigned longs.
    Parameter(std::initializer_list<unsigned long> words) : Parameter(words.size() * sizeof(unsigned long)) {
        std::memcpy(bytes.get(), std::data(words), size);
    }

    std::uint32_t CodeFor(CK_MECHANISM_TYPE type) const {
        CK_MECHANISM mechanism = {type, bytes.get(), size};
        return ValidateCkMechanismParam(&mechanism).code;
    }

    // Returns the code for the parameter at an odd address.
    std::uint32_t UnalignedCodeFor(CK_MECHANISM_TYPE type) const {
        const std::unique_ptr<char[]> shifted(new char[size + 1]);
        std::memcpy(shifted.get() + 1, bytes.get(), size);
        CK_MECHANISM mechanism = {type, shifted.get() + 1, size};
        return ValidateCkMechanismParam(&mechanism).code;
    }

private:
    std::unique_ptr<char[]> bytes;
    std::size_t size;
};

std::uint32_t CodeWithNullPointer(CK_MECHANISM_TYPE type, unsigned long length) {
    CK_MECHANISM mechanism = {type, nullptr, length};
    return ValidateCkMechanismParam(&mechanism).code;
}

struct ExactLength {
    CK_MECHANISM_TYPE mechanism;
    unsigned long length;
    bool noneAllowed;
};

// This table is written by hand: no number comes from the PKCS#11 header or from the table under test.
constexpr ExactLength kExactLengths[] = {
    {0x9, 40, false},        {0xD, 24, false},        {0xE, 24, false},        {0x31, 40, false},
    {0x32, 72, false},       {0x43, 24, false},       {0x44, 24, false},       {0x45, 24, false},
    {0x47, 24, false},       {0x102, 16, false},      {0x104, 16, false},      {0x105, 16, false},
    {0x122, 8, false},       {0x123, 8, true},        {0x124, 8, false},       {0x125, 8, false},
    {0x133, 8, false},       {0x134, 8, true},        {0x135, 8, false},       {0x136, 8, false},
    {0x137, 8, false},       {0x138, 8, true},        {0x150, 8, false},       {0x151, 8, false},
    {0x152, 8, false},       {0x153, 8, false},       {0x202, 8, false},       {0x212, 8, false},
    {0x222, 8, false},       {0x252, 8, false},       {0x257, 8, false},       {0x262, 8, false},
    {0x272, 8, false},       {0x302, 8, false},       {0x303, 8, true},        {0x304, 8, false},
    {0x305, 8, false},       {0x312, 8, false},       {0x313, 8, true},        {0x314, 8, false},
    {0x315, 8, false},       {0x322, 8, false},       {0x323, 8, true},        {0x324, 8, false},
    {0x325, 8, false},       {0x331, 16, false},      {0x332, 32, false},      {0x333, 16, false},
    {0x334, 24, false},      {0x335, 32, false},      {0x360, 8, false},       {0x365, 8, false},
    {0x371, 40, false},      {0x3A0, 48, false},      {0x3A1, 48, false},      {0x3A2, 48, false},
    {0x3A3, 48, false},      {0x3A5, 48, false},      {0x3A6, 48, false},      {0x3A7, 48, false},
    {0x3A8, 48, false},      {0x3A9, 48, false},      {0x3AA, 48, false},      {0x3AB, 48, false},
    {0x3B0, 72, false},      {0x562, 16, false},      {0x563, 16, true},       {0x564, 8, false},
    {0x565, 16, false},      {0x566, 16, false},      {0x567, 32, false},      {0x1050, 40, false},
    {0x1051, 40, false},     {0x1082, 16, false},     {0x1083, 16, true},      {0x1084, 8, false},
    {0x1085, 16, false},     {0x1086, 24, false},     {0x1089, 8, false},      {0x108A, 16, true},
    {0x1100, 16, false},     {0x1101, 24, false},     {0x1102, 16, false},     {0x1103, 24, false},
    {0x1104, 16, false},     {0x1105, 32, false},     {0x8019, 8, false},      {0x801C, 8, false},
    {0x801E, 48, false},     {0x801F, 48, false},     {0x8000001B, 8, false},  {0x80000105, 16, false},
    {0x80000106, 16, false}, {0x80000107, 16, true},  {0x80000108, 8, false},  {0x80000116, 16, false},
    {0x80000118, 16, false}, {0x80000119, 16, false}, {0x8000011A, 16, false}, {0x8000011C, 48, false},
    {0x8000011D, 16, false}, {0x8000011E, 16, false}, {0x8000011F, 16, false}, {0x80000120, 24, false},
    {0x80000126, 48, false}, {0x80000128, 16, true},  {0x80000129, 8, false},  {0x8000012C, 16, true},
    {0x8000012D, 8, false},  {0x8000012E, 8, false},  {0x8000012F, 16, false}, {0x80000131, 16, false},
    {0x80000132, 16, false}, {0x80000133, 16, true},  {0x80000134, 8, false},  {0x80000144, 24, false},
    {0x80000200, 72, false}, {0x80000201, 80, false}, {0x80000202, 72, false}, {0x80000203, 80, false},
    {0x80000204, 72, false}, {0x80000205, 80, false}, {0x80000611, 16, false}, {0x80000612, 16, false},
    {0x80000613, 16, false}, {0x80000614, 16, false}, {0x80000615, 16, false}, {0x80000A00, 88, false},
    {0x80000A01, 24, false}, {0x80000A02, 56, false}, {0x80000A03, 56, false},
};

constexpr CK_MECHANISM_TYPE kDhPkcsDerive = 0x21;
constexpr CK_MECHANISM_TYPE kRc2Ecb = 0x101;
constexpr CK_MECHANISM_TYPE kRc2Mac = 0x103;
constexpr CK_MECHANISM_TYPE kRc2MacGeneral = 0x104;
constexpr CK_MECHANISM_TYPE kDes3Ecb = 0x132;
constexpr CK_MECHANISM_TYPE kRc5MacGeneral = 0x334;
constexpr CK_MECHANISM_TYPE kAesEcb = 0x1081;

std::string HexName(CK_MECHANISM_TYPE mechanism) {
    char name[32];
    std::snprintf(name, sizeof name, "Mechanism%lX", mechanism);
    return name;
}

TEST(MechanismOfExactLength, MechanismHasAnExactLength_OnlyThatLengthIsValid) {
    for (const auto& [mechanism, length, noneAllowed] : kExactLengths) {
        SCOPED_TRACE(HexName(mechanism));
        EXPECT_EQ(Parameter(length).CodeFor(mechanism), kValid);
        EXPECT_EQ(Parameter(length - 1).CodeFor(mechanism), kInvalid);
        EXPECT_EQ(Parameter(length + 1).CodeFor(mechanism), kInvalid);
        EXPECT_EQ(Parameter(length * 2).CodeFor(mechanism), kInvalid);
        EXPECT_EQ(Parameter(1).CodeFor(mechanism), kInvalid);
    }
}

TEST(MechanismOfExactLength, NoParameter_IsValidOnlyWhereTheMechanismAllowsIt) {
    for (const auto& [mechanism, length, noneAllowed] : kExactLengths) {
        SCOPED_TRACE(HexName(mechanism));
        EXPECT_EQ(CodeWithNullPointer(mechanism, 0), noneAllowed ? kValid : kInvalid);
    }
}

TEST(MechanismOfExactLength, MechanismHasAnExactLength_LengthWithoutPointerIsInvalid) {
    for (const auto& [mechanism, length, noneAllowed] : kExactLengths) {
        SCOPED_TRACE(HexName(mechanism));
        EXPECT_EQ(CodeWithNullPointer(mechanism, length), kInvalid);
        EXPECT_EQ(CodeWithNullPointer(mechanism, 1), kInvalid);
        EXPECT_EQ(CodeWithNullPointer(mechanism, ~0UL), kInvalid);
    }
}

TEST(MechanismOfExactLength, MechanismHasAnExactLength_PointerWithoutLengthIsInvalid) {
    for (const ExactLength& row : kExactLengths) {
        EXPECT_EQ(Parameter(0).CodeFor(row.mechanism), kInvalid) << HexName(row.mechanism);
    }
}

TEST(MechanismValidation, TestedMechanisms_AreAllDifferent) {
    std::set<CK_MECHANISM_TYPE> mechanisms;
    for (const ExactLength& row : kExactLengths) mechanisms.insert(row.mechanism);
    EXPECT_EQ(mechanisms.size(), 131u);
    EXPECT_EQ(std::size(kExactLengths), 131u);
}

TEST(MechanismValidation, ParameterOfDiffieHellman_MayHaveAnyLengthButZero) {
    EXPECT_EQ(Parameter(1).CodeFor(kDhPkcsDerive), kValid);
    EXPECT_EQ(Parameter(4096).CodeFor(kDhPkcsDerive), kValid);
    EXPECT_EQ(Parameter(0).CodeFor(kDhPkcsDerive), kInvalid);
    EXPECT_EQ(CodeWithNullPointer(kDhPkcsDerive, 0), kInvalid);
    EXPECT_EQ(CodeWithNullPointer(kDhPkcsDerive, 1), kInvalid);
}

class AtLeastEight : public testing::TestWithParam<CK_MECHANISM_TYPE> {};

TEST_P(AtLeastEight, ParameterOfRc2_NeedsEightBytesOrMore) {
    EXPECT_EQ(Parameter(7).CodeFor(GetParam()), kInvalid);
    EXPECT_EQ(Parameter(8).CodeFor(GetParam()), kValid);
    EXPECT_EQ(Parameter(9).CodeFor(GetParam()), kValid);
    EXPECT_EQ(Parameter(4096).CodeFor(GetParam()), kValid);
    EXPECT_EQ(Parameter(0).CodeFor(GetParam()), kInvalid);
    EXPECT_EQ(CodeWithNullPointer(GetParam(), 0), kInvalid);
    EXPECT_EQ(CodeWithNullPointer(GetParam(), 8), kInvalid);
}

INSTANTIATE_TEST_SUITE_P(MechanismValidation, AtLeastEight, testing::Values(kRc2Ecb, kRc2Mac));

class Unchecked : public testing::TestWithParam<CK_MECHANISM_TYPE> {};

TEST_P(Unchecked, MechanismIsUnchecked_AnyParameterIsValid) {
    EXPECT_EQ(CodeWithNullPointer(GetParam(), 0), kValid);
    EXPECT_EQ(Parameter(0).CodeFor(GetParam()), kValid);
    EXPECT_EQ(Parameter(1).CodeFor(GetParam()), kValid);
    EXPECT_EQ(Parameter(4096).CodeFor(GetParam()), kValid);
}

TEST_P(Unchecked, MechanismIsUnchecked_LengthWithoutPointerIsInvalid) {
    EXPECT_EQ(CodeWithNullPointer(GetParam(), 1), kInvalid);
    EXPECT_EQ(CodeWithNullPointer(GetParam(), 16), kInvalid);
}

INSTANTIATE_TEST_SUITE_P(MechanismValidation, Unchecked, testing::Values(kDes3Ecb, kAesEcb));

TEST(MechanismValidation, MechanismIsUnlisted_OnlyLengthZeroIsValid) {
    std::set<CK_MECHANISM_TYPE> listed = {kDhPkcsDerive, kRc2Ecb, kRc2Mac, kDes3Ecb, kAesEcb};
    for (const ExactLength& row : kExactLengths) listed.insert(row.mechanism);
    const Parameter none(0), one(1), eight(8), sixteen(16);

    const auto expectUnlisted = [&](CK_MECHANISM_TYPE mechanism) {
        if (listed.contains(mechanism)) return;
        EXPECT_EQ(CodeWithNullPointer(mechanism, 0), kValid) << std::hex << mechanism;
        EXPECT_EQ(none.CodeFor(mechanism), kValid) << std::hex << mechanism;
        EXPECT_EQ(one.CodeFor(mechanism), kInvalid) << std::hex << mechanism;
        EXPECT_EQ(eight.CodeFor(mechanism), kInvalid) << std::hex << mechanism;
        EXPECT_EQ(sixteen.CodeFor(mechanism), kInvalid) << std::hex << mechanism;
        EXPECT_EQ(CodeWithNullPointer(mechanism, 8), kInvalid) << std::hex << mechanism;
    };
    for (CK_MECHANISM_TYPE mechanism = 0; mechanism < 0x9000; ++mechanism) expectUnlisted(mechanism);
    for (CK_MECHANISM_TYPE mechanism = 0x80000000; mechanism < 0x80001000; ++mechanism)
        expectUnlisted(mechanism);
    for (const CK_MECHANISM_TYPE mechanism : listed) expectUnlisted(mechanism | 0x100000000);
    expectUnlisted(~0UL);
}

TEST(MechanismValidation, MechanismIsNull_IsInvalid) {
    EXPECT_EQ(ValidateCkMechanismParam(nullptr).code, kInvalid);
}

constexpr struct {
    CK_MECHANISM_TYPE mechanism;
    unsigned long fullLength;
} kGeneralMacs[] = {
    {0x124, 8},  {0x135, 8},       {0x137, 8},       {0x304, 8},       {0x314, 8},
    {0x324, 8},  {0x202, 16},      {0x212, 16},      {0x1084, 16},     {0x1089, 16},
    {0x564, 16}, {0x80000129, 16}, {0x80000134, 16}, {0x80000108, 16}, {0x8000012D, 16},
    {0x222, 20}, {0x257, 28},      {0x252, 32},      {0x262, 48},      {0x272, 64},
};

TEST(MechanismValidation, GeneralMac_IsValidUpToTheFullLength) {
    ASSERT_EQ(std::size(kGeneralMacs), 20u);
    for (const auto& [mechanism, length] : kGeneralMacs) {
        SCOPED_TRACE(HexName(mechanism));
        EXPECT_EQ(Parameter({0}).CodeFor(mechanism), kValid);
        EXPECT_EQ(Parameter({length - 1}).CodeFor(mechanism), kValid);
        EXPECT_EQ(Parameter({length}).CodeFor(mechanism), kValid);
        EXPECT_EQ(Parameter({length + 1}).CodeFor(mechanism), kInvalid);
        EXPECT_EQ(Parameter({length | 0x100000000}).CodeFor(mechanism), kInvalid);
        EXPECT_EQ(Parameter({~0UL}).CodeFor(mechanism), kInvalid);
        EXPECT_EQ(Parameter({length}).UnalignedCodeFor(mechanism), kValid);
        EXPECT_EQ(Parameter({length + 1}).UnalignedCodeFor(mechanism), kInvalid);
    }
}

TEST(MechanismValidation, MacOfRc2_IsValidUpToEightBytes) {
    EXPECT_EQ(Parameter({~0UL, 0}).CodeFor(kRc2MacGeneral), kValid);
    EXPECT_EQ(Parameter({~0UL, 8}).CodeFor(kRc2MacGeneral), kValid);
    EXPECT_EQ(Parameter({0, 9}).CodeFor(kRc2MacGeneral), kInvalid);
    EXPECT_EQ(Parameter({0, ~0UL}).CodeFor(kRc2MacGeneral), kInvalid);
    EXPECT_EQ(Parameter({~0UL, 8}).UnalignedCodeFor(kRc2MacGeneral), kValid);
    EXPECT_EQ(Parameter({0, 9}).UnalignedCodeFor(kRc2MacGeneral), kInvalid);
}

TEST(MechanismValidation, MacOfRc5_IsValidUpToTwoWords) {
    EXPECT_EQ(Parameter({4, ~0UL, 8}).CodeFor(kRc5MacGeneral), kValid);
    EXPECT_EQ(Parameter({4, 0, 9}).CodeFor(kRc5MacGeneral), kInvalid);
    EXPECT_EQ(Parameter({8, ~0UL, 16}).CodeFor(kRc5MacGeneral), kValid);
    EXPECT_EQ(Parameter({8, 0, 17}).CodeFor(kRc5MacGeneral), kInvalid);
    EXPECT_EQ(Parameter({4, ~0UL, 3}).CodeFor(kRc5MacGeneral), kValid);
    EXPECT_EQ(Parameter({4, ~0UL, 4}).CodeFor(kRc5MacGeneral), kValid);
    EXPECT_EQ(Parameter({4, ~0UL, 0}).CodeFor(kRc5MacGeneral), kValid);
    EXPECT_EQ(Parameter({0, 5, 0}).CodeFor(kRc5MacGeneral), kValid);
    EXPECT_EQ(Parameter({0, 5, 1}).CodeFor(kRc5MacGeneral), kInvalid);
    EXPECT_EQ(Parameter({8, ~0UL, 16}).UnalignedCodeFor(kRc5MacGeneral), kValid);
    EXPECT_EQ(Parameter({8, 0, 17}).UnalignedCodeFor(kRc5MacGeneral), kInvalid);
}

TEST(MechanismValidation, WordSizeOfRc5IsHuge_TwiceTheSizeDoesNotWrap) {
    EXPECT_EQ(Parameter({0x8000000000000000, 0, ~0UL}).CodeFor(kRc5MacGeneral), kValid);
    EXPECT_EQ(Parameter({0x7FFFFFFFFFFFFFFF, 0, ~0UL - 1}).CodeFor(kRc5MacGeneral), kValid);
    EXPECT_EQ(Parameter({0x7FFFFFFFFFFFFFFF, 0, ~0UL}).CodeFor(kRc5MacGeneral), kInvalid);
}

// The parameter holds initialisation vector, password, password length, salt, salt length and iterations. The
// addresses are invalid on purpose: the library must not read there.
class PasswordBased : public testing::TestWithParam<CK_MECHANISM_TYPE> {};

TEST_P(PasswordBased, PasswordOrSaltHasALengthAndNoAddress_ParameterIsInvalid) {
    EXPECT_EQ(Parameter({0, 0x10, 7, 0x20, 9, 1000}).CodeFor(GetParam()), kValid);
    EXPECT_EQ(Parameter({0, 0, 0, 0, 0, 0}).CodeFor(GetParam()), kValid);
    EXPECT_EQ(Parameter({0, 0x10, 0, 0x20, 0, 0}).CodeFor(GetParam()), kValid);
    EXPECT_EQ(Parameter({0, 0, 1, 0x20, 9, 1000}).CodeFor(GetParam()), kInvalid);
    EXPECT_EQ(Parameter({0, 0x10, 7, 0, 1, 1000}).CodeFor(GetParam()), kInvalid);
    EXPECT_EQ(Parameter({0x30, 0, 1, 0, 1, 1000}).CodeFor(GetParam()), kInvalid);
    EXPECT_EQ(Parameter({0, 0x10, 7, 0x20, 9, 1000}).UnalignedCodeFor(GetParam()), kValid);
    EXPECT_EQ(Parameter({0, 0x10, 7, 0, 1, 1000}).UnalignedCodeFor(GetParam()), kInvalid);
}

INSTANTIATE_TEST_SUITE_P(MechanismValidation, PasswordBased, testing::Range<CK_MECHANISM_TYPE>(0x3A5, 0x3AC),
                         [](const auto& test) { return HexName(test.param); });

class UncheckedPasswordBased : public testing::TestWithParam<CK_MECHANISM_TYPE> {};

TEST_P(UncheckedPasswordBased, MechanismDoesNotCheckItsContent_PasswordAndSaltMayBeMissing) {
    EXPECT_EQ(Parameter({0, 0, 1, 0, 1, 1000}).CodeFor(GetParam()), kValid);
}

INSTANTIATE_TEST_SUITE_P(MechanismValidation, UncheckedPasswordBased,
                         testing::Values(0x3A0, 0x3A1, 0x3A2, 0x3A3, 0x801E, 0x801F),
                         [](const auto& test) { return HexName(test.param); });

TEST(MechanismValidation, ContentOfOtherMechanisms_IsNotChecked) {
    const std::set<CK_MECHANISM_TYPE> checked = {
        0x104, 0x124, 0x135, 0x137, 0x202, 0x212,      0x222,      0x252,      0x257,     0x262,
        0x272, 0x304, 0x314, 0x324, 0x334, 0x564,      0x1084,     0x1089,     0x3A5,     0x3A6,
        0x3A7, 0x3A8, 0x3A9, 0x3AA, 0x3AB, 0x80000108, 0x80000129, 0x8000012D, 0x80000134};
    for (const ExactLength& row : kExactLengths) {
        if (checked.contains(row.mechanism)) continue;
        std::vector<char> full(row.length, '\xFF');
        CK_MECHANISM mechanism = {row.mechanism, full.data(), row.length};
        EXPECT_EQ(ValidateCkMechanismParam(&mechanism).code, kValid) << std::hex << row.mechanism;
    }
}

}  // namespace
