// Four operations change the file. Each case has the whole file before and after, byte for byte.

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "tests/config/configuration_test.h"

namespace {

using Store = WendrafilConfiguration;

struct EditCase {
    const char* name;
    std::string before;
    std::string after;
};

class EditTest : public ConfigurationTest, public testing::WithParamInterface<EditCase> {
protected:
    template <typename Edit>
    void ExpectEdit(Edit edit) {
        Write(GetParam().before);
        EXPECT_EQ(1, edit(store));
        EXPECT_EQ(GetParam().after, Text());
    }
};

std::string CaseName(const testing::TestParamInfo<EditCase>& info) { return info.param.name; }

// --- Setting ----------------------------------------------------------------------------------------------

class SetTest : public EditTest {};

TEST_P(SetTest, KeyInMiscIsSet_FileIsAsExpected) {
    ExpectEdit([](Store& store) { return store.SetConfigurationInfo("Misc", "Key", "new"); });
}

const EditCase kSets[] = {
    {"ReplacesTheEntry", "Misc = {\n   Key = old;\n}\n", "Misc = {\n   Key = new;\n}\n"},
    {"RewritesItsFormat", "Misc={\nKey=old\n}\n", "Misc={\n   Key = new;\n}\n"},
    {"TakesWhiteSpaceAroundTheKey", "Misc = {\n\t Key \t\r = old;\n}\n", "Misc = {\n   Key = new;\n}\n"},
    {"DropsWhatFollowsTheEntry", "Misc = {\n Key = old; Other = 1;\r\n}\n", "Misc = {\n   Key = new;\n}\n"},
    {"InsertsBeforeTheBrace", "Misc = {\n   A = 1;\n}\n", "Misc = {\n   A = 1;\n   Key = new;\n}\n"},
    {"InsertsIntoAnEmptySection", "Misc = {\n}\n", "Misc = {\n   Key = new;\n}\n"},
    {"InsertsBeforeALineWithABrace", "Misc = {\n   A = 1;}\n", "Misc = {\n   Key = new;\n   A = 1;}\n"},
    {"AppendsTheSection", "A = {\n}\n", "A = {\n}\nMisc = {\n   Key = new;\n}"},
    {"AppendsAfterALineThatHadNoEnd", "A = {\n}", "A = {\n}\nMisc = {\n   Key = new;\n}"},
    {"EndsTheLastLine", "Misc = {\n   Key = old;\n}", "Misc = {\n   Key = new;\n}\n"},
    {"KeepsEmptyLinesAndCarriageReturns", "\n\r\nMisc = {\r\n\n   Key = old;\r\n\r\n}\r\n\n",
     "\n\r\nMisc = {\r\n\n   Key = new;\n\r\n}\r\n\n"},
    {"KeepsOtherSections", "A = {\n   Key = 1;\n}\nMisc = {\n   Key = 2;\n}\nB = {\n\tKey = 3\n}\n",
     "A = {\n   Key = 1;\n}\nMisc = {\n   Key = new;\n}\nB = {\n\tKey = 3\n}\n"},
    {"ReplacesALongerKeyThatEndsWithIt", "Misc = {\n   MyKey = old;\n}\n", "Misc = {\n   Key = new;\n}\n"},
    {"KeepsALongerKeyThatBeginsWithIt", "Misc = {\n   Key2 = old;\n}\n",
     "Misc = {\n   Key2 = old;\n   Key = new;\n}\n"},
    {"KeepsAKeyWithAWordAfterIt", "Misc = {\n   Key 2 = old;\n}\n",
     "Misc = {\n   Key 2 = old;\n   Key = new;\n}\n"},
    {"LooksAtItsFirstOccurrenceOnly", "Misc = {\n   Key2 Key = old;\n}\n",
     "Misc = {\n   Key2 Key = old;\n   Key = new;\n}\n"},
    {"KeepsItInAValue", "Misc = {\n   A = the Key;\n}\n", "Misc = {\n   A = the Key;\n   Key = new;\n}\n"},
    {"TakesAValueThatLooksLikeAnEntry", "Misc = {\n   A = Key = 1;\n}\n", "Misc = {\n   Key = new;\n}\n"},
    {"ReplacesEveryEntry", "Misc = {\n   Key = 1;\n   A = 2;\n   Key = 3;\n}\n",
     "Misc = {\n   Key = new;\n   A = 2;\n   Key = new;\n}\n"},
    {"KeepsALineWithoutEquals", "Misc = {\n   Key old;\n}\n", "Misc = {\n   Key old;\n   Key = new;\n}\n"},
    {"TakesALineThatNamesTheSectionAndHasABrace",
     "A = {\n   B = Misc{;\n   Key = 1;\n}\nMisc = {\n   Key = 2;\n}\n",
     "A = {\n   B = Misc{;\n   Key = new;\n}\nMisc = {\n   Key = new;\n}\n"},
    {"TakesALongerSectionNameToo", "Misc2 = {\n   A = 1;\n}\nMisc = {\n   B = 2;\n}\n",
     "Misc2 = {\n   A = 1;\n   Key = new;\n}\nMisc = {\n   B = 2;\n   Key = new;\n}\n"},
    {"InsertsNowhereAfterItReplaced", "Misc = {\n   Key = 1;\n}\nMisc2 = {\n   B = 2;\n}\n",
     "Misc = {\n   Key = new;\n}\nMisc2 = {\n   B = 2;\n}\n"},
    {"DoesNotKnowAHeaderOnTwoLines", "Misc =\n{\n   Key = old;\n}\n",
     "Misc =\n{\n   Key = old;\n}\nMisc = {\n   Key = new;\n}"},
    {"BraceOfTheFirstLineIsNotSeen", "Misc = { A = 1; }\nB = {\n}\n",
     "Misc = { A = 1; }\nB = {\n   Key = new;\n}\n"},
    {"SectionThatIsNeverClosedGetsNothing", "Misc = {\n   A = 1;\n", "Misc = {\n   A = 1;\n"},
    {"SectionThatIsNeverClosedIsReplacedIn", "Misc = {\n   Key = 1;\n", "Misc = {\n   Key = new;\n"},
    {"KeepsBytesOfAnyValue", std::string("a\0b\x01\xFF\n", 6) + "Misc = {\n   Key = 1;\n}\n\0",
     std::string("a\0b\x01\xFF\n", 6) + "Misc = {\n   Key = new;\n}\n\0"},
};
INSTANTIATE_TEST_SUITE_P(, SetTest, testing::ValuesIn(kSets), CaseName);

class SetLimitTest : public ConfigurationTest {};

TEST_F(SetLimitTest, LongLinesOfTheFile_AreCutAt838Characters) {
    const std::string line = std::string(837, 'a') + "bcd";
    for (const size_t length : {837U, 838U, 839U, 840U}) {
        const std::string text = "Misc = {\n   Key = 1;\n}\n";
        Write(line.substr(0, length) + "\n" + text + line.substr(0, length));
        EXPECT_EQ(1, store.SetConfigurationInfo("Misc", "Key", "new"));
        const std::string kept = line.substr(0, std::min<size_t>(length, 838)) + "\n";
        EXPECT_EQ(kept + "Misc = {\n   Key = new;\n}\n" + kept, Text());
    }
}

TEST_F(SetLimitTest, KeyBehind838CharactersOfALine_IsNotSeen) {
    const std::string blanks(838 - 4, ' ');
    Write(blanks + "Misc = {\n   Key = 1;\n}\n");
    EXPECT_EQ(1, store.SetConfigurationInfo("Misc", "Key", "new"));
    EXPECT_EQ(blanks + "Misc\n   Key = 1;\n}\nMisc = {\n   Key = new;\n}", Text());
}

// "   Key = " and ";\n" are 11 characters of the 839 that a written line may have.
TEST_F(SetLimitTest, SetKey_LineOf839CharactersIsTheLongestThatIsWritten) {
    const std::string longest(828, 'v');
    const std::string before = "Misc = {\n   A = 1;\n   Key = old;\n}\nB = {\n}\n";
    Write(before);
    EXPECT_EQ(1, store.SetConfigurationInfo("Misc", "Key", longest.c_str()));
    EXPECT_EQ("Misc = {\n   A = 1;\n   Key = " + longest + ";\n}\nB = {\n}\n", Text());
    Write(before);
    EXPECT_EQ(0, store.SetConfigurationInfo("Misc", "Key", (longest + "v").c_str()));
    EXPECT_EQ("Misc = {\n   A = 1;\n}\nB = {\n}\n", Text()) << "the line is gone, the rest is written";
}

TEST_F(SetLimitTest, SetKey_InsertedLineThatIsTooLongIsLeftOut) {
    Write("Misc = {\n   A = 1;\n}\nB = {\n}\n");
    EXPECT_EQ(0, store.SetConfigurationInfo("Misc", "Key", std::string(829, 'v').c_str()));
    EXPECT_EQ("Misc = {\n   A = 1;\n}\nB = {\n}\n", Text());
}

TEST_F(SetLimitTest, SetKey_AppendedTextsThatAreTooLongAreLeftOut) {
    const std::string longest(827, 'v');  // "}" takes one more
    Write("B = {\n}\n");
    EXPECT_EQ(1, store.SetConfigurationInfo("Misc", "Key", longest.c_str()));
    EXPECT_EQ("B = {\n}\nMisc = {\n   Key = " + longest + ";\n}", Text());
    Write("B = {\n}\n");
    EXPECT_EQ(0, store.SetConfigurationInfo("Misc", "Key", (longest + "v").c_str()));
    EXPECT_EQ("B = {\n}\nMisc = {\n", Text());

    const std::string longestName(834, 's');  // " = {\n" takes five more
    Write("B = {\n}\n");
    EXPECT_EQ(1, store.SetConfigurationInfo(longestName.c_str(), "Key", "V"));
    EXPECT_EQ("B = {\n}\n" + longestName + " = {\n   Key = V;\n}", Text());
    Write("B = {\n}\n");
    EXPECT_EQ(0, store.SetConfigurationInfo((longestName + "s").c_str(), "Key", "V"));
    EXPECT_EQ("B = {\n}\n   Key = V;\n}", Text());
}

TEST_F(SetLimitTest, SetKey_EmptyNamesAndValuesAreWrittenLikeOthers) {
    Write("Misc = {\n   Key = old;\n}\n");
    EXPECT_EQ(1, store.SetConfigurationInfo("Misc", "Key", ""));
    EXPECT_EQ("Misc = {\n   Key = ;\n}\n", Text());
    EXPECT_EQ("", Lookup("Misc", "Key"));
    EXPECT_EQ(1, store.SetConfigurationInfo("Misc", "", "V"));
    EXPECT_EQ("Misc = {\n   Key = ;\n    = V;\n}\n", Text());
}

TEST_F(SetLimitTest, SetKey_PercentSignsAreOrdinaryCharacters) {
    Write("A = {\n}\n");
    EXPECT_EQ(1, store.SetConfigurationInfo("%s", "%n", "%d%s"));
    EXPECT_EQ("A = {\n}\n%s = {\n   %n = %d%s;\n}", Text());
    EXPECT_EQ("%d%s", Lookup("%s", "%n"));
}

// --- Clearing a key ---------------------------------------------------------------------------------------

class ClearKeyTest : public EditTest {};

TEST_P(ClearKeyTest, KeyOfMiscIsCleared_FileIsAsExpected) {
    ExpectEdit([](Store& store) { return store.ClearConfigurationInfo("Misc", "Key"); });
}

const EditCase kKeyClears[] = {
    {"DropsTheEntry", "Misc = {\n   A = 1;\n   Key = old;\n}\n", "Misc = {\n   A = 1;\n}\n"},
    {"DropsEveryLineWithTheKey",
     "Misc = {\n   Key = 1;\n   Key2 = 2;\n   MyKey = 3;\n   A = Key;\n   B = 4;\n}\n",
     "Misc = {\n   B = 4;\n}\n"},
    {"KeepsALineWithABrace", "Misc = {\n   Key = 1;}\n   Key = 2;\n",
     "Misc = {\n   Key = 1;}\n   Key = 2;\n"},
    {"KeepsTheFirstLine", "Misc = { Key = 1;\n   Key = 2;\n}\n", "Misc = { Key = 1;\n}\n"},
    {"KeepsOtherSections", "A = {\n   Key = 1;\n}\nMisc = {\n   Key = 2;\n}\nB = {\n   Key = 3;\n}\n",
     "A = {\n   Key = 1;\n}\nMisc = {\n}\nB = {\n   Key = 3;\n}\n"},
    {"KnowsAHeaderOnTwoLines", "Misc =\n{\n   Key = 1;\n}\n", "Misc =\n{\n}\n"},
    {"MentionOfTheSectionBeginsIt", "A = {\n   B = Misc;\n   Key = 1;\n}\nMisc = {\n   Key = 2;\n}\n",
     "A = {\n   B = Misc;\n}\nMisc = {\n}\n"},
    {"WithoutTheSectionNothingChanges", "A = {\n   Key = 1;\n}", "A = {\n   Key = 1;\n}\n"},
    {"WithoutTheKeyNothingChanges", "Misc = {\n   A = 1;\n}\n", "Misc = {\n   A = 1;\n}\n"},
    {"SectionThatIsNeverClosed", "Misc = {\n   Key = 1;\nA = 2\nKey", "Misc = {\nA = 2\n"},
};
INSTANTIATE_TEST_SUITE_P(, ClearKeyTest, testing::ValuesIn(kKeyClears), CaseName);

TEST_F(ConfigurationTest, ClearEntryOfANumberedKey_ClearsLongerKeysToo) {
    Write("OrmaSA Client = {\n   ServerName01 = a;\n   ServerName010 = b;\n   ServerName02 = c;\n}\n");
    EXPECT_EQ(1, store.ClearEntry("OrmaSA Client", "ServerName01", 0));
    EXPECT_EQ("OrmaSA Client = {\n   ServerName02 = c;\n}\n", Text());
}

// --- Clearing a section -----------------------------------------------------------------------------------

class ClearSectionTest : public EditTest {};

TEST_P(ClearSectionTest, SectionMiscIsCleared_FileIsAsExpected) {
    ExpectEdit([](Store& store) { return store.ClearConfigurationInfo("Misc"); });
}

const EditCase kSectionClears[] = {
    {"DropsTheSection", "A = {\n   B = 1;\n}\nMisc = {\n   Key = 1;\n}\nC = {\n}\n",
     "A = {\n   B = 1;\n}\nC = {\n}\n"},
    {"LeavesAnEmptyFile", "Misc = {\n   Key = 1;\n}\n", ""},
    {"EndsAtAnyLineWithABrace", "Misc = {\n   Key = a}b;\n   C = 1;\n}\n", "   C = 1;\n}\n"},
    {"BraceOfTheFirstLineIsNotSeen", "Misc = { A = 1; }\nB = {\n}\nC = {\n}\n", "C = {\n}\n"},
    {"LaterMentionIsDroppedToo", "Misc = {\n}\nA = {\n   B = Misc;\n   C = 1;\n}\nD = {\n}\n",
     "A = {\nD = {\n}\n"},
    {"LongerNameIsDroppedToo", "Misc2 = {\n   A = 1;\n}\nB = {\n}\n", "B = {\n}\n"},
    {"WithoutTheSectionNothingChanges", "A = {\n}", "A = {\n}\n"},
    {"SectionThatIsNeverClosed", "A = {\n}\nMisc = {\n   Key = 1;\n", "A = {\n}\n"},
};
INSTANTIATE_TEST_SUITE_P(, ClearSectionTest, testing::ValuesIn(kSectionClears), CaseName);

// --- Replacing a section ----------------------------------------------------------------------------------

class ReplaceTest : public EditTest {};

TEST_P(ReplaceTest, SectionMiscIsReplaced_FileIsAsExpected) {
    ExpectEdit(
        [](Store& store) { return store.ReplaceConfigurationInfo("Misc", "   A = 1;\n   B = 2;", 0); });
}

const EditCase kReplacements[] = {
    {"ReplacesTheLines", "X = {\n   Y = 1;\n}\nMisc = {\n   Key = 1;\n   Key2 = 2;\n}\nZ = {\n}\n",
     "X = {\n   Y = 1;\n}\nMisc = {\n   A = 1;\n   B = 2;\n}\nZ = {\n}\n"},
    {"FillsAnEmptySection", "Misc = {\n}", "Misc = {\n   A = 1;\n   B = 2;\n}\n"},
    {"KeepsALineWithABrace", "Misc = {\n   Key = 1;\n   Z = 3;}\n",
     "Misc = {\n   A = 1;\n   B = 2;\n   Z = 3;}\n"},
    {"AppendsTheSection", "X = {\n}", "X = {\n}\nMisc = {\n   A = 1;\n   B = 2;\n}"},
    {"MentionIsTakenForTheSection", "X = {\n   Y = Misc;\n   Z = 1;\n}\nMisc = {\n   Key = 1;\n}\n",
     "X = {\n   Y = Misc;\n   A = 1;\n   B = 2;\n}\nMisc = {\n   A = 1;\n   B = 2;\n}\n"},
    {"SectionThatIsNeverClosed", "Misc = {\n   Key = 1;\n", "Misc = {\n   A = 1;\n   B = 2;\n"},
};
INSTANTIATE_TEST_SUITE_P(, ReplaceTest, testing::ValuesIn(kReplacements), CaseName);

class ReplaceBodyTest : public ConfigurationTest {
protected:
    // Expects this body of a section that is replaced, and then of one that is appended.
    void ExpectBody(const std::string& body, const std::string& written) {
        Write("Misc = {\n   Key = 1;\n}\n");
        EXPECT_EQ(1, store.ReplaceConfigurationInfo("Misc", body.c_str(), 4711));
        EXPECT_EQ("Misc = {\n" + written + "\n}\n", Text());
        Write("A = {\n}\n");
        EXPECT_EQ(1, store.ReplaceConfigurationInfo("Misc", body.c_str(), -1));
        EXPECT_EQ("A = {\n}\nMisc = {\n" + written + "\n}", Text());
    }
};

TEST_F(ReplaceBodyTest, ReplaceSection_BodyIsBrokenAfterEvery512Characters) {
    std::string body;
    for (int i = 0; body.size() < 1100; ++i) body += std::to_string(i) + ",";
    body.resize(1100);
    ExpectBody("", "");
    ExpectBody("x", "x");
    ExpectBody(body.substr(0, 511), body.substr(0, 511));
    ExpectBody(body.substr(0, 512), body.substr(0, 512));
    ExpectBody(body.substr(0, 513), body.substr(0, 512) + "\n" + body.substr(512, 1));
    ExpectBody(body.substr(0, 1024), body.substr(0, 512) + "\n" + body.substr(512, 512));
    ExpectBody(body.substr(0, 1025),
               body.substr(0, 512) + "\n" + body.substr(512, 512) + "\n" + body.substr(1024, 1));
    ExpectBody(body, body.substr(0, 512) + "\n" + body.substr(512, 512) + "\n" + body.substr(1024));
    EXPECT_EQ(76U, body.substr(1024).size());
}

TEST_F(ReplaceBodyTest, ReplaceSection_HeaderThatIsTooLongIsLeftOut) {
    Write("A = {\n}\n");
    EXPECT_EQ(0, store.ReplaceConfigurationInfo(std::string(835, 's').c_str(), "x", 0));
    EXPECT_EQ("A = {\n}\nx\n}", Text());
}

// --- What all of them have in common ----------------------------------------------------------------------

struct CommonCase {
    const char* name;
    int (*edit)(Store&);
};

const CommonCase kEdits[] = {
    {"Set", [](Store& s) { return s.SetConfigurationInfo("Misc", "Key", "new"); }},
    {"SetEntry", [](Store& s) { return s.SetEntry("Misc", "Key", "new", 0); }},
    {"ClearKey", [](Store& s) { return s.ClearConfigurationInfo("Misc", "Key"); }},
    {"ClearEntry", [](Store& s) { return s.ClearEntry("Misc", "Key", 0); }},
    {"ClearWholeSection", [](Store& s) { return s.ClearConfigurationInfo("Misc"); }},
    {"ClearSection", [](Store& s) { return s.ClearSection("Misc", 0); }},
    {"Replace", [](Store& s) { return s.ReplaceConfigurationInfo("Misc", "x", 0); }},
};

class AnyEditTest : public ConfigurationTest, public testing::WithParamInterface<CommonCase> {
protected:
    int Edit() { return GetParam().edit(store); }
};

TEST_P(AnyEditTest, EveryEdit_ChangesTheFile) {
    Write(OneEntry("Misc", "Key", "old"));
    EXPECT_EQ(1, Edit());
    EXPECT_NE(OneEntry("Misc", "Key", "old"), Text());
}

TEST_P(AnyEditTest, StoreIsNotTheFile_EditFailsAndFileIsUntouched) {
    Write(OneEntry("Misc", "Key", "old"));
    for (const int type : {1, 2, -1}) {
        Store::SetLibraryType(type);
        EXPECT_EQ(0, Edit());
        EXPECT_EQ(OneEntry("Misc", "Key", "old"), Text());
    }
}

TEST_P(AnyEditTest, FileIsMissingOrEmpty_EditFails) {
    EXPECT_EQ(0, Edit());
    EXPECT_FALSE(std::filesystem::exists(path));
    Write("");
    EXPECT_EQ(0, Edit());
    EXPECT_EQ("", Text());
}

TEST_P(AnyEditTest, FileCannotBeWritten_EditFailsAndFileIsUntouched) {
    const bool isRoot = geteuid() == 0;
    ASSERT_EQ(0, isRoot ? seteuid(65534) : 0) << "nothing is forbidden to root";
    TemporaryDirectory own;
    const std::string file = own.File("Wendrafil.conf");
    std::ofstream(file) << OneEntry("Misc", "Key", "old");
    chmod(file.c_str(), 0400);
    TestStore readOnly(file);
    EXPECT_EQ(1, readOnly.TestR());
    EXPECT_EQ(0, readOnly.TestRW());
    EXPECT_EQ(0, GetParam().edit(readOnly));
    char value[8];
    EXPECT_EQ(1, readOnly.GetConfigurationInfo("Misc", "Key", value, sizeof value));
    EXPECT_STREQ("old", value);
    ASSERT_EQ(0, isRoot ? seteuid(0) : 0);
}

TEST_P(AnyEditTest, EveryEdit_KeepsThePermissionsOfTheFile) {
    Write(OneEntry("Misc", "Key", "old"));
    chmod(path.c_str(), 0640);
    EXPECT_EQ(1, Edit());
    struct stat status;
    ASSERT_EQ(0, stat(path.c_str(), &status));
    EXPECT_EQ(0640U, status.st_mode & 07777U);
}

TEST_P(AnyEditTest, FileIsALink_EditKeepsTheLink) {
    const std::string target = directory.File("target");
    std::ofstream(target) << OneEntry("Misc", "Key", "old");
    std::filesystem::create_symlink(target, path);
    EXPECT_EQ(1, Edit());
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_FALSE(std::filesystem::is_symlink(target));
}

INSTANTIATE_TEST_SUITE_P(, AnyEditTest, testing::ValuesIn(kEdits),
                         [](const auto& info) { return info.param.name; });

TEST_F(ConfigurationTest, ArgumentsAreNull_EditFailsAndFileIsUntouched) {
    const std::string text = "Misc = {\n   Key = old;\n}";
    Write(text);
    EXPECT_EQ(0, store.SetConfigurationInfo(nullptr, "Key", "V"));
    EXPECT_EQ(0, store.SetConfigurationInfo("Misc", nullptr, "V"));
    EXPECT_EQ(0, store.SetConfigurationInfo("Misc", "Key", nullptr));
    EXPECT_EQ(0, store.SetEntry(nullptr, "Key", "V", 0));
    EXPECT_EQ(0, store.ClearConfigurationInfo(nullptr, "Key"));
    EXPECT_EQ(0, store.ClearConfigurationInfo("Misc", nullptr));
    EXPECT_EQ(0, store.ClearEntry(nullptr, "Key", 0));
    EXPECT_EQ(0, store.ClearConfigurationInfo(nullptr));
    EXPECT_EQ(0, store.ClearSection(nullptr, 0));
    EXPECT_EQ(0, store.ReplaceConfigurationInfo(nullptr, "x", 0));
    EXPECT_EQ(0, store.ReplaceConfigurationInfo("Misc", nullptr, 0));
    EXPECT_EQ(text, Text());
}

TEST_F(ConfigurationTest, FileIsLarge_EditRewritesItWhole) {
    std::string text;
    for (int i = 0; text.size() < 3 << 20; ++i) text += "   Entry" + std::to_string(i) + " = x;\n";
    Write(text + "Misc = {\n}\n" + text);
    EXPECT_EQ(1, store.SetConfigurationInfo("Misc", "Key", "V"));
    EXPECT_TRUE(text + "Misc = {\n   Key = V;\n}\n" + text == Text());
}

}  // namespace
