#include <stdlib.h>
#include <sys/stat.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/config/configuration_test.h"

namespace {

namespace fs = std::filesystem;

struct Cluster {
    std::string name;
    std::string memberFile;
    std::string timeout;
    std::string interval;
};

// Returns the file of the clusters "Cluster01" and so forth. Each value of a Cluster is one of the four
// entries; "-" stands for a missing entry.
std::string Clusters(const std::vector<Cluster>& clusters) {
    std::string text;
    int number = 0;
    for (const Cluster& cluster : clusters) {
        text += "Cluster0" + std::to_string(++number) + " = {\n";
        const auto add = [&text](const char* key, const std::string& value) {
            if (value != "-") text.append("   ").append(key).append(" = ").append(value).append(";\n");
        };
        add("ClusterName", cluster.name);
        add("ClusterMemberFile", cluster.memberFile);
        add("ClusterReceiveTimeout", cluster.timeout);
        add("ClusterRecoverInterval", cluster.interval);
        text += "}\n";
    }
    return text;
}

class ClusterTest : public ConfigurationTest {
protected:
    // Returns the text that a call prints if it returns `result`.
    template <typename Call>
    std::string Printed(int result, Call call) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(result, call());
        return testing::internal::GetCapturedStdout();
    }
    std::string PrintedTimeout(int result, const std::string& argument) {
        return Printed(result, [&] { return CallWith(argument, &Store::GetOrmaNetClusterReceiveTimeout); });
    }
    std::string PrintedInterval(int result, const std::string& argument) {
        return Printed(result, [&] { return CallWith(argument, &Store::GetOrmaNetClusterRecoverInterval); });
    }

    using Store = WendrafilConfiguration;

private:
    int CallWith(std::string argument, int (Store::*get)(int&, char**) const) {
        char program[] = "program";
        char* args[] = {program, argument.data(), nullptr};
        int value = 4711;
        const int result = (store.*get)(value, args);
        EXPECT_EQ(4711, value);
        return result;
    }
};

TEST_F(ClusterTest, MemberFileIsAskedFor_OnlyTheFirstTwoClustersAreFound) {
    Write(Clusters({{"one", "/1", "-", "-"}, {"two", "/2", "-", "-"}, {"three", "/3", "-", "-"}}));
    char out[1024] = "untouched";
    EXPECT_EQ(1, store.GetClusterMemberFile("one", out));
    EXPECT_STREQ("/1", out);
    EXPECT_EQ(1, store.GetClusterMemberFile("two", out));
    EXPECT_STREQ("/2", out);
    EXPECT_EQ(0, store.GetClusterMemberFile("three", out)) << "the third is not looked at";
    EXPECT_EQ(0, store.GetClusterMemberFile("on", out));
    EXPECT_EQ(0, store.GetClusterMemberFile("One", out));
    EXPECT_STREQ("/2", out);
}

TEST_F(ClusterTest, FirstClusterIsMissing_MemberFileOfTheSecondIsFound) {
    Write("Cluster02 = {\n ClusterName = two;\n ClusterMemberFile = /2;\n}\n");
    char out[1024] = "untouched";
    EXPECT_EQ(1, store.GetClusterMemberFile("two", out));
    EXPECT_STREQ("/2", out);
}

TEST_F(ClusterTest, MemberFileIsMissing_PathIsEmpty) {
    Write(Clusters({{"one", "-", "-", "-"}}));
    char out[1024] = "overwritten";
    EXPECT_EQ(1, store.GetClusterMemberFile("one", out));
    EXPECT_STREQ("", out);
}

TEST_F(ClusterTest, PathAndNameOfAMemberFile_AreCutTo1023Characters) {
    const std::string text = std::string(1022, 't') + "abc";
    for (const size_t length : {1023U, 1024U, 1025U}) {
        Write(Clusters({{text.substr(0, length), text.substr(0, length), "-", "-"}}));
        char out[1025];
        std::memset(out, 'x', sizeof out);
        EXPECT_EQ(1, store.GetClusterMemberFile(text.substr(0, 1023).c_str(), out));
        EXPECT_EQ(text.substr(0, 1023), out);
        EXPECT_EQ('x', out[1024]);
        EXPECT_EQ(0, store.GetClusterMemberFile(text.substr(0, 1024).c_str(), out));
    }
}

