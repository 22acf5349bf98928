#include "config/logging_configuration.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "tests/logging_configuration_file.h"

namespace {

// Settings shows how often the mask has been asked for.
class Settings : public CkLogConfig {
public:
    using CkLogConfig::reqToCheckConfigFile;
};

class LoggingConfigurationTest : public testing::Test {
protected:
    LoggingConfigurationTest() { file.Write(""); }
    ~LoggingConfigurationTest() override { Settings::reqToCheckConfigFile.store(0); }

    // Reads the mask from a value of "LoggingMask".
    unsigned MaskOf(const std::string& names) {
        file.Write("LoggingMask = " + names + ";\n");
        return settings.GetLoggingMask();
    }

    LoggingConfigurationFile file;
    Settings settings;
};

TEST_F(LoggingConfigurationTest, Configuration_HasTheSectionCkLog2) {
    EXPECT_STREQ(CkLogConfig::GetCkLogSectionName(), "CkLog2");
}

// ---- Texts -----------------------------------------------------------------------------------------------

TEST_F(LoggingConfigurationTest, KeysOfPathsAreAbsent_PathsAreTheDefaults) {
    EXPECT_STREQ(settings.CkLogLibraryFileName(), "/usr/lib/libmordavek2.so");
    EXPECT_STREQ(settings.LogFileName(), "log.txt");
    EXPECT_STREQ(settings.CkLogErrorFile(), "logerror.txt");
}

TEST_F(LoggingConfigurationTest, KeysOfPathsAreSet_PathsAreTheirs) {
    file.Write("LibUNIX64 = /opt/target.so;\nFile = /var/log/calls;\nError = /var/log/errors;\n");
    const char* const library = settings.CkLogLibraryFileName();
    const char* const log = settings.LogFileName();
    const char* const errors = settings.CkLogErrorFile();
    EXPECT_STREQ(library, "/opt/target.so");
    EXPECT_STREQ(log, "/var/log/calls");
    EXPECT_STREQ(errors, "/var/log/errors");
}

TEST_F(LoggingConfigurationTest, FileChanges_PathStaysUntilItIsAskedForAgain) {
    file.Write("LibUNIX64 = /first.so;\nFile = /first;\nError = /first.errors;\n");
    const char* const log = settings.LogFileName();
    file.Write("LibUNIX64 = /second.so;\nFile = /second;\nError = /second.errors;\n");
    settings.CkLogLibraryFileName();
    settings.CkLogErrorFile();
    EXPECT_STREQ(log, "/first");
    EXPECT_STREQ(settings.LogFileName(), "/second");
    file.Write("");
    EXPECT_STREQ(settings.LogFileName(), "log.txt");
    EXPECT_STREQ(settings.CkLogErrorFile(), "logerror.txt");
    EXPECT_STREQ(settings.CkLogLibraryFileName(), "/usr/lib/libmordavek2.so");
}

TEST_F(LoggingConfigurationTest, PathIsLong_ItIsCutAt499Characters) {
    const std::string path = std::string("/").append(600, 'p');
    file.Write("LibUNIX64 = " + path + ";\nFile = " + path + ";\nError = " + path + ";\n");
    EXPECT_EQ(settings.CkLogLibraryFileName(), path.substr(0, 499));
    EXPECT_EQ(settings.LogFileName(), path.substr(0, 499));
    EXPECT_EQ(settings.CkLogErrorFile(), path.substr(0, 499));
}

TEST_F(LoggingConfigurationTest, KeyOfAPathIsEmpty_PathIsEmpty) {
    file.Write("File = ;\nError = ;\n");
    EXPECT_STREQ(settings.LogFileName(), "");
    EXPECT_STREQ(settings.CkLogErrorFile(), "");
}

TEST_F(LoggingConfigurationTest, KeyStandsInAnotherSection_ItIsIgnored) {
    std::ofstream(file.directory.File("Wendrafil.conf"))
        << "Wendrafil2 = {\nLibUNIX64 = /other.so;\nFile = /other;\nNewFormat = 1;\nEnabled = 1;\n"
           "LoggingLevel = DESTROY;\nLoggingMask = GEN_FUNC;\n}\n";
    EXPECT_STREQ(settings.CkLogLibraryFileName(), "/usr/lib/libmordavek2.so");
    EXPECT_STREQ(settings.LogFileName(), "log.txt");
    EXPECT_EQ(settings.IsNewCkLogFormat(), 0);
    EXPECT_EQ(settings.IsLoggingEnabledMordavek(), 0);
    EXPECT_EQ(settings.LoggingLevel(), 4);
    EXPECT_EQ(settings.GetLoggingMask(), 0U);
    EXPECT_EQ(settings.DoWeLogThis(SESSION_FUNC), 1);
}

// ---- Numbers and words -----------------------------------------------------------------------------------

TEST_F(LoggingConfigurationTest, SwitchIsRead_ItIsANumber) {
    EXPECT_EQ(settings.IsNewCkLogFormat(), 0);
    EXPECT_EQ(settings.IsLoggingEnabledMordavek(), 0);
    const struct {
        const char* text;
        int number;
    } values[] = {{"1", 1}, {"0", 0}, {"7", 7}, {"-1", -1}, {"12abc", 12}, {"yes", 0}, {"", 0}, {"+3", 3}};
    for (const auto& value : values) {
        file.Write("NewFormat = " + std::string(value.text) + ";\nEnabled = 5;\n");
        EXPECT_EQ(settings.IsNewCkLogFormat(), value.number) << value.text;
        EXPECT_EQ(settings.IsLoggingEnabledMordavek(), 5);
        file.Write("Enabled = " + std::string(value.text) + ";\nNewFormat = 6;\n");
        EXPECT_EQ(settings.IsLoggingEnabledMordavek(), value.number) << value.text;
        EXPECT_EQ(settings.IsNewCkLogFormat(), 6);
    }
}

TEST_F(LoggingConfigurationTest, LevelIsRead_OnlyExactWordsAreLevels) {
    EXPECT_EQ(settings.LoggingLevel(), 4);
    const struct {
        const char* word;
        int level;
    } values[] = {{"DESTROY", 1}, {"MODIFY", 2},  {"ADMIN", 3}, {"admin", 4}, {"Modify", 4}, {"ADMINS", 4},
                  {"DESTRO", 4},  {"ADMIN X", 4}, {"", 4},      {"1", 4},     {"3", 4},      {"ALL_FUNC", 4}};
    for (const auto& value : values) {
        file.Write("LoggingLevel = " + std::string(value.word) + ";\n");
        EXPECT_EQ(settings.LoggingLevel(), value.level) << value.word;
    }
}

// ---- The mask, when the file cannot be read --------------------------------------------------------------

class MaskOfUnreadableFile : public LoggingConfigurationTest {
protected:
    // Sets the count of questions so that the file is looked at, and asks.
    int IsLoggedAfterALook(FunctionClass functionClass) {
        Settings::reqToCheckConfigFile.store(500);
        return settings.DoWeLogThis(functionClass);
    }

