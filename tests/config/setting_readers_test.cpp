// These tests have every accessor that is one line over a reader. They state its section, its key, its
// default, where its buffer ends, and what it makes of a value. A new setting is one more row.

#include <cstring>
#include <string>
#include <vector>

#include "tests/config/configuration_test.h"

namespace {

using Store = WendrafilConfiguration;

// Returns a file whose other sections hold the same key with other values, before and after the section that
// a test is about.
std::string AmongOthers(const std::string& section, const std::string& key, const std::string& value) {
    return OneEntry("Decoy", key, "901") + OneEntry(section, key, value) + OneEntry("Lure", key, "902");
}

std::string Zeros(size_t count) { return std::string(count, '0'); }

template <typename Row>
std::string RowName(const testing::TestParamInfo<Row>& info) {
    return info.param.name;
}

// --- Numbers ----------------------------------------------------------------------------------------------

struct NumberRow {
    const char* name;
    const char* section;
    const char* key;
    size_t size;  // of the buffer into which the value is read
    int missing;
    int (*read)(const Store&);
};

// clang-format off
#define NUMBER(accessor, section, key, size, missing) \
    NumberRow{#accessor, section, key, size, missing, [](const Store& store) { return static_cast<int>(store.accessor()); }}
#define NUMBER_OF(name, call, section, key, size, missing) \
    NumberRow{#name, section, key, size, missing, [](const Store& store) { return store.call; }}
// clang-format on

const NumberRow kNumbers[] = {
    NUMBER(IsPre1863RSAKeyGenRemapEnabled, "Misc", "RSAPre1863KeyGenMechRemap", 200, 0),
    NUMBER(IsRSANonFIPSKeyGenRemapEnabled, "Misc", "RSAKeyGenMechRemap", 200, 0),
    NUMBER(OrmaCommandTimeOutKeyPairGenValue, "Orma", "KeypairGenTimeOut", 200, 0),
    NUMBER(OrmaCommandTimeOutFirmwareUpdate, "Orma", "FirmwareUpdateCommandTimeOut", 200, 0),
    NUMBER(OrmaCommandTimeOutCloning, "Orma", "CloningCommandTimeOut", 200, 0),
    NUMBER(OrmaCommandTimeOutPedSet, "Orma", "CommandTimeOutPedSet", 200, 0),
    NUMBER(GetFunctionBindLevel, "Misc", "FunctionBindLevel", 8, 0),
    NUMBER(UseQuorvanthBranding, "Misc", "UseQuorvanthBranding", 200, 0),
    NUMBER_OF(GetHARecovery, GetHARecovery("AnyKey"), "HARecovery", "AnyKey", 32, 0),
    NUMBER(GetNTLSTCPKeepAlive, "OrmaSA Server", "TCPKeepAlive", 32, 0),
    NUMBER(GetClientTCPKeepAlive, "OrmaSA Client", "TCPKeepAlive", 32, 0),
    NUMBER(GetClientKeepAlive, "OrmaSA Client", "ClientKeepAlive", 32, 0),
    NUMBER(GetSmmIsEnabled, "SSM", "Enabled", 64, 0),
    NUMBER_OF(GetHASynchronize, GetHASynchronize("AnyKey"), "HASynchronize", "AnyKey", 32, -1),
    NUMBER_OF(IsHAOnlyForProxy, IsHAOnly(true), "ProxyConfiguration", "HAOnly", 200, 0),
    NUMBER_OF(IsHAOnly, IsHAOnly(false), "HAConfiguration", "HAOnly", 200, 0),
    NUMBER(HADisableContainerHandleLookup, "HAConfiguration", "HADisableContainerHandleLookup", 200, 0),
    NUMBER(IsClient, "OrmaSA Client", "NetClient", 200, 0),
    NUMBER(RequiredClientAuth, "OrmaSA Server", "ClientAuth", 200, 0),
    NUMBER(IsServerKeyEncrypted, "OrmaSA Server", "EncryptedKey", 200, 0),
    NUMBER(IsServer, "OrmaSA Server", "NetServer", 200, 0),
    NUMBER(GetOrmaNetSendTimeout, "OrmaSA Client", "SendTimeout", 200, 10000),
    NUMBER(GetOrmaNetReceiveTimeout, "OrmaSA Client", "ReceiveTimeout", 200, 20000),
    NUMBER(OrmaDefaultTimeOut, "Orma", "DefaultTimeOut", 200, 10000),
    NUMBER(IsPE1746Enabled, "Misc", "PE1746Enabled", 200, 1),
    NUMBER(IsUseFW4Activation, "Misc", "UseFW4Activation", 200, 1),
    NUMBER(GetSignVerifyAccumulatorSize, "Misc", "SignVerifyAccumulatorSize", 80, -1),
    NUMBER(IsLoadBalancingEnabled, "LBLib2", "Enabled", 200, 0),
    NUMBER(IsSignalHandlerEnabled, "Session", "SignalHandlerEnabled", 200, 0),
    NUMBER(IsAutoCleanUpDisabled, "Session", "AutoCleanUpDisabled", 200, 0),
    NUMBER(UseIncorrectChar2ParameterEncoding, "Misc", "UseIncorrectChar2ParameterEncoding", 200, 0),
    NUMBER(IsApache, "Misc", "Apache", 200, 0),
    NUMBER(IsClearUserZeroizeAllowed, "Misc", "ClearUserZeroizeAllowed", 200, 0),
    NUMBER(GetGcmDecCompatibilityMode, "Misc", "GcmDecCompatibility", 80, 0),
    NUMBER(GetGcmEncCompatibilityMode, "Misc", "GcmEncCompatibility", 80, 0),
    NUMBER(GetNetscapeKludgeSetting, "Misc", "NetscapeCustomize", 80, 0),
    NUMBER(IsEntrustSWInstall, "Misc", "EntrustSWInstall", 200, 0),
    NUMBER(RemoveCASTfive, "Misc", "DisableCAST5", 200, 0),
    NUMBER(IsOrmaRSS, "Misc", "OrmaRSS", 200, 0),
    NUMBER(IsEntrustMgr, "Misc", "EntrustMgr4", 200, 0),
    NUMBER(IsUseEntrustDatabase, "Misc", "EntrustSoftwareKeyStorage", 200, 0),
    NUMBER(IsArgusDriverUsed, "Misc", "ArgusDriver", 200, 0),
    NUMBER(IsEntrust3_0Used, "Misc", "Entrust3_0", 200, 0),
    NUMBER(RSAGenSleepValue, "Orma", "RSAGenSleepValue", 200, 0),
    NUMBER(OrmaSlotCount, "Orma", "SlotCount", 200, 0),
    NUMBER(IsBufferedCommandSet, "Orma", "BufferedCommand", 200, 0),
    NUMBER(CardReaderDurnelCount, "CardReader", "DurnelCount", 200, 0),
    NUMBER(IsRemoteCommandPreferred, "CardReader", "RemoteCommand", 200, 0),
    NUMBER(GetOrmaAuxLibraryCount, "AuxLibrary", "AuxLibCount", 32, 0),
    NUMBER_OF(GetOrmaAuxLibraryType, GetOrmaAuxLibraryType(7), "AuxLibrary", "AuxLibType7", 32, 0),
    NUMBER(HSMSlot, "RemotePed", "HSMSlot", 200, 0),
};

class NumberTest : public ConfigurationTest, public testing::WithParamInterface<NumberRow> {
protected:
    int Read(const std::string& value) {
        Write(AmongOthers(GetParam().section, GetParam().key, value));
        return GetParam().read(store);
    }
};

TEST_P(NumberTest, KeyIsMissing_ResultIsTheDefault) {
    Write(AmongOthers(GetParam().section, "Unknown", "903"));
    EXPECT_EQ(GetParam().missing, GetParam().read(store));
    Write(OneEntry("Decoy", GetParam().key, "904"));
    EXPECT_EQ(GetParam().missing, GetParam().read(store));
}

TEST_P(NumberTest, KeyIsThere_ResultIsTheNumberThatAtoiReads) {
    EXPECT_EQ(73, Read("73"));
    EXPECT_EQ(-73, Read("-73"));
    EXPECT_EQ(12, Read("12abc"));
    EXPECT_EQ(0, Read("abc"));
    EXPECT_EQ(0, Read(""));
}

TEST_P(NumberTest, ValueIsLong_NumberEndsWithTheBuffer) {
    const size_t size = GetParam().size;
    EXPECT_EQ(7, Read(Zeros(size - 2) + "7")) << "size - 1 characters";
    EXPECT_EQ(1, Read(Zeros(size - 2) + "12")) << "size characters, the last one cut";
    EXPECT_EQ(1, Read(Zeros(size - 2) + "123")) << "size + 1 characters, the last two cut";
}

INSTANTIATE_TEST_SUITE_P(, NumberTest, testing::ValuesIn(kNumbers), RowName<NumberRow>);

TEST_F(ConfigurationTest, IsOneBaseSlotId_IsTrueForAnyNumberButZero) {
    const auto read = [this](const std::string& value) {
        Write(AmongOthers("Presentation", "OneBaseSlotId", value));
        return store.IsOneBaseSlotId();
    };
    Write(AmongOthers("Presentation", "Unknown", "1"));
    EXPECT_FALSE(store.IsOneBaseSlotId());
    EXPECT_FALSE(read("0"));
    EXPECT_FALSE(read("yes"));
    EXPECT_TRUE(read("1"));
    EXPECT_TRUE(read("2"));
    EXPECT_TRUE(read("-1"));
    EXPECT_TRUE(read("3x"));
    EXPECT_TRUE(read(Zeros(198) + "1"));
    EXPECT_FALSE(read(Zeros(199) + "1"));
    EXPECT_FALSE(read(Zeros(200) + "1"));
}

// --- Numbers of the server section ------------------------------------------------------------------------

struct ServerNumberRow {
    const char* name;
    const char* key;
    int missing;
    int (*read)(const Store&);
};

// clang-format off
#define SERVER_NUMBER(accessor, key, missing) \
    ServerNumberRow{#accessor, key, missing, [](const Store& store) { return store.accessor(); }}
// clang-format on

const ServerNumberRow kServerNumbers[] = {
    SERVER_NUMBER(GetAttackTimeout, "AttackTimeout", 10),
    SERVER_NUMBER(GetServerThreadCount, "NTLSThreads", 1),
    SERVER_NUMBER(RequiredClientAuth, "ClientAuth", 0),
    SERVER_NUMBER(IsServerKeyEncrypted, "EncryptedKey", 0),
    SERVER_NUMBER(IsServer, "NetServer", 0),
};

class ServerNumberTest : public ConfigurationTest, public testing::WithParamInterface<ServerNumberRow> {
protected:
    int Read(const std::string& text) {
        Store::SetServerSection("Net2");
        Write(text);
        return GetParam().read(store);
    }
};

TEST_P(ServerNumberTest, KeyStandsInBothSections_ServerSectionCounts) {
    const char* key = GetParam().key;
    EXPECT_EQ(5, Read(OneEntry("OrmaSA Server", key, "4") + OneEntry("Net2", key, "5")));
    EXPECT_EQ(GetParam().missing, Read(OneEntry("OrmaSA Server", key, "4") + OneEntry("Net2", key, "x")))
        << "what is no number counts as 0, not as missing";
}

TEST_P(ServerNumberTest, KeyStandsOnlyInOrmaSAServer_ItCounts) {
    EXPECT_EQ(4, Read(OneEntry("OrmaSA Server", GetParam().key, "4") + OneEntry("Net2", "Unknown", "5")));
    EXPECT_EQ(4, Read(OneEntry("OrmaSA Server", GetParam().key, "4")));
}

TEST_P(ServerNumberTest, KeyStandsInNeitherSection_ResultIsTheDefault) {
    EXPECT_EQ(GetParam().missing,
              Read(AmongOthers("Net2", "Unknown", "4") + OneEntry("Decoy", GetParam().key, "5")));
}

TEST_P(ServerNumberTest, ValueIsLong_NumberEndsWithTheBuffer) {
    const char* key = GetParam().key;
    EXPECT_EQ(7, Read(OneEntry("Net2", key, Zeros(198) + "7")));
    EXPECT_EQ(3, Read(OneEntry("Net2", key, Zeros(198) + "34")));
    EXPECT_EQ(3, Read(OneEntry("OrmaSA Server", key, Zeros(198) + "345")));
}

INSTANTIATE_TEST_SUITE_P(, ServerNumberTest, testing::ValuesIn(kServerNumbers), RowName<ServerNumberRow>);

// --- Texts into the caller's buffer -----------------------------------------------------------------------

struct TextRow {
    const char* name;
    const char* section;
    const char* key;
    int (*read)(const Store&, char* buffer, int size);
};

// clang-format off
#define TEXT(accessor, section, key) \
    TextRow{#accessor, section, key, [](const Store& store, char* buffer, int size) { return store.accessor(buffer, size); }}
#define TEXT_OF(name, call, section, key) \
    TextRow{#name, section, key, [](const Store& store, char* buffer, int size) { return store.call; }}
// clang-format on

const TextRow kTexts[] = {
    TEXT(ClientTokenLibraryFileName, "Secure Trusted Channel", "ClientTokenLib"),
    TEXT(GetSmmLibraryFilename, "SSM", "LibraryFilename"),
    TEXT(GetSmmStorageFilename, "SSM", "StorageFilename"),
    TEXT(GetOrmaClientHtlDir, "OrmaSA Client", "HtlDir"),
    TEXT(GetSSLConfigFile, "OrmaSA Client", "SSLConfigFile"),
    TEXT(GetClientPrivKeyFile, "OrmaSA Client", "ClientPrivKeyFile"),
    TEXT(GetClientCertFile, "OrmaSA Client", "ClientCertFile"),
    TEXT(GetServerCAFile, "OrmaSA Client", "ServerCAFile"),
    TEXT(GetClientCAFile, "OrmaSA Server", "ClientCAFile"),
    TEXT(GetClientAuthFile, "OrmaSA Server", "ClientAuthFile"),
    TEXT(GetServerPrivKeyFile, "OrmaSA Server", "ServerPrivKeyFile"),
    TEXT(GetServerCertFile, "OrmaSA Server", "ServerCertFile"),
    TEXT(GetOrmaNetHostName, "OrmaSA Server", "HostName"),
    TEXT(GetHALogpath, "HAConfiguration", "haLogPath"),
    TEXT_OF(GetOrmaCPModule, GetOrmaCPModule("Any Section", buffer, size), "Any Section", "CmdProcessor"),
    TEXT_OF(GetServerDaemonName, GetServerDaemonName("Any Section", buffer, size), "Any Section",
            "DaemonName"),
    TEXT_OF(GetVirtualTokenLabel, GetVirtualTokenLabel(3, buffer, size, false), "VirtualToken",
            "VirtualToken03Label"),
    TEXT_OF(GetVirtualTokenLabelOfProxy, GetVirtualTokenLabel(7, buffer, size, true), "VirtualProxyToken",
            "VirtualToken07Label"),
    TEXT_OF(GetVirtualTokenLabel123, GetVirtualTokenLabel(123, buffer, size, true), "VirtualProxyToken",
            "VirtualToken123Label"),
    TEXT_OF(GetVirtualTokenSN, GetVirtualTokenSN(0, buffer, size, false), "VirtualToken", "VirtualToken00SN"),
    TEXT_OF(GetVirtualTokenSNOfProxy, GetVirtualTokenSN(99, buffer, size, true), "VirtualProxyToken",
            "VirtualToken99SN"),
    TEXT_OF(GetVirtualTokenMembers, GetVirtualTokenMembers(10, buffer, size, false), "VirtualToken",
            "VirtualToken10Members"),
    TEXT_OF(GetVirtualTokenMembersOfProxy, GetVirtualTokenMembers(1, buffer, size, true), "VirtualProxyToken",
            "VirtualToken01Members"),
    TEXT_OF(GetVirtualSessionObjectDisableSyncType, GetVirtualSessionObjectDisableSyncType(4, buffer, size),
            "VirtualProxyToken", "VirtualToken04SessionSynchsDisabled"),
    TEXT_OF(GetVirtualTokenObjectDisableSyncType, GetVirtualTokenObjectDisableSyncType(5, buffer, size),
            "VirtualProxyToken", "VirtualToken05TokenSynchsDisabled"),
    TEXT_OF(GetVirtualTokenObjectDisableSyncTypeLongestIndex,
            GetVirtualTokenObjectDisableSyncType(-2147483647, buffer, size), "VirtualProxyToken",
            "VirtualToken-2147483647TokenSynchsDisabled"),
    TEXT_OF(GetOrmaNetServerName, GetOrmaNetServerName(6, buffer, size, true), "OrmaSA Server",
            "ServerName06"),
    TEXT_OF(GetOrmaNetServerNameOfClient, GetOrmaNetServerName(8, buffer, size, false), "OrmaSA Client",
            "ServerName08"),
    TEXT_OF(GetOrmaNetCertFile, GetOrmaNetCertFile(9, buffer, size), "OrmaSA Client", "ServerCertFile09"),
    TEXT_OF(GetOrmaAuxLibrary, GetOrmaAuxLibrary(buffer, size, 2), "AuxLibrary", "AuxLib2"),
    TEXT_OF(GetOrmaAuxLibrary12, GetOrmaAuxLibrary(buffer, size, 12), "AuxLibrary", "AuxLib12"),
    TEXT_OF(GetCardReaderDurnelName, GetCardReaderDurnelName(1, buffer, size), "CardReader", "Durnel1Name"),
};

class TextTest : public ConfigurationTest, public testing::WithParamInterface<TextRow> {};

TEST_P(TextTest, KeyIsMissing_BufferStaysAsItIs) {
    char buffer[] = "untouched";
    Write(AmongOthers(GetParam().section, "Unknown", "V"));
    EXPECT_EQ(0, GetParam().read(store, buffer, sizeof buffer));
    Write(OneEntry("Decoy", GetParam().key, "V"));
    EXPECT_EQ(0, GetParam().read(store, buffer, sizeof buffer));
    EXPECT_STREQ("untouched", buffer);
}

TEST_P(TextTest, ValueIsLong_TextIsCutToTheBuffer) {
    for (const char* value : {"", "/a b/c", "abcdefg", "abcdefgh", "abcdefghi"}) {
        Write(AmongOthers(GetParam().section, GetParam().key, value));
        char buffer[10];
        std::memset(buffer, 'x', sizeof buffer);
        EXPECT_EQ(1, GetParam().read(store, buffer, 8));
        EXPECT_EQ(std::string(value).substr(0, 7), buffer);
        EXPECT_EQ('x', buffer[8]);
    }
}

TEST_P(TextTest, BufferIsNull_ResultIsNotFound) {
    Write(AmongOthers(GetParam().section, GetParam().key, "V"));
    EXPECT_EQ(0, GetParam().read(store, nullptr, 8));
}

INSTANTIATE_TEST_SUITE_P(, TextTest, testing::ValuesIn(kTexts), RowName<TextRow>);

const TextRow kServerTexts[] = {
    TEXT(GetClientCAFile, "", "ClientCAFile"),
    TEXT(GetClientAuthFile, "", "ClientAuthFile"),
    TEXT(GetServerPrivKeyFile, "", "ServerPrivKeyFile"),
    TEXT(GetServerCertFile, "", "ServerCertFile"),
    TEXT(GetOrmaNetHostName, "", "HostName"),
};

class ServerTextTest : public ConfigurationTest, public testing::WithParamInterface<TextRow> {
protected:
    std::string Read(const std::string& text) {
        Store::SetServerSection("Net2");
        Write(text);
        char buffer[] = "untouched";
        return GetParam().read(store, buffer, sizeof buffer) ? buffer : std::string("none, ") + buffer;
    }
};

TEST_P(ServerTextTest, Key_IsReadInTheServerSectionThenInOrmaSAServer) {
    const std::string fallback = OneEntry("OrmaSA Server", GetParam().key, "fallback");
    EXPECT_EQ("first", Read(fallback + OneEntry("Net2", GetParam().key, "first")));
    EXPECT_EQ("", Read(fallback + OneEntry("Net2", GetParam().key, ""))) << "an empty value is found";
    EXPECT_EQ("fallback", Read(fallback + OneEntry("Net2", "Unknown", "V")));
    EXPECT_EQ("fallback", Read(fallback));
    EXPECT_EQ("none, untouched", Read(OneEntry("Decoy", GetParam().key, "V")));
}

INSTANTIATE_TEST_SUITE_P(, ServerTextTest, testing::ValuesIn(kServerTexts), RowName<TextRow>);

// --- Numbers that are stored only when there is one -------------------------------------------------------

struct ScannedRow {
    const char* name;
    const char* section;
    const char* key;
    bool isServers;  // read in the server section first
    int (*read)(const Store&, int* value);
};

// clang-format off
#define SCANNED(accessor, section, key) \
    ScannedRow{#accessor, section, key, true, [](const Store& store, int* value) { return store.accessor(value); }}
#define SCANNED_OF(name, call, section, key) \
    ScannedRow{#name, section, key, false, [](const Store& store, int* value) { return store.call; }}
// clang-format on

const ScannedRow kScanned[] = {
    SCANNED(GetOrmaDPTCPKeepAliveProbes, "OrmaSA Server", "TCP_KEEPCNT"),
    SCANNED(GetOrmaDPTCPKeepAliveInterval, "OrmaSA Server", "TCP_KEEPINTVL"),
    SCANNED(GetOrmaDPTCPKeepAliveIdle, "OrmaSA Server", "TCP_KEEPIDLE"),
    SCANNED(GetOrmaDPWorkerThreads, "OrmaSA Server", "DPWorkerThreads"),
    SCANNED(GetOrmaCmdWorkerThreads, "OrmaSA Server", "CmdWorkerThreads"),
    SCANNED_OF(GetOrmaNetHostPort, GetOrmaNetHostPort(value, "Any Section"), "Any Section", "HostPort"),
    SCANNED_OF(GetOrmaNetServerPort, GetOrmaNetServerPort(3, value, true), "OrmaSA Server", "ServerPort03"),
    SCANNED_OF(GetOrmaNetServerPortOfClient, GetOrmaNetServerPort(14, value, false), "OrmaSA Client",
               "ServerPort14"),
    SCANNED_OF(GetOrmaNetServerHtlRequired, GetOrmaNetServerHtlRequired(4, value, true), "OrmaSA Server",
               "ServerHtl04"),
    SCANNED_OF(GetOrmaNetServerHtlRequiredOfClient, GetOrmaNetServerHtlRequired(5, value, false),
               "OrmaSA Client", "ServerHtl05"),
};

class ScannedTest : public ConfigurationTest, public testing::WithParamInterface<ScannedRow> {
protected:
    void Expect(int result, int number, const std::string& text) {
        Write(text);
        int value = 4711;
        EXPECT_EQ(result, GetParam().read(store, &value)) << text;
        EXPECT_EQ(number, value) << text;
    }
    std::string Entry(const std::string& value) const {
        return AmongOthers(GetParam().section, GetParam().key, value);
    }
};

TEST_P(ScannedTest, ValueIsNoNumber_NothingIsStored) {
    Expect(1, 73, Entry("73"));
    Expect(1, -73, Entry("-73"));
    Expect(1, 73, Entry("\t 73 seconds"));
    Expect(0, 4711, Entry("seconds"));
    Expect(0, 4711, Entry(""));
    Expect(0, 4711, AmongOthers(GetParam().section, "Unknown", "73"));
    Expect(0, 4711, OneEntry("Decoy", GetParam().key, "73"));
}

TEST_P(ScannedTest, ValueIsLong_31CharactersAreRead) {
    Expect(1, 7, Entry(Zeros(30) + "7"));
    Expect(1, 1, Entry(Zeros(30) + "12"));
    Expect(1, 1, Entry(Zeros(30) + "123"));
}

TEST_P(ScannedTest, KeyStandsOnlyInOrmaSAServer_OnlyServersSettingsFallBack) {
    Store::SetServerSection("Net2");
    const char* key = GetParam().key;
    const std::string original = OneEntry(GetParam().section, key, "4");
    Expect(1, 4, original);
    Expect(1, GetParam().isServers ? 5 : 4, original + OneEntry("Net2", key, "5"));
    Expect(!GetParam().isServers, GetParam().isServers ? 4711 : 4, original + OneEntry("Net2", key, "x"));
}

INSTANTIATE_TEST_SUITE_P(, ScannedTest, testing::ValuesIn(kScanned), RowName<ScannedRow>);

// --- Texts in the instance's own buffers ------------------------------------------------------------------

struct OwnTextRow {
    const char* name;
    const char* section;
    const char* key;
    const char* missing;
    const char* (*read)(Store&);
};

// clang-format off
#define OWN_TEXT(accessor, section, key, missing) \
    OwnTextRow{#accessor, section, key, missing, [](Store& store) { return store.accessor(); }}
// clang-format on

const OwnTextRow kOwnTexts[] = {
    OWN_TEXT(LibraryFileName, "Wendrafil2", "LibUNIX64", "/usr/lib/libmordavek2.so"),
    OWN_TEXT(LBLibLibraryFileName, "LBLib2", "LibUNIX", "/usr/lib/libmordavek2.so"),
    OWN_TEXT(EnablerLogFileName, "Misc", "LogFile", ""),
};

class OwnTextTest : public ConfigurationTest, public testing::WithParamInterface<OwnTextRow> {
protected:
    std::string Read(const std::string& value) {
        Write(AmongOthers(GetParam().section, GetParam().key, value));
        return GetParam().read(store);
    }
};

TEST_P(OwnTextTest, ValueIsLong_499CharactersAreKept) {
    const std::string longText = std::string(497, '/') + "abcd";
    EXPECT_EQ("/lib/x.so", Read("/lib/x.so"));
    EXPECT_EQ("", Read(""));
    EXPECT_EQ(longText.substr(0, 499), Read(longText.substr(0, 499)));
    EXPECT_EQ(longText.substr(0, 499), Read(longText.substr(0, 500)));
    EXPECT_EQ(longText.substr(0, 499), Read(longText));
}

TEST_P(OwnTextTest, KeyIsMissing_ResultIsTheDefault) {
    Read("/lib/an/earlier/result/that/is/long.so");
    Write(AmongOthers(GetParam().section, "Unknown", "V"));
    EXPECT_STREQ(GetParam().missing, GetParam().read(store));
    Write(OneEntry("Decoy", GetParam().key, "V"));
    EXPECT_STREQ(GetParam().missing, GetParam().read(store));
}

INSTANTIATE_TEST_SUITE_P(, OwnTextTest, testing::ValuesIn(kOwnTexts), RowName<OwnTextRow>);

TEST_F(ConfigurationTest, OwnTextsDoNotShareABuffer) {
    Write(OneEntry("Wendrafil2", "LibUNIX64", "/1") + OneEntry("LBLib2", "LibUNIX", "/2") +
          OneEntry("Misc", "LogFile", "/3"));
    const char* library = store.LibraryFileName();
    const char* balancer = store.LBLibLibraryFileName();
    const char* log = store.EnablerLogFileName();
    EXPECT_STREQ("/1", library);
    EXPECT_STREQ("/2", balancer);
    EXPECT_STREQ("/3", log);
}

TEST_F(ConfigurationTest, LibraryFileName_IsThatOfTheSectionOrTheDefault) {
    Write(OneEntry("Any Section", "LibUNIX64", "/lib/other.so"));
    char buffer[26];
    EXPECT_EQ(1, store.LibraryFileName("Any Section", buffer, sizeof buffer));
    EXPECT_STREQ("/lib/other.so", buffer);
    EXPECT_EQ(1, store.LibraryFileName("Any Section", buffer, 5));
    EXPECT_STREQ("/lib", buffer);
    EXPECT_EQ(0, store.LibraryFileName("Wendrafil2", buffer, sizeof buffer));
    EXPECT_STREQ("/usr/lib/libmordavek2.so", buffer);
}

TEST_F(ConfigurationTest, DefaultLibraryFileNameIsCutToTheBuffer) {
    Write("Misc = {\n}\n");
    const std::string library = "/usr/lib/libmordavek2.so";
    for (const size_t size : {1U, 2U, 24U, 25U, 26U}) {
        char buffer[30];
        std::memset(buffer, 'x', sizeof buffer);
        EXPECT_EQ(0, store.LibraryFileName("Wendrafil2", buffer, static_cast<int>(size)));
        EXPECT_EQ(library.substr(0, size - 1), buffer);
        EXPECT_EQ('x', buffer[size]);
    }
    char untouched[] = "x";
    EXPECT_EQ(0, store.LibraryFileName("Wendrafil2", untouched, 0));
    EXPECT_STREQ("x", untouched);
    EXPECT_EQ(0, store.LibraryFileName("Wendrafil2", nullptr, 30));
}

}  // namespace