TEST_F(ClusterTest, ListOfClusters_HoldsTheNamesThatAreNotEmpty) {
    Write(Clusters({{"one", "-", "-", "-"}, {"", "-", "-", "-"}, {"three", "-", "-", "-"}}) +
          "Cluster05 = {\n ClusterName = five;\n}\n");
    char first[50] = "";
    char second[50] = "";
    char third[50] = "untouched";
    char* names[] = {first, second, third};
    int count = 4711;
    EXPECT_EQ(1, store.GetListOfClusters(count, names));
    EXPECT_EQ(2, count);
    EXPECT_STREQ("one", first);
    EXPECT_STREQ("three", second);
    EXPECT_STREQ("untouched", third);
}

TEST_F(ClusterTest, ListOfClustersIsEmpty_ResultSaysWhy) {
    int count = 4711;
    Write(Clusters({{"", "-", "-", "-"}, {"", "-", "-", "-"}}) +
          OneEntry("OrmaSA Client", "ClientCertFile", "/c"));
    EXPECT_EQ(0, store.GetListOfClusters(count, nullptr));
    EXPECT_EQ(0, count);
    Write(Clusters({{"-", "/1", "-", "-"}, {"two", "-", "-", "-"}}));
    count = 4711;
    EXPECT_EQ(2, store.GetListOfClusters(count, nullptr));
    EXPECT_EQ(0, count);
    Write(OneEntry("OrmaSA Client", "ClientCertFile", "/c"));
    count = 4711;
    EXPECT_EQ(3, store.GetListOfClusters(count, nullptr));
    EXPECT_EQ(0, count);
}

TEST_F(ClusterTest, ListOfClusters_CutsNamesTo49Characters) {
    const std::string name = std::string(48, 'n') + "abc";
    for (const size_t length : {49U, 50U, 51U}) {
        Write(Clusters({{name.substr(0, length), "-", "-", "-"}}));
        char copy[51];
        std::memset(copy, 'x', sizeof copy);
        char* names[] = {copy};
        int count = 0;
        EXPECT_EQ(1, store.GetListOfClusters(count, names));
        EXPECT_EQ(name.substr(0, 49), copy);
        EXPECT_EQ('x', copy[50]);
    }
}

// --- Times ------------------------------------------------------------------------------------------------

const std::vector<Cluster> kTimes = {{"one", "-", "1000", "60"},     {"", "-", "2000", "70"},
                                     {"three", "-", "##", "##none"}, {"four", "-", "-", "-"},
                                     {"five", "-", "12345", "#"},    {"six", "-", "", "123456"}};

TEST_F(ClusterTest, ReceiveTimeoutOfACluster_IsPrinted) {
    Write(Clusters(kTimes));
    EXPECT_EQ("Cluster name:one. \tReceive Timeout:1000.\n", PrintedTimeout(1, "one"));
    EXPECT_EQ("Cluster name:three. \tReceive Timeout:None Set.\n", PrintedTimeout(1, "three"));
    EXPECT_EQ("Cluster name:four. \tReceive Timeout:None Set.\n", PrintedTimeout(1, "four"));
    EXPECT_EQ("Cluster name:five. \tReceive Timeout:1234.\n", PrintedTimeout(1, "five"));
    EXPECT_EQ("Cluster name:six. \tReceive Timeout:.\n", PrintedTimeout(1, "six"));
}

TEST_F(ClusterTest, RecoveryIntervalOfACluster_IsPrinted) {
    Write(Clusters(kTimes));
    EXPECT_EQ("Cluster name:one. \tRecovery Interval:60.\n", PrintedInterval(1, "one"));
    EXPECT_EQ("Cluster name:three. \tRecovery Interval:None Set.\n", PrintedInterval(1, "three"));
    EXPECT_EQ("Cluster name:four. \tRecovery Interval:None Set.\n", PrintedInterval(1, "four"));
    EXPECT_EQ("Cluster name:five. \tRecovery Interval:#.\n", PrintedInterval(1, "five"));
    EXPECT_EQ("Cluster name:six. \tRecovery Interval:1234.\n", PrintedInterval(1, "six"));
}

