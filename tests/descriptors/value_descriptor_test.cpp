#include "descriptors/value_descriptor.h"

#include <sys/mman.h>
#include <unistd.h>

#include <climits>

#include "tests/descriptors/record_test.h"

using namespace ckscribe;

namespace {

using namespace std::string_literals;

using ValueDescriptorTest = RecordTest;

ValueFormat FormatOf(const std::string& bytes) {
    return ValueDescriptor(bytes.data(), bytes.size()).FormatFromDataValue();
}

std::string PrintedAs(const std::string& bytes, ValueFormat format) {
    RecordText text;
    ValueDescriptor(bytes.data(), bytes.size()).PrintValue(text, format);
    return std::string(text.Text());
}

template <class Descriptor = ValueDescriptor>
std::string OldValue(const std::string& bytes, const char* name = nullptr) {
    UseOldFormat();
    return Printed(Descriptor(bytes.data(), bytes.size(), name));
}

template <class Descriptor = ValueDescriptor>
std::string NewValue(const std::string& bytes, const char* name = nullptr) {
    UseNewFormat();
    return Printed(Descriptor(bytes.data(), bytes.size(), name));
}

// ---- Names of formats -------------------------------------------------------------------------------------

TEST(ValueFormatNames, NameOfAForm_GivesItsNumberBack) {
    EXPECT_EQ(GetValueFormat(ValueFormat{1}), "Numeric");
    EXPECT_EQ(GetValueFormat(ValueFormat{2}), "SimpleText");
    EXPECT_EQ(GetValueFormat(ValueFormat{3}), "RichText");
    for (const int number : {0, 4, -1, INT_MAX}) {
        EXPECT_EQ(GetValueFormat(static_cast<ValueFormat>(number)), "Unknown");
    }
    EXPECT_EQ(GetValueFormat("Numeric"), ValueFormat{1});
    EXPECT_EQ(GetValueFormat("SimpleText"), ValueFormat{2});
    EXPECT_EQ(GetValueFormat("RichText"), ValueFormat{3});
    for (const char* name : {"", "Unknown", "numeric", "RichText ", "Simple"})
        EXPECT_EQ(GetValueFormat(name), ValueFormat{0});
}

// ---- The choice of the format -----------------------------------------------------------------------------

TEST_F(ValueDescriptorTest, ValueIsOneByte_ByteDecidesTheForm) {
    for (int byte = 0; byte < 256; ++byte) {
        const ValueFormat expected =
            byte >= 32 && byte <= 126 ? ValueFormat::kSimpleText : ValueFormat::kNumeric;
        EXPECT_EQ(FormatOf(std::string(1, static_cast<char>(byte))), expected) << byte;
    }
}

TEST_F(ValueDescriptorTest, ControlBytesAreTheFewer_ValueIsRichText) {
    EXPECT_EQ(FormatOf(""), ValueFormat::kSimpleText);
    EXPECT_EQ(FormatOf("abc"), ValueFormat::kSimpleText);
    EXPECT_EQ(FormatOf("ab\n"), ValueFormat::kRichText);
    EXPECT_EQ(FormatOf("\nab"), ValueFormat::kRichText);
    EXPECT_EQ(FormatOf("a\n"), ValueFormat::kNumeric);
    EXPECT_EQ(FormatOf("\0A"s), ValueFormat::kNumeric);
    EXPECT_EQ(FormatOf("a\n\n"), ValueFormat::kNumeric);
    for (std::size_t control = 1; control < 6; ++control) {
        for (std::size_t printable = 0; printable < 12; ++printable) {
            EXPECT_EQ(FormatOf(std::string(control, '\x1F') + std::string(printable, ' ')),
                      printable > control ? ValueFormat::kRichText : ValueFormat::kNumeric);
        }
    }
}

TEST_F(ValueDescriptorTest, OneByteIsNoText_WholeValueIsNumeric) {
    EXPECT_EQ(FormatOf("a text of many characters\x7F"), ValueFormat::kNumeric);
    EXPECT_EQ(FormatOf("\x80 a text of many characters"), ValueFormat::kNumeric);
    EXPECT_EQ(FormatOf("a text\xFFof many\ncharacters"), ValueFormat::kNumeric);
    EXPECT_EQ(FormatOf("a text of many characters~"), ValueFormat::kSimpleText);
}

// ---- The three forms --------------------------------------------------------------------------------------

TEST_F(ValueDescriptorTest, SimpleText_ShowsEachByteAsItIs) {
    EXPECT_EQ(PrintedAs("abc", ValueFormat::kSimpleText), "\"abc\"");
    EXPECT_EQ(PrintedAs("a\"b\\c\n\0\xFF"s, ValueFormat::kSimpleText), "\"a\"b\\c\n\0\xFF\""s);
    EXPECT_EQ(PrintedAs("abc", static_cast<ValueFormat>(0)), "\"abc\"");
}

TEST_F(ValueDescriptorTest, NumericText_ShowsTwoDigitsForEachByte) {
    EXPECT_EQ(PrintedAs("\0A\x9f\xF0"s, ValueFormat::kNumeric), "\"00419ff0\"");
}

TEST_F(ValueDescriptorTest, RichText_EscapesControlBytesBackslashesAndQuotes) {
    EXPECT_EQ(PrintedAs("ab\n", ValueFormat::kRichText), "\"ab\\a\"");
    EXPECT_EQ(PrintedAs("a\"b\\c", ValueFormat::kRichText), "\"a\"\"b\\\\c\"");
    const std::string escapes = "0123456789abcdefghijklmnopqrstuv";
    for (int byte = 0; byte < 256; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        std::string expected = one;
        if (byte < 32) expected = std::string("\\") + escapes[static_cast<std::size_t>(byte)];
        if (byte == '\\' || byte == '"') expected = one + one;
        EXPECT_EQ(PrintedAs(one, ValueFormat::kRichText), "\"" + expected + "\"") << byte;
    }
}

TEST_F(ValueDescriptorTest, NoValue_IsShownAsNullInEachForm) {
    for (const ValueFormat format :
         {ValueFormat::kNumeric, ValueFormat::kSimpleText, ValueFormat::kRichText}) {
        EXPECT_EQ(PrintedAs("", format), "\"<null>\"");
    }
}

// ---- ValueDescriptor --------------------------------------------------------------------------------------

TEST_F(ValueDescriptorTest, OldFormat_NamesTheForm) {
    EXPECT_EQ(OldValue("abc"), "Value(SimpleText\"abc\")");
    EXPECT_EQ(OldValue("ab\n"), "Value(RichText\"ab\\a\")");
    EXPECT_EQ(OldValue("\0A"s), "Value(Numeric\"0041\")");
    EXPECT_EQ(OldValue("\x80"), "Value(Numeric\"80\")");
    EXPECT_EQ(OldValue(""), "Value(SimpleText\"<null>\")");
    EXPECT_EQ(OldValue("abc", "name="), "Value(SimpleText\"abc\")");
}

TEST_F(ValueDescriptorTest, NewFormat_ShowsOnlyTheQuotedValue) {
    EXPECT_EQ(NewValue("abc"), "\"abc\"");
    EXPECT_EQ(NewValue("ab\n"), "\"ab\\a\"");
    EXPECT_EQ(NewValue("\0A"s), "\"0041\"");
    EXPECT_EQ(NewValue(""), "\"<null>\"");
    EXPECT_EQ(NewValue("abc", "name="), "\"abc\"");
}

TEST_F(ValueDescriptorTest, Value_HasNoLineOfItsOwnButASuffix) {
    const ValueDescriptor value("abc", 3);
    UseOldFormat();
    EXPECT_EQ(Printed(value, 6, ";"), "Value(SimpleText\"abc\");");
    UseNewFormat();
    EXPECT_EQ(Printed(value, 6, " "), "\"abc\" ");
}

TEST_F(ValueDescriptorTest, LabelForAStream_IsFlushedBeforeTheValue) {
    UseOldFormat();
    EXPECT_EQ(FlushedPieces(ValueDescriptor("abc", 3)),
              (std::vector<std::string>{"Value", "(end)", "(SimpleText\"abc\")"}));
    UseNewFormat();
    EXPECT_EQ(FlushedPieces(ValueDescriptor("abc", 3)), (std::vector<std::string>{"(end)", "\"abc\""}));
}

TEST_F(ValueDescriptorTest, CallerChangesItsBytes_ValueStays) {
    char bytes[] = "before";
    ValueDescriptor value(bytes, 6);
    bytes[0] = 'X';
    UseNewFormat();
    EXPECT_EQ(Printed(value), "\"before\"");
    EXPECT_EQ(value.Length(), 6U);
    value.SetValue("after", 5);
    EXPECT_EQ(Printed(value), "\"after\"");
    EXPECT_EQ(value.Length(), 5U);
    value.ReleaseValue();
    EXPECT_EQ(Printed(value), "\"<null>\"");
    EXPECT_EQ(value.Length(), 0U);
}

TEST_F(ValueDescriptorTest, AddressIsNullOrLengthIsZero_TextShowsNoValue) {
    UseNewFormat();
    const ValueDescriptor null(nullptr, 5);
    EXPECT_EQ(Printed(null), "\"<null>\"");
    EXPECT_EQ(null.Length(), 0U);
    const ValueDescriptor empty("abc", 0);
    EXPECT_EQ(Printed(empty), "\"<null>\"");
    ValueDescriptor emptied("abc", 3);
    emptied.SetValue("abc", 0);
    EXPECT_EQ(Printed(emptied), "\"<null>\"");
    EXPECT_EQ(Printed(ValueDescriptor()), "\"<null>\"");
}

TEST_F(ValueDescriptorTest, LengthIsUnavailable_TextShowsSixteenF) {
    EXPECT_EQ(New<ValueDescriptor>("abc", ULONG_MAX), "\"ffffffffffffffff\"");
    EXPECT_EQ(Old<ValueDescriptor>("abc", ULONG_MAX), "Value(Numeric\"ffffffffffffffff\")");
    const ValueDescriptor null(nullptr, ULONG_MAX);
    UseNewFormat();
    EXPECT_EQ(Printed(null), "\"ffffffffffffffff\"");
    EXPECT_EQ(null.Length(), 8U);
}

TEST_F(ValueDescriptorTest, BytesCannotBeReadToTheirEnd_ValueHoldsThePartInFront) {
    const std::size_t pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    char* const pages = static_cast<char*>(
        mmap(nullptr, 2 * pageSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(pages, MAP_FAILED);
    ASSERT_EQ(mprotect(pages + pageSize, pageSize, PROT_NONE), 0);
    char* const text = pages + pageSize - 4;
    for (char& character : {std::ref(text[0]), std::ref(text[1]), std::ref(text[2]), std::ref(text[3])}) {
        character = 'x';
    }
    UseNewFormat();
    EXPECT_EQ(Printed(ValueDescriptor(text, 5)), "\"xxxx\"");
    EXPECT_EQ(Printed(ValueDescriptor(text, ULONG_MAX - 1)), "\"xxxx\"");
    EXPECT_EQ(Printed(ValueDescriptor(pages + pageSize, 5)), "\"<null>\"");
    EXPECT_EQ(Printed(ValueDescriptor(reinterpret_cast<const void*>(-8), 64)), "\"<null>\"");
    munmap(pages, 2 * pageSize);
}

TEST_F(ValueDescriptorTest, ValueIsLarge_IsPrintedWhole) {
    const std::string bytes(100'000, '\xA5');
    std::string digits;
    for (std::size_t i = 0; i < bytes.size(); ++i) digits += "a5";
    EXPECT_EQ(NewValue(bytes), "\"" + digits + "\"");
}

// ---- ByteStringDescriptor ---------------------------------------------------------------------------------

TEST_F(ValueDescriptorTest, ByteString_HasItsOwnLineAndALabel) {
    EXPECT_EQ(OldValue<ByteStringDescriptor>("abc"), "\nByteString(SimpleText\"abc\")");
    EXPECT_EQ(OldValue<ByteStringDescriptor>("abc", "label="), "\nByteString(SimpleText\"abc\")");
    EXPECT_EQ(NewValue<ByteStringDescriptor>("abc"), "\"abc\"");
    EXPECT_EQ(NewValue<ByteStringDescriptor>("abc", "label="), "label=\"abc\"");
    EXPECT_EQ(NewValue<ByteStringDescriptor>("", "label="), "label=\"<null>\"");
    const ByteStringDescriptor indented("\1\2", 2, "label=");
    UseOldFormat();
    EXPECT_EQ(Printed(indented, 3, ";"), "\n   ByteString(Numeric\"0102\");");
    UseNewFormat();
    EXPECT_EQ(Printed(indented, 3, " "), "label=\"0102\" ");
}

// ---- PINDescriptor ----------------------------------------------------------------------------------------

TEST_F(ValueDescriptorTest, Pin_IsAlwaysShownAsTheSameMask) {
    EXPECT_STREQ(PINDescriptor::cMaskedPIN, "********");
    EXPECT_EQ(PINDescriptor::cMaskPINlen, 8U);
    EXPECT_STREQ(PINDescriptor::cLabel, "PIN=");
    EXPECT_EQ(PINDescriptor().Type(), 14);
    EXPECT_EQ(Old<PINDescriptor>(), "\nByteString(SimpleText\"********\")");
    EXPECT_EQ(New<PINDescriptor>(), "PIN=\"********\"");
    EXPECT_EQ(New<PINDescriptor>(true, "Old="), "Old=\"********\"");
}

TEST_F(ValueDescriptorTest, PinIsNull_TextShowsNoValue) {
    EXPECT_EQ(Old<PINDescriptor>(false), "\nByteString(SimpleText\"<null>\")");
    EXPECT_EQ(New<PINDescriptor>(false), "PIN=\"<null>\"");
}

// ---- StringDescriptor -------------------------------------------------------------------------------------

TEST_F(ValueDescriptorTest, String_ShowsItsLengthAndItsBytesAsTheyAre) {
    EXPECT_EQ(OldValue<StringDescriptor>("abc"), "\nByteString(3,\"abc\")");
    EXPECT_EQ(NewValue<StringDescriptor>("abc"), "(3,\"abc\")");
    EXPECT_EQ(NewValue<StringDescriptor>("abc", "file="), "file=(3,\"abc\")");
    EXPECT_EQ(NewValue<StringDescriptor>("a\"\\\n\0\xFF"s), "(6,\"a\"\\\n\0\xFF\")"s);
    EXPECT_EQ(NewValue<StringDescriptor>(""), "(0,\"\")");
    EXPECT_EQ(OldValue<StringDescriptor>(""), "\nByteString(0,\"\")");
    EXPECT_EQ(StringDescriptor().Type(), 14);
}

TEST_F(ValueDescriptorTest, ValueDescriptors_HaveTheNumbersOfTheirTypes) {
    EXPECT_EQ(ValueDescriptor().Type(), 3);
    EXPECT_EQ(ByteStringDescriptor().Type(), 14);
}

}  // namespace
