#include "util/tolk_text.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

std::string StringOf(const std::vector<unsigned char>& bytes) { return {bytes.begin(), bytes.end()}; }

TEST(TolkText, AtoxKnowsHexadecimalDigitsOnly) {
    const std::string digits = "0123456789abcdef";
    for (int i = 0; i < 256; ++i) {
        const char c = static_cast<char>(i);
        const size_t value = digits.find(c >= 'A' && c <= 'F' ? static_cast<char>(c + 32) : c);
        EXPECT_EQ(value == std::string::npos ? -1 : static_cast<int>(value), Tolk_atox(c)) << i;
    }
}

TEST(TolkText, IsHexHeader_ReturnsTheLengthOfThePrefix) {
    for (const char* text : {"x", "X", "x1", "X0x"}) EXPECT_EQ(1, Tolk_isHexHeader(text)) << text;
    for (const char* text : {"0x", "0X", "0x1", "0XF"}) EXPECT_EQ(2, Tolk_isHexHeader(text)) << text;
    for (const char* text : {"", "0", "1x", "00x", " 0x", "h"}) EXPECT_EQ(0, Tolk_isHexHeader(text)) << text;
}

TEST(TolkText, StrnlenReadsNoFurtherThanItsBound) {
    const char unterminated[] = {'a', 'b', 'c'};
    EXPECT_EQ(3UL, Tolk_strnlen(unterminated, 3));
    EXPECT_EQ(0UL, Tolk_strnlen(unterminated, 0));
    EXPECT_EQ(2UL, Tolk_strnlen("ab", 3));
    EXPECT_EQ(0UL, Tolk_strnlen("", 3));
}

TEST(TolkText, MemdupCopiesIntoANewBlock) {
    char original[] = "a\0b";
    char* copy = static_cast<char*>(Tolk_memdup(original, 4));
    ASSERT_NE(nullptr, copy);
    EXPECT_NE(original, copy);
    EXPECT_EQ(0, std::memcmp("a\0b", copy, 4));
    std::free(copy);
    std::free(Tolk_memdup(nullptr, 0));
    EXPECT_EQ(nullptr, Tolk_memdup(original, -1)) << "more than there is memory";
}

struct CompareCase {
    const char* a;
    const char* b;
    int result;
};

TEST(TolkText, Stricmp_ComparesFoldedTexts) {
    const CompareCase cases[] = {
        {"ABC", "abc", 0},    {"", "", 0},          {"ab", "abc", -1},
        {"abc", "ab", 1},     {"", "a", -1},        {"a", "", 1},
        {"abd", "abC", 1},    {"ABC", "abd", -1},   {"b", "aaaa", 1},
        {"a", "bbbb", -1},    {"@", "`", -1},       {"[", "{", -1},
        {"Z", "[", 1},        {"\xFF", "a", -1},    {"a", "\x80", 1},
        {"\x80", "\xFF", -1}, {"\xC4", "\xE4", -1}, {"a\xFFz", "A\xFFY", 1},
    };
    for (const CompareCase& c : cases) EXPECT_EQ(c.result, Tolk_stricmp(c.a, c.b)) << c.a << " and " << c.b;
}

TEST(TolkText, Strnicmp_ComparesAtMostNFoldedCharacters) {
    EXPECT_EQ(0, Tolk_strnicmp("a", "b", 0));
    EXPECT_EQ(0, Tolk_strnicmp("ABC", "abd", 2));
    EXPECT_EQ('c' - 'd', Tolk_strnicmp("ABC", "abd", 3));
    EXPECT_EQ('d' - 'c', Tolk_strnicmp("abD", "ABC", 99));
    EXPECT_EQ(0, Tolk_strnicmp("ab", "AB", 99));
    EXPECT_EQ(-'c', Tolk_strnicmp("ab", "abC", 99));
    EXPECT_EQ('c', Tolk_strnicmp("abC", "ab", 99));
    EXPECT_EQ(0, Tolk_strnicmp("abC", "ab", 2));
    EXPECT_EQ(-1 - 'a', Tolk_strnicmp("\xFF", "A", 1)) << "characters are signed";
    EXPECT_EQ(127 + 128, Tolk_strnicmp("\x7F", "\x80", 1));
    EXPECT_EQ(-'b', Tolk_strnicmp("a", "ab", -1)) << "no limit";
    EXPECT_EQ(0, Tolk_strnicmp("a", "A", INT_MIN));
}