TEST_F(ClusterTest, UnknownCluster_IsPrintedAsNotFound) {
    Write(Clusters(kTimes));
    for (const char* name : {"two", "on", "onee", "ALLCLUSTERTIMEOUT", ""}) {
        EXPECT_EQ("Cluster entry not found.\n", PrintedTimeout(-1, name));
    }
    for (const char* name : {"two", "ALLCLUSTERTIMEOUTS", "ALLCLUSTERINTERVAL", ""}) {
        EXPECT_EQ("Cluster entry not found.\n", PrintedInterval(-1, name));
    }
}

TEST_F(ClusterTest, AllReceiveTimeouts_ArePrinted) {
    Write(Clusters(kTimes));
    const char kAll[] =
        "Printing all cluster receive timeouts:\n"
        "========================================\n"
        "Cluster name:one. \tReceive Timeout:1000.\n"
        "Cluster name:three. \tReceive Timeout:None Set.\n"
        "Cluster name:four. \tReceive Timeout:None Set.\n"
        "Cluster name:five. \tReceive Timeout:1234.\n"
        "Cluster name:six. \tReceive Timeout:.\n";
    EXPECT_EQ(kAll, PrintedTimeout(1, "ALLCLUSTERTIMEOUTS"));
    EXPECT_EQ(kAll, PrintedTimeout(1, "ALLCLUSTERTIMEOUTSandmore"));
}

TEST_F(ClusterTest, AllRecoveryIntervals_ArePrinted) {
    Write(Clusters(kTimes));
    const char kAll[] =
        "Printing all cluster recovery intervals:\n"
        "========================================\n"
        "Cluster name:one. \tRecovery Interval:60.\n"
        "Cluster name:three. \tRecovery Interval:None Set.\n"
        "Cluster name:four. \tRecovery Interval:None Set.\n"
        "Cluster name:five. \tRecovery Interval:#.\n"
        "Cluster name:six. \tRecovery Interval:1234.\n";
    EXPECT_EQ(kAll, PrintedInterval(1, "ALLCLUSTERINTERVALS"));
    EXPECT_EQ(kAll, PrintedInterval(1, "ALLCLUSTERINTERVALS!"));
}

TEST_F(ClusterTest, ClustersAreMissing_OnlyATitleIsPrinted) {
    Write("A = {\n}\n");
    EXPECT_EQ("Printing all cluster receive timeouts:\n========================================\n",
              PrintedTimeout(1, "ALLCLUSTERTIMEOUTS"));
}

TEST_F(ClusterTest, NameOfMoreThan39Characters_IsNotFound) {
    const std::string name(40, 'n');
    for (const size_t length : {39U, 40U}) {
        Write(Clusters({{name.substr(0, length), "-", "5", "-"}}));
        EXPECT_EQ("Cluster name:" + name.substr(0, 39) + ". \tReceive Timeout:5.\n",
                  PrintedTimeout(1, name.substr(0, 39)));
        EXPECT_EQ("Cluster entry not found.\n", PrintedTimeout(-1, name));
        EXPECT_EQ("Cluster name:" + name.substr(0, 39) + ". \tReceive Timeout:5.\n",
                  PrintedTimeout(1, "ALLCLUSTERTIMEOUTS").substr(80));
    }
}