    void RemoveFile() const { std::filesystem::remove(file.directory.File("Wendrafil.conf")); }
};

TEST_F(MaskOfUnreadableFile, FileVanishesAfterTheMaskWasRead_MaskStays) {
    EXPECT_EQ(MaskOf("SESSION_FUNC"), 0x400U);
    RemoveFile();
    EXPECT_EQ(IsLoggedAfterALook(SESSION_FUNC), 1);
    EXPECT_EQ(IsLoggedAfterALook(GEN_FUNC), 0);
}

TEST_F(MaskOfUnreadableFile, FileComesBack_ItsMaskCounts) {
    EXPECT_EQ(MaskOf("SESSION_FUNC"), 0x400U);
    RemoveFile();
    EXPECT_EQ(IsLoggedAfterALook(GEN_FUNC), 0);
    file.Write("LoggingMask = GEN_FUNC;\n");
    EXPECT_EQ(IsLoggedAfterALook(SESSION_FUNC), 0);
    EXPECT_EQ(IsLoggedAfterALook(GEN_FUNC), 1);
    file.Write("");
    EXPECT_EQ(IsLoggedAfterALook(DIGEST_FUNC), 1) << "the file is there and lacks the key";
}

TEST_F(MaskOfUnreadableFile, MaskWasNotReadBefore_EveryClassIsLogged) {
    RemoveFile();
    EXPECT_EQ(IsLoggedAfterALook(DIGEST_FUNC), 1);
}

TEST_F(MaskOfUnreadableFile, GetLoggingMask_MeansEveryClass) {
    EXPECT_EQ(MaskOf("SESSION_FUNC"), 0x400U);
    RemoveFile();
    EXPECT_EQ(settings.GetLoggingMask(), 0U);
    EXPECT_EQ(settings.DoWeLogThis(DIGEST_FUNC), 1);
}

TEST_F(MaskOfUnreadableFile, StoreIsOfAnotherKind_EveryClassIsLogged) {
    EXPECT_EQ(MaskOf("SESSION_FUNC"), 0x400U);
    CkLogConfig::SetLibraryType(1);
    EXPECT_EQ(IsLoggedAfterALook(DIGEST_FUNC), 1);
    CkLogConfig::SetLibraryType(0);
}

// ---- The mask --------------------------------------------------------------------------------------------

TEST_F(LoggingConfigurationTest, EachClass_HasItsNameAndNoOther) {
    EXPECT_EQ(MaskOf("GEN_FUNC"), 0x100U);
    EXPECT_EQ(MaskOf("SLOT_TOKEN_FUNC"), 0x200U);
    EXPECT_EQ(MaskOf("SESSION_FUNC"), 0x400U);
    EXPECT_EQ(MaskOf("OBJ_MNGMNT_FUNC"), 0x800U);
    EXPECT_EQ(MaskOf("ENC_DEC_FUNC"), 0x1000U);
    EXPECT_EQ(MaskOf("DIGEST_FUNC"), 0x2000U);
    EXPECT_EQ(MaskOf("SIGN_VERIFY_FUNC"), 0x4000U);
    EXPECT_EQ(MaskOf("KEY_MNGMNT_FUNC"), 0x8000U);
    EXPECT_EQ(MaskOf("MISC_FUNC"), 0x10000U);
    EXPECT_EQ(MaskOf("ALL_FUNC"), 0x20000U);
    EXPECT_EQ(MaskOf("QUORVANTH_FUNC"), 0x40000U);
    for (const char* name :
         {"NONE", "sign_verify_func", "GEN_FUN", "GEN_FUNCS", "GEN_FUNC,MISC_FUNC", "0x100"}) {
        EXPECT_EQ(MaskOf(name), 0U) << name;
    }
}

TEST_F(LoggingConfigurationTest, BlanksAndBars_SeparateTheNamesOfAMask) {
    for (const char* names :
         {"GEN_FUNC|SIGN_VERIFY_FUNC", "GEN_FUNC | SIGN_VERIFY_FUNC", "GEN_FUNC SIGN_VERIFY_FUNC",
          "GEN_FUNC||  |SIGN_VERIFY_FUNC|", "|GEN_FUNC SIGN_VERIFY_FUNC",
          "SIGN_VERIFY_FUNC GEN_FUNC GEN_FUNC", "GEN_FUNC NONE gen_func SIGN_VERIFY_FUNC"}) {
        EXPECT_EQ(MaskOf(names), 0x4100U) << names;
    }
    EXPECT_EQ(MaskOf("SESSION_FUNC|QUORVANTH_FUNC"), 0x40400U);
}

TEST_F(LoggingConfigurationTest, MaskHasMoreThanTwelveNames_FirstTwelveCount) {
    EXPECT_EQ(MaskOf("GEN_FUNC|SLOT_TOKEN_FUNC|SESSION_FUNC|OBJ_MNGMNT_FUNC|ENC_DEC_FUNC|DIGEST_FUNC|"
                     "SIGN_VERIFY_FUNC|KEY_MNGMNT_FUNC|MISC_FUNC|ALL_FUNC|QUORVANTH_FUNC"),
              0x7FF00U);
    EXPECT_EQ(MaskOf("a b c d e f g h i j k MISC_FUNC"), 0x10000U);
    EXPECT_EQ(MaskOf("a b c d e f g h i j k MISC_FUNC GEN_FUNC"), 0x10000U);
}

TEST_F(LoggingConfigurationTest, MaskIsLong_ItIsCutAt199Characters) {
    const std::string names = "GEN_FUNC" + std::string(182, ' ') + "MISC_FUNC";
    ASSERT_EQ(names.size(), 199U);
    EXPECT_EQ(MaskOf(names), 0x10100U);
    EXPECT_EQ(MaskOf("GEN_FUNC" + std::string(183, ' ') + "MISC_FUNC"), 0x100U);
}

TEST_F(LoggingConfigurationTest, MaskIsAbsent_EveryClassIsLoggedThoughTheResultIsZero) {
    MaskOf("GEN_FUNC");
    file.Write("");
    EXPECT_EQ(settings.GetLoggingMask(), 0U);
    Settings::reqToCheckConfigFile.store(1);
    for (int bit = 0x100; bit <= 0x40000; bit <<= 1) EXPECT_EQ(settings.DoWeLogThis(bit), 1) << bit;
}

TEST_F(LoggingConfigurationTest, FileIsMissing_EveryKeyIsMissing) {
    std::remove(file.directory.File("Wendrafil.conf").c_str());
    EXPECT_EQ(settings.GetLoggingMask(), 0U);
    EXPECT_EQ(settings.DoWeLogThis(GEN_FUNC), 1);
    EXPECT_EQ(settings.LoggingLevel(), 4);
    EXPECT_STREQ(settings.LogFileName(), "log.txt");
}

TEST_F(LoggingConfigurationTest, MaskIsEmpty_NothingIsLogged) {
    for (const char* names : {"", " ", "NONE", "sign_verify_func"}) {
        EXPECT_EQ(MaskOf(names), 0U);
        Settings::reqToCheckConfigFile.store(1);
        for (int bit = 0x100; bit <= 0x40000; bit <<= 1) EXPECT_EQ(settings.DoWeLogThis(bit), 0) << bit;
    }
}

TEST_F(LoggingConfigurationTest, ClassIsInTheMask_ItsCallsAreLogged) {
    MaskOf("SESSION_FUNC|QUORVANTH_FUNC");
    Settings::reqToCheckConfigFile.store(1);
    EXPECT_EQ(settings.DoWeLogThis(SESSION_FUNC), 1);
    EXPECT_EQ(settings.DoWeLogThis(QUORVANTH_FUNC), 1);
    EXPECT_EQ(settings.DoWeLogThis(GEN_FUNC), 0);
    EXPECT_EQ(settings.DoWeLogThis(GEN_FUNC | SESSION_FUNC), 1);
    EXPECT_EQ(settings.DoWeLogThis(0), 0);
    MaskOf("ALL_FUNC");
    EXPECT_EQ(settings.DoWeLogThis(GEN_FUNC), 1);
    EXPECT_EQ(settings.DoWeLogThis(QUORVANTH_FUNC), 1);
    EXPECT_EQ(settings.DoWeLogThis(0), 1);
}

TEST_F(LoggingConfigurationTest, FirstQuery_ReadsTheMask) {
    file.Write("LoggingMask = SESSION_FUNC;\n");
    Settings::reqToCheckConfigFile.store(0);
    EXPECT_EQ(settings.DoWeLogThis(GEN_FUNC), 0);
    EXPECT_EQ(settings.DoWeLogThis(SESSION_FUNC), 1);
}

TEST_F(LoggingConfigurationTest, MaskWasNeverRead_ItIsEmpty) {
    Settings::reqToCheckConfigFile.store(1);
    EXPECT_EQ(settings.DoWeLogThis(GEN_FUNC), 0);
    EXPECT_EQ(settings.DoWeLogThis(ALL_FUNC), 0);
}

TEST_F(LoggingConfigurationTest, Each500thQuery_ReadsTheMaskAgain) {
    file.Write("LoggingMask = SESSION_FUNC;\n");
    Settings::reqToCheckConfigFile.store(0);
    EXPECT_EQ(settings.DoWeLogThis(SESSION_FUNC), 1);
    file.Write("LoggingMask = GEN_FUNC;\n");
    for (int query = 1; query < 500; ++query) {
        ASSERT_EQ(settings.DoWeLogThis(SESSION_FUNC), 1) << query;
    }
    EXPECT_EQ(settings.DoWeLogThis(SESSION_FUNC), 0);
    EXPECT_EQ(Settings::reqToCheckConfigFile.load(), 501U);
    EXPECT_EQ(settings.DoWeLogThis(GEN_FUNC), 1);
    file.Write("LoggingMask = MISC_FUNC;\n");
    for (int query = 502; query < 1000; ++query) {
        ASSERT_EQ(settings.DoWeLogThis(GEN_FUNC), 1) << query;
    }
    EXPECT_EQ(settings.DoWeLogThis(GEN_FUNC), 0);
}

TEST_F(LoggingConfigurationTest, CountOfQueriesWraps_MaskIsStillReadAgain) {
    file.Write("LoggingMask = SESSION_FUNC;\n");
    settings.GetLoggingMask();
    Settings::reqToCheckConfigFile.store(0xFFFFFFFF);
    file.Write("LoggingMask = GEN_FUNC;\n");
    EXPECT_EQ(settings.DoWeLogThis(SESSION_FUNC), 1);
    EXPECT_EQ(Settings::reqToCheckConfigFile.load(), 0U);
    EXPECT_EQ(settings.DoWeLogThis(SESSION_FUNC), 0);
}

TEST_F(LoggingConfigurationTest, TwoObjectsQuery_TheyShareTheCount) {
    CkLogConfig other;
    file.Write("LoggingMask = SESSION_FUNC;\n");
    Settings::reqToCheckConfigFile.store(0);
    EXPECT_EQ(settings.DoWeLogThis(SESSION_FUNC), 1);
    EXPECT_EQ(other.DoWeLogThis(SESSION_FUNC), 0);  // its own mask has not been read
    other.GetLoggingMask();
    EXPECT_EQ(other.DoWeLogThis(SESSION_FUNC), 1);
}

TEST_F(LoggingConfigurationTest, MaskIsRead_ErrnoStays) {
    std::remove(file.directory.File("Wendrafil.conf").c_str());
    Settings::reqToCheckConfigFile.store(0);
    errno = ERANGE;
    settings.DoWeLogThis(GEN_FUNC);
    EXPECT_EQ(errno, ERANGE);
}

TEST_F(LoggingConfigurationTest, ConfigurationIsGone_ErrorFileIsTheOneThatWasReadLast) {
    const std::string path = file.directory.File("Wendrafil.conf");
    std::remove(path.c_str());
    EXPECT_STREQ(settings.CkLogErrorFile(), "logerror.txt");
    file.Write("Error = /var/log/errors;\n");
    EXPECT_STREQ(settings.CkLogErrorFile(), "/var/log/errors");
    std::remove(path.c_str());
    EXPECT_STREQ(settings.CkLogErrorFile(), "/var/log/errors");
    file.Write("Error = ;\n");
    EXPECT_STREQ(settings.CkLogErrorFile(), "");
    std::remove(path.c_str());
    EXPECT_STREQ(settings.CkLogErrorFile(), "");
    file.Write("");
    EXPECT_STREQ(settings.CkLogErrorFile(), "logerror.txt");
}

TEST_F(LoggingConfigurationTest, AnnounceKey_OnlyAPlainZeroSwitchesItOff) {
    EXPECT_EQ(settings.IsAnnouncing(), 1);
    for (const char* value : {"0", "0  ", "\t0\t"}) {
        file.Write("Announce = " + std::string(value) + ";\n");
        EXPECT_EQ(settings.IsAnnouncing(), 0) << value;
    }
    for (const char* value : {"", "1", "00", "no", "-0", "0x0", "0 0", "o"}) {
        file.Write("Announce = " + std::string(value) + ";\n");
        EXPECT_EQ(settings.IsAnnouncing(), 1) << value;
    }
}

// ---- Permissions of new files ----------------------------------------------------------------------------

using FileModeTest = LoggingConfigurationTest;

TEST_F(FileModeTest, KeyIsAbsent_NoPermissionsAreGivenAndNothingIsRejected) {
    const ckscribe::FileModeSetting mode = settings.FileMode();
    EXPECT_EQ(mode.permissions, std::nullopt);
    EXPECT_FALSE(mode.isRejected);
}

TEST_F(FileModeTest, OctalNumberUpTo0777_IsTaken) {
    const std::pair<const char*, mode_t> values[] = {
        {"0600", 0600},    {"600", 0600}, {"0", 0},           {"0777", 0777}, {"00000640", 0640},
        {"0640   ", 0640}, {"7", 07},     {"\t0604\t", 0604}, {"0000", 0},
    };
    for (const auto& [value, permissions] : values) {
        file.Write("FileMode = " + std::string(value) + ";\n");
        const ckscribe::FileModeSetting mode = settings.FileMode();
        EXPECT_EQ(mode.permissions, permissions) << value;
        EXPECT_FALSE(mode.isRejected) << value;
    }
}

TEST_F(FileModeTest, OtherText_IsRejectedAndKeptAsItStands) {
    for (const char* value : {"", "0800", "rw-------", "01000", "1777", "0600x", "-600", "+600", "0x180",
                              "0o600", "6 00", "40000000600", "\"0600\""}) {
        file.Write("FileMode = " + std::string(value) + ";\n");
        const ckscribe::FileModeSetting mode = settings.FileMode();
        EXPECT_EQ(mode.permissions, std::nullopt) << value;
        EXPECT_TRUE(mode.isRejected) << value;
        EXPECT_STREQ(mode.value, value);
    }
}

TEST_F(FileModeTest, ValueIsTooLongToBeReadWhole_ValueIsRejected) {
    file.Write("FileMode = " + std::string(300, '0') + ";\n");
    const ckscribe::FileModeSetting mode = settings.FileMode();
    EXPECT_EQ(mode.permissions, std::nullopt);
    EXPECT_TRUE(mode.isRejected);
}

TEST_F(LoggingConfigurationTest, SetLoggingMask_WritesEveryClassOrNone) {
    file.Write("   LoggingMask = GEN_FUNC;\n");
    EXPECT_EQ(settings.SetLoggingMask("ALL_FUNC"), 1);
    EXPECT_EQ(file.Text(), "CkLog2 = {\n   LoggingMask = ALL_FUNC;\n}\n");
    for (const char* value : {"GEN_FUNC", "", "all_func", "ALL_FUNC "}) {
        settings.SetLoggingMask("ALL_FUNC");
        EXPECT_EQ(settings.SetLoggingMask(value), 1) << value;
        EXPECT_EQ(file.Text(), "CkLog2 = {\n   LoggingMask = ;\n}\n") << value;
    }
    EXPECT_EQ(settings.GetLoggingMask(), 0U);
    std::remove(file.directory.File("Wendrafil.conf").c_str());
    EXPECT_EQ(settings.SetLoggingMask("ALL_FUNC"), 0);
}

TEST(ProcessConfiguration, ProcessStarts_ConfigurationOfTheProcessIsThere) {
    EXPECT_NE(&configuration, nullptr);
}

}  // namespace
