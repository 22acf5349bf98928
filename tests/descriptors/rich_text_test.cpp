#include "descriptors/rich_text.h"

#include <gtest/gtest.h>

#include "descriptors/numeric_text.h"
#include "tests/descriptors/printed_text.h"

using namespace ckscribe;

namespace {

std::string AsRichText(std::string_view bytes) {
    return PrintedText([&](std::FILE* stream) { WriteRichText(stream, bytes); });
}

std::string AsNumericText(std::string_view bytes) {
    return PrintedText([&](std::FILE* stream) { WriteNumericText(stream, bytes); });
}

TEST(RichText, ControlByte_IsWrittenAsABackslashAndACharacter) {
    const std::string characters = "0123456789abcdefghijklmnopqrstuv";
    for (int byte = 0; byte < 32; ++byte) {
        EXPECT_EQ(AsRichText(std::string(1, static_cast<char>(byte))),
                  std::string("\\") + characters[static_cast<std::size_t>(byte)])
            << byte;
    }
}

TEST(RichText, OtherBytesThanBackslashAndQuote_StandAsTheyAre) {
    for (int byte = 32; byte < 256; ++byte) {
        if (byte == '\\' || byte == '"') continue;
        const std::string single(1, static_cast<char>(byte));
        EXPECT_EQ(AsRichText(single), single) << byte;
    }
    EXPECT_EQ(AsRichText("a\\b"), "a\\\\b");
    EXPECT_EQ(AsRichText("a\"b"), "a\"\"b");
}

TEST(RichText, EscapesOfEitherCase_GiveTheirByte) {
    const std::string small = "0123456789abcdefghijklmnopqrstuvwxyz";
    const std::string capital = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    for (std::size_t byte = 0; byte < 36; ++byte) {
        EXPECT_EQ(ByteOfRichTextEscape(small[byte]), static_cast<char>(byte));
        EXPECT_EQ(ByteOfRichTextEscape(capital[byte]), static_cast<char>(byte));
    }
}

TEST(RichText, OtherCharacters_AreNoEscape) {
    for (int character = 0; character < 256; ++character) {
        const bool isDigit = character >= '0' && character <= '9';
        const bool isSmall = character >= 'a' && character <= 'z';
        const bool isCapital = character >= 'A' && character <= 'Z';
        EXPECT_EQ(ByteOfRichTextEscape(static_cast<char>(character)).has_value(),
                  isDigit || isSmall || isCapital)
            << character;
    }
}

TEST(NumericText, EachByte_IsTwoLowercaseDigitsWithTheHighHalfFirst) {
    EXPECT_EQ(AsNumericText(""), "");
    EXPECT_EQ(AsNumericText(std::string_view("\0\x41", 2)), "0041");
    EXPECT_EQ(AsNumericText("\x0F\xF0\xAB\xFF"), "0ff0abff");
}

}  // namespace