TEST_F(ClusterTest, SetTimes_WritesThemToTheClustersSection) {
    Write(Clusters({{"one", "-", "1", "2"}, {"two", "-", "-", "4"}, {"three", "-", "5", "-"}}));
    EXPECT_EQ("", Printed(1, [this] { return store.SetOrmaNetClusterReceiveTimeout("two", 777); }));
    EXPECT_EQ("", Printed(1, [this] { return store.SetOrmaNetClusterRecoverInterval("one", -8); }));
    EXPECT_EQ(
        "Cluster01 = {\n   ClusterName = one;\n   ClusterReceiveTimeout = 1;\n   ClusterRecoverInterval = "
        "-8;\n}\n"
        "Cluster02 = {\n   ClusterName = two;\n   ClusterRecoverInterval = 4;\n   ClusterReceiveTimeout = "
        "777;\n}\n"
        "Cluster03 = {\n   ClusterName = three;\n   ClusterReceiveTimeout = 5;\n}\n",
        Text());
}

TEST_F(ClusterTest, TimesOfAnUnknownClusterAreSet_EditFailsAndWritesNothing) {
    const std::string text = Clusters({{"one", "-", "1", "2"}});
    Write(text);
    EXPECT_EQ("Cluster entry not found.\n",
              Printed(-1, [this] { return store.SetOrmaNetClusterReceiveTimeout("two", 7); }));
    EXPECT_EQ("Cluster entry not found.\n",
              Printed(-1, [this] { return store.SetOrmaNetClusterRecoverInterval("On", 7); }));
    EXPECT_EQ(text, Text());
}

// --- Adding and deleting ----------------------------------------------------------------------------------

TEST_F(ClusterTest, AddCluster_TakesTheFirstMissingNumber) {
    const std::string text = Clusters({{"one", "/1", "-", "-"}});
    Write(text);
    EXPECT_EQ(1, store.SetOrmaNetClusterName("two", "/2"));
    EXPECT_EQ(text + "Cluster02 = {\n   ClusterMemberFile = /2;\n   ClusterName = two;\n}\n", Text());
}

TEST_F(ClusterTest, AddCluster_TakesTheFirstEmptyPlace) {
    Write(Clusters({{"one", "/1", "-", "-"}, {"", "", "9", "-"}, {"", "", "-", "-"}}));
    EXPECT_EQ(1, store.SetOrmaNetClusterName("two", "/2"));
    EXPECT_EQ(Clusters({{"one", "/1", "-", "-"}, {"two", "/2", "9", "-"}, {"", "", "-", "-"}}), Text());
}

TEST_F(ClusterTest, AddCluster_NeedsNoMemberFile) {
    for (const char* none : {"", static_cast<const char*>(nullptr)}) {
        Write("A = {\n}\n");
        EXPECT_EQ(1, store.SetOrmaNetClusterName("one", none));
        EXPECT_EQ("A = {\n}\nCluster01 = {\n   ClusterName = one;\n}", Text());
    }
}

TEST_F(ClusterTest, KnownCluster_IsNotAdded) {
    const std::string text = Clusters({{"", "-", "-", "-"}, {"two", "/2", "-", "-"}});
    Write(text);
    EXPECT_EQ(2, store.SetOrmaNetClusterName("two", "/3"));
    EXPECT_EQ(text, Text());
}

TEST_F(ClusterTest, AddCluster_ResultIsThatOfWritingTheName) {
    const std::string tooLong(840, 'x');
    Write(Clusters({{"", "old", "-", "-"}}));
    EXPECT_EQ(1, store.SetOrmaNetClusterName("one", tooLong.c_str()));
    EXPECT_EQ(Clusters({{"one", "-", "-", "-"}}), Text());
    Write(Clusters({{"", "old", "-", "-"}}));
    EXPECT_EQ(0, store.SetOrmaNetClusterName(tooLong.c_str(), "/1"));
    EXPECT_EQ(Clusters({{"-", "/1", "-", "-"}}), Text());
}

class DeleteClusterTest : public ClusterTest {
protected:
    // A path of a member file has at most 79 characters. The test therefore works in the directory of its
    // files.
    DeleteClusterTest() {
        fs::current_path(directory.Path());
        fs::create_directories("cert/client");
        fs::create_directories("cert/server");
    }
    ~DeleteClusterTest() override { fs::current_path("/"); }

    static void Create(const std::string& name) { std::ofstream(name) << "x"; }