TEST(TolkText, SkipWhiteSpaces_ReturnsTheFirstOtherCharacter) {
    char text[] = "\t \x01\x1F\x7F\r\n a ";
    EXPECT_STREQ("a ", Tolk_SkipWhiteSpaces(text));
    EXPECT_STREQ("", Tolk_SkipWhiteSpaces(" \t"));
    EXPECT_STREQ("", Tolk_SkipWhiteSpaces(""));
    EXPECT_STREQ("\x80 ", Tolk_SkipWhiteSpaces(" \x80 "));
    EXPECT_STREQ("\xA0", Tolk_SkipWhiteSpaces("\xA0"));
}

TEST(TolkText, RemoveTrailingWhitespaces_OverwritesThemWithNul) {
    char text[] = " a b \t\x7F\r\n";
    Tolk_RemoveTrailingWhitespaces(text);
    EXPECT_EQ(std::string(" a b\0\0\0\0\0\0", 10), std::string(text, sizeof text));
    char onlySpaces[] = " \n ";
    Tolk_RemoveTrailingWhitespaces(onlySpaces);
    EXPECT_EQ(std::string("\0\0\0\0", 4), std::string(onlySpaces, sizeof onlySpaces));
    char noClass[] = "a\xA0";
    Tolk_RemoveTrailingWhitespaces(noClass);
    EXPECT_STREQ("a\xA0", noClass);
    char empty[] = "";
    Tolk_RemoveTrailingWhitespaces(empty);
    EXPECT_STREQ("", empty);
}

TEST(TolkText, TrimWhiteSpaces_CutsBothEnds) {
    char text[] = "\t a b \r\n";
    EXPECT_STREQ("a b", Tolk_TrimWhiteSpaces(text));
    EXPECT_EQ(text + 2, Tolk_TrimWhiteSpaces(text));
    char spaces[] = "   ";
    EXPECT_STREQ("", Tolk_TrimWhiteSpaces(spaces));
}

TEST(TolkText, IsIntegerString_AcceptsASignAndDigitsOnly) {
    for (const char* text : {"", "-", "+", "0", "-12", "+0123456789"}) {
        EXPECT_EQ(1, Tolk_IsIntegerString(text, 0)) << text;
        EXPECT_EQ(1, Tolk_IsIntegerString(text, 1)) << text;
    }
    for (const char* text : {"a", "-F", "+0aBcDeF9"}) {
        EXPECT_EQ(0, Tolk_IsIntegerString(text, 0)) << text;
        EXPECT_EQ(1, Tolk_IsIntegerString(text, 1)) << text;
        EXPECT_EQ(1, Tolk_IsIntegerString(text, -1)) << text;
    }
    for (const char* text : {"--1", "+-1", " 1", "1 ", "1.0", "0x1", "g", "1\x80", "\xB2", "-\xFF"}) {
        EXPECT_EQ(0, Tolk_IsIntegerString(text, 0)) << text;
        EXPECT_EQ(0, Tolk_IsIntegerString(text, 1)) << text;
    }
}

// --- Tolk_atoi --------------------------------------------------------------------------------------------

struct AtoiCase {
    const char* text;
    int radix;
    int value;
};

TEST(TolkAtoi, IntegerText_IsConverted) {
    const AtoiCase cases[] = {
        {"12", 10, 12},
        {"1a", 10, 20},
        {"fF", 10, 165},
        {"", 10, 0},
        {"-", 10, 0},
        {"+", 10, 0},
        {"0000000007", 10, 7},
        {"4294967295", 10, -1},
        {"2147483647", 10, INT_MAX},
        {"2147483648", 10, INT_MIN},
        {"-2147483648", 10, INT_MIN},
        {"-1", 10, -1},
        {"+2147483647", 10, INT_MAX},
        {"5000000000", 10, 705032704},
        {"9999999995", 10, 1410065403},
        {"", 16, 0},
        {"1a", 16, 26},
        {"ffffffff", 16, -1},
        {"80000000", 16, INT_MIN},
        {"-80000000", 16, INT_MIN},
        {"-7fffffff", 16, -INT_MAX},
        {"+7FFFFFFF", 16, INT_MAX},
        {"101", 2, 5},
        {"-101", 2, -5},
        {"+11111111", 2, 255},
        {"", 2, 0},
    };
    for (const AtoiCase& c : cases) {
        int value = 4711;
        EXPECT_EQ(0, Tolk_atoi(c.text, c.radix, &value)) << c.text;
        EXPECT_EQ(c.value, value) << c.text;
    }
}

