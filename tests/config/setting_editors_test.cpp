// These tests have every editor that is one line over SetConfigurationInfo. They state its section, its key
// and its value by the whole file before and after. A new editor is one more row.

#include <string>

#include "tests/config/configuration_test.h"

namespace {

using Store = WendrafilConfiguration;

struct EditorRow {
    const char* name;
    const char* section;
    const char* key;
    const char* value;
    int (*edit)(Store&);
};

// clang-format off
#define EDITOR(name, call, section, key, value) \
    EditorRow{#name, section, key, value, [](Store& store) { return store.call; }}
// clang-format on

const EditorRow kEditors[] = {
    EDITOR(SetVirtualTokenLabel, SetVirtualTokenLabel(3, "a label", false), "VirtualToken",
           "VirtualToken03Label", "a label"),
    EDITOR(SetVirtualTokenLabelOfProxy, SetVirtualTokenLabel(123, "other", true), "VirtualProxyToken",
           "VirtualToken123Label", "other"),
    EDITOR(SetVirtualTokenSN, SetVirtualTokenSN(0, "0123", false), "VirtualToken", "VirtualToken00SN",
           "0123"),
    EDITOR(SetVirtualTokenSNOfProxy, SetVirtualTokenSN(7, "4567", true), "VirtualProxyToken",
           "VirtualToken07SN", "4567"),
    EDITOR(SetVirtualTokenSNFromNumber, SetVirtualTokenSN(8, 4294967295U, false), "VirtualToken",
           "VirtualToken08SN", "4294967295"),
    EDITOR(SetVirtualTokenSNFromNumberOfProxy, SetVirtualTokenSN(9, 12U, true), "VirtualProxyToken",
           "VirtualToken09SN", "12"),
    EDITOR(SetVirtualSessionObjectDisableSyncType, SetVirtualSessionObjectDisableSyncType(4, "all"),
           "VirtualProxyToken", "VirtualToken04SessionSynchsDisabled", "all"),
    EDITOR(SetVirtualTokenObjectDisableSyncType, SetVirtualTokenObjectDisableSyncType(5, "none"),
           "VirtualProxyToken", "VirtualToken05TokenSynchsDisabled", "none"),
    EDITOR(SetHALogfilemaxlen, SetHALogfilemaxlen(262145), "HAConfiguration", "logLen", "262145"),
    EDITOR(SetHALogfilemaxlenNegative, SetHALogfilemaxlen(-2147483647 - 1), "HAConfiguration", "logLen",
           "-2147483648"),
    EDITOR(SetHAAutoRecoverCount, SetHAAutoRecoverCount(500), "HAConfiguration", "reconnAtt", "500"),
    EDITOR(SetHAAutoRecoverCountOf5, SetHAAutoRecoverCount(12345), "HAConfiguration", "reconnAtt", "12345"),
    EDITOR(SetHAAutoRecoverCountOf6, SetHAAutoRecoverCount(123456), "HAConfiguration", "reconnAtt", "12345"),
    EDITOR(SetHAAutoRecoverCountNegative, SetHAAutoRecoverCount(-12345), "HAConfiguration", "reconnAtt",
           "-1234"),
    EDITOR(SetHALogpath, SetHALogpath("/var/log/ha"), "HAConfiguration", "haLogPath", "/var/log/ha"),
    EDITOR(SetHALogOn, SetHALog(true), "HAConfiguration", "haLogStatus", "enabled"),
    EDITOR(SetHALogOff, SetHALog(false), "HAConfiguration", "haLogStatus", "disabled"),
    EDITOR(SetHAProxyOn, SetHAProxy(true), "HAConfiguration", "haProxy", "enabled"),
    EDITOR(SetHAProxyOff, SetHAProxy(false), "HAConfiguration", "haProxy", "disabled"),
    EDITOR(HASynchronizeEnable, HASynchronizeEnable("AnyKey"), "HASynchronize", "AnyKey", "1"),
    EDITOR(HASynchronizeDisable, HASynchronizeDisable("AnyKey"), "HASynchronize", "AnyKey", "0"),
    EDITOR(HAOnlyEnable, HAOnlyEnable(), "HAConfiguration", "HAOnly", "1"),
    EDITOR(HAOnlyDisable, HAOnlyDisable(), "HAConfiguration", "HAOnly", "0"),
    EDITOR(SetClientCAFile, SetClientCAFile("/ca"), "OrmaSA Server", "ClientCAFile", "/ca"),
    EDITOR(SetClientPrivKeyFile, SetClientPrivKeyFile("/key"), "OrmaSA Client", "ClientPrivKeyFile", "/key"),
    EDITOR(SetClientCertFile, SetClientCertFile("/cert"), "OrmaSA Client", "ClientCertFile", "/cert"),
    EDITOR(DeleteClientPrivKeyFile, DeleteClientPrivKeyFile(), "OrmaSA Client", "ClientPrivKeyFile", ""),
    EDITOR(DeleteClientCertFile, DeleteClientCertFile(), "OrmaSA Client", "ClientCertFile", ""),
    EDITOR(SetServerPrivKeyFile, SetServerPrivKeyFile("/skey"), "OrmaSA Server", "ServerPrivKeyFile",
           "/skey"),
    EDITOR(SetServerCertFile, SetServerCertFile("/scert"), "OrmaSA Server", "ServerCertFile", "/scert"),
    EDITOR(SetOrmaNetHostName, SetOrmaNetHostName("host"), "OrmaSA Server", "HostName", "host"),
    EDITOR(SetOrmaNetServerPort, SetOrmaNetServerPort(2, 1792), "OrmaSA Client", "ServerPort02", "1792"),
    EDITOR(SetServerHtlRequired, SetServerHtlRequired(1, true, 6), "OrmaSA Server", "ServerHtl06", "1"),
    EDITOR(SetEnablerLogFileName, SetEnablerLogFileName("/log"), "Misc", "LogFile", "/log"),
    EDITOR(SetEntrustSWInstall, SetEntrustSWInstall(-3), "Misc", "EntrustSWInstall", "-3"),
    EDITOR(SetHSMSlot, SetHSMSlot(11), "RemotePed", "HSMSlot", "11"),
    EDITOR(SetPEDId, SetPEDId(65534), "Orma", "PEDId", "65534"),
};

class EditorTest : public ConfigurationTest, public testing::WithParamInterface<EditorRow> {
protected:
    void ExpectEdit(const std::string& before, const std::string& after) {
        Write(before);
        EXPECT_EQ(1, GetParam().edit(store));
        EXPECT_EQ(after, Text());
    }
    std::string Header() const { return std::string(GetParam().section) + " = {\n"; }
    std::string Line(const std::string& value) const {
        return std::string("   ") + GetParam().key + " = " + value + ";\n";
    }
    std::string Line() const { return Line(GetParam().value); }
    std::string Decoy() const { return OneEntry("Decoy", GetParam().key, "9"); }
};

TEST_P(EditorTest, SectionIsMissing_EditorAppendsIt) {
    ExpectEdit(Decoy(), Decoy() + Header() + Line() + "}");
}

TEST_P(EditorTest, EntryIsMissing_EditorInsertsIt) {
    ExpectEdit(Decoy() + Header() + "   Other = 1;\n}\nLast = {\n}\n",
               Decoy() + Header() + "   Other = 1;\n" + Line() + "}\nLast = {\n}\n");
}

TEST_P(EditorTest, EntryIsThere_EditorReplacesIt) {
    ExpectEdit(Decoy() + Header() + "   Other = 1;\n" + Line("8") + "}\nLast = {\n" + Line("7") + "}\n",
               Decoy() + Header() + "   Other = 1;\n" + Line() + "}\nLast = {\n" + Line("7") + "}\n");
}

TEST_P(EditorTest, FileIsMissing_EditorReturns0) {
    EXPECT_EQ(0, GetParam().edit(store)) << "there is no file";
}

INSTANTIATE_TEST_SUITE_P(, EditorTest, testing::ValuesIn(kEditors),
                         [](const auto& info) { return info.param.name; });

class EditorRulesTest : public ConfigurationTest {};

TEST_F(EditorRulesTest, ClientCAFileGoesToTheServerSection) {
    Store::SetServerSection("Net2");
    Write(OneEntry("OrmaSA Server", "ClientCAFile", "old"));
    EXPECT_EQ(1, store.SetClientCAFile("/ca"));
    EXPECT_EQ(OneEntry("OrmaSA Server", "ClientCAFile", "old") + "Net2 = {\n   ClientCAFile = /ca;\n}",
              Text());
}

// A line of the appended section has room for one character less than a line of a section that is there.
TEST_F(EditorRulesTest, ClientCAFileGoesToOrmaSAServerWhenTheServerSectionFails) {
    Store::SetServerSection("Net2");
    const std::string path839 = std::string(839 - std::string("   ClientCAFile = ;\n").size(), 'p');
    Write(OneEntry("OrmaSA Server", "ClientCAFile", "old"));
    EXPECT_EQ(1, store.SetClientCAFile(path839.c_str()));
    EXPECT_EQ(OneEntry("OrmaSA Server", "ClientCAFile", path839) + "Net2 = {\n", Text());
}

TEST_F(EditorRulesTest, UpHARecoveryAddsOne) {
    Write("A = {\n}\n");
    EXPECT_EQ(1, store.UpHARecovery("AnyKey"));
    EXPECT_EQ("A = {\n}\nHARecovery = {\n   AnyKey = 1;\n}", Text());
    EXPECT_EQ(1, store.UpHARecovery("AnyKey"));
    EXPECT_EQ("A = {\n}\nHARecovery = {\n   AnyKey = 2;\n}\n", Text());
    Write(OneEntry("HARecovery", "AnyKey", "-1"));
    EXPECT_EQ(1, store.UpHARecovery("AnyKey"));
    EXPECT_EQ(OneEntry("HARecovery", "AnyKey", "0"), Text());
    Write(OneEntry("HARecovery", "AnyKey", "2147483647"));
    EXPECT_EQ(1, store.UpHARecovery("AnyKey"));
    EXPECT_EQ(OneEntry("HARecovery", "AnyKey", "-2147483648"), Text());
}

TEST_F(EditorRulesTest, SendTimeoutIsInsertedBeforeTheBrace) {
    Write("OrmaSA Client = {\n   ReceiveTimeout = 20000;\n}\n");
    EXPECT_EQ(1, store.SetEntry("OrmaSA Client", "SendTimeout", "5000", 0));
    EXPECT_EQ("OrmaSA Client = {\n   ReceiveTimeout = 20000;\n   SendTimeout = 5000;\n}\n", Text());
    EXPECT_EQ(5000, store.GetOrmaNetSendTimeout());
}

}  // namespace
