// An application closes every descriptor, as daemons do, and may get the log's number for a file of its
// own. The library neither writes into that file nor closes it, and the log goes on.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "tests/faults/application.h"
#include "tests/faults/log_records.h"
#include "tests/faults/undisturbed_calls.h"

namespace {

constexpr int kMostDescriptors = 2000;

int DescriptorOf(const std::string& path) {
    struct stat wanted;
    if (stat(path.c_str(), &wanted) != 0) return -1;
    for (int descriptor = 0; descriptor < kMostDescriptors; ++descriptor) {
        struct stat status;
        if (fstat(descriptor, &status) != 0) continue;
        if (status.st_ino == wanted.st_ino && status.st_dev == wanted.st_dev) return descriptor;
    }
    return -1;
}

void CloseEverything() {
    for (int descriptor = 3; descriptor < kMostDescriptors; ++descriptor) close(descriptor);
}

// Waits until the coarse clock has moved. The library then looks at the log's descriptor.
void LetTheClockMove() { usleep(20'000); }

// Opens a file of the application's under the number that the log had.
void OpenOwnFileAs(int descriptor, const std::string& path) {
    const int own = open(path.c_str(), O_RDWR | O_CREAT | O_APPEND, 0600);
    ASSERT_EQ(dup2(own, descriptor), descriptor);
    if (own != descriptor) close(own);
    LetTheClockMove();
}

class DescriptorClosedByApplication : public FaultsTest {
protected:
    // Returns the sessions of the calls in the log, and expects whole records.
    std::vector<CK_ULONG> LoggedSessions() const {
        const ParsedLog log = ParseLog(Log());
        EXPECT_EQ(log.remainder, "");
        std::vector<CK_ULONG> sessions;
        for (const LogRecord& record : log.records) {
            if (record.isStart) sessions.push_back(record.FirstNumber());
        }
        return sessions;
    }

    std::string OwnPath() const { return directory.File("own"); }

    // Expects that the application can still write into its own file, which `descriptor` names.
    static void ExpectThatItIsOpen(int descriptor) { EXPECT_EQ(write(descriptor, "own text\n", 9), 9); }
};

TEST_F(DescriptorClosedByApplication, AllDescriptorsAreClosed_LogGoesOn) {
    EXPECT_TRUE(Survives([] {
        Library library;
        for (CK_ULONG session = 1; session <= 5; ++session) {
            library->C_Logout(session);
            CloseEverything();
        }
        ExpectCallsGoOn(library);
        library->C_Logout(6);
    }));
    const std::vector<CK_ULONG> sessions = LoggedSessions();
    ASSERT_EQ(sessions.size(), 5U + 2 * 40U + 1);
    EXPECT_EQ(std::vector<CK_ULONG>(sessions.begin(), sessions.begin() + 5),
              (std::vector<CK_ULONG>{1, 2, 3, 4, 5}));
    EXPECT_EQ(sessions.back(), 6U);
}

TEST_F(DescriptorClosedByApplication, NumberIsGivenToAFileOfTheApplication_LogGoesOnAndTheFileIsUntouched) {
    EXPECT_TRUE(Survives([this] {
        Library library;
        library->C_Logout(1);
        const int descriptor = DescriptorOf(LogPath());
        ASSERT_GE(descriptor, 3);
        CloseEverything();
        OpenOwnFileAs(descriptor, OwnPath());
        library->C_Logout(2);
        library->C_Logout(3);
        ExpectThatItIsOpen(descriptor);
    }));
    EXPECT_EQ(Contents(OwnPath()), "own text\n");
    EXPECT_EQ(LoggedSessions(), (std::vector<CK_ULONG>{1, 2, 3}));
}

TEST_F(DescriptorClosedByApplication, NumberIsGivenToAFileDuringACall_LogGoesOnAndTheFileIsUntouched) {
    static int descriptor;
    static std::string ownPath;
    ownPath = OwnPath();
    EXPECT_TRUE(Survives([this] {
        Library library;
        library->C_Logout(1);
        descriptor = DescriptorOf(LogPath());
        targetAnswer = [](const char*, const TargetWord*, std::size_t) -> CK_RV {
            CloseEverything();
            OpenOwnFileAs(descriptor, ownPath);
            return CKR_OK;
        };
        library->C_Logout(2);
        ExpectThatItIsOpen(descriptor);
    }));
    EXPECT_EQ(Contents(OwnPath()), "own text\n");
    EXPECT_EQ(LoggedSessions(), (std::vector<CK_ULONG>{1, 2}));
}

TEST_F(DescriptorClosedByApplication, NumberIsGivenToAFile_StopLeavesTheFileOpen) {
    const auto expectThatStopLeavesIt = [this](void (*stop)(Library&)) {
        unlink(OwnPath().c_str());
        EXPECT_TRUE(Survives([this, stop] {
            Library library;
            library->C_Logout(1);
            const int descriptor = DescriptorOf(LogPath());
            CloseEverything();
            OpenOwnFileAs(descriptor, OwnPath());
            stop(library);
            ExpectThatItIsOpen(descriptor);
        }));
        EXPECT_EQ(Contents(OwnPath()), "own text\n");
    };
    expectThatStopLeavesIt([](Library& library) { library.Finalize(); });
    expectThatStopLeavesIt([](Library& library) { library.Close(); });
}

// The library finds the log again from another directory.
TEST_F(DescriptorClosedByApplication, ApplicationChangesItsDirectory_LogGoesOn) {
    EXPECT_TRUE(Survives([] {
        Library library;
        library->C_Logout(1);
        CloseEverything();
        ASSERT_EQ(chdir("/"), 0);
        library->C_Logout(2);
    }));
    EXPECT_EQ(LoggedSessions(), (std::vector<CK_ULONG>{1, 2}));
}

// If the library cannot open the log, calls go on.
TEST_F(DescriptorClosedByApplication, LogCannotBeOpenedAgain_CallsGoOn) {
    EXPECT_TRUE(Survives([this] {
        Library library;
        library->C_Logout(1);
        const int descriptor = DescriptorOf(LogPath());
        std::filesystem::rename(LogPath(), LogPath() + ".old");
        ASSERT_EQ(mkdir(LogPath().c_str(), 0700), 0);
        CloseEverything();
        OpenOwnFileAs(descriptor, OwnPath());
        ExpectCallsGoOn(library);
        ExpectThatItIsOpen(descriptor);
    }));
    EXPECT_EQ(Contents(OwnPath()), "own text\n");
}

// ---- A log that is lost ----------------------------------------------------------------------------------

class LostLog : public DescriptorClosedByApplication {
protected:
    // Closes every descriptor while the log cannot be opened.
    void LoseLog() const {
        std::filesystem::rename(LogPath(), LogPath() + ".old");
        std::filesystem::create_directory(LogPath());
        CloseEverything();
        LetTheClockMove();
    }
    void FindLog() const {
        std::filesystem::remove(LogPath());
        LetTheClockMove();
    }

    // Expects lines with this text, and nothing else, in the error file.
    void ExpectReports(std::size_t count, const std::string& reason) const {
        const std::string line =
            "Lost " + KindOfFile() + " " + LogPath() + " and could not open it again: " + reason + ".";
        std::string errors = Errors();
        for (std::size_t i = 0; i < count; ++i) {
            const std::string stamp = "\n 26/11/22[01:23:45]:  ";
            ASSERT_EQ(errors.substr(std::min(stamp.size(), errors.size()), line.size()), line);
            errors.erase(0, stamp.size() + line.size());
        }
        EXPECT_EQ(errors, "");
    }
};

TEST_F(LostLog, LogCannotBeOpenedAgain_OneLineInTheErrorFileSaysWhy) {
    EXPECT_TRUE(Survives([this] {
        Library library;
        library->C_Logout(1);
        LoseLog();
        ExpectCallsGoOn(library);
    }));
    ExpectReports(1, "Is a directory");
}

TEST_F(LostLog, LogIsFoundAndLostAgain_EachLossIsReportedOnce) {
    EXPECT_TRUE(Survives([this] {
        Library library;
        for (int losses = 0; losses < 2; ++losses) {
            library->C_Logout(1);
            LoseLog();
            for (int i = 0; i < 200; ++i) library->C_Logout(2);
            FindLog();
        }
        library->C_Logout(1);
    }));
    ExpectReports(2, "Is a directory");
    EXPECT_EQ(LoggedSessions(), (std::vector<CK_ULONG>{1}));
}

TEST_F(LostLog, LibraryIsStartedAgainAndItsLogIsLostBeforeTheFirstRecord_LossIsReportedAgain) {
    EXPECT_TRUE(Survives([this] {
        Library library;
        for (int starts = 0; starts < 2; ++starts) {
            library.Exported<void()>("CkLogSpecialInitialize")();
            LoseLog();
            library->C_Logout(1);
            library.Finalize();
            FindLog();
        }
    }));
    ExpectReports(2, "Is a directory");
}

TEST_F(LostLog, ErrorFileCannotBeWrittenAtFirst_LineIsWrittenAsSoonAsItCan) {
    EXPECT_TRUE(Survives([this] {
        Library library;
        library->C_Logout(1);
        std::filesystem::create_directory(ErrorPath());
        LoseLog();
        ExpectCallsGoOn(library);
        std::filesystem::remove(ErrorPath());
        LetTheClockMove();
        ExpectCallsGoOn(library);
    }));
    ExpectReports(1, "Is a directory");
}

TEST_F(LostLog, LogIsDeletedWithItsDirectory_OneLineInTheErrorFileSaysSo) {
    const std::string logs = directory.File("logs");
    std::filesystem::create_directory(logs);
    Set("File", logs + "/calls.log");
    EXPECT_TRUE(Survives([&] {
        Library library;
        library->C_Logout(1);
        std::filesystem::remove_all(logs);
        LetTheClockMove();
        ExpectCallsGoOn(library);
    }));
    EXPECT_EQ(Errors().substr(std::strlen("\n 26/11/22[01:23:45]:  ")),
              "Lost " + KindOfFile() + " " + logs +
                  "/calls.log and could not open it again: No such file or directory.");
}

// Root started this daemon. It closes what it inherited and gives up the right to open log and configuration.
TEST_F(LostLog, LogAndConfigurationMayNotBeReadAnyMore_ErrorFileOfTheStartHasTheLine) {
    WriteConfigurationFile(ConfigurationText());
    std::filesystem::permissions(directory.Path(), std::filesystem::perms(0711));
    const std::string errors = directory.File("errors.log");
    close(open(errors.c_str(), O_CREAT | O_WRONLY, 0666));
    chmod(errors.c_str(), 0666);
    EXPECT_TRUE(Survives([this] {
        Library library;
        library->C_Logout(1);
        chmod(LogPath().c_str(), 0);
        chmod(ConfigurationPath().c_str(), 0);
        GiveUpRightsOfRoot();
        CloseEverything();
        LetTheClockMove();
        ExpectCallsGoOn(library);
    }));
    ExpectReports(1, "Permission denied");
}

}  // namespace