    void WriteClusters(const std::vector<Cluster>& clusters) {
        Write(Clusters(clusters) +
              OneEntry("OrmaSA Client", "ClientCertFile", directory.File("cert/client/host.pem")));
    }
};

TEST_F(DeleteClusterTest, DeleteCluster_EmptiesTheEntriesAndDeletesTheFiles) {
    WriteClusters({{"one", "one.members", "-", "-"}, {"two", "two.members", "3", "4"}});
    for (const char* file :
         {"one.members", "two.members", "cert/server/oneCert.pem", "cert/server/twoCert.pem"}) {
        Create(file);
    }
    EXPECT_EQ("", Printed(1, [this] { return store.DeleteOrmaNetClusterPair("two"); }));
    EXPECT_EQ(Clusters({{"one", "one.members", "-", "-"}, {"", "", "3", "4"}}) +
                  OneEntry("OrmaSA Client", "ClientCertFile", directory.File("cert/client/host.pem")),
              Text());
    EXPECT_TRUE(fs::exists("one.members"));
    EXPECT_TRUE(fs::exists("cert/server/oneCert.pem"));
    EXPECT_FALSE(fs::exists("two.members"));
    EXPECT_FALSE(fs::exists("cert/server/twoCert.pem"));
}

TEST_F(DeleteClusterTest, DeleteCluster_PrintsWhichFilesAreMissing) {
    WriteClusters({{"one", "one.members", "-", "-"}});
    EXPECT_EQ("The file one.members doesn't exist...\nThe file " + directory.File("cert/server/oneCert.pem") +
                  " doesn't exist...\n",
              Printed(1, [this] { return store.DeleteOrmaNetClusterPair("one"); }));
}

TEST_F(DeleteClusterTest, MemberFileIsNotConfigured_DeleteCallsItMissing) {
    WriteClusters({{"one", "one.members", "-", "-"}, {"two", "-", "-", "-"}});
    Create("one.members");
    Create("cert/server/twoCert.pem");
    EXPECT_EQ("The file  doesn't exist...\n",
              Printed(1, [this] { return store.DeleteOrmaNetClusterPair("two"); }));
    EXPECT_TRUE(fs::exists("one.members"));
    EXPECT_FALSE(fs::exists("cert/server/twoCert.pem"));
    EXPECT_EQ("", Lookup("Cluster02", "ClusterMemberFile"));
}

TEST_F(DeleteClusterTest, DeletingAnUnknownCluster_ChangesNothing) {
    WriteClusters({{"one", "one.members", "-", "-"}});
    const std::string text = Text();
    EXPECT_EQ("The requested cluster: two doesn't exist in the Velmora-INC configuration file.\n",
              Printed(1, [this] { return store.DeleteOrmaNetClusterPair("two"); }));
    EXPECT_EQ(text, Text());
}

TEST_F(DeleteClusterTest, ClientCertificateIsNotConfigured_DeleteFails) {
    Write(Clusters({{"one", "one.members", "-", "-"}}));
    Create("one.members");
    EXPECT_EQ("Unable to access the Velmora-INC configuration file.\n",
              Printed(0, [this] { return store.DeleteOrmaNetClusterPair("one"); }));
    EXPECT_EQ(Clusters({{"", "", "-", "-"}}), Text());
    EXPECT_TRUE(fs::exists("one.members"));
}

TEST_F(DeleteClusterTest, ClientCertificateHasAShortDirectory_DeleteDropsTheDirectory) {
    Write(Clusters({{"one", "-", "-", "-"}}) + OneEntry("OrmaSA Client", "ClientCertFile", "/short/x.pem"));
    Create("cert/server/oneCert.pem");
    EXPECT_EQ("The file  doesn't exist...\n",
              Printed(1, [this] { return store.DeleteOrmaNetClusterPair("one"); }));
    EXPECT_FALSE(fs::exists("cert/server/oneCert.pem"));
}

