// These tests have the accessors with rules of their own, except those of lists (servers, clusters) and of
// the identifiers of PIN entry devices.

#include <cstring>
#include <string>

#include "tests/config/configuration_test.h"

namespace {

using Store = WendrafilConfiguration;

std::string Zeros(size_t count) { return std::string(count, '0'); }

class SpecialSettingsTest : public ConfigurationTest {
protected:
    void WriteEntry(const std::string& section, const std::string& key, const std::string& value) {
        Write(OneEntry("Decoy", key, "1") + OneEntry(section, key, value));
    }
};

TEST_F(SpecialSettingsTest, AttackTimeoutIsTenByDefaultAndTwentyAtMost) {
    const auto read = [this](const char* value) {
        WriteEntry("OrmaSA Server", "AttackTimeout", value);
        return store.GetAttackTimeout();
    };
    EXPECT_EQ(10, read("0"));
    EXPECT_EQ(10, read("abc"));
    EXPECT_EQ(1, read("1"));
    EXPECT_EQ(19, read("19"));
    EXPECT_EQ(20, read("20"));
    EXPECT_EQ(20, read("21"));
    EXPECT_EQ(20, read("50"));
    EXPECT_EQ(-1, read("-1"));
    WriteEntry("OrmaSA Server", "Unknown", "5");
    EXPECT_EQ(10, store.GetAttackTimeout());
}

TEST_F(SpecialSettingsTest, ServerHasAtLeastOneThread) {
    const auto read = [this](const char* value) {
        WriteEntry("OrmaSA Server", "NTLSThreads", value);
        return store.GetServerThreadCount();
    };
    EXPECT_EQ(1, read("0"));
    EXPECT_EQ(1, read("1"));
    EXPECT_EQ(2, read("2"));
    EXPECT_EQ(1000, read("1000"));
    EXPECT_EQ(-2, read("-2"));
}

TEST_F(SpecialSettingsTest, AllowPTKBeginsWithOne) {
    const auto read = [this](const std::string& value) {
        WriteEntry("Misc", "AllowPTK", value);
        return store.GetAllowPTK();
    };
    const std::string one = "1";
    EXPECT_TRUE(read(one));
    EXPECT_TRUE(read("10"));
    EXPECT_TRUE(read(one + Zeros(78)));
    EXPECT_TRUE(read(one + Zeros(79)));
    EXPECT_TRUE(read(one + Zeros(80)));
    EXPECT_FALSE(read("01"));
    EXPECT_FALSE(read("0"));
    EXPECT_FALSE(read(""));
    EXPECT_FALSE(read("yes"));
    WriteEntry("Misc", "Unknown", "1");
    EXPECT_FALSE(store.GetAllowPTK());
}

TEST_F(SpecialSettingsTest, KeyIsInHardwareForYesInAnyCase) {
    const auto read = [this](const std::string& value) {
        WriteEntry("Misc", "KeysInHW", value);
        return store.IsKeyInHW();
    };
    for (const char* yes : {"YES", "yes", "Yes", "yEs"}) EXPECT_TRUE(read(yes)) << yes;
    for (const char* no : {"", "Y", "YE", "YES ", "YESS", "1", "no"}) EXPECT_FALSE(read(no)) << no;
    EXPECT_FALSE(read("YES" + std::string(300, 'S')));
    WriteEntry("Misc", "Unknown", "YES");
    EXPECT_FALSE(store.IsKeyInHW());
}

TEST_F(SpecialSettingsTest, GetEntrustCAPasswd_ReturnsTheLength) {
    const std::string longValue = std::string(98, 'p') + "abc";
    for (const size_t length : {0U, 1U, 99U, 100U, 101U}) {
        WriteEntry("Misc", "TokenInitString", longValue.substr(0, length));
        char buffer[101];
        std::memset(buffer, 'x', sizeof buffer);
        const size_t kept = std::min<size_t>(length, 99);
        EXPECT_EQ(static_cast<int>(kept), store.GetEntrustCAPasswd(buffer));
        EXPECT_EQ(longValue.substr(0, kept), buffer);
        EXPECT_EQ('x', buffer[100]);
    }
    EXPECT_EQ(0, store.GetEntrustCAPasswd(nullptr));
    WriteEntry("Misc", "Unknown", "V");
    char untouched[100] = "untouched";
    EXPECT_EQ(0, store.GetEntrustCAPasswd(untouched));
    EXPECT_STREQ("untouched", untouched);
}

TEST_F(SpecialSettingsTest, GetCryptokiContainerName_ReturnsWhetherTheKeyIsThere) {
    const std::string longValue = std::string(98, 'p') + "abc";
    for (const size_t length : {0U, 1U, 99U, 100U, 101U}) {
        WriteEntry("Misc", "CryptokiContainerName", longValue.substr(0, length));
        char buffer[101];
        std::memset(buffer, 'x', sizeof buffer);
        EXPECT_EQ(1, store.GetCryptokiContainerName(buffer));
        EXPECT_EQ(longValue.substr(0, std::min<size_t>(length, 99)), buffer);
        EXPECT_EQ('x', buffer[100]);
    }
    EXPECT_EQ(0, store.GetCryptokiContainerName(nullptr));
    WriteEntry("Misc", "Unknown", "V");
    char untouched[100] = "untouched";
    EXPECT_EQ(0, store.GetCryptokiContainerName(untouched));
    EXPECT_STREQ("untouched", untouched);
}

TEST_F(SpecialSettingsTest, InstanceOrmaCR_StoresTheNumberOrNothing) {
    const auto expect = [this](int result, int number, const std::string& value) {
        WriteEntry("CardReader", "InstanceOrmaCR", value);
        int out = 4711;
        EXPECT_EQ(result, store.InstanceOrmaCR(&out));
        EXPECT_EQ(number, out);
    };
    expect(1, 3, "3");
    expect(1, 12, "12abc");
    expect(1, 0, "abc");
    expect(1, 7, Zeros(30) + "7");
    expect(1, 1, Zeros(30) + "12");
    expect(1, 1, Zeros(30) + "123");
    WriteEntry("CardReader", "Unknown", "3");
    int out = 4711;
    EXPECT_EQ(0, store.InstanceOrmaCR(&out));
    EXPECT_EQ(4711, out);
}

struct AppIdCase {
    std::string entries;
    int result;
    unsigned long major;
    unsigned long minor;
};

TEST_F(SpecialSettingsTest, ExplicitAppId_StoresBothNumbers) {
    const auto Entry = [](const std::string& key, const std::string& value) {
        return " " + key + " = " + value + ";\n";
    };
    const AppIdCase cases[] = {
        {" AppIdMajor = 0x10;\n", 1, 16, 16},
        {" AppIdMajor = 5;\n AppIdMinor = 6;\n", 1, 5, 6},
        {" AppIdMinor = 0XfF;\n AppIdMajor = 010;\n", 1, 10, 255},
        {" AppIdMinor = 7;\n", 1, 0, 7},
        {" AppIdMajor = 0xZ;\n AppIdMinor = abc;\n", 1, 0, 0},
        {" AppIdMajor = ;\n", 1, 0, 0},
        {" AppIdMajor = 18446744073709551615;\n AppIdMinor = 0xFFFFFFFFFFFFFFFE;\n", 1, ~0UL, ~0UL - 1},
        {Entry("AppIdMajor", Zeros(78) + "7") + Entry("AppIdMinor", Zeros(78) + "12"), 1, 7, 1},
        {Entry("AppIdMajor", Zeros(78) + "345"), 1, 3, 3},
        {" Other = 1;\n", 0, 0, 0},
    };
    for (const AppIdCase& c : cases) {
        Write("Decoy = {\n AppIdMajor = 8;\n AppIdMinor = 9;\n}\nMisc = {\n" + c.entries + "}\n");
        unsigned long major = 4711;
        unsigned long minor = 4712;
        EXPECT_EQ(c.result, store.ExplicitAppId(major, minor)) << c.entries;
        EXPECT_EQ(c.major, major) << c.entries;
        EXPECT_EQ(c.minor, minor) << c.entries;
    }
}

TEST_F(SpecialSettingsTest, SourceAddressesAreCheckedUnlessDisabled) {
    const auto expect = [this](bool isChecked, const char* value) {
        WriteEntry("OrmaSA Server", "SRC_IP_CHK", value);
        bool check = !isChecked;
        EXPECT_EQ(1, store.GetSourceIPChecking(check));
        EXPECT_EQ(isChecked, check) << value;
    };
    expect(false, "disable");
    expect(false, "disabled");
    expect(false, "disableXY");
    expect(false, "disableXYZ");
    expect(true, "disabl");
    expect(true, "Disable");
    expect(true, "enable");
    expect(true, "");
    WriteEntry("OrmaSA Server", "Unknown", "disable");
    bool check = false;
    EXPECT_EQ(0, store.GetSourceIPChecking(check));
    EXPECT_TRUE(check);
}

struct SwitchRow {
    const char* name;
    const char* key;
    int (*read)(const Store&, bool& on);
};

class SwitchTest : public SpecialSettingsTest, public testing::WithParamInterface<SwitchRow> {
protected:
    // Returns the variable after the call. It has the value `before` in front of the call.
    bool Read(bool before, const char* value) {
        WriteEntry("HAConfiguration", GetParam().key, value);
        EXPECT_EQ(1, GetParam().read(store, before));
        return before;
    }
};

TEST_P(SwitchTest, ValueBeginsWithEnable_SwitchIsOn) {
    for (const char* value : {"enable", "enabled", "enableXY", "enableXYZ", "enable#"})
        EXPECT_TRUE(Read(false, value)) << value;
}

TEST_P(SwitchTest, ValueBeginsWithANumberSign_SwitchIsOff) {
    for (const char* value : {"#", "#enable", "##"}) EXPECT_FALSE(Read(true, value)) << value;
}

TEST_P(SwitchTest, ValueIsAnythingElse_SwitchStays) {
    for (const char* value :
         {"disable", "disabled", "disableXY", "disableXYZ", "enabl", "Enable", "0", "", "x#"}) {
        EXPECT_TRUE(Read(true, value)) << value;
        EXPECT_FALSE(Read(false, value)) << value;
    }
}

TEST_P(SwitchTest, KeyIsMissing_SwitchIsOff) {
    WriteEntry("HAConfiguration", "Unknown", "enabled");
    bool on = true;
    EXPECT_EQ(0, GetParam().read(store, on));
    EXPECT_FALSE(on);
}

const SwitchRow kSwitches[] = {
    {"GetHALog", "haLogStatus", [](const Store& store, bool& on) { return store.GetHALog(on); }},
    {"GetHAProxy", "haProxy", [](const Store& store, bool& on) { return store.GetHAProxy(on); }},
};
INSTANTIATE_TEST_SUITE_P(, SwitchTest, testing::ValuesIn(kSwitches),
                         [](const auto& info) { return info.param.name; });

TEST_F(SpecialSettingsTest, GetHALogfilemaxlen_StoresTheLengthOrADefault) {
    const auto expect = [this](int length, const std::string& value) {
        WriteEntry("HAConfiguration", "logLen", value);
        int out = 4711;
        EXPECT_EQ(1, store.GetHALogfilemaxlen(out));
        EXPECT_EQ(length, out) << value;
    };
    expect(500, "500");
    expect(0, "0");
    expect(0, "abc");
    expect(0, "");
    expect(262144, "#");
    expect(262144, "#500");
    expect(262144, "-1");
    expect(7, Zeros(17) + "7");
    expect(1, Zeros(17) + "12");
    expect(1, Zeros(17) + "123");
    WriteEntry("HAConfiguration", "Unknown", "500");
    int out = 4711;
    EXPECT_EQ(0, store.GetHALogfilemaxlen(out));
    EXPECT_EQ(0, out);
}

TEST_F(SpecialSettingsTest, GetHAAutoRecoverCount_StoresTheNumberOfAttempts) {
    const auto expect = [this](int count, const std::string& value) {
        WriteEntry("HAConfiguration", "reconnAtt", value);
        int out = 4711;
        EXPECT_EQ(1, store.GetHAAutoRecoverCount(out));
        EXPECT_EQ(count, out) << value;
    };
    expect(5, "5");
    expect(-1, "-1");
    expect(0, "abc");
    expect(1234, "1234");
    expect(1234, "12345");
    expect(1234, "123456");
    WriteEntry("HAConfiguration", "Unknown", "5");
    int out = 4711;
    EXPECT_EQ(0, store.GetHAAutoRecoverCount(out));
    EXPECT_EQ(0, out);
}

}  // namespace
