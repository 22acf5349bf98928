// The library reports its own trouble in the error file.
#include <sys/stat.h>

#include "tests/calls/every_function.h"

namespace {

class ErrorFile : public EveryFunction {
protected:
    // This log cannot be opened.
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

TEST_F(ErrorFile, LogCannotBeOpened_OneLineSaysSo) {
    ExpectForwarding();
    EXPECT_EQ(kReport, Errors());
    EXPECT_FALSE(std::filesystem::exists(directory.File("logerror.txt")));
}

TEST_F(ErrorFile, LibraryStartsAgain_ErrorFileGrows) {
    WriteFile(ErrorPath(), "what was there");
    ExpectForwarding();
    Exported<void()>("CkLogSpecialFinalize")();
    api.C_Logout(0x51);
    EXPECT_EQ("what was there" + kReport + kReport, Errors());
}

TEST_F(ErrorFile, KeyAbsent_ErrorFileIsInTheCurrentDirectory) {
    Unset("Error");
    ExpectForwarding();
    EXPECT_EQ(kReport, Contents(directory.File("logerror.txt")));
}

TEST_F(ErrorFile, NameIsEmpty_NoErrorFileIsMade) {
    Set("Error", "");
    ExpectForwarding();
    EXPECT_FALSE(std::filesystem::exists(directory.File("logerror.txt")));
}

TEST_F(ErrorFile, ErrorFileCannotBeOpenedEither_CallsReachTheTarget) {
    Set("Error", directory.File("no such directory/errors.log"));
    ExpectForwarding();
}

TEST_F(ErrorFile, NothingToReport_NoErrorFileIsMade) {
    Set("File", LogPath());
    ExpectForwarding();
    EXPECT_FALSE(std::filesystem::exists(ErrorPath()));
}

// ---- Targets that cannot be used -------------------------------------------------------------------------

namespace {

class ErrorFileOfUnusableTarget : public EveryFunction {
protected:
    void UseTarget(const std::string& path) { Set("LibUNIX64", path); }

    void ExpectLineAboutTarget(const std::string& text) {
        Load();
        testing::internal::CaptureStdout();  // announcements are not this test's matter
        EXPECT_EQ(CKR_FUNCTION_NOT_SUPPORTED, CallWith("C_GetFunctionList", 0));
        testing::internal::GetCapturedStdout();
        CallWith("C_GetSlotList", 0);
        EXPECT_EQ(Line(text), Errors());
    }

    static std::string Line(const std::string& text) { return "\n 26/11/15[10:15:30]:  " + text; }

    const std::string kPath = directory.File("target.so");
};

}  // namespace

TEST_F(ErrorFileOfUnusableTarget, TargetIsMissing_OneLineSaysPathAndReason) {
    UseTarget(kPath);
    ExpectLineAboutTarget("Could not load target library " + kPath +
                          ": cannot open shared object file: No such file or directory.");
}

TEST_F(ErrorFileOfUnusableTarget, TargetIsNoLibrary_OneLineSaysPathAndReason) {
    WriteFile(kPath, "This is no library, whatever its name says, and it is longer than a header.");
    UseTarget(kPath);
    ExpectLineAboutTarget("Could not load target library " + kPath + ": invalid ELF header.");
}

TEST_F(ErrorFileOfUnusableTarget, TargetIsOfAnotherMachine_OneLineSaysPathAndReason) {
    std::string image = Contents(TargetNamed("scripted_target"));
    image[4] = 1;  // the class of 32-bit images
    WriteFile(kPath, image);
    UseTarget(kPath);
    ExpectLineAboutTarget("Could not load target library " + kPath + ": wrong ELF class: ELFCLASS32.");
}

TEST_F(ErrorFileOfUnusableTarget, TargetIsThisLibrary_OneLineSaysSo) {
    UseTarget(kLibraryPath);
    ExpectLineAboutTarget(std::string("Could not load target library ") + kLibraryPath +
                          ": is this library itself.");
}

TEST_F(ErrorFileOfUnusableTarget, TargetLacksItsList_OneLineSaysPathAndReason) {
    const std::string path = TargetNamed("scripted_target_without_list");
    UseTarget(path);
    ExpectLineAboutTarget("Found no C_GetFunctionList in target library " + path +
                          ": undefined symbol: C_GetFunctionList.");
}

TEST_F(ErrorFileOfUnusableTarget, TargetRefusesTheListThatItLeavesItsFunctionsTo_OneLineSaysTheResult) {
    const std::string path = TargetNamed("scripted_target_that_exports_its_list");
    UseTarget(path);
    script.result = CKR_FUNCTION_NOT_SUPPORTED;
    ExpectLineAboutTarget("Got no functions from target library " + path +
                          ": its C_GetFunctionList returned CKR_FUNCTION_NOT_SUPPORTED (0x54) and no list.");
}

TEST_F(ErrorFileOfUnusableTarget, LoggingIsDisabled_LineIsWrittenAllTheSame) {
    Set("Enabled", "0");
    UseTarget(kPath);
    ExpectLineAboutTarget("Could not load target library " + kPath +
                          ": cannot open shared object file: No such file or directory.");
    EXPECT_FALSE(std::filesystem::exists(LogPath()));
}

TEST_F(ErrorFileOfUnusableTarget, LibraryStartsAgain_EachStartWritesOneLine) {
    UseTarget(kPath);
    Load();
    const std::string line = Line("Could not load target library " + kPath +
                                  ": cannot open shared object file: No such file or directory.");
    CallWith("C_Logout", 0);
    CallWith("C_Logout", 0);
    Exported<void()>("CkLogSpecialFinalize")();
    CallWith("C_Logout", 0);
    EXPECT_EQ(line + line, Errors());
}

TEST_F(ErrorFileOfUnusableTarget, FileModeIsSet_ErrorFileHasThesePermissions) {
    Set("FileMode", "0622");
    UseTarget(kPath);
    Load();
    CallWith("C_Logout", 0);
    struct stat status = {};
    EXPECT_EQ(0, stat(ErrorPath().c_str(), &status));
    EXPECT_EQ(0622u, status.st_mode & 07777);
}

// ---- Permissions of the files ----------------------------------------------------------------------------

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

    // Sets a configuration that makes the library report something.
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