TEST_F(DeleteClusterTest, PathOfMemberFileIsLong_DeleteReads79Characters) {
    const std::string name = std::string(78, 'm') + "abc";
    for (const size_t length : {78U, 79U, 80U, 81U}) {
        WriteClusters({{"one", name.substr(0, length), "-", "-"}});
        Create("cert/server/oneCert.pem");
        Create(name.substr(0, length));
        EXPECT_EQ(length < 80 ? "" : "The file " + name.substr(0, 79) + " doesn't exist...\n",
                  Printed(1, [this] { return store.DeleteOrmaNetClusterPair("one"); }));
        EXPECT_EQ(length >= 80, fs::exists(name.substr(0, length)));
    }
}

TEST_F(DeleteClusterTest, NameOfAClusterHas40Characters_DeleteChangesNothing) {
    const std::string name(40, 'n');
    WriteClusters({{name, "one.members", "-", "-"}});
    EXPECT_EQ("The requested cluster: " + name + " doesn't exist in the Velmora-INC configuration file.\n",
              Printed(1, [&] { return store.DeleteOrmaNetClusterPair(name.c_str()); }));
    EXPECT_EQ(2, store.SetOrmaNetClusterName(name.substr(0, 39).c_str(), "")) << "what is read of it";
    EXPECT_EQ(1, store.SetOrmaNetClusterName(name.c_str(), ""));
    EXPECT_EQ(name, Lookup("Cluster02", "ClusterName"));
}

// A value of the configuration never runs as a command, and is neither an option nor several files.
TEST_F(DeleteClusterTest, ClusterHasAHostileName_DeleteTakesItForAFileNameOnly) {
    Create("keep");
    for (const char* name : {"a b",         "a'b",          "'",
                             "''",          "a\"b",         "$(touch ran)",
                             "`touch ran`", "a&touch ran&", "a|touch ran",
                             "-rf",         "--",           "-i keep",
                             "keep*",       "?eep",         "~",
                             "\\",          "a\\'b",        "#x",
                             "a\tb",        "$HOME",        "!x",
                             "<keep",       ">keep",        "{keep,k",
                             "[k]eep",      "(x)",          "'$(touch ran)'",
                             "\xFF\x80",    "a%sb"}) {
        WriteClusters({{"one", name, "-", "-"}, {name, "-", "-", "-"}});
        Create(name);
        EXPECT_EQ("The file " + directory.File("cert/server/oneCert.pem") + " doesn't exist...\n",
                  Printed(1, [this] { return store.DeleteOrmaNetClusterPair("one"); }))
            << name;
        EXPECT_FALSE(fs::exists(name)) << name;

        const std::string certificate = "cert/server/" + std::string(name) + "Cert.pem";
        Create(certificate);
        EXPECT_EQ("The file  doesn't exist...\n",
                  Printed(1, [&] { return store.DeleteOrmaNetClusterPair(name); }))
            << name;
        EXPECT_FALSE(fs::exists(certificate)) << name;
        EXPECT_TRUE(fs::exists("keep")) << name;
        EXPECT_FALSE(fs::exists("ran")) << name;
    }
}

// A program that takes the place of rm writes down the command.
TEST_F(DeleteClusterTest, DeleteCluster_RunsRmForEachFile) {
    fs::create_directory("bin");
    std::ofstream("bin/rm")
        << "#!/bin/sh\nfor word; do printf '[%s]' \"$word\"; done >> seen\necho >> seen\n";
    fs::permissions("bin/rm", fs::perms::owner_all);
    const std::string oldPath = getenv("PATH");
    setenv("PATH", (directory.File("bin") + ":" + oldPath).c_str(), 1);
    WriteClusters({{"one", "-a 'b'; c", "-", "-"}});
    Create("-a 'b'");
    Create("cert/server/oneCert.pem");
    EXPECT_EQ(1, store.DeleteOrmaNetClusterPair("one"));
    setenv("PATH", oldPath.c_str(), 1);
    EXPECT_EQ("[--force][./-a 'b']\n[--force][" + directory.File("cert/server/oneCert.pem") + "]\n",
              FileText("seen"));
}

}  // namespace
