// What the library reports of its own trouble, and where.
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
