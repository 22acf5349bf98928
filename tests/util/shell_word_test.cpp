#include "util/shell_word.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

std::string Word(const std::string& path) {
    std::string word(4 * path.size() + 5, 'x');
    EXPECT_TRUE(ckscribe::ShellWordFromPath(path.c_str(), word.data(), word.size()));
    return word.c_str();
}

// Returns the only argument that the shell makes of the word.
std::string Read(const std::string& word) {
    FILE* stream = popen(("for word in " + word + "; do printf '[%s]' \"$word\"; done").c_str(), "r");
    char text[256] = "";
    const size_t length = fread(text, 1, sizeof text - 1, stream);
    EXPECT_EQ(0, pclose(stream));
    return {text, length};
}

TEST(ShellWord, Path_IsQuoted) {
    EXPECT_EQ("'/a/b.pem'", Word("/a/b.pem"));
    EXPECT_EQ("''", Word(""));
    EXPECT_EQ("'a b'", Word("a b"));
    EXPECT_EQ("'a'\\''b'", Word("a'b"));
    EXPECT_EQ("''\\'''\\'''", Word("''"));
    EXPECT_EQ("'./-rf'", Word("-rf"));
    EXPECT_EQ("'./-'\\'''", Word("-'"));
    EXPECT_EQ("'a-b'", Word("a-b"));
}

TEST(ShellWord, Path_IsReadAsOneWordByTheShell) {
    for (const char* path :
         {"/a/b.pem", "",      " ",     "a  b ",     "a'b",      "'",        "''",  "\"",
          "\\",       "a\\",   "$HOME", "$(echo x)", "`echo x`", "a;b",      "a&b", "a|b",
          "a\nb",     "\n",    "*",     "?",         "[a]",      "~",        "#a",  "!a",
          "a\tb",     "{a,b}", "<a",    ">a",        "(a)",      "\xFF\x80", "%s",  "'; echo x; '"}) {
        EXPECT_EQ(std::string("[").append(path).append("]"), Read(Word(path)));
    }
    EXPECT_EQ("[./-rf]", Read(Word("-rf")));
    EXPECT_EQ("[./--]", Read(Word("--")));
}

TEST(ShellWord, WordIsTooLong_OnlyTheRoomIsWritten) {
    for (const char* path : {"", "ab", "'", "a'b", "-", "-a'"}) {
        const size_t needed = Word(path).size() + 1;
        for (size_t size = 0; size <= needed; ++size) {
            std::string word(needed + 1, 'x');
            EXPECT_EQ(size == needed, ckscribe::ShellWordFromPath(path, word.data(), size))
                << path << " in " << size;
            EXPECT_EQ(std::string(word.size() - size, 'x'), word.substr(size)) << path << " in " << size;
        }
    }
}

}  // namespace