TEST(TolkAtoi, TextCannotBeConverted_FailsAndPrintsNothing) {
    const AtoiCase cases[] = {
        {"12345678901", 10, 0},
        {"-2147483649", 10, 0},
        {"+2147483648", 10, 0},
        {"+4294967295", 10, 0},
        {"1 ", 10, 0},
        {"x", 10, 0},
        {"0x1", 10, 0},
        {"123456789", 16, 0},
        {"-80000001", 16, 0},
        {"+80000000", 16, 0},
        {"g", 16, 0},
        {"102", 2, 0},
        {"a", 2, 0},
        {"111111111", 2, 0},
        {"7", 8, 0},
        {"7", 0, 0},
        {"", 8, 0},
        {"a", 0, 0},
    };
    testing::internal::CaptureStdout();
    for (const AtoiCase& c : cases) {
        int value = 4711;
        EXPECT_EQ(-1, Tolk_atoi(c.text, c.radix, &value)) << c.text;
        EXPECT_EQ(4711, value) << c.text;
    }
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
}

TEST(TolkAtoi, DigitAboveFiveOverflows_FailsAndPrintsError) {
    for (const char* text :
         {"4294967296", "4294967299", "9999999999", "-4294967296", "429496729a", "+9999999996"}) {
        int value = 4711;
        testing::internal::CaptureStdout();
        EXPECT_EQ(-1, Tolk_atoi(text, 10, &value)) << text;
        EXPECT_EQ("error\n", testing::internal::GetCapturedStdout());
        EXPECT_EQ(4711, value);
    }
}

// --- Hexadecimal text -------------------------------------------------------------------------------------

struct ToBinCase {
    const char* text;
    int hex;
    std::vector<unsigned char> bytes;
};

TEST(TolkText, AsciiHexToBin_ConvertsDigits) {
    const ToBinCase cases[] = {
        {"", 1, {}},
        {"00", 1, {0}},
        {"0aFf10", 1, {0x0A, 0xFF, 0x10}},
        {"abc", 1, {0x0A, 0xBC}},
        {"7", 1, {7}},
        {"1234", 0, {0x12, 0x34}},
    };
    for (const ToBinCase& c : cases) {
        std::vector<unsigned char> out(c.bytes.size() + 1, 0xEE);
        out[0] = c.bytes.empty() ? 0xEE : 0;
        int length = 4711;
        EXPECT_EQ(0, Tolk_AsciiHexToBin(c.text, out.data(), c.hex, &length)) << c.text;
        EXPECT_EQ(static_cast<int>(c.bytes.size()), length) << c.text;
        std::vector<unsigned char> expected = c.bytes;
        expected.push_back(0xEE);
        EXPECT_EQ(expected, out) << c.text;
    }
}

TEST(TolkText, AsciiHexToBinShiftsAnOddFirstDigitIntoWhatIsThere) {
    unsigned char out[] = {0x5F, 0xEE, 0xEE};
    int length = 0;
    EXPECT_EQ(0, Tolk_AsciiHexToBin("abc", out, 1, &length));
    EXPECT_EQ(2, length);
    EXPECT_EQ(0xFA, out[0]);
    EXPECT_EQ(0xBC, out[1]);
    EXPECT_EQ(0xEE, out[2]);
}

TEST(TolkText, PlaceIsNull_AsciiHexToBinStoresTheSize) {
    const struct {
        const char* text;
        int length;
    } cases[] = {{"", 0}, {"a", 1}, {"ab", 1}, {"abc", 2}, {"-ab", 2}, {"-", 1}};
    for (const auto& c : cases) {
        int length = 4711;
        EXPECT_EQ(0, Tolk_AsciiHexToBin(c.text, nullptr, 1, &length)) << c.text;
        EXPECT_EQ(c.length, length) << c.text;
    }
}

TEST(TolkText, AsciiHexToBin_FailsForOtherTexts) {
    unsigned char out[] = {0xEE, 0xEE};
    int length = 4711;
    EXPECT_EQ(-1, Tolk_AsciiHexToBin(nullptr, out, 1, &length));
    EXPECT_EQ(-1, Tolk_AsciiHexToBin("ab", out, 1, nullptr));
    EXPECT_EQ(-1, Tolk_AsciiHexToBin("ag", out, 1, &length));
    EXPECT_EQ(-1, Tolk_AsciiHexToBin("ab", out, 0, &length));
    EXPECT_EQ(-1, Tolk_AsciiHexToBin("a\x80", out, 1, &length));
    EXPECT_EQ(4711, length);
    EXPECT_EQ(-1, Tolk_AsciiHexToBin("-ab", out, 1, &length)) << "a sign passes the size query only";
    EXPECT_EQ(2, length);
    EXPECT_EQ(0xEE, out[0]);
    EXPECT_EQ(0xEE, out[1]);
}

