#include "util/json_writer.h"

#include <gtest/gtest.h>

#include <string>

namespace {

template <class Write>
std::string Written(const Write& write) {
    ckscribe::TextBuffer out;
    ckscribe::JsonWriter json(out);
    write(json);
    return std::string(out.Text());
}

std::string TextOf(std::string_view text) {
    return Written([text](ckscribe::JsonWriter& json) { json.Text(text); });
}

std::string NumberOf(unsigned long number) {
    return Written([number](ckscribe::JsonWriter& json) { json.Number(number); });
}

}  // namespace

TEST(JsonWriter, ValuesAreSeparatedByCommas) {
    EXPECT_EQ(R"({"a":1,"b":[true,"x",{"c":"00ff"},[]],"d":{}})", Written([](ckscribe::JsonWriter& json) {
                  json.BeginObject();
                  json.Key("a");
                  json.Number(1);
                  json.Key("b");
                  json.BeginArray();
                  json.Boolean(true);
                  json.Constant("x");
                  json.BeginObject();
                  json.Key("c");
                  json.Hex("\x00\xFF", 2);
                  json.EndObject();
                  json.BeginArray();
                  json.EndArray();
                  json.EndArray();
                  json.Key("d");
                  json.BeginObject();
                  json.EndObject();
                  json.EndObject();
              }));
}

TEST(JsonWriter, ValuesThatAreWrittenAlreadyCountAsValues) {
    EXPECT_EQ("[1,2,3]", Written([](ckscribe::JsonWriter& json) {
                  json.BeginArray();
                  json.Written(std::string_view("1,2"));
                  json.Number(3);
                  json.EndArray();
              }));
    EXPECT_EQ("[0,1,2,3]", Written([](ckscribe::JsonWriter& json) {
                  json.BeginArray();
                  json.Number(0);
                  json.Written(std::string_view("1,"), std::string_view("2"));
                  json.Number(3);
                  json.EndArray();
              }));
}

TEST(JsonWriter, NumbersAbove2To53AreStrings) {
    EXPECT_EQ("0", NumberOf(0));
    EXPECT_EQ("9007199254740992", NumberOf(1UL << 53));
    EXPECT_EQ("\"9007199254740993\"", NumberOf((1UL << 53) + 1));
    EXPECT_EQ("\"18446744073709551615\"", NumberOf(~0UL));
}

TEST(JsonWriter, QuotesBackslashesAndControlCharactersAreEscaped) {
    EXPECT_EQ(R"("a\"b\\c/d")", TextOf(R"(a"b\c/d)"));
    EXPECT_EQ(R"("\u000a\u0000\u001f\u007f\u0080\u009f")",
              TextOf(std::string_view("\n\0\x1F\x7F\xC2\x80\xC2\x9F", 8)));
    EXPECT_EQ("\"\xC2\xA0\"", TextOf("\xC2\xA0"));
}

TEST(JsonWriter, SeparatorsOfLinesAndParagraphsAreEscaped) {
    EXPECT_EQ("\"\xE2\x80\xA7\\u2028\\u2029\xE2\x80\xAA\"",
              TextOf("\xE2\x80\xA7\xE2\x80\xA8\xE2\x80\xA9\xE2\x80\xAA"));
}

TEST(JsonWriter, BytesThatAreNoCharacterBecomeTheReplacementCharacter) {
    EXPECT_EQ("\"a\xEF\xBF\xBDz\"", TextOf("a\xFFz"));
    EXPECT_EQ("\"\xEF\xBF\xBD\xEF\xBF\xBD\"", TextOf("\xC0\xAF"));
    EXPECT_EQ("\"\xEF\xBF\xBD\"", TextOf("\xE2"));
}

TEST(ReadableText, IsReadableText_AcceptsUtf8WithoutControlCharactersOnly) {
    for (const char* text :
         {"", "abc", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x94\x91", "\xEF\xBF\xBF", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(ckscribe::IsReadableText(text)) << text;
    for (const char* text :
         {"\n", "a\tb", "\x7F", "\xC2\x80", "\x80", "\xC3", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80",
          "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xE2\x82x"})
        EXPECT_FALSE(ckscribe::IsReadableText(text)) << text;
}
