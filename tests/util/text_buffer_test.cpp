#include "util/text_buffer.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <functional>
#include <new>
#include <string>
#include <vector>

namespace {

template <typename... Arguments>
std::string Printed(const char* format, Arguments... arguments) {
    char text[100];
    std::snprintf(text, sizeof text, format, arguments...);
    return text;
}

template <typename Write>
std::string Written(Write write) {
    ckscribe::TextBuffer buffer;
    write(buffer);
    return std::string(buffer.Text());
}

// Returns 0, 1, every power of two and of ten with its neighbours, and the largest number.
std::vector<unsigned long> Numbers() {
    std::vector<unsigned long> numbers = {0, 1, ULONG_MAX};
    const auto add = [&](unsigned long number) {
        for (const unsigned long neighbour : {number - 1, number, number + 1}) numbers.push_back(neighbour);
    };
    for (int bit = 1; bit < 64; ++bit) add(1UL << bit);
    for (unsigned long power = 10; power < ULONG_MAX / 10; power *= 10) add(power);
    add(10000000000000000000UL);
    return numbers;
}

TEST(TextBuffer, UnsignedDecimalsAreAsPrintfWritesThem) {
    for (const unsigned long number : Numbers()) {
        EXPECT_EQ(Written([&](ckscribe::TextBuffer& text) { text.AppendDecimal(number); }),
                  Printed("%lu", number));
    }
}

TEST(TextBuffer, SignedDecimalsAreAsPrintfWritesThem) {
    for (const unsigned long magnitude : Numbers()) {
        for (const unsigned long bits : {magnitude, 0 - magnitude}) {
            const long number = static_cast<long>(bits);
            EXPECT_EQ(Written([&](ckscribe::TextBuffer& text) { text.AppendDecimal(number); }),
                      Printed("%ld", number));
        }
    }
    EXPECT_EQ(Written([](ckscribe::TextBuffer& text) { text.AppendDecimal(LONG_MIN); }),
              "-9223372036854775808");
}

TEST(TextBuffer, HexadecimalsAreAsPrintfWritesThem) {
    for (const unsigned long number : Numbers()) {
        EXPECT_EQ(Written([&](ckscribe::TextBuffer& text) { text.AppendHex(number); }),
                  Printed("0x%lx", number));
    }
}

TEST(TextBuffer, PaddedNumbersAreAsPrintfWritesThem) {
    for (const unsigned long magnitude : Numbers()) {
        for (const unsigned long bits : {magnitude, 0 - magnitude}) {
            const int number = static_cast<int>(static_cast<unsigned>(bits));
            for (int width = 1; width <= 16; ++width) {
                EXPECT_EQ(Written([&](ckscribe::TextBuffer& text) {
                              text.AppendPadded(number, static_cast<unsigned>(width));
                          }),
                          Printed("%0*d", width, number));
            }
        }
    }
    EXPECT_EQ(Written([](ckscribe::TextBuffer& text) { text.AppendPadded(7, 2); }), "07");
    EXPECT_EQ(Written([](ckscribe::TextBuffer& text) { text.AppendPadded(-7, 5); }), "-0007");
    EXPECT_EQ(Written([](ckscribe::TextBuffer& text) { text.AppendPadded(INT_MIN, 3); }), "-2147483648");
}

TEST(TextBuffer, HexBytesAreTwoSmallDigitsForEveryValue) {
    for (int value = 0; value < 256; ++value) {
        const unsigned char byte = static_cast<unsigned char>(value);
        EXPECT_EQ(Written([&](ckscribe::TextBuffer& text) { text.AppendHexBytes(&byte, 1); }),
                  Printed("%02x", value));
    }
}

TEST(TextBuffer, HexBytes_AreRightForEveryLengthAndAlignment) {
    std::vector<unsigned char> bytes(300);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<unsigned char>(i * 167 + 13);
    for (std::size_t begin = 0; begin < 20; ++begin) {
        for (std::size_t length = 0; length < 130; ++length) {
            std::string expected = "x";
            for (std::size_t i = begin; i < begin + length; ++i) expected += Printed("%02x", bytes[i]);
            EXPECT_EQ(Written([&](ckscribe::TextBuffer& text) {
                          text.Append('x');
                          text.AppendHexBytes(&bytes[begin], length);
                      }),
                      expected);
        }
    }
}

TEST(TextBuffer, SeveralPieces_FollowEachOther) {
    ckscribe::TextBuffer text;
    text.Append("a\0b");  // up to the terminator, as any literal
    text.Append(std::string_view("c\0d", 3));
    text.Append('e');
    text.AppendSpaces(3);
    text.Append("");
    text.AppendDecimal(12UL);
    text.AppendHex(0xAB);
    text.AppendHexBytes("\xFE", 1);
    EXPECT_EQ(text.Text(), std::string_view("ac\0de   120xabfe", 16));
}

TEST(TextBuffer, AppendNothing_NeedsNoRoom) {
    ckscribe::TextBuffer text;
    text.Append("");
    text.AppendSpaces(0);
    text.AppendHexBytes(nullptr, 0);
    EXPECT_EQ(text.Text(), "");
    EXPECT_EQ(text.Capacity(), ckscribe::TextBuffer::kFirstCapacity);
}

TEST(TextBuffer, TextGrowsOverManySizes_NothingIsLost) {
    ckscribe::TextBuffer text;
    std::string expected;
    for (int i = 0; i < 20000; ++i) {
        text.AppendDecimal(static_cast<unsigned long>(i));
        expected += std::to_string(i);
    }
    EXPECT_EQ(text.Text(), expected);
    const std::string large(3'000'001, 'y');
    text.Append(large);
    EXPECT_EQ(text.Text(), expected + large);
    EXPECT_GE(text.Capacity(), text.Text().size());
}

TEST(TextBuffer, OnePieceMayBeLargerThanTheFirstCapacity) {
    EXPECT_EQ(Written([](ckscribe::TextBuffer& text) { text.AppendSpaces(5000); }), std::string(5000, ' '));
    const std::string bytes(2049, '\x5A');
    std::string expected;
    for (std::size_t i = 0; i < bytes.size(); ++i) expected += "5a";
    EXPECT_EQ(Written([&](ckscribe::TextBuffer& text) { text.AppendHexBytes(bytes.data(), bytes.size()); }),
              expected);
}

TEST(TextBuffer, Clear_KeepsTheMemory) {
    ckscribe::TextBuffer text;
    text.AppendSpaces(5000);
    const std::size_t capacity = text.Capacity();
    text.Clear();
    EXPECT_EQ(text.Text(), "");
    EXPECT_EQ(text.Capacity(), capacity);
    text.Append("again");
    EXPECT_EQ(text.Text(), "again");
}

TEST(TextBuffer, TheFirstKilobyteLiesInTheObjectAndIsKeptWhenTheTextGrows) {
    ckscribe::TextBuffer text;
    const auto isInObject = [&text] {
        const void* const begin = &text;
        const void* const end = &text + 1;
        return !std::less<>()(text.Text().data(), begin) && std::less<>()(text.Text().data(), end);
    };
    std::string expected;
    for (std::size_t i = 0; i < ckscribe::TextBuffer::kFirstCapacity; ++i)
        expected += static_cast<char>('a' + i % 26);
    text.Append(expected);
    EXPECT_TRUE(isInObject());
    EXPECT_EQ(text.Capacity(), ckscribe::TextBuffer::kFirstCapacity);
    text.Append('!');
    EXPECT_FALSE(isInObject());
    EXPECT_EQ(text.Text(), expected + '!');
    EXPECT_EQ(text.Capacity(), 2 * ckscribe::TextBuffer::kFirstCapacity);
}

TEST(TextBuffer, ATextThatNoMemoryCanHoldIsRefusedAndChangesNothing) {
    ckscribe::TextBuffer text;
    text.Append("kept");
    EXPECT_THROW(text.AppendSpaces(static_cast<std::size_t>(-1)), std::bad_alloc);
    EXPECT_THROW(text.AppendSpaces(static_cast<std::size_t>(-1) / 4), std::bad_alloc);
    EXPECT_THROW(text.AppendHexBytes("", static_cast<std::size_t>(-1)), std::bad_alloc);
    EXPECT_THROW(text.AppendHexBytes("", static_cast<std::size_t>(-1) / 2 + 1), std::bad_alloc);
    EXPECT_EQ(text.Text(), "kept");
    text.Append(", and usable");
    EXPECT_EQ(text.Text(), "kept, and usable");
}

}  // namespace
