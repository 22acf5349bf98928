#include "descriptors/data_descriptor.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/descriptors/printed_text.h"

namespace {

constexpr int kNumeric = 0;
constexpr int kText = 1;
constexpr int kRichText = 2;

std::string DataOf(const DataDescriptor& descriptor) {
    std::string data(descriptor.GetDataSize(), '?');
    descriptor.GetData(data.data());
    return data;
}

void Use(DataDescriptor& descriptor, std::string bytes) {
    DescriptorReport report;
    descriptor.UseData(bytes.data(), static_cast<unsigned short>(bytes.size()), report);
    EXPECT_EQ(report.errorOccurred(), 0);
}

std::string Written(const DataDescriptor& descriptor) {
    DescriptorReport report;
    const std::string text = PrintedText([&](std::FILE* stream) { descriptor.Write(stream, report); });
    EXPECT_EQ(report.errorOccurred(), 0);
    EXPECT_EQ(PrintedText([&](std::FILE* stream) { descriptor.WriteDataValue(stream, report); }), text);
    return text;
}

std::string WrittenForm(const std::string& bytes) {
    DataDescriptor descriptor;
    Use(descriptor, bytes);
    return Written(descriptor);
}

std::string ParsedWithReport(int format, std::string text, DescriptorReport& report) {
    DataDescriptor descriptor;
    descriptor.GetDataValueFromText(format, text.data(), static_cast<unsigned int>(text.size()), report);
    EXPECT_EQ(report.memoryError, 0);
    return DataOf(descriptor);
}

std::string Parsed(int format, const std::string& text) {
    DescriptorReport report;
    const std::string data = ParsedWithReport(format, text, report);
    EXPECT_EQ(report.errorOccurred(), 0) << text;
    return data;
}

std::string ParsedWithError(int format, const std::string& text) {
    DescriptorReport report;
    const std::string data = ParsedWithReport(format, text, report);
    EXPECT_NE(report.parsingError, 0) << text;
    return data;
}

TEST(DataDescriptor, NewDataDescriptor_IsEmpty) {
    const DataDescriptor descriptor;
    EXPECT_EQ(descriptor.GetDataSize(), 0u);
    EXPECT_EQ(Written(descriptor), "Txt(\"\")");
    char untouched = '!';
    descriptor.GetData(&untouched);
    EXPECT_EQ(untouched, '!');
}

TEST(DataDescriptor, CallerChangesItsBytes_ValueStays) {
    DataDescriptor descriptor;
    DescriptorReport report;
    char bytes[] = "abcdefgh";
    descriptor.UseData(bytes, 8, report);
    bytes[0] = 'X';
    EXPECT_EQ(DataOf(descriptor), "abcdefgh");
}

TEST(DataDescriptor, UseData_ReplacesTheValue) {
    DataDescriptor descriptor;
    Use(descriptor, "a long first value");
    Use(descriptor, "second");
    EXPECT_EQ(DataOf(descriptor), "second");
    DescriptorReport report;
    descriptor.UseData(nullptr, 5, report);
    EXPECT_EQ(descriptor.GetDataSize(), 0u);
    Use(descriptor, std::string(65535, 'z'));
    EXPECT_EQ(DataOf(descriptor), std::string(65535, 'z'));
    char byte = 'x';
    descriptor.UseData(&byte, 0, report);
    EXPECT_EQ(descriptor.GetDataSize(), 0u);
    EXPECT_EQ(report.errorOccurred(), 0);
}

TEST(DataDescriptor, Reset_EmptiesTheValue) {
    DataDescriptor descriptor;
    Use(descriptor, "value");
    descriptor.Reset();
    EXPECT_EQ(descriptor.GetDataSize(), 0u);
    Use(descriptor, "again");
    EXPECT_EQ(DataOf(descriptor), "again");
}

TEST(DataDescriptor, BytesAreAdded_ValueGrowsByEach) {
    DataDescriptor descriptor;
    DescriptorReport report;
    std::string expected;
    for (int i = 0; i < 100; ++i) {
        const auto byte = static_cast<char>(i * 7);
        EXPECT_TRUE(descriptor.AddDataByte(byte, report));
        expected += byte;
        ASSERT_EQ(DataOf(descriptor), expected);
    }
    EXPECT_EQ(report.errorOccurred(), 0);
}

TEST(DataDescriptor, BytesAreAddedToAValueOfAnyLength_ValueEndsWithThem) {
    for (std::size_t length = 0; length < 20; ++length) {
        DataDescriptor descriptor;
        DescriptorReport report;
        Use(descriptor, std::string(length, 'd'));
        for (int i = 0; i < 10; ++i) descriptor.AddDataByte('+', report);
        EXPECT_EQ(DataOf(descriptor), std::string(length, 'd') + "++++++++++");
    }
}

TEST(DataDescriptor, PrintableBytes_AreWrittenAsText) {
    EXPECT_EQ(WrittenForm("abc"), "Txt(\"abc\")");
    EXPECT_EQ(WrittenForm(" ~\"\\"), "Txt(\" ~\"\\\")");
}

TEST(DataDescriptor, AnyByteIsAbove126_ValueIsWrittenAsNumericText) {
    EXPECT_EQ(WrittenForm("ab\x7F"), "Num(\"61627f\")");
    EXPECT_EQ(WrittenForm("\x80 longer than five printable bytes"),
              "Num(\"80206c6f6e676572207468616e2066697665207072696e7461626c65206279746573\")");
    EXPECT_EQ(WrittenForm("aaaaaaaaaaaaaaaaaaaa\n\xFF"),
              "Num(\"61616161616161616161616161616161616161610aff\")");
}

TEST(DataDescriptor, MoreThanFivePrintableBytesForEachControlByte_ValueIsWrittenAsRichText) {
    EXPECT_EQ(WrittenForm("\n"), "Num(\"0a\")");
    EXPECT_EQ(WrittenForm("abcde\n"), "Num(\"61626364650a\")");
    EXPECT_EQ(WrittenForm("abcdef\n"), "RTF(\"abcdef\\a\")");
    EXPECT_EQ(WrittenForm("abcdefghij\n\n"), "Num(\"6162636465666768696a0a0a\")");
    EXPECT_EQ(WrittenForm(std::string("\0abcdefghijk\x1F", 13)), "RTF(\"\\0abcdefghijk\\v\")");
}

TEST(DataDescriptor, BackslashAndQuoteInRichText_AreDoubled) {
    EXPECT_EQ(WrittenForm("\n\"\\abcd"), "RTF(\"\\a\"\"\\\\abcd\")");
}

TEST(DataDescriptor, Text_ReadsAsItsCharacters) {
    EXPECT_EQ(Parsed(kText, "a\\n\"\"b"), "a\\n\"\"b");
    EXPECT_EQ(Parsed(kText, std::string("a\0\xFFz", 4)), std::string("a\0\xFFz", 4));
    EXPECT_EQ(Parsed(kText, ""), "");
}

TEST(DataDescriptor, NumericText_ReadsAsItsBytes) {
    EXPECT_EQ(Parsed(kNumeric, "00ff7FaBCd"), std::string("\x00\xFF\x7F\xAB\xCD", 5));
    EXPECT_EQ(Parsed(kNumeric, "0123456789abcdefABCDEF"),
              std::string("\x01\x23\x45\x67\x89\xAB\xCD\xEF\xAB\xCD\xEF"));
    EXPECT_EQ(Parsed(kNumeric, ""), "");
}

TEST(DataDescriptor, CharacterIsNoHexadecimalDigit_ReadsAsZeroWithAnError) {
    EXPECT_EQ(ParsedWithError(kNumeric, "1g41"), "\x10\x41");
    EXPECT_EQ(ParsedWithError(kNumeric, "g141"), "\x01\x41");
    for (const char* wrong : {"1/", "1:", "1@", "1G", "1`", "1g", "1 ", "1\xFF"}) {
        EXPECT_EQ(ParsedWithError(kNumeric, wrong), "\x10");
    }
}

TEST(DataDescriptor, LastDigitHasNoPartner_MissingHalfReadsAsZeroWithAnError) {
    EXPECT_EQ(ParsedWithError(kNumeric, "41b"), "\x41\xB0");
    EXPECT_EQ(ParsedWithError(kNumeric, "4"), "\x40");
}

TEST(DataDescriptor, RichText_ReadsAsItsBytes) {
    EXPECT_EQ(Parsed(kRichText, "ab\\a"), "ab\n");
    EXPECT_EQ(Parsed(kRichText, "\\0\\9\\a\\v\\w\\z"), std::string("\x00\x09\x0A\x1F\x20\x23", 6));
    EXPECT_EQ(Parsed(kRichText, "\\A\\V\\W\\Z"), "\x0A\x1F\x20\x23");
    EXPECT_EQ(Parsed(kRichText, "a\\\\b"), "a\\b");
    EXPECT_EQ(Parsed(kRichText, "\\\\a"), "\\a");
    EXPECT_EQ(Parsed(kRichText, "\\\\\\a"), "\\\n");
    EXPECT_EQ(Parsed(kRichText, "\x80\xFF\n"), "\x80\xFF\n");
    EXPECT_EQ(Parsed(kRichText, ""), "");
}

TEST(DataDescriptor, DoubledQuotes_ReadAsOneQuote) {
    EXPECT_EQ(Parsed(kRichText, "a\"\"b"), "a\"b");
    EXPECT_EQ(Parsed(kRichText, "a\"\"\"\""), "a\"\"");
    EXPECT_EQ(Parsed(kRichText, "a\"b"), "a\"b");
    EXPECT_EQ(Parsed(kRichText, "a\""), "a\"");
}

TEST(DataDescriptor, EscapeIsUnknown_GivesNoByteAndSetsAnError) {
    EXPECT_EQ(ParsedWithError(kRichText, "a\\-b"), "ab");
    EXPECT_EQ(ParsedWithError(kRichText, "a\\\"b"), "ab");
    EXPECT_EQ(ParsedWithError(kRichText,
                              "a\\\xFF"
                              "b"),
              "ab");
    EXPECT_EQ(ParsedWithError(kRichText, std::string("a\\\0b", 4)), "ab");
    EXPECT_EQ(ParsedWithError(kRichText, "ab\\"), "ab");
    EXPECT_EQ(ParsedWithError(kRichText, "\\"), "");
}

TEST(DataDescriptor, FormatIsUnknown_TextReadsAsNumericWithAnError) {
    EXPECT_EQ(ParsedWithError(3, "4142"), "AB");
    EXPECT_EQ(ParsedWithError(-1, "4142"), "AB");
    EXPECT_EQ(ParsedWithError(3, ""), "");
}

TEST(DataDescriptor, TextIsRead_ReplacesTheValue) {
    DataDescriptor descriptor;
    DescriptorReport report;
    Use(descriptor, "before");
    char text[] = "after";
    descriptor.GetDataValueFromText(kText, text, 5, report);
    EXPECT_EQ(DataOf(descriptor), "after");
    descriptor.GetDataValueFromText(kText, nullptr, 5, report);
    EXPECT_EQ(DataOf(descriptor), "");
    EXPECT_EQ(report.errorOccurred(), 0);
}

TEST(DataDescriptor, TextIsLongerThanTheLength_ReadingEndsAtTheLength) {
    DataDescriptor descriptor;
    DescriptorReport report;
    char text[] = "4142g";
    descriptor.GetDataValueFromText(kNumeric, text, 4, report);
    EXPECT_EQ(DataOf(descriptor), "AB");
    EXPECT_EQ(report.errorOccurred(), 0);
    descriptor.GetDataValueFromText(kNumeric, text, 3, report);
    EXPECT_EQ(DataOf(descriptor), "A@");
    EXPECT_EQ(report.parsingError, 1);
}

TEST(DataDescriptor, ReportHasErrors_SuccessfulReadingLeavesThem) {
    DataDescriptor descriptor;
    DescriptorReport report;
    report.parsingError = 1;
    report.memoryError = 1;
    char text[] = "4142";
    descriptor.GetDataValueFromText(kNumeric, text, 4, report);
    EXPECT_EQ(DataOf(descriptor), "AB");
    EXPECT_EQ(report.parsingError, 1);
    EXPECT_EQ(report.memoryError, 1);
}

// The text between the quotes reads back as the value, in each form.
TEST(DataDescriptor, EachByte_SurvivesWritingAndReading) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string bytes = std::string("text around: \"") + static_cast<char>(byte) + "\\\\\"\"";
        const std::string written = WrittenForm(bytes);
        const std::string tag = written.substr(0, 5);
        const std::string text = written.substr(5, written.size() - 7);
        if (byte > 126) {
            EXPECT_EQ(tag, "Num(\"");
            EXPECT_EQ(Parsed(kNumeric, text), bytes);
        } else if (byte < 32) {
            EXPECT_EQ(tag, "RTF(\"");
            EXPECT_EQ(Parsed(kRichText, text), bytes);
        } else {
            EXPECT_EQ(tag, "Txt(\"");
            EXPECT_EQ(Parsed(kText, text), bytes);
        }
    }
}

}  // namespace