TEST(TolkText, AsciiHexToNewByteArray_ReturnsANewBlock) {
    const std::pair<const char*, std::string> cases[] = {
        {"0aFF", "\x0A\xFF"}, {"abc", "\x0A\xBC"}, {"f", "\x0F"}, {"", ""}};
    for (const auto& [text, bytes] : cases) {
        unsigned char* out = nullptr;
        int length = 4711;
        EXPECT_EQ(0, Tolk_AsciiHexToNewByteArray(text, &out, &length)) << text;
        ASSERT_NE(nullptr, out) << text;
        EXPECT_EQ(bytes, std::string(reinterpret_cast<char*>(out), static_cast<size_t>(length))) << text;
        std::free(out);
    }
}

TEST(TolkText, AsciiHexToNewByteArray_FailsForOtherTexts) {
    unsigned char marker = 0;
    unsigned char* out = &marker;
    int length = 4711;
    EXPECT_EQ(-1, Tolk_AsciiHexToNewByteArray(nullptr, &out, &length));
    EXPECT_EQ(-1, Tolk_AsciiHexToNewByteArray("ab", &out, nullptr));
    EXPECT_EQ(-1, Tolk_AsciiHexToNewByteArray("xy", &out, &length));
    EXPECT_EQ(-1, Tolk_AsciiHexToNewByteArray("-ab", &out, &length));
    EXPECT_EQ(&marker, out);
    EXPECT_EQ(0, Tolk_AsciiHexToNewByteArray("abcde", nullptr, &length));
    EXPECT_EQ(3, length);
}

TEST(TolkText, AsciiToHexConvertsPairs) {
    std::vector<unsigned char> out(3, 0xEE);
    EXPECT_EQ(2UL, Tolk_AsciiToHex("0aFF", out.data(), 2));
    EXPECT_EQ("\x0A\xFF\xEE", StringOf(out));
    EXPECT_EQ(2UL, Tolk_AsciiToHex("7f80", out.data(), 3));
    EXPECT_EQ("\x7F\x80\xEE", StringOf(out));
    EXPECT_EQ(0UL, Tolk_AsciiToHex("", out.data(), 0));
}

TEST(TolkText, AsciiToHex_Returns0ForOtherTexts) {
    std::vector<unsigned char> out(3, 0xEE);
    EXPECT_EQ(0UL, Tolk_AsciiToHex(nullptr, out.data(), 3));
    EXPECT_EQ(0UL, Tolk_AsciiToHex("ab", nullptr, 3));
    EXPECT_EQ(0UL, Tolk_AsciiToHex("abc", out.data(), 3));
    EXPECT_EQ(0UL, Tolk_AsciiToHex("0aff", out.data(), 1));
    EXPECT_EQ(0UL, Tolk_AsciiToHex("-1", out.data(), 3));
    EXPECT_EQ("\xEE\xEE\xEE", StringOf(out));
    EXPECT_EQ(0UL, Tolk_AsciiToHex("12g4", out.data(), 3));
    EXPECT_EQ("\x12\xEE\xEE", StringOf(out)) << "the bytes before the wrong character stay";
    EXPECT_EQ(0UL, Tolk_AsciiToHex("344g", out.data(), 3));
    EXPECT_EQ("\x34\xEE\xEE", StringOf(out));
}

// --- Lines of tag and value -------------------------------------------------------------------------------

struct TagCase {
    const char* line;
    const char* tag;
    const char* value;  // null: no match
};

