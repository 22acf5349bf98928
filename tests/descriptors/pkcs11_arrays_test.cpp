#include "descriptors/pkcs11_arrays.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

namespace {

constexpr unsigned long kNoClass = 0xFFFFFFFFFFFFFFFF;

CK_ATTRIBUTE Entry(CK_ATTRIBUTE_TYPE type, unsigned long& value) { return {type, &value, sizeof value}; }

TEST(AttributeClass, TemplateIsEmpty_ClassIsAllOnes) {
    unsigned long privateKey = 3;
    const CK_ATTRIBUTE entries[] = {Entry(CKA_CLASS, privateKey)};
    EXPECT_EQ(attributeClass(entries, 0), kNoClass);
    EXPECT_EQ(attributeClass(nullptr, 0), kNoClass);
}

TEST(AttributeClass, LastEntryIsTheOnlyClass_ItsClassIsFound) {
    unsigned long keyType = 0x1F, length = 32, secretKey = 0x80000201;
    const CK_ATTRIBUTE entries[] = {Entry(CKA_KEY_TYPE, keyType), Entry(CKA_VALUE_LEN, length),
                                    Entry(CKA_CLASS, secretKey)};
    EXPECT_EQ(attributeClass(entries, 3), 0x80000201u);
    EXPECT_EQ(attributeClass(entries, 2), kNoClass);
}

TEST(AttributeClass, TwoEntriesHoldAClass_FirstCounts) {
    unsigned long label = 9, publicKey = 2, privateKey = 3;
    const CK_ATTRIBUTE entries[] = {Entry(CKA_LABEL, label), Entry(CKA_CLASS, publicKey),
                                    Entry(CKA_CLASS, privateKey)};
    EXPECT_EQ(attributeClass(entries, 3), 2u);
}

TEST(AttributeClass, ClassUses64Bits_AllOfThemAreFound) {
    unsigned long wide = 0x123456789ABCDEF0;
    const CK_ATTRIBUTE entries[] = {Entry(CKA_CLASS, wide)};
    EXPECT_EQ(attributeClass(entries, 1), 0x123456789ABCDEF0u);
}

TEST(AttributeClass, ClassLiesAtAnOddAddress_ClassIsFound) {
    const unsigned long privateKey = 3;
    char bytes[1 + sizeof privateKey];
    std::memcpy(bytes + 1, &privateKey, sizeof privateKey);
    const CK_ATTRIBUTE entries[] = {{CKA_CLASS, bytes + 1, sizeof privateKey}};
    EXPECT_EQ(attributeClass(entries, 1), 3u);
}

TEST(AttributeClass, EntryIsTooShortForAClass_ClassIsAllOnes) {
    const std::unique_ptr<char[]> sevenBytes(new char[7]());
    unsigned long privateKey = 3;
    const CK_ATTRIBUTE noValue[] = {{CKA_CLASS, nullptr, 8}, Entry(CKA_CLASS, privateKey)};
    const CK_ATTRIBUTE shortValue[] = {{CKA_CLASS, sevenBytes.get(), 7}};
    EXPECT_EQ(attributeClass(noValue, 2), kNoClass);
    EXPECT_EQ(attributeClass(shortValue, 1), kNoClass);
}

TEST(CopyULONGArrayTo32Array, NumbersFitIn32Bits_AreCopiedAndCounted) {
    unsigned long in[] = {1, 0xFFFFFFFF, 0x80000000};
    unsigned long inCount = 3;
    unsigned int out[] = {91, 92, 93, 94};
    unsigned int outCount = 4;
    EXPECT_EQ(CopyULONGArrayTo32Array(in, &inCount, out, &outCount), 0u);
    EXPECT_EQ(outCount, 3u);
    EXPECT_EQ(inCount, 3u);
    EXPECT_EQ(out[0], 1u);
    EXPECT_EQ(out[1], 0xFFFFFFFFu);
    EXPECT_EQ(out[2], 0x80000000u);
    EXPECT_EQ(out[3], 94u);
}

TEST(CopyULONGArrayTo32Array, RoomIsJustEnoughFor32Bits_NumbersFillIt) {
    unsigned long in[] = {11, 12};
    unsigned long inCount = 2;
    unsigned int out[] = {91, 92};
    unsigned int outCount = 2;
    EXPECT_EQ(CopyULONGArrayTo32Array(in, &inCount, out, &outCount), 0u);
    EXPECT_EQ(outCount, 2u);
    EXPECT_EQ(out[0], 11u);
    EXPECT_EQ(out[1], 12u);
}

TEST(CopyULONGArrayTo32Array, RoomFor32BitsIsTooSmall_NothingIsCopied) {
    unsigned long in[] = {1, 2, 3};
    unsigned long inCount = 3;
    unsigned int out[] = {91, 92};
    unsigned int outCount = 2;
    EXPECT_EQ(CopyULONGArrayTo32Array(in, &inCount, out, &outCount), 0x150u);
    EXPECT_EQ(outCount, 2u);
    EXPECT_EQ(out[0], 91u);
    EXPECT_EQ(out[1], 92u);
}

TEST(CopyULONGArrayTo32Array, CountExceeds32Bits_NothingIsCopied) {
    unsigned long in[] = {1};
    unsigned long inCount = 0x100000001;
    unsigned int out[] = {91};
    unsigned int outCount = 1;
    EXPECT_EQ(CopyULONGArrayTo32Array(in, &inCount, out, &outCount), 0x150u);
    EXPECT_EQ(out[0], 91u);
}

TEST(CopyULONGArrayTo32Array, NumberDoesNotFitIn32Bits_CopyEndsInFrontOfIt) {
    unsigned long in[] = {1, 0x100000000, 3};
    unsigned long inCount = 3;
    unsigned int out[] = {91, 92, 93};
    unsigned int outCount = 5;
    EXPECT_EQ(CopyULONGArrayTo32Array(in, &inCount, out, &outCount), 0x21u);
    EXPECT_EQ(outCount, 5u);
    EXPECT_EQ(out[0], 1u);
    EXPECT_EQ(out[1], 92u);
    EXPECT_EQ(out[2], 93u);
}

TEST(CopyULONGArrayTo32Array, NoNumbersFor32Bits_NothingIsCopied) {
    unsigned long inCount = 0;
    unsigned int outCount = 5;
    EXPECT_EQ(CopyULONGArrayTo32Array(nullptr, &inCount, nullptr, &outCount), 0u);
    EXPECT_EQ(outCount, 0u);
}

TEST(Copy32ArrayToULONGArray, NumbersOf32Bits_AreCopiedAndCounted) {
    unsigned int in[] = {1, 0xFFFFFFFF};
    unsigned int inCount = 2;
    unsigned long out[] = {91, 92, 93};
    unsigned long outCount = 3;
    EXPECT_EQ(Copy32ArrayToULONGArray(in, &inCount, out, &outCount), 0u);
    EXPECT_EQ(outCount, 2u);
    EXPECT_EQ(inCount, 2u);
    EXPECT_EQ(out[0], 1u);
    EXPECT_EQ(out[1], 0xFFFFFFFFu);
    EXPECT_EQ(out[2], 93u);
}

TEST(Copy32ArrayToULONGArray, RoomIsJustEnoughForULONGs_NumbersFillIt) {
    unsigned int in[] = {11, 12};
    unsigned int inCount = 2;
    unsigned long out[] = {91, 92};
    unsigned long outCount = 2;
    EXPECT_EQ(Copy32ArrayToULONGArray(in, &inCount, out, &outCount), 0u);
    EXPECT_EQ(outCount, 2u);
    EXPECT_EQ(out[0], 11u);
    EXPECT_EQ(out[1], 12u);
}

TEST(Copy32ArrayToULONGArray, RoomForULONGsIsTooSmall_NothingIsCopied) {
    unsigned int in[] = {1, 2, 3};
    unsigned int inCount = 3;
    unsigned long out[] = {91, 92};
    unsigned long outCount = 2;
    EXPECT_EQ(Copy32ArrayToULONGArray(in, &inCount, out, &outCount), 0x150u);
    EXPECT_EQ(outCount, 2u);
    EXPECT_EQ(out[0], 91u);
    EXPECT_EQ(out[1], 92u);
}

TEST(Copy32ArrayToULONGArray, NoNumbersOf32Bits_NothingIsCopied) {
    unsigned int inCount = 0;
    unsigned long outCount = 5;
    EXPECT_EQ(Copy32ArrayToULONGArray(nullptr, &inCount, nullptr, &outCount), 0u);
    EXPECT_EQ(outCount, 0u);
}

}  // namespace
