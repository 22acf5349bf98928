// What the library reports of its own trouble, and where.
#include <sys/stat.h>

#include "tests/calls/every_function.h"

namespace {

class ErrorFile : public EveryFunction {
protected:
    // A log that cannot be opened.
    const std::string kLog = directory.File("no such directory/calls.log");
    const std::string kReport = "\n 26/11/15[10:15:30]:  Could not open capture file " + kLog + ".";

    ErrorFile() { Set("File", kLog); }

    void ExpectForwarding() {
        Load();
        script.result = 0x80000999;
        EXPECT_EQ(0x80000999u, api.C_Logout(0x51));
        EXPECT_EQ(0x80000999u, CallWith("CA_GetTSV", 0));
        EXPECT_EQ(2u, script.received.size());
    }
};

}  // namespace

TEST_F(ErrorFile, HasALineAboutALogThatCannotBeOpened) {
    ExpectForwarding();
    EXPECT_EQ(kReport, Errors());
    EXPECT_FALSE(std::filesystem::exists(directory.File("logerror.txt")));
}

TEST_F(ErrorFile, GrowsWithEachStart) {
    WriteFile(ErrorPath(), "what was there");
    ExpectForwarding();
    Exported<void()>("CkLogSpecialFinalize")();
    api.C_Logout(0x51);
    EXPECT_EQ("what was there" + kReport + kReport, Errors());
}

TEST_F(ErrorFile, IsInTheCurrentDirectoryByDefault) {
    Unset("Error");
    ExpectForwarding();
    EXPECT_EQ(kReport, Contents(directory.File("logerror.txt")));
}

TEST_F(ErrorFile, WithAnEmptyNameIsNone) {
    Set("Error", "");
    ExpectForwarding();
    EXPECT_FALSE(std::filesystem::exists(directory.File("logerror.txt")));
}

TEST_F(ErrorFile, ThatCannotBeOpenedEitherIsLeftOut) {
    Set("Error", directory.File("no such directory/errors.log"));
    ExpectForwarding();
}

TEST_F(ErrorFile, IsNotMadeWithoutNeed) {
    Set("File", LogPath());
    ExpectForwarding();
    EXPECT_FALSE(std::filesystem::exists(ErrorPath()));
}

// ---- Permissions of the files
// ------------------------------------------------------------------------------------

namespace {

class FileMode : public EveryFunction {
protected:
    FileMode() : umaskBefore(umask(027)) {}
    ~FileMode() override {
        Unload();
        umask(umaskBefore);
    }

    void Call() {
        Load();
        script.result = 0x80000999;
        EXPECT_EQ(0x80000999u, api.C_Logout(0x51));
    }

    // A configuration that makes the library report something.
    void ProvokeReport() { Set("File", directory.Path()); }

    static mode_t PermissionsOf(const std::string& path) {
        struct stat status = {};
        EXPECT_EQ(0, stat(path.c_str(), &status)) << path;
        return status.st_mode & 07777;
    }

private:
    const mode_t umaskBefore;
};

const std::string kRejection =
    "\n 26/11/15[10:15:30]:  FileMode is not an octal number up to 0777: \"0888\". "
    "New files get 0666 less the umask.";

}  // namespace

TEST_F(FileMode, KeyAbsent_FilesHave0666LessTheUmask) {
    Call();
    EXPECT_EQ(0640u, PermissionsOf(LogPath()));
    ProvokeReport();
    Restart();
    Call();
    EXPECT_EQ(0640u, PermissionsOf(ErrorPath()));
}

TEST_F(FileMode, KeySaysOctalNumber_LogHasExactlyThesePermissions) {
    Set("FileMode", "0606");
    Call();
    EXPECT_EQ(0606u, PermissionsOf(LogPath()));
}

TEST_F(FileMode, KeySaysOctalNumber_ErrorFileHasExactlyThesePermissions) {
    Set("FileMode", "0622");
    ProvokeReport();
    Call();
    EXPECT_EQ(0622u, PermissionsOf(ErrorPath()));
}

TEST_F(FileMode, FilesExist_KeepTheirPermissions) {
    Set("FileMode", "0600");
    WriteFile(LogPath(), "");
    chmod(LogPath().c_str(), 0664);
    Call();
    EXPECT_EQ(0664u, PermissionsOf(LogPath()));
    EXPECT_NE("", Log());
}

TEST_F(FileMode, ValueIsNotOctal_FilesHave0666LessTheUmaskAndEachStartReportsIt) {
    Set("FileMode", "0888");
    Call();
    EXPECT_EQ(kRejection, Errors());
    EXPECT_EQ(0640u, PermissionsOf(LogPath()));
    EXPECT_EQ(0640u, PermissionsOf(ErrorPath()));
    Exported<void()>("CkLogSpecialFinalize")();
    Call();
    EXPECT_EQ(kRejection + kRejection, Errors());
}

TEST_F(FileMode, ValueIsNotOctalAndLogIsDisabled_IsReportedAllTheSame) {
    Set("FileMode", "0888");
    Set("Enabled", "0");
    Call();
    EXPECT_EQ(kRejection, Errors());
}

TEST_F(FileMode, KeyIsTakenAway_NextStartUsesTheUmaskAgain) {
    Set("FileMode", "0606");
    Call();
    std::filesystem::remove(LogPath());
    Unset("FileMode");
    Restart();
    Call();
    EXPECT_EQ(0640u, PermissionsOf(LogPath()));
}
