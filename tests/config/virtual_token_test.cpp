#include <string>

#include "tests/config/configuration_test.h"

namespace {

class VirtualTokenTest : public ConfigurationTest {
protected:
    // Returns the section with one token, index 1, whose members are `members`.
    static std::string Token(const std::string& section, const std::string& members) {
        return section + " = {\n   VirtualToken01Label = one;\n   VirtualToken01Members = " + members +
               ";\n}\n";
    }
    void ExpectMembers(const std::string& members) { EXPECT_EQ(Token("VirtualToken", members), Text()); }
};

TEST_F(VirtualTokenTest, AddMember_AppendsItToTheList) {
    Write("VirtualToken = {\n   VirtualToken01Label = one;\n}\nVirtualProxyToken = {\n}\n");
    EXPECT_EQ(1, store.AddVirtualTokenMember(1, "111", false));
    EXPECT_EQ(1, store.AddVirtualTokenMember(1, "222", false));
    EXPECT_EQ(Token("VirtualToken", "111,222") + "VirtualProxyToken = {\n}\n", Text());
}

TEST_F(VirtualTokenTest, AddMemberOfAProxyToken_AppendsItToTheList) {
    Write(Token("VirtualToken", "1") + Token("VirtualProxyToken", "2"));
    EXPECT_EQ(1, store.AddVirtualTokenMember(1, "3", true));
    EXPECT_EQ(Token("VirtualToken", "1") + Token("VirtualProxyToken", "2,3"), Text());
}

TEST_F(VirtualTokenTest, AddMember_WritesACommaAfterAnEmptyList) {
    Write(Token("VirtualToken", ""));
    EXPECT_EQ(1, store.AddVirtualTokenMember(1, "111", false));
    ExpectMembers(",111");
}

TEST_F(VirtualTokenTest, LabelIsMissing_NoMemberIsAdded) {
    const std::string text =
        "VirtualToken = {\n   VirtualToken02Label = two;\n   VirtualToken01Members = 1;\n}\n";
    Write(text);
    EXPECT_EQ(0, store.AddVirtualTokenMember(1, "111", false));
    EXPECT_EQ(0, store.AddVirtualTokenMember(2, "111", true));
    EXPECT_EQ(text, Text());
}

// "   VirtualToken01Members = " and ";\n" take 29 of the 839 characters that a written line may have.
TEST_F(VirtualTokenTest, AddMember_SucceedsWhileTheLineHasRoom) {
    const std::string list(800, '1');
    Write(Token("VirtualToken", list));
    EXPECT_EQ(1, store.AddVirtualTokenMember(1, "222222222", false));
    ExpectMembers(list + ",222222222");
    Write(Token("VirtualToken", list));
    EXPECT_EQ(0, store.AddVirtualTokenMember(1, "2222222222", false));
    EXPECT_EQ("VirtualToken = {\n   VirtualToken01Label = one;\n}\n", Text()) << "the line is left out";
}

TEST_F(VirtualTokenTest, LineWouldExceed840Characters_NoMemberIsAdded) {
    const std::string list(800, '1');
    Write(Token("VirtualToken", list));
    EXPECT_EQ(0, store.AddVirtualTokenMember(1, std::string(41, '2').c_str(), false));
    ExpectMembers(list);
    EXPECT_EQ(0, store.AddVirtualTokenMember(1, std::string(5000, '2').c_str(), false));
    ExpectMembers(list);
    EXPECT_EQ(0, store.AddVirtualTokenMember(1, std::string(40, '2').c_str(), false));
    EXPECT_EQ("VirtualToken = {\n   VirtualToken01Label = one;\n}\n", Text());
}

struct RemoveCase {
    const char* before;
    const char* serial;
    const char* after;
};

TEST_F(VirtualTokenTest, RemoveMember_TakesItOffTheList) {
    const RemoveCase cases[] = {
        {"111,222,333", "222", "111,333"},
        {"111,222,333", "111", "222,333"},
        {"111,222,333", "333", "111,222"},
        {"111,222,333", "444", "111,222,333"},
        {"111,222,111", "111", "222"},
        {"111", "111", ""},
        {"111,111", "111", ""},
        {"111,1112", "111", "1112"},
        {"1 1 1 , 2 2 2", "111", "222"},
        {"111, 222", "333", "111,222"},
        {",111,222", "222", ",111"},
        {"111,,222", "222", "111,"},
        {"111,,222", "", "111,222"},
    };
    for (const RemoveCase& c : cases) {
        Write(Token("VirtualToken", c.before));
        EXPECT_EQ(1, store.RemoveVirtualTokenMember(1, c.serial, false)) << c.before;
        ExpectMembers(c.after);
    }
}

TEST_F(VirtualTokenTest, RemoveMemberOfAProxyToken_TakesItOffTheList) {
    Write(Token("VirtualToken", "1,2") + Token("VirtualProxyToken", "1,2"));
    EXPECT_EQ(1, store.RemoveVirtualTokenMember(1, "1", true));
    EXPECT_EQ(Token("VirtualToken", "1,2") + Token("VirtualProxyToken", "2"), Text());
}

TEST_F(VirtualTokenTest, ListIsEmptyOrMissing_NoMemberIsRemoved) {
    for (const std::string& text : {Token("VirtualToken", ""), Token("VirtualProxyToken", "111")}) {
        Write(text);
        EXPECT_EQ(0, store.RemoveVirtualTokenMember(1, "111", false));
        EXPECT_EQ(text, Text());
    }
}

// The list is read into 840 characters. What is written of the list fits into a line only if members were
// removed.
TEST_F(VirtualTokenTest, RemoveMember_WorksOnTheLongestList) {
    const std::string list = std::string(400, '1') + "," + std::string(438, '2');
    Write(Token("VirtualToken", list + "3"));
    EXPECT_EQ(1, store.RemoveVirtualTokenMember(1, std::string(438, '2').c_str(), false));
    EXPECT_EQ(std::string(400, '1').substr(0, 63), Lookup("VirtualToken", "VirtualToken01Members"));
    Write("VirtualToken = {\n VirtualToken01Members=" + std::string(839, ',') + "\n}\n");
    EXPECT_EQ(0, store.RemoveVirtualTokenMember(1, "x", false));
}

// --- Deleting ---------------------------------------------------------------------------------------------

const char kTokens[] =
    "Before = {\n"
    "   A = 1;\n"
    "}\n"
    "VirtualToken = {\n"
    "   VirtualToken02SN = 1002;\n"
    "   VirtualToken00Label = zero;\n"
    "   VirtualToken00SN = 1000;\n"
    "   VirtualToken00Members = 1,2;\n"
    "   VirtualToken01Label = one;\n"
    "   VirtualToken01SN = 1001;\n"
    "   VirtualToken01Members = 3;\n"
    "   VirtualToken01SessionSynchsDisabled = s1;\n"
    "   VirtualToken02TokenSynchsDisabled=t2;\n"
    "   VirtualToken02SessionSynchsDisabled = s2;\n"
    "   VirtualToken02Members = ;\n"
    "   VirtualToken99Label = last;\n"
    "}\n"
    "After = {\n"
    "   VirtualToken00Label = elsewhere;\n"
    "}\n";

const char kTokensWithoutTheSecond[] =
    "Before = {\n"
    "   A = 1;\n"
    "}\n"
    "VirtualToken = {\n"
    "   VirtualToken00Label = zero;\n"
    "   VirtualToken00SN = 1000;\n"
    "   VirtualToken00Members = 1,2;\n"
    "   VirtualToken02SN = 1002;\n"
    "   VirtualToken02Members = ;\n"
    "   VirtualToken02SessionSynchsDisabled = s2;\n"
    "   VirtualToken02TokenSynchsDisabled = t2;\n"
    "   VirtualToken99Label = last;\n"
    "}\n"
    "After = {\n"
    "   VirtualToken00Label = elsewhere;\n"
    "}\n";

TEST_F(VirtualTokenTest, DeletingToken_KeepsTheOthersUnderTheirIndices) {
    Write(kTokens);
    EXPECT_EQ(1, store.DeleteVirtualToken(1, false));
    EXPECT_EQ(kTokensWithoutTheSecond, Text());
}

TEST_F(VirtualTokenTest, DeletingMissingToken_KeepsAllOthers) {
    Write(kTokensWithoutTheSecond);
    for (const int index : {1, 50, 100, -1}) {
        EXPECT_EQ(1, store.DeleteVirtualToken(index, false));
        EXPECT_EQ(kTokensWithoutTheSecond, Text());
    }
}

TEST_F(VirtualTokenTest, DeletingTheOnlyToken_LeavesTheSection) {
    Write("VirtualToken = {\n   VirtualToken05SN = 5;\n}\n");
    EXPECT_EQ(1, store.DeleteVirtualToken(5, false));
    EXPECT_EQ("VirtualToken = {\n}\n", Text());
}

TEST_F(VirtualTokenTest, DeletingToken_TouchesOnlyTheChosenSection) {
    const std::string proxies =
        "VirtualProxyToken = {\n   VirtualToken00Label = p0;\n   VirtualToken01Label = p1;\n}\n";
    const std::string tokens =
        "VirtualToken = {\n   VirtualToken00Label = v0;\n   VirtualToken01Label = v1;\n}\n";
    Write(proxies + tokens + proxies);
    EXPECT_EQ(1, store.DeleteVirtualToken(0, false));
    EXPECT_EQ(proxies + "VirtualToken = {\n   VirtualToken01Label = v1;\n}\n" + proxies, Text());
    Write(tokens + proxies);
    EXPECT_EQ(1, store.DeleteVirtualToken(1, true));
    EXPECT_EQ(tokens + "VirtualProxyToken = {\n   VirtualToken00Label = p0;\n}\n", Text());
}

TEST_F(VirtualTokenTest, SectionHoldsNoToken_DeletingFails) {
    for (const char* text :
         {"A = {\n}", "VirtualToken = {\n   Other = 1;\n}", "VirtualToken =\n{\n VirtualToken00SN = 1;\n}"}) {
        Write(text);
        EXPECT_EQ(0, store.DeleteVirtualToken(1, false));
        EXPECT_EQ(text, Text());
    }
}

TEST_F(VirtualTokenTest, DeletingToken_KeepsEntriesWholeHoweverManyThereAre) {
    std::string kept;
    for (int i = 10; i < 60; ++i) {
        kept += "   VirtualToken" + std::to_string(i) + "Members = " + std::string(500, '1') + ";\n";
    }
    Write("VirtualToken = {\n   VirtualToken05SN = 5;\n" + kept + "}\n");
    EXPECT_EQ(1, store.DeleteVirtualToken(5, false));
    EXPECT_EQ("VirtualToken = {\n" + kept + "}\n", Text());
}

TEST_F(VirtualTokenTest, DeletingToken_KeepsTheReadPartOfLongEntries) {
    const std::string v = std::string(900, 'v');
    Write("VirtualToken = {\n VirtualToken01Label=" + v + "\n VirtualToken01SN=" + v +
          "\n VirtualToken01Members=" + v + "\n VirtualToken02Label = two;\n}\n");
    EXPECT_EQ(1, store.DeleteVirtualToken(2, false));
    const std::string longest = "   VirtualToken01Members = " + v;
    EXPECT_EQ("VirtualToken = {\n   VirtualToken01Label = " + v.substr(0, 62) +
                  ";\n   VirtualToken01SN = " + v.substr(0, 62) + ";\n" + longest.substr(0, 838) + "\n}\n",
              Text());
}

TEST_F(VirtualTokenTest, DeletingToken_ReadsEntriesAsFarAsItsBuffersReach) {
    const auto section = [](const std::string& text, const std::string& list) {
        return "VirtualToken = {\n   VirtualToken01Label = " + text + ";\n   VirtualToken01SN = " + text +
               ";\n   VirtualToken01Members = " + list + ";\n}\n";
    };
    const std::string text = std::string(61, 't') + "abc";
    // "   VirtualToken01Members = " and ";" take 28 of the 838 characters of a line.
    const std::string list(810, '1');
    for (const size_t length : {61U, 62U, 63U, 64U}) {
        Write(section(text.substr(0, length), list));
        EXPECT_EQ(1, store.DeleteVirtualToken(2, false));
        EXPECT_EQ(section(text.substr(0, std::min<size_t>(length, 62)), list), Text());
    }
}

TEST_F(VirtualTokenTest, StoreIsNotTheFile_NoTokenIsEdited) {
    Write(kTokens);
    WendrafilConfiguration::SetLibraryType(1);
    EXPECT_EQ(0, store.DeleteVirtualToken(1, false));
    EXPECT_EQ(0, store.AddVirtualTokenMember(1, "1", false));
    EXPECT_EQ(0, store.RemoveVirtualTokenMember(1, "3", false));
    EXPECT_EQ(kTokens, Text());
}

}  // namespace
