#include "host/append_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "host/host_shield.h"
#include "tests/temporary_directory.h"

namespace ckscribe {
namespace {

std::string Contents(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

void Write(const std::string& path, const std::string& text) { std::ofstream(path) << text; }

// Returns the number, not below `first`, under which this process has the file open, or -1.
int DescriptorOf(const std::string& path, int first = 0) {
    struct stat wanted;
    if (stat(path.c_str(), &wanted) != 0) return -1;
    for (int descriptor = first; descriptor < 2000; ++descriptor) {
        struct stat status;
        if (fstat(descriptor, &status) != 0) continue;
        if (status.st_ino == wanted.st_ino && status.st_dev == wanted.st_dev) return descriptor;
    }
    return -1;
}

class AppendFileTest : public testing::Test {
protected:
    TemporaryDirectory directory;
    const std::string path = directory.File("log");
    AppendFile file;
};

using AppendFileDeathTest = AppendFileTest;

TEST_F(AppendFileTest, FileIsMissing_OpenCreatesItAndAppendsAtOnce) {
    ASSERT_TRUE(file.Open(path.c_str()));
    EXPECT_TRUE(file.IsOpen());
    EXPECT_EQ(Contents(path), "");
    file.Append("one\n");
    EXPECT_EQ(Contents(path), "one\n");
    file.Append(std::string_view("t\0o", 3));
    file.Append("");
    EXPECT_EQ(Contents(path), std::string("one\nt\0o", 7));
}

TEST_F(AppendFileTest, FileExists_TextIsAppendedToIt) {
    for (const bool alone : {false, true}) {
        Write(path, "before, ");
        ASSERT_TRUE(alone ? file.OpenForAppendingAlone(path.c_str()) : file.Open(path.c_str()));
        file.Append("after");
        EXPECT_EQ(Contents(path), "before, after");
    }
}

TEST_F(AppendFileTest, SeveralWritersShareAFile_TextsStandInTheOrderOfTheWrites) {
    AppendFile other;
    ASSERT_TRUE(file.Open(path.c_str()));
    ASSERT_TRUE(other.Open(path.c_str()));
    file.Append("a");
    other.Append("bb");
    file.Append("ccc");
    EXPECT_EQ(Contents(path), "abbccc");
}

TEST_F(AppendFileTest, NewFile_HasThePermissionsThatTheUmaskLeaves) {
    const mode_t before = umask(027);
    ASSERT_TRUE(file.Open(path.c_str()));
    umask(before);
    struct stat status;
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST_F(AppendFileTest, PermissionsAreGiven_FileHasThemAlsoWhenItIsOpenedAgain) {
    const auto permissions = [&] {
        struct stat status = {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_mode & 07777;
    };
    const mode_t before = umask(027);
    ASSERT_TRUE(file.Open(path.c_str(), 0606));
    EXPECT_EQ(permissions(), 0606U);
    unlink(path.c_str());
    close_range(900, 1100, 0);
    for (int i = 0; i < 64; ++i) file.Append("x");
    EXPECT_EQ(permissions(), 0606U);
    unlink(path.c_str());
    ASSERT_TRUE(file.OpenForAppendingAlone(path.c_str(), 0622));
    EXPECT_EQ(permissions(), 0622U);
    umask(before);
}

// ---- A file that is lost ---------------------------------------------------------------------------------

class LostFile : public AppendFileTest {
protected:
    LostFile() {
        EXPECT_TRUE(file.Open(path.c_str()));
        file.Append("before");
    }
    // Makes a directory at the log's path. Nobody, not even root, can open the log there.
    void PutDirectoryInItsPlace() const {
        std::filesystem::remove(path);
        std::filesystem::create_directory(path);
    }
    void AppendUntilItIsLookedAt() {
        for (int i = 0; i < 64; ++i) file.Append("x");
    }
};

TEST_F(LostFile, NothingHappened_FileIsNotLost) {
    AppendUntilItIsLookedAt();
    EXPECT_EQ(file.WhyLost(), 0);
    EXPECT_EQ(file.Path(), path);
}

TEST_F(LostFile, DescriptorIsClosedAndFileCannotBeOpened_WhyLostSaysWhyUntilItCan) {
    close(DescriptorOf(path));
    PutDirectoryInItsPlace();
    AppendUntilItIsLookedAt();
    EXPECT_EQ(file.WhyLost(), EISDIR);
    EXPECT_FALSE(file.IsOpen());
    std::filesystem::remove(path);
    AppendUntilItIsLookedAt();
    EXPECT_EQ(file.WhyLost(), 0);
    EXPECT_TRUE(file.IsOpen());
}

TEST_F(LostFile, FileIsDeletedAndCannotBeCreated_WhyLostSaysWhyUntilItCan) {
    PutDirectoryInItsPlace();
    AppendUntilItIsLookedAt();
    EXPECT_EQ(file.WhyLost(), EISDIR);
    std::filesystem::remove(path);
    AppendUntilItIsLookedAt();
    EXPECT_EQ(file.WhyLost(), 0);
    EXPECT_NE(Contents(path), "");
}

TEST_F(LostFile, FileIsClosed_FileIsNotLostAnyMore) {
    PutDirectoryInItsPlace();
    AppendUntilItIsLookedAt();
    file.Close();
    EXPECT_EQ(file.WhyLost(), 0);
    EXPECT_STREQ(file.Path(), "");
}

TEST_F(LostFile, PathIsTooLongToBeRememberedAndDescriptorIsClosed_WhyLostSaysThatThereIsNoFile) {
    const std::string detour = directory.Path() + std::string(600, '/') + std::string(600, '/') + "log";
    ASSERT_TRUE(file.Open(detour.c_str()));
    EXPECT_STREQ(file.Path(), "");
    close(DescriptorOf(path));
    AppendUntilItIsLookedAt();
    EXPECT_EQ(file.WhyLost(), ENOENT);
}

TEST_F(AppendFileTest, NoFileIsOpen_AppendAndCloseDoNothing) {
    EXPECT_FALSE(file.IsOpen());
    file.Append("lost");
    file.Close();
    ASSERT_TRUE(file.Open(path.c_str()));
    file.Append("kept");
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    file.Append("lost");
    EXPECT_EQ(Contents(path), "kept");
}

TEST_F(AppendFileTest, AnotherFileIsOpened_FirstIsClosed) {
    ASSERT_TRUE(file.Open(path.c_str()));
    const int number = DescriptorOf(path);
    const std::string second = directory.File("second");
    ASSERT_TRUE(file.Open(second.c_str()));
    EXPECT_EQ(DescriptorOf(path), -1);
    EXPECT_EQ(DescriptorOf(second), number);  // free again before the second was opened
    file.Append("x");
    EXPECT_EQ(Contents(path), "");
    EXPECT_EQ(Contents(second), "x");
}

TEST_F(AppendFileTest, ObjectEnds_FileIsClosed) {
    {
        AppendFile brief;
        ASSERT_TRUE(brief.Open(path.c_str()));
        EXPECT_NE(DescriptorOf(path), -1);
    }
    EXPECT_EQ(DescriptorOf(path), -1);
}

TEST_F(AppendFileTest, PathIsNoFile_OpenFailsAndSaysWhy) {
    ASSERT_TRUE(file.Open(path.c_str()));
    EXPECT_FALSE(file.Open(directory.Path().c_str()));
    EXPECT_EQ(errno, EISDIR);
    EXPECT_FALSE(file.IsOpen());  // the first one is closed, too
    EXPECT_FALSE(file.Open(directory.File("missing/log").c_str()));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(file.Open(""));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(file.Open((path + "/log").c_str()));
    EXPECT_EQ(errno, ENOTDIR);
    EXPECT_EQ(DescriptorOf(path), -1);
}

// Opens files as a user to whom the modes of files apply.
void OpenFilesOfOtherModes(const std::string& directory) {
    chmod(directory.c_str(), 0777);
    if (geteuid() == 0 && seteuid(65534) != 0) _exit(1);
    AppendFile file;
    const auto modeIs = [&](mode_t mode, bool opens, bool opensForAppendingAlone) {
        const std::string path = directory + "/mode";
        unlink(path.c_str());
        close(open(path.c_str(), O_WRONLY | O_CREAT, mode));
        if (file.Open(path.c_str()) != opens) _exit(2);
        if (file.OpenForAppendingAlone(path.c_str()) != opensForAppendingAlone) _exit(3);
    };
    modeIs(0600, true, true);
    modeIs(0400, false, false);
    modeIs(0200, false, true);
    modeIs(0000, false, false);
    _exit(0);
}

TEST_F(AppendFileDeathTest, FilesOfOtherModes_AreOpenedAsTheModesAllow) {
    EXPECT_EXIT(OpenFilesOfOtherModes(directory.Path()), testing::ExitedWithCode(0), "");
}

TEST_F(AppendFileTest, Descriptor_IsHighAndNotInherited) {
    const int free = dup(0);
    close(free);
    ASSERT_TRUE(file.Open(path.c_str()));
    const int descriptor = DescriptorOf(path);
    EXPECT_GE(descriptor, 900);
    EXPECT_EQ(fcntl(descriptor, F_GETFD), FD_CLOEXEC);
    EXPECT_NE(fcntl(descriptor, F_GETFL) & O_APPEND, 0);
    const int stillFree = dup(0);
    close(stillFree);
    EXPECT_EQ(stillFree, free);
}

TEST_F(AppendFileDeathTest, NoHighDescriptorIsAllowed_FileIsOpenedUnderALowOne) {
    const auto open = [this] {
        const rlimit few = {100, 100};
        setrlimit(RLIMIT_NOFILE, &few);
        if (!file.Open(path.c_str())) _exit(1);
        const int descriptor = DescriptorOf(path);
        if (descriptor < 0 || fcntl(descriptor, F_GETFD) != FD_CLOEXEC) _exit(2);
        file.Append("x");
        _exit(Contents(path) == "x" ? 0 : 3);
    };
    EXPECT_EXIT(open(), testing::ExitedWithCode(0), "");
}

// ---- Hosts that close descriptors which are not theirs ---------------------------------------------------

TEST_F(AppendFileTest, HostClosesTheDescriptor_FileIsOpenedAgain) {
    ASSERT_TRUE(file.Open(path.c_str()));
    file.Append("one ");
    close(DescriptorOf(path));
    file.Append("two ");
    EXPECT_GE(DescriptorOf(path), 900);
    file.Append("three");
    EXPECT_EQ(Contents(path), "one two three");
}

// The coarse clock moves on within this time.
void WaitForAnInspection() { usleep(20'000); }

TEST_F(AppendFileTest, HostUsesTheNumberForAFileOfItsOwn_NothingIsWrittenThere) {
    ASSERT_TRUE(file.Open(path.c_str()));
    file.Append("one ");
    const int number = DescriptorOf(path);
    const std::string others = directory.File("others");
    const int other = open(others.c_str(), O_WRONLY | O_CREAT, 0600);
    ASSERT_EQ(dup2(other, number), number);
    WaitForAnInspection();
    file.Append("two");
    EXPECT_EQ(Contents(path), "one two");
    EXPECT_EQ(Contents(others), "");
    EXPECT_EQ(write(number, "still open", 10), 10);
    close(number);
    close(other);
}

TEST_F(AppendFileTest, HostUsesTheNumberForAFileOfItsOwn_CloseLeavesItOpen) {
    ASSERT_TRUE(file.Open(path.c_str()));
    const int number = DescriptorOf(path);
    const int other = open(directory.File("others").c_str(), O_WRONLY | O_CREAT, 0600);
    ASSERT_EQ(dup2(other, number), number);
    file.Close();
    EXPECT_EQ(write(number, "x", 1), 1);
    close(number);
    close(other);
}

// While an object of this class lives, relative paths are relative to another directory.
class CurrentDirectory {
public:
    explicit CurrentDirectory(const std::string& path) : before(open(".", O_RDONLY)) {
        EXPECT_EQ(chdir(path.c_str()), 0);
    }
    ~CurrentDirectory() {
        EXPECT_EQ(fchdir(before), 0);
        close(before);
    }
    CurrentDirectory(const CurrentDirectory&) = delete;
    CurrentDirectory& operator=(const CurrentDirectory&) = delete;

private:
    const int before;
};

TEST_F(AppendFileTest, HostChangesItsDirectory_RelativePathStillNamesTheSameFile) {
    const std::string elsewhere = directory.File("elsewhere");
    ASSERT_EQ(mkdir(elsewhere.c_str(), 0700), 0);
    {
        const CurrentDirectory current(directory.Path());
        ASSERT_TRUE(file.Open("log"));
    }
    const CurrentDirectory current(elsewhere);
    file.Append("one ");
    close(DescriptorOf(path));
    file.Append("two");
    EXPECT_EQ(Contents(path), "one two");
    EXPECT_NE(access("log", F_OK), 0);
}

TEST_F(AppendFileTest, FileCannotBeOpenedAgain_ItIsTriedUntilItCan) {
    ASSERT_TRUE(file.Open(path.c_str()));
    file.Append("one ");
    const std::string moved = directory.File("moved");
    close(DescriptorOf(path));
    std::filesystem::rename(path, moved);
    ASSERT_EQ(mkdir(path.c_str(), 0700), 0);
    for (int i = 0; i < 100; ++i) file.Append("lost");
    EXPECT_FALSE(file.IsOpen());
    ASSERT_EQ(rmdir(path.c_str()), 0);
    std::filesystem::rename(moved, path);
    WaitForAnInspection();
    file.Append("two");
    EXPECT_TRUE(file.IsOpen());
    EXPECT_EQ(Contents(path), "one two");
}

TEST_F(AppendFileTest, DeletedFile_IsCreatedAgainAtItsPath) {
    ASSERT_TRUE(file.Open(path.c_str()));
    file.Append("one ");
    const int number = DescriptorOf(path);
    unlink(path.c_str());
    WaitForAnInspection();
    file.Append("two ");
    file.Append("three");
    EXPECT_EQ(Contents(path), "two three");
    EXPECT_EQ(fcntl(number, F_GETFD), -1) << "the deleted file is still open";
}

TEST_F(AppendFileTest, DeletedFileWithASuccessor_SuccessorIsAppendedTo) {
    ASSERT_TRUE(file.Open(path.c_str()));
    file.Append("one ");
    unlink(path.c_str());
    Write(path, "successor: ");
    WaitForAnInspection();
    file.Append("two");
    EXPECT_EQ(Contents(path), "successor: two");
}

TEST_F(AppendFileTest, DeletedFile_IsCreatedAgainAfterSixtyFourAppends) {
    ASSERT_TRUE(file.Open(path.c_str()));
    unlink(path.c_str());
    for (int i = 0; i < 65; ++i) file.Append("x");
    EXPECT_NE(Contents(path), "");
}

TEST_F(AppendFileTest, RenamedFile_IsAppendedToUnderItsNewName) {
    const std::string renamed = directory.File("renamed");
    ASSERT_TRUE(file.Open(path.c_str()));
    file.Append("one ");
    std::filesystem::rename(path, renamed);
    Write(path, "another file");
    WaitForAnInspection();
    file.Append("two");
    EXPECT_EQ(Contents(renamed), "one two");
    EXPECT_EQ(Contents(path), "another file");
}

TEST_F(AppendFileTest, FileWithOneOfTwoNamesDeleted_IsAppendedTo) {
    const std::string second = directory.File("second");
    ASSERT_TRUE(file.Open(path.c_str()));
    std::filesystem::create_hard_link(path, second);
    unlink(path.c_str());
    WaitForAnInspection();
    file.Append("x");
    EXPECT_EQ(Contents(second), "x");
    EXPECT_NE(access(path.c_str(), F_OK), 0);
}

TEST_F(AppendFileTest, DeletedFileThatCannotBeCreatedAgain_IsTriedAgain) {
    ASSERT_TRUE(file.Open(path.c_str()));
    unlink(path.c_str());
    ASSERT_EQ(mkdir(path.c_str(), 0700), 0);
    WaitForAnInspection();
    file.Append("lost");
    EXPECT_TRUE(file.IsOpen());
    ASSERT_EQ(rmdir(path.c_str()), 0);
    WaitForAnInspection();
    file.Append("kept");
    EXPECT_EQ(Contents(path), "kept");
}

#ifdef __linux__
TEST_F(AppendFileTest, FileThatNeverHadAName_IsAppendedTo) {
    const int nameless = open(path.c_str(), O_RDWR | O_CREAT, 0600);
    unlink(path.c_str());
    const std::string sameFile = "/proc/self/fd/" + std::to_string(nameless);
    ASSERT_TRUE(file.Open(sameFile.c_str()));
    const int number = DescriptorOf(sameFile, nameless + 1);
    ASSERT_NE(number, -1);
    for (int i = 0; i < 65; ++i) file.Append("x");
    EXPECT_EQ(DescriptorOf(sameFile, nameless + 1), number) << "it was opened again";
    struct stat status;
    ASSERT_EQ(fstat(nameless, &status), 0);
    EXPECT_EQ(status.st_size, 65);
    close(nameless);
}
#endif

TEST_F(AppendFileTest, FileIsClosedWhileItIsLost_ItStaysClosed) {
    ASSERT_TRUE(file.Open(path.c_str()));
    close(DescriptorOf(path));
    std::filesystem::remove(path);
    ASSERT_EQ(mkdir(path.c_str(), 0700), 0);
    file.Append("lost");
    file.Close();
    ASSERT_EQ(rmdir(path.c_str()), 0);
    WaitForAnInspection();
    file.Append("lost");
    EXPECT_NE(access(path.c_str(), F_OK), 0);
}

TEST_F(AppendFileTest, PathHasUpToAThousandCharacters_FileCanBeOpenedAgain) {
    const std::size_t slash = path.rfind('/');
    for (const std::size_t length : {1000U, 1001U}) {
        unlink(path.c_str());
        const std::string longer = std::string(path).insert(slash, length - path.size(), '/');
        ASSERT_TRUE(file.Open(longer.c_str()));
        close(DescriptorOf(path));
        file.Append("x");
        EXPECT_EQ(Contents(path), length == 1000 ? "x" : "") << length;
    }
}

// ---- FIFOs ------------------------------------------------------------------------------------------------

class Fifo : public AppendFileTest {
protected:
    void SetUp() override { ASSERT_EQ(mkfifo(path.c_str(), 0600), 0); }

    int Reader() { return open(path.c_str(), O_RDONLY | O_NONBLOCK); }

    static std::string TakenBy(int reader) {
        std::string taken;
        char bytes[4096];
        for (ssize_t count; (count = read(reader, bytes, sizeof bytes)) > 0;) {
            taken.append(bytes, static_cast<std::size_t>(count));
        }
        return taken;
    }
};

using FifoDeathTest = Fifo;

TEST_F(Fifo, FifoHasNoReader_OpenAndAppendDoNotHang) {
    ASSERT_TRUE(file.Open(path.c_str()));
    file.Append("waiting");
    const int reader = Reader();
    EXPECT_EQ(TakenBy(reader), "waiting");
    close(reader);
}

TEST_F(Fifo, FifoIsFull_WholeRecordsAreDropped) {
    ASSERT_TRUE(file.Open(path.c_str()));
    const std::string record(1000, 'r');
    for (int i = 0; i < 2000; ++i) file.Append(record);
    const int reader = Reader();
    const std::string taken = TakenBy(reader);
    EXPECT_GT(taken.size(), 0U);
    EXPECT_EQ(taken.size() % record.size(), 0U);
    file.Append("next");
    EXPECT_EQ(TakenBy(reader), "next");
    close(reader);
}

TEST_F(Fifo, RecordIsLargerThanTheFifo_AppendDoesNotHang) {
    ASSERT_TRUE(file.Open(path.c_str()));
    file.Append(std::string(3'000'000, 'r'));
    const int reader = Reader();
    const std::string taken = TakenBy(reader);
    EXPECT_EQ(taken, std::string(taken.size(), 'r'));
    EXPECT_LT(taken.size(), 3'000'000U);
    close(reader);
}

// The library avoids the C library's places for a cancellation here, see host/uncancelled_io.h.
TEST_F(Fifo, ThreadCanBeCancelledAtAnyInstruction_FifoIsOpenedWrittenAndClosed) {
    const int reader = Reader();
    int type = 0;
    pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, &type);
    BehindHostShield([this] {
        if (!file.Open(path.c_str())) return;
        file.Append("one record, ");
        file.Append(std::string(3'000'000, 'r'));  // waits for the reader, in vain
    });
    pthread_setcanceltype(type, nullptr);
    const std::string taken = TakenBy(reader);
    EXPECT_EQ(taken, "one record, " + std::string(taken.size() - 12, 'r'));
    EXPECT_GT(taken.size(), 12U);
    EXPECT_LT(taken.size(), 3'000'000U);
    BehindHostShield([this] { file.Close(); });
    EXPECT_FALSE(file.IsOpen());
    close(reader);
}

TEST_F(Fifo, FifoHasNoReader_OpeningForAppendingOnlyFails) {
    EXPECT_FALSE(file.OpenForAppendingAlone(path.c_str()));
    EXPECT_EQ(errno, ENXIO);
    const int reader = Reader();
    ASSERT_TRUE(file.OpenForAppendingAlone(path.c_str()));
    file.Append("told");
    EXPECT_EQ(TakenBy(reader), "told");
    close(reader);
}

// The host writes to the FIFO too, and must learn that nobody reads any more.
TEST_F(Fifo, LastReaderLeaves_HostsOwnWritesFail) {
    const int reader = Reader();
    ASSERT_TRUE(file.Open(path.c_str()));
    file.Append("read");
    EXPECT_EQ(TakenBy(reader), "read");
    const int host = open(path.c_str(), O_WRONLY | O_NONBLOCK);
    ASSERT_GE(host, 0);
    close(reader);
    const auto previous = std::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(write(host, "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
    std::signal(SIGPIPE, previous);
    file.Append("unread");
    const int next = Reader();
    file.Append("read again");
    EXPECT_EQ(TakenBy(next), "read again");
    close(next);
    close(host);
}

TEST_F(FifoDeathTest, ReaderLeaves_NoSignalIsRaised) {
    const auto append = [this](bool alone) {
        std::signal(SIGPIPE, SIG_DFL);
        const int reader = Reader();
        if (!(alone ? file.OpenForAppendingAlone(path.c_str()) : file.Open(path.c_str()))) _exit(1);
        file.Append("read");
        close(reader);
        file.Append("unread");
        file.Append("unread");
        _exit(0);
    };
    EXPECT_EXIT(append(false), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(append(true), testing::ExitedWithCode(0), "");
}

// ---- Limits -----------------------------------------------------------------------------------------------

void LimitFileSize(rlim_t size) {
    std::signal(SIGXFSZ, SIG_DFL);
    const rlimit limit = {size, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &limit);
}

TEST_F(AppendFileDeathTest, FileReachesTheLimitOfItsSize_NoSignalIsRaised) {
    const auto append = [this] {
        LimitFileSize(100);
        if (!file.Open(path.c_str())) _exit(1);
        for (int i = 0; i < 40; ++i) file.Append(std::string(30, 'x'));
        LimitFileSize(RLIM_INFINITY);
        _exit(Contents(path) == std::string(100, 'x') ? 0 : 2);
    };
    EXPECT_EXIT(append(), testing::ExitedWithCode(0), "");
}

TEST_F(AppendFileDeathTest, LimitOfTheFileSizeIsSetLater_NoSignalIsRaised) {
    const auto append = [this](int appendsBefore) {
        unlink(path.c_str());
        if (!file.Open(path.c_str())) _exit(1);
        for (int i = 0; i < appendsBefore; ++i) file.Append("bb");
        LimitFileSize(101);
        for (int i = 0; i < 40; ++i) file.Append(std::string(30, 'x'));
        LimitFileSize(RLIM_INFINITY);
        _exit(Contents(path).size() == 101 ? 0 : 2);
    };
    for (int appendsBefore = 0; appendsBefore < 20; ++appendsBefore) {
        EXPECT_EXIT(append(appendsBefore), testing::ExitedWithCode(0), "") << appendsBefore;
    }
}

#ifdef __linux__
TEST_F(AppendFileTest, DiskIsFull_TextIsDroppedAndTheFileStaysOpen) {
    ASSERT_TRUE(file.Open("/dev/full"));
    file.Append("nowhere to go");
    EXPECT_TRUE(file.IsOpen());
}
#endif

}  // namespace
}  // namespace ckscribe