TEST(TolkText, ParseTagValuePair_ReturnsTheValue) {
    const TagCase cases[] = {
        {"Key = 5", "Key", "5"},
        {"Key=5", "Key", "5"},
        {"\t Key = 5", "Key", "5"},
        {"kEY = 5", "Key", "5"},
        {"Key = 5", "kEy", "5"},
        {"Key \t = \t 5 \r\n", "Key", "5 \r\n"},
        {"Key = ", "Key", ""},
        {"Key =", "Key", ""},
        {"Key = = 5", "Key", "= 5"},
        {"Key 2 = 5", "Key 2", "5"},
        {"K\xE4y = 5", "K\xE4y", "5"},
        {" = 5", "", "5"},
        {"Key\t= 5", "Key", nullptr},
        {"Key", "Key", nullptr},
        {"Ke", "Key", nullptr},
        {"", "Key", nullptr},
        {"", "", nullptr},
        {"Keys = 5", "Key", nullptr},
        {"Ke = 5", "Key", nullptr},
        {"Key 5", "Key", nullptr},
        {"Key ", "Key", nullptr},
        {"My Key = 5", "Key", nullptr},
        {"K\xC4y = 5", "K\xE4y", nullptr},
        {"x", "", nullptr},
    };
    for (const TagCase& c : cases) {
        EXPECT_STREQ(c.value, Tolk_ParseTagValuePair(c.line, c.tag)) << c.line;
        std::string line = c.line;
        char* value = Tolk_ParseTagValuePair(line.data(), c.tag);
        EXPECT_STREQ(c.value, value) << c.line;
        if (c.value != nullptr) {
            EXPECT_EQ(line.data() + line.size() - std::strlen(c.value), value) << "inside the line";
        }
    }
}

TEST(TolkText, ParseTagValuePairAsBoolean_StoresTheTruthValue) {
    const std::pair<const char*, int> cases[] = {
        {"  Enabled = TRUE", 1}, {"Enabled=true", 1},   {"ENABLED = 1", 1},    {"Enabled = False", 0},
        {"Enabled = 0", 0},      {"Enabled = yes", -1}, {"Enabled = 1 ", -1},  {"Enabled = true\n", -1},
        {"Enabled = ", -1},      {"Enabled = 01", -1},  {"Enabled = tru", -1}, {"Other = 1", -1},
    };
    for (const auto& [line, value] : cases) {
        unsigned char out = 0xEE;
        EXPECT_EQ(value < 0 ? -1 : 0, Tolk_ParseTagValuePairAsBoolean(line, "enabled", &out)) << line;
        EXPECT_EQ(value < 0 ? 0xEE : value, out) << line;
    }
}

TEST(TolkText, ParseTagValuePairAsInteger_StoresTheNumber) {
    int out = 4711;
    EXPECT_EQ(0, Tolk_ParseTagValuePairAsInteger(" Count = -12", "count", &out));
    EXPECT_EQ(-12, out);
    EXPECT_EQ(0, Tolk_ParseTagValuePairAsInteger("Count=1a", "Count", &out));
    EXPECT_EQ(20, out);
    EXPECT_EQ(0, Tolk_ParseTagValuePairAsInteger("Count=", "Count", &out));
    EXPECT_EQ(0, out);
    out = 4711;
    for (const char* line : {"Count = 12 ", "Count = x", "Count = 0x10", "Count 12", "Other = 12"}) {
        EXPECT_EQ(-1, Tolk_ParseTagValuePairAsInteger(line, "Count", &out)) << line;
    }
    EXPECT_EQ(4711, out);
}

// --- Printing and copying ---------------------------------------------------------------------------------

std::string Binary(std::vector<unsigned char> data, int bits, int group) {
    char out[128];
    std::memset(out, 'x', sizeof out);
    EXPECT_EQ(out, Tolk_FormatAsBinary(data.data(), bits, group, out));
    EXPECT_EQ('x', out[std::strlen(out) + 1]);
    return out;
}

TEST(TolkText, FormatAsBinary_WritesBitsAndGroups) {
    EXPECT_EQ("101", Binary({0x05}, 3, 0));
    EXPECT_EQ("1 1111 1111 ", Binary({0xFF, 0x01}, 9, 4));
    EXPECT_EQ("", Binary({}, 0, 0));
    EXPECT_EQ("", Binary({}, 0, 4));
    EXPECT_EQ("1", Binary({0xFF}, 1, 0));
    EXPECT_EQ("1 ", Binary({0xFF}, 1, 8));
    EXPECT_EQ("01", Binary({0xF9}, 2, 0)) << "only the low bits of the last byte";
    EXPECT_EQ("1010010111000011", Binary({0xC3, 0xA5}, 16, 0));
    EXPECT_EQ("10100101 11000011 ", Binary({0xC3, 0xA5}, 16, 8));
    EXPECT_EQ("1 010 010 111 000 011 ", Binary({0xC3, 0xA5}, 16, 3));
    EXPECT_EQ("1 0 1 ", Binary({0x05}, 3, 1));
    EXPECT_EQ("101 ", Binary({0x05}, 3, 3));
    EXPECT_EQ("101 ", Binary({0x05}, 3, 9));
    EXPECT_EQ("010000000100000010", Binary({0x02, 0x01, 0x01}, 18, 0));
}

