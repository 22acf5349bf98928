#include "config/entry_lookup.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/config/configuration_test.h"

namespace {

struct LookupCase {
    const char* name;
    std::string text;
    std::string value;  // of "Key" in "Misc", or "(none)"
};

class EntryLookupTest : public testing::TestWithParam<LookupCase> {};

TEST_P(EntryLookupTest, KeyStandsInMisc_ValueIsAsExpected) {
    std::string text = GetParam().text;
    const char* value = ckscribe::FindEntryValue(text.data(), "Misc", "Key");
    EXPECT_EQ(GetParam().value, value == nullptr ? "(none)" : value);
}

const LookupCase kSections[] = {
    {"AtStartOfText", "Misc = {\n Key = V;\n}", "V"},
    {"AfterLineFeed", "x\nMisc = {\n Key = V;\n}", "V"},
    {"AfterCarriageReturn", "x\rMisc = {\n Key = V;\n}", "V"},
    {"AfterSpace", " Misc = {\n Key = V;\n}", "V"},
    {"AfterTab", "\tMisc = {\n Key = V;\n}", "(none)"},
    {"AfterLetter", "xMisc = {\n Key = V;\n}", "(none)"},
    {"AfterBrace", "{Misc = {\n Key = V;\n}", "(none)"},
    {"AfterSemicolon", ";Misc = {\n Key = V;\n}", "(none)"},
    {"InOtherCase", "misc = {\n Key = V;\n}", "(none)"},
    {"WithoutBlanks", "Misc={\n Key = V;\n}", "V"},
    {"BraceOnNextLine", "Misc  =\n{\n Key = V;\n}", "V"},
    {"AnyWhiteSpaceAroundEquals", "Misc\t\v\f\r\n =\t\v\f\r\n {\n Key = V;\n}", "V"},
    {"WordBeforeBrace", "Misc = x {\n Key = V;\n}", "(none)"},
    {"WordBeforeEquals", "Misc x = {\n Key = V;\n}", "(none)"},
    {"WithoutEquals", "Misc {\n Key = V;\n}", "(none)"},
    {"TwoEquals", "Misc == {\n Key = V;\n}", "(none)"},
    {"TwoEqualsApart", "Misc = = {\n Key = V;\n}", "(none)"},
    {"EndsAfterName", "Misc", "(none)"},
    {"EndsAfterEquals", "Misc = ", "(none)"},
    {"EndsAfterBrace", "Misc = {", "(none)"},
    {"LongerName", "Misc2 = {\n Key = V;\n}", "(none)"},
    {"NameMentionedBefore", "A = {\n B = Misc;\n}\nMisc = {\n Key = V;\n}", "V"},
    {"NameMentionedInItsOwnHeader", "Misc Misc = {\n Key = V;\n}", "V"},
    {"AttemptThatStopsAtTheNextName", "Misc =\nMisc = {\n Key = V;\n}", "V"},
    {"AttemptWithoutEqualsBeforeIt", "Misc {\nMisc = {\n Key = V;\n}", "V"},
    {"HeaderInsideAnotherSection", "A = {\n Misc = {\n Key = V;\n}", "V"},
    {"FirstOfTwoCounts", "Misc = {\n Key = 1;\n}\nMisc = {\n Key = 2;\n}", "1"},
    {"FirstOfTwoCountsWithoutTheKey", "Misc = {\n K = 1;\n}\nMisc = {\n Key = 2;\n}", "(none)"},
    {"NeverClosed", "Misc = {\n Key = V;\n", "V"},
    {"NeverClosedReachesIntoTheNext", "Misc = {\nB = {\n Key = V;\n}", "V"},
    {"ClosedBeforeTheKey", "Misc = {\n}\n Key = V;\n", "(none)"},
    {"BraceInAValueEndsIt", "Misc = {\n A = x}y;\n Key = V;\n}", "(none)"},
    {"BraceInTheValueItself", "Misc = {\n Key = a}b;\n}", "a"},
    {"KeyInAnotherSection", "Other = {\n Key = W;\n}\nMisc = {\n}\nThird = {\n Key = X;\n}", "(none)"},
    {"EmptyText", "", "(none)"},
};

const LookupCase kKeys[] = {
    {"AfterSpace", "Misc = {\n   Key = V;\n}", "V"},
    {"AfterLineFeed", "Misc = {\nKey = V;\n}", "V"},
    {"AfterCarriageReturn", "Misc = {\rKey = V;\n}", "V"},
    {"AfterBrace", "Misc = {Key = V;\n}", "V"},
    {"AfterTab", "Misc = {\n\tKey = V;\n}", "(none)"},
    {"AfterSpacesAndTab", "Misc = {\n  \tKey = V;\n}", "(none)"},
    {"AfterTabAndSpace", "Misc = {\n\t Key = V;\n}", "V"},
    {"AfterSemicolon", "Misc = {\n A = 1;Key = V;\n}", "(none)"},
    {"AfterSemicolonAndSpace", "Misc = {\n A = 1; Key = V;\n}", "V"},
    {"InOtherCase", "Misc = {\n KEY = V;\n}", "(none)"},
    {"LongerAtItsEnd", "Misc = {\n Key2 = V;\n}", "(none)"},
    {"LongerAtItsStart", "Misc = {\n MyKey = V;\n}", "(none)"},
    {"AfterLongerOnes", "Misc = {\n Key2 = 1;\n MyKey = 2;\n Key = V;\n}", "V"},
    {"WithoutBlanks", "Misc = {\n Key=V;\n}", "V"},
    {"ManySpaces", "Misc = {\n Key    =    V;\n}", "V"},
    {"TabBeforeEquals", "Misc = {\n Key\t= V;\n}", "(none)"},
    {"LineEndBeforeEquals", "Misc = {\n Key\n= V;\n}", "(none)"},
    {"WithoutEquals", "Misc = {\n Key V;\n}", "(none)"},
    {"MentionedThenEntered", "Misc = {\n A = Key;\n Key = V;\n}", "V"},
    {"InsideAValueThatLooksLikeAnEntry", "Misc = {\n A = the Key = W;\n Key = V;\n}", "W"},
    {"FirstOfTwoCounts", "Misc = {\n Key = 1;\n Key = 2;\n}", "1"},
    {"RepeatedBeforeEquals", "Misc = {\n Key Key = V;\n}", "V"},
};

const LookupCase kValues[] = {
    {"WithSemicolon", "Misc = {\n Key = V;\n}", "V"},
    {"WithoutSemicolon", "Misc = {\n Key = V\n}", "V"},
    {"EndsAtSemicolon", "Misc = {\n Key = V;W\n}", "V"},
    {"EndsAtCarriageReturn", "Misc = {\n Key = V\r\n}", "V"},
    {"EndsAtEndOfText", "Misc = {\n Key = V", "V"},
    {"EndsAtBrace", "Misc = {\n Key = V}", "V"},
    {"Empty", "Misc = {\n Key = ;\n}", ""},
    {"EmptyWithoutBlank", "Misc = {\n Key=;\n}", ""},
    {"EmptyAtLineEnd", "Misc = {\n Key =\n A = W;\n}", ""},
    {"TrailingSpaceKept", "Misc = {\n Key = V ;\n}", "V "},
    {"TabKept", "Misc = {\n Key =\tV\t;\n}", "\tV\t"},
    {"SpacesThenTab", "Misc = {\n Key =  \t V;\n}", "\t V"},
    {"InnerBlanks", "Misc = {\n Key = a b  c;\n}", "a b  c"},
    {"EqualsInside", "Misc = {\n Key = a=b;\n}", "a=b"},
    {"BracesInside", "Misc = {\n Key = {a;\n}", "{a"},
    {"AnyBytes", "Misc = {\n Key = \x01\x7F\x80\xFF\"'\\#;\n}", "\x01\x7F\x80\xFF\"'\\#"},
};

std::string CaseName(const testing::TestParamInfo<LookupCase>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(Section, EntryLookupTest, testing::ValuesIn(kSections), CaseName);
INSTANTIATE_TEST_SUITE_P(Key, EntryLookupTest, testing::ValuesIn(kKeys), CaseName);
INSTANTIATE_TEST_SUITE_P(Value, EntryLookupTest, testing::ValuesIn(kValues), CaseName);

std::string Find(std::string text, const char* section, const char* key) {
    const char* value = ckscribe::FindEntryValue(text.data(), section, key);
    return value == nullptr ? "(none)" : value;
}

TEST(EntryLookup, SectionNameMayHoldBlanks) {
    EXPECT_EQ("V", Find("Secure Trusted Channel = {\n K = V;\n}", "Secure Trusted Channel", "K"));
    EXPECT_EQ("V", Find("A = {\n}\nOrma = {\n K = V;\n}", "Orma", "K"));
    EXPECT_EQ("V", Find("Orma Client = {\n K = W;\n}\nOrma = {\n K = V;\n}", "Orma", "K"));
}

TEST(EntryLookup, SectionNameHoldsABrace_SectionStaysOpen) {
    EXPECT_EQ("V", Find("a} = {\n B = 1;\n}\n K = V;\n", "a}", "K"));
    EXPECT_EQ("V", Find("a}K = {\n}\nK = V;\n", "a}K", "K"));
}

TEST(EntryLookup, SectionNameHoldsTheEnd_KeyBehindItIsFound) {
    // The end of the section falls on the "}" of the name; what begins behind it counts as the start of a
    // line.
    EXPECT_EQ("{", Find("a} = {\n}\n", "a}", ""));
}

TEST(EntryLookup, SectionNameIsEmpty_NothingIsFound) {
    EXPECT_EQ("(none)", Find("= {\n K = V;\n}", "", "K"));
    EXPECT_EQ("(none)", Find("", "", ""));
}

TEST(EntryLookup, EmptyKeyIsTheFirstEqualsAfterABlank) {
    EXPECT_EQ("{", Find("Misc = {\n K = V;\n}", "Misc", ""));
    EXPECT_EQ("(none)", Find("Misc={\nK=V;\n}", "Misc", ""));
}

TEST(EntryLookup, KeyHoldsAnEquals_ValueIsFound) {
    EXPECT_EQ("b = V", Find("Misc = {\n a=b = V;\n}", "Misc", "a=b"));
}

TEST(EntryLookup, KeyThatHoldsAnEntryEndHasNoValue) {
    EXPECT_EQ("(none)", Find("Misc = {\n a;b = V;\n}", "Misc", "a;b"));
}

// Sanitizers measure the whole text at every strstr. Any search takes quadratic time then.
#if !defined(__has_feature)
#define __has_feature(feature) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || __has_feature(address_sanitizer) || \
    __has_feature(thread_sanitizer)
constexpr int kCount = 1 << 13;
#else
constexpr int kCount = 1 << 20;
#endif

// Each text would keep a search that starts over again busy for hours, beyond the time limit of a test.
TEST(EntryLookup, HostileTextsTakeNoQuadraticTime) {
    const auto repeated = [](const char* piece) {
        std::string text;
        for (int i = 0; i < kCount; ++i) text += piece;
        return text;
    };
    const std::string blanks(kCount, ' ');
    EXPECT_EQ("(none)", Find(repeated("Misc "), "Misc", "Key"));
    EXPECT_EQ("(none)", Find(repeated(" Misc = "), "Misc", "Key"));
    EXPECT_EQ("(none)", Find(repeated("Misc"), "Misc", "Key"));
    EXPECT_EQ("(none)", Find("Misc" + blanks + "=" + blanks, "Misc", "Key"));
    EXPECT_EQ("(none)", Find("Misc = {" + repeated(" Key"), "Misc", "Key"));
    EXPECT_EQ("(none)", Find("Misc = {" + repeated("Key "), "Misc", "Key"));
    EXPECT_EQ("(none)", Find("Misc = {" + repeated("Misc = {"), "Misc", "Key"));
    EXPECT_EQ("(none)", Find("Misc = {" + std::string(kCount, 'K'), "Misc", "KKKKKKKKKKKKKKKK"));
    EXPECT_EQ("V", Find("Misc = {" + blanks + "Key" + blanks + "=" + blanks + "V;", "Misc", "Key"));
    EXPECT_EQ(std::string(kCount, 'v'), Find("Misc={Key=" + std::string(kCount, 'v'), "Misc", "Key"));
}

TEST(EntryLookup, KeyOfSpacesTakesNoQuadraticTime) {
    std::string text = "Misc = {\n" + std::string(4 * kCount, ' ') + "x";
    EXPECT_EQ(nullptr, ckscribe::FindEntryValue(text.data(), "Misc", " "));
}

}  // namespace
