// A log is deleted, renamed or rotated while an application makes calls.

#include <unistd.h>

#include <fstream>

#include "tests/faults/application.h"
#include "tests/faults/log_records.h"
#include "tests/faults/undisturbed_calls.h"

namespace {

// Waits until the coarse clock has moved. The library looks at its log again then.
void LetTheClockMove() { usleep(20'000); }

class DeletedLog : public FaultsTest {
protected:
    std::vector<CK_ULONG> SessionsIn(const std::string& path) const {
        const ParsedLog log = ParseLog(Contents(path));
        EXPECT_EQ(log.remainder, "");
        std::vector<CK_ULONG> sessions;
        for (const LogRecord& record : log.records) {
            if (record.isStart) sessions.push_back(record.FirstNumber());
        }
        return sessions;
    }

    std::string RotatedPath() const { return directory.File("calls.log.1"); }
};

using Sessions = std::vector<CK_ULONG>;

TEST_F(DeletedLog, LogDeleted_LaterCallsStandInANewLog) {
    EXPECT_TRUE(Survives([this] {
        Library library;
        library->C_Logout(1);
        ASSERT_EQ(unlink(LogPath().c_str()), 0);
        LetTheClockMove();
        library->C_Logout(2);
        ExpectCallsGoOn(library, 1);
        library->C_Logout(3);
    }));
    const Sessions sessions = SessionsIn(LogPath());
    ASSERT_EQ(sessions.size(), 4U);
    EXPECT_EQ(sessions.front(), 2U);
    EXPECT_EQ(sessions.back(), 3U);
}

TEST_F(DeletedLog, LogRotatedAndTheOldFileRemoved_LaterCallsStandInTheNewFile) {
    EXPECT_TRUE(Survives([this] {
        Library library;
        library->C_Logout(1);
        std::filesystem::rename(LogPath(), RotatedPath());
        std::ofstream(LogPath()).flush();
        LetTheClockMove();
        library->C_Logout(2);
        EXPECT_EQ(SessionsIn(RotatedPath()), (Sessions{1, 2}));
        ASSERT_EQ(unlink(RotatedPath().c_str()), 0);
        LetTheClockMove();
        library->C_Logout(3);
    }));
    EXPECT_EQ(SessionsIn(LogPath()), Sessions{3});
    EXPECT_FALSE(std::filesystem::exists(RotatedPath()));
}

TEST_F(DeletedLog, LogRenamed_LaterCallsStandUnderItsNewName) {
    EXPECT_TRUE(Survives([this] {
        Library library;
        library->C_Logout(1);
        std::filesystem::rename(LogPath(), RotatedPath());
        LetTheClockMove();
        library->C_Logout(2);
    }));
    EXPECT_EQ(SessionsIn(RotatedPath()), (Sessions{1, 2}));
    EXPECT_FALSE(std::filesystem::exists(LogPath()));
}

TEST_F(DeletedLog, LogDeletedWithItsDirectory_CallsStillReachTheTarget) {
    const std::string folder = directory.File("folder");
    std::filesystem::create_directory(folder);
    Set("File", folder + "/calls.log");
    EXPECT_TRUE(Survives([&] {
        Library library;
        library->C_Logout(1);
        std::filesystem::remove_all(folder);
        LetTheClockMove();
        ExpectCallsGoOn(library);
    }));
    EXPECT_FALSE(std::filesystem::exists(folder));
}

}  // namespace