std::string Printed(const char* title, const std::vector<unsigned char>& data, int length, int perLine) {
    char text[512] = "";
    FILE* stream = fmemopen(text, sizeof text, "w");
    Tolk_PrintArrayToStream(title, data.empty() ? nullptr : data.data(), length, perLine, stream);
    std::fclose(stream);
    return text;
}

std::string Address(const std::vector<unsigned char>& data) {
    char text[32];
    std::snprintf(text, sizeof text, "%p", static_cast<const void*>(data.empty() ? nullptr : data.data()));
    return text;
}

TEST(TolkText, PrintArrayWithTitle_PrintsTitleAndOffsets) {
    const std::vector<unsigned char> data = {0x00, 0x01, 0xAB, 0xFF, 0x10};
    EXPECT_EQ("Title (5 bytes @ " + Address(data) + "):\n\t0000: 0001\n\t0002: abff\n\t0004: 10\n",
              Printed("Title", data, 5, 2));
    EXPECT_EQ("%s (4 bytes @ " + Address(data) + "):\n\t0000: 0001\n\t0002: abff\n",
              Printed("%s", data, 4, 2));
    EXPECT_EQ("T (5 bytes @ " + Address(data) + "):\n\t0000: 0001abff10\n", Printed("T", data, 5, 5));
    EXPECT_EQ("T (1 bytes @ " + Address(data) + "):\n\t0000: 00\n", Printed("T", data, 1, 16));
    EXPECT_EQ("T (2 bytes @ " + Address(data) + "):\n\t0000: 00\n\t0001: 01\n", Printed("T", data, 2, 1));
}

TEST(TolkText, PrintArrayOffsetsAreHexadecimal) {
    const std::vector<unsigned char> data(17, 0x5A);
    EXPECT_EQ("\t0010: 5a\n", Printed("T", data, 17, 16).substr(Printed("T", data, 16, 16).size()));
}

TEST(TolkText, PrintArrayWithoutTitle_PrintsBytesOnly) {
    EXPECT_EQ("0001\nabff\n10\n", Printed(nullptr, {0x00, 0x01, 0xAB, 0xFF, 0x10}, 5, 2));
}

TEST(TolkText, PrintArrayOfNothing_PrintsNoBytes) {
    EXPECT_EQ("T (3 bytes @ " + Address({}) + "):\n", Printed("T", {}, 3, 2));
    const std::vector<unsigned char> data = {1};
    EXPECT_EQ("T (0 bytes @ " + Address(data) + "):\n", Printed("T", data, 0, 2));
    EXPECT_EQ("T (-1 bytes @ " + Address(data) + "):\n", Printed("T", data, -1, 2));
    EXPECT_EQ("", Printed(nullptr, data, 0, 2));
}

TEST(TolkText, PrintArray_PrintsOnStandardOutput) {
    const unsigned char data[] = {0x12, 0x34, 0x56};
    testing::internal::CaptureStdout();
    Tolk_PrintArray(nullptr, data, 3, 2);
    EXPECT_EQ("1234\n56\n", testing::internal::GetCapturedStdout());
}

TEST(TolkText, CopyArrayUInt32_WidensTheElements) {
    const unsigned source[] = {1, 0xFFFFFFFFU, 3};
    unsigned count = 3;
    unsigned long wide[] = {~0UL, ~0UL, ~0UL, ~0UL};
    unsigned long room = 4;
    EXPECT_EQ(0, Tolk_CopyArrayUInt32(source, &count, wide, &room));
    EXPECT_EQ(3UL, room);
    EXPECT_EQ(1UL, wide[0]);
    EXPECT_EQ(0xFFFFFFFFUL, wide[1]);
    EXPECT_EQ(3UL, wide[2]);
    EXPECT_EQ(~0UL, wide[3]);
    EXPECT_EQ(0, Tolk_CopyArrayUInt32(source, &count, wide, &room)) << "exactly as many as there is room for";
    room = 2;
    wide[0] = 77;
    EXPECT_EQ(-1, Tolk_CopyArrayUInt32(source, &count, wide, &room));
    EXPECT_EQ(77UL, wide[0]);
    EXPECT_EQ(2UL, room);
    count = 0;
    EXPECT_EQ(0, Tolk_CopyArrayUInt32(source, &count, wide, &room));
    EXPECT_EQ(0UL, room);
    EXPECT_EQ(77UL, wide[0]);
}

}  // namespace
