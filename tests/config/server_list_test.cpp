#include <cstring>
#include <string>

#include "tests/config/configuration_test.h"

namespace {

class ServerListTest : public ConfigurationTest {};

const char kClientList[] =
    "OrmaSA Server = {\n"
    "   ServerName00 = wrong;\n"
    "}\n"
    "OrmaSA Client = {\n"
    "   ServerName00 = alpha;\n"
    "   ServerPort00 = 1792;\n"
    "   ServerHtl00 = 1;\n"
    "   ServerName01 = beta;\n"
    "   ServerPort01 = 1793;\n"
    "   ServerHtl01 = 0;\n"
    "   ServerName03 = delta;\n"
    "}\n";

// Returns the file with one line in the place of another.
std::string Replaced(std::string text, const std::string& oldLine, const std::string& newLine) {
    const size_t position = text.find(oldLine);
    EXPECT_NE(std::string::npos, position) << oldLine;
    return text.replace(position, oldLine.size(), newLine);
}

TEST_F(ServerListTest, ListOfServers_EndsBeforeTheFirstMissingName) {
    Write(kClientList);
    char first[50] = "";
    char second[50] = "";
    char third[50] = "untouched";
    char* names[] = {first, second, third};
    int count = 4711;
    EXPECT_EQ(1, store.GetListOfServers(count, names, false));
    EXPECT_EQ(2, count);
    EXPECT_STREQ("alpha", first);
    EXPECT_STREQ("beta", second);
    EXPECT_STREQ("untouched", third);
    EXPECT_EQ(1, store.GetListOfServers(count, names, true));
    EXPECT_EQ(1, count);
    EXPECT_STREQ("wrong", first);
}

TEST_F(ServerListTest, ListOfServers_CountsNamesThatHaveNoPlace) {
    Write(kClientList);
    int count = 4711;
    EXPECT_EQ(1, store.GetListOfServers(count, nullptr, false));
    EXPECT_EQ(2, count);
    char second[50] = "";
    char* names[] = {nullptr, second};
    EXPECT_EQ(1, store.GetListOfServers(count, names, false));
    EXPECT_EQ(2, count);
    EXPECT_STREQ("beta", second);
}

TEST_F(ServerListTest, FirstNameIsMissing_ListOfServersIsEmpty) {
    Write("OrmaSA Client = {\n   ServerName01 = beta;\n}\n");
    int count = 4711;
    EXPECT_EQ(0, store.GetListOfServers(count, nullptr, false));
    EXPECT_EQ(0, count);
}

TEST_F(ServerListTest, ListOfServers_CountsEmptyNames) {
    Write("OrmaSA Client = {\n   ServerName00 = ;\n   ServerName01 = beta;\n}\n");
    int count = 4711;
    EXPECT_EQ(1, store.GetListOfServers(count, nullptr, false));
    EXPECT_EQ(2, count);
}

TEST_F(ServerListTest, ListOfServers_CutsNamesTo49Characters) {
    std::string name(48, 'n');
    // The name is not one expression, because g++ 12 would then warn of bounds that are kept.
    name += "abc";
    for (const size_t length : {49U, 50U, 51U}) {
        Write(OneEntry("OrmaSA Client", "ServerName00", name.substr(0, length)));
        char copy[51];
        std::memset(copy, 'x', sizeof copy);
        char* names[] = {copy};
        int count = 0;
        EXPECT_EQ(1, store.GetListOfServers(count, names, false));
        EXPECT_EQ(name.substr(0, 49), copy);
        EXPECT_EQ('x', copy[50]);
    }
}

TEST_F(ServerListTest, AddName_TakesTheFirstMissingIndex) {
    Write(kClientList);
    EXPECT_EQ(1, store.SetOrmaNetServerName("gamma", false));
    EXPECT_EQ(Replaced(kClientList, "   ServerName03 = delta;\n}\n",
                       "   ServerName03 = delta;\n   ServerName02 = gamma;\n}\n"),
              Text());
    EXPECT_EQ(1, store.SetOrmaNetServerName("next", true));
    EXPECT_EQ("next", Lookup("OrmaSA Server", "ServerName01"));
}

TEST_F(ServerListTest, AddName_TakesTheFirstEmptyPlace) {
    Write("OrmaSA Client = {\n   ServerName00 = a;\n   ServerName01 = ;\n   ServerName02 = ;\n}\n");
    EXPECT_EQ(1, store.SetOrmaNetServerName("b", false));
    EXPECT_EQ("OrmaSA Client = {\n   ServerName00 = a;\n   ServerName01 = b;\n   ServerName02 = ;\n}\n",
              Text());
}

TEST_F(ServerListTest, ListOfServersIsEmpty_FirstNameIsAdded) {
    Write("A = {\n}\n");
    EXPECT_EQ(1, store.SetOrmaNetServerName("a", true));
    EXPECT_EQ("A = {\n}\nOrmaSA Server = {\n   ServerName00 = a;\n}", Text());
}

TEST_F(ServerListTest, AddKnownName_WritesNothing) {
    const std::string text = "OrmaSA Client = {\n   ServerName00 = ;\n   ServerName01 = b;\n}\n";
    Write(text);
    EXPECT_EQ(2, store.SetOrmaNetServerName("b", false));
    EXPECT_EQ(2, store.SetOrmaNetServerName("", false)) << "an empty entry equals the empty name";
    EXPECT_EQ(text, Text());
}

TEST_F(ServerListTest, AddNameOf50Characters_IsNeverTakenForKnown) {
    const std::string name(50, 'n');
    Write(OneEntry("OrmaSA Client", "ServerName00", name));
    EXPECT_EQ(2, store.SetOrmaNetServerName(name.substr(0, 49).c_str(), false)) << "what is read of it";
    EXPECT_EQ(1, store.SetOrmaNetServerName(name.c_str(), false));
    EXPECT_EQ(3, store.DeleteOrmaNetServerPair(name.c_str(), false));
    EXPECT_EQ(-1, store.ReplaceOrmaNetServerName(name.c_str(), "b", 0, false));
}

TEST_F(ServerListTest, RenameServer_WorksForEveryIndex) {
    for (const int index : {0, 1, 5, -1}) {
        Write(kClientList);
        EXPECT_EQ(1, store.ReplaceOrmaNetServerName("beta", "gamma", index, false));
        EXPECT_EQ(Replaced(kClientList, "ServerName01 = beta;", "ServerName01 = gamma;"), Text());
    }
    Write(kClientList);
    EXPECT_EQ(1, store.ReplaceOrmaNetServerName("wrong", "right", 0, true));
    EXPECT_EQ(Replaced(kClientList, "ServerName00 = wrong;", "ServerName00 = right;"), Text());
}

TEST_F(ServerListTest, RenameUnknownServer_FailsAndWritesNothing) {
    Write(kClientList);
    EXPECT_EQ(-1, store.ReplaceOrmaNetServerName("gamma", "x", 0, false));
    EXPECT_EQ(-1, store.ReplaceOrmaNetServerName("delta", "x", 3, false)) << "behind the first missing index";
    EXPECT_EQ(-1, store.ReplaceOrmaNetServerName("alpha", "x", 0, true));
    EXPECT_EQ(kClientList, Text());
}

TEST_F(ServerListTest, DeleteServer_EmptiesItsEntries) {
    Write(kClientList);
    EXPECT_EQ(1, store.DeleteOrmaNetServerPair("alpha", false));
    EXPECT_EQ(
        "OrmaSA Server = {\n"
        "   ServerName00 = wrong;\n"
        "}\n"
        "OrmaSA Client = {\n"
        "   ServerName00 = ;\n"
        "   ServerPort00 = ;\n"
        "   ServerHtl00 = ;\n"
        "   ServerName01 = beta;\n"
        "   ServerPort01 = 1793;\n"
        "   ServerHtl01 = 0;\n"
        "   ServerName03 = delta;\n"
        "}\n",
        Text());
}

TEST_F(ServerListTest, DeleteServer_AddsEntriesThatAreMissing) {
    Write(kClientList);
    EXPECT_EQ(1, store.DeleteOrmaNetServerPair("wrong", true));
    EXPECT_EQ(Replaced(kClientList, "   ServerName00 = wrong;\n",
                       "   ServerName00 = ;\n   ServerPort00 = ;\n   ServerHtl00 = ;\n"),
              Text());
}

// The file of a FailingStore is missing at one of the accesses to it.
class FailingStore : public WendrafilConfiguration {
public:
    FailingStore(const std::string& path, int failingAccess) : ownPath(path), accessesLeft(failingAccess) {}
    const char* GetConfFileName() const override {
        return accessesLeft-- == 0 ? "/nonexistent" : ownPath.c_str();
    }

private:
    std::string ownPath;
    mutable int accessesLeft;
};

TEST_F(ServerListTest, DeleteServer_EndsAtTheFirstFailure) {
    const std::string text =
        "OrmaSA Client = {\n   ServerName00 = a;\n   ServerPort00 = 1;\n   ServerHtl00 = 1;\n}\n";
    const std::string withoutName = Replaced(text, "ServerName00 = a;", "ServerName00 = ;");
    const std::string withoutPort = Replaced(withoutName, "ServerPort00 = 1;", "ServerPort00 = ;");
    const std::string expected[] = {text, withoutName, withoutPort};
    for (int edits = 0; edits < 3; ++edits) {
        Write(text);
        FailingStore failing(path, 1 + edits);
        EXPECT_EQ(0, failing.DeleteOrmaNetServerPair("a", false));
        EXPECT_EQ(expected[edits], Text());
    }
}

TEST_F(ServerListTest, DeleteUnknownServer_FailsAndWritesNothing) {
    Write(kClientList);
    EXPECT_EQ(3, store.DeleteOrmaNetServerPair("gamma", false));
    EXPECT_EQ(3, store.DeleteOrmaNetServerPair("delta", false));
    EXPECT_EQ(kClientList, Text());
}

TEST_F(ServerListTest, AddPort_TakesTheFirstMissingIndex) {
    const int port = 1794;
    Write(kClientList);
    EXPECT_EQ(1, store.SetServerPort(&port, false));
    EXPECT_EQ(Replaced(kClientList, "   ServerName03 = delta;\n}\n",
                       "   ServerName03 = delta;\n   ServerPort02 = 1794;\n}\n"),
              Text());
}

TEST_F(ServerListTest, AddPort_TakesTheFirstEmptyPlaceForAKnownPortToo) {
    const int port = 1792;
    Write("OrmaSA Server = {\n   ServerPort00 = 1792;\n   ServerPort01 = ;\n   ServerPort02 = ;\n}\n");
    EXPECT_EQ(1, store.SetServerPort(&port, true));
    EXPECT_EQ("OrmaSA Server = {\n   ServerPort00 = 1792;\n   ServerPort01 = 1792;\n   ServerPort02 = ;\n}\n",
              Text());
}

TEST_F(ServerListTest, SetPort_WritesThePortOfItsIndex) {
    Write(kClientList);
    EXPECT_EQ(1, store.SetOrmaNetServerPort(1, 65535));
    EXPECT_EQ(Replaced(kClientList, "ServerPort01 = 1793;", "ServerPort01 = 65535;"), Text());
}

TEST_F(ServerListTest, SetHtlRequired_WritesItsEntry) {
    Write(kClientList);
    EXPECT_EQ(1, store.SetServerHtlRequired(1, false, 1));
    EXPECT_EQ(Replaced(kClientList, "ServerHtl01 = 0;", "ServerHtl01 = 1;"), Text());
    Write(kClientList);
    EXPECT_EQ(1, store.SetServerHtlRequired(2, false, 0));
    EXPECT_EQ(Replaced(kClientList, "ServerHtl00 = 1;", "ServerHtl00 = 0;"), Text());
    EXPECT_EQ(1, store.SetServerHtlRequired(0, false, 0));
    EXPECT_EQ(Replaced(kClientList, "ServerHtl00 = 1;", "ServerHtl00 = 0;"), Text());
}

TEST_F(ServerListTest, SetHtlRequired_TakesTheFirstFreeIndex) {
    Write(kClientList);
    EXPECT_EQ(1, store.SetServerHtlRequired(1, false, -1));
    EXPECT_EQ(Replaced(kClientList, "   ServerName03 = delta;\n}\n",
                       "   ServerName03 = delta;\n   ServerHtl02 = 1;\n}\n"),
              Text());
    Write("OrmaSA Server = {\n   ServerHtl00 = 0;\n   ServerHtl01 = ;\n   ServerHtl02 = ;\n}\n");
    EXPECT_EQ(1, store.SetServerHtlRequired(1, true, -7));
    EXPECT_EQ("OrmaSA Server = {\n   ServerHtl00 = 0;\n   ServerHtl01 = 1;\n   ServerHtl02 = ;\n}\n", Text());
}

}  // namespace
