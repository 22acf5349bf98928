// A log cannot be opened or written. Calls go on with the target's results. The application sees no signal
// and no wait. If the log cannot be opened, the error file gets one line.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <fstream>

#include "tests/faults/application.h"
#include "tests/faults/log_records.h"
#include "tests/faults/undisturbed_calls.h"

namespace {

struct WriteAnswer {
    ssize_t most;   // the most bytes written, or -1
    int error = 0;  // of -1
};

bool writesAreScripted = false;
std::deque<WriteAnswer> writeScript;  // when it has run out, all bytes are written
void (*beforeWrite)() = nullptr;

ssize_t WriteToSystem(int descriptor, const void* bytes, size_t size) {
    static const auto systemsWrite =
        reinterpret_cast<ssize_t (*)(int, const void*, size_t)>(dlsym(RTLD_NEXT, "write"));
    return systemsWrite(descriptor, bytes, size);
}

}  // namespace

// The library's writes come to this function.
extern "C" __attribute__((visibility("default"))) ssize_t write(int descriptor, const void* bytes,
                                                                size_t size) {
    if (!writesAreScripted) return WriteToSystem(descriptor, bytes, size);
    if (beforeWrite != nullptr) beforeWrite();
    if (writeScript.empty()) return WriteToSystem(descriptor, bytes, size);
    const WriteAnswer answer = writeScript.front();
    writeScript.pop_front();
    if (answer.most >= 0)
        return WriteToSystem(descriptor, bytes, std::min(size, static_cast<size_t>(answer.most)));
    errno = answer.error;
    return -1;
}

namespace {

int fifoReader = -1;
int signalsReceived = 0;

int ReaderOf(const std::string& fifo) { return open(fifo.c_str(), O_RDONLY | O_NONBLOCK); }

std::string TakenBy(int reader) {
    std::string taken;
    char bytes[4096];
    for (ssize_t count; (count = read(reader, bytes, sizeof bytes)) > 0;) {
        taken.append(bytes, static_cast<std::size_t>(count));
    }
    return taken;
}

void LimitFileSize(rlim_t size) {
    const rlimit limit = {size, RLIM_INFINITY};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

class LogCannotBeWritten : public FaultsTest {
protected:
    // Runs `body` in a process that SIGPIPE and SIGXFSZ would end.
    static testing::AssertionResult SurvivesUnshielded(const std::function<void()>& body) {
        return Survives([&body] {
            LeaveNoCore();
            for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_DFL);
            body();
        });
    }

    void ExpectCallsGoOnWithLog(const std::string& path) {
        Set("File", path);
        EXPECT_TRUE(SurvivesUnshielded([] { ExpectCallsGoOn(Library()); })) << path;
    }

    void ExpectOneLineAbout(const std::string& path) const {
        const std::string kStamp = "\n 00/00/00[00:00:00]: ";
        std::string errors = Errors();
        for (std::size_t i = 0; i < errors.size() && i < kStamp.size(); ++i) {
            if (std::isdigit(static_cast<unsigned char>(errors[i]))) errors[i] = '0';
        }
        EXPECT_EQ(errors, kStamp + " Could not open " + KindOfFile() + " " + path + ".");
    }

    void ExpectThatItCannotBeOpened(const std::string& path) {
        SearchAndRemove(ErrorPath());
        ExpectCallsGoOnWithLog(path);
        ExpectOneLineAbout(path);
    }

    std::size_t WholeRecords() const {
        const ParsedLog log = ParseLog(Log());
        EXPECT_EQ(log.remainder, "");
        return log.records.size();
    }
};

// ---- Logs that cannot be opened ---------------------------------------------------------------------------

TEST_F(LogCannotBeWritten, DirectoryMissing_CallsStillReachTheTarget) {
    ExpectThatItCannotBeOpened(directory.File("no such directory/calls.log"));
    ExpectThatItCannotBeOpened(directory.File("Wendrafil.conf/calls.log"));
}

TEST_F(LogCannotBeWritten, DirectoryInThePlaceOfTheLog_CallsStillReachTheTarget) {
    ExpectThatItCannotBeOpened(directory.Path());
}

TEST_F(LogCannotBeWritten, NameLeadsNowhere_CallsStillReachTheTarget) {
    std::filesystem::create_symlink("calls.log", LogPath());
    ExpectThatItCannotBeOpened(LogPath());
    ExpectThatItCannotBeOpened(directory.File(std::string(300, 'x')));
}

TEST_F(LogCannotBeWritten, NoRightToTheDirectoryOrTheFile_CallsStillReachTheTarget) {
    const std::string kClosed = directory.File("closed");
    const std::string kUnwritable = directory.File("unwritable");
    const std::string kUnreadable = directory.File("unreadable.log");
    const std::string kReadOnly = directory.File("read-only.log");
    std::filesystem::create_directory(kClosed);
    std::filesystem::create_directory(kUnwritable);
    std::ofstream(kUnreadable) << "x";
    std::ofstream(kReadOnly) << "x";
    chmod(kClosed.c_str(), 0);
    chmod(kUnwritable.c_str(), 0555);
    chmod(kUnreadable.c_str(), 0);
    chmod(kReadOnly.c_str(), 0444);
    chmod(directory.Path().c_str(), 0777);
    // Every user must be able to read the target.
    std::filesystem::copy_file(SCRIPTED_TARGET, directory.File("target.so"));
    Set("LibUNIX64", directory.File("target.so"));

    for (const std::string& path :
         {kClosed + "/calls.log", kUnwritable + "/calls.log", kUnreadable, kReadOnly}) {
        SearchAndRemove(ErrorPath());
        Set("File", path);
        EXPECT_TRUE(SurvivesUnshielded([] {
            const Library library;
            GiveUpRightsOfRoot();
            ExpectCallsGoOn(library);
        })) << path;
        ExpectOneLineAbout(path);
    }
}

TEST_F(LogCannotBeWritten, LogIsASocket_CallsStillReachTheTarget) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    ASSERT_LT(LogPath().size(), sizeof address.sun_path);
    LogPath().copy(address.sun_path, LogPath().size());
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ExpectThatItCannotBeOpened(LogPath());
    close(listener);
    ExpectThatItCannotBeOpened(LogPath());
}

// The log's path names a socket that the application has open. Linux does not open it, FreeBSD does.
TEST_F(LogCannotBeWritten, ReaderOfTheSocketIsGone_CallsStillReachTheTarget) {
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    close(ends[1]);
    ExpectCallsGoOnWithLog("/dev/fd/" + std::to_string(ends[0]));
    close(ends[0]);
}

TEST_F(LogCannotBeWritten, ErrorFileCannotBeWrittenEither_CallsStillReachTheTarget) {
    const std::string kFifo = directory.File("fifo");
    ASSERT_EQ(mkfifo(kFifo.c_str(), 0600), 0);
    for (const std::string& errorFile : {std::string(), std::string("/dev/full"), directory.Path(),
                                         directory.File("missing/errors.log"), kFifo}) {
        Set("Error", errorFile);
        ExpectCallsGoOnWithLog(directory.File("missing/calls.log"));
    }
}

TEST_F(LogCannotBeWritten, ReaderOfTheErrorFileLeaves_CallsStillReachTheTarget) {
    ASSERT_EQ(mkfifo(ErrorPath().c_str(), 0600), 0);
    Set("File", directory.File("missing/calls.log"));
    EXPECT_TRUE(SurvivesUnshielded([this] {
        const Library library;
        fifoReader = ReaderOf(ErrorPath());
        beforeWrite = [] {
            close(fifoReader);
            fifoReader = -1;
        };
        writesAreScripted = true;
        ExpectCallsGoOn(library);
        writesAreScripted = false;
        EXPECT_EQ(fifoReader, -1) << "nothing was written";
    }));
}

TEST_F(LogCannotBeWritten, ErrorFileIsAtItsLimit_CallsStillReachTheTarget) {
    std::ofstream(ErrorPath()) << std::string(100, 'x');
    Set("File", directory.File("missing/calls.log"));
    EXPECT_TRUE(SurvivesUnshielded([] {
        LimitFileSize(100);
        ExpectCallsGoOn(Library());
        LimitFileSize(RLIM_INFINITY);
    }));
    EXPECT_EQ(Errors(), std::string(100, 'x'));
}

// ---- Writes that fail -------------------------------------------------------------------------------------

#ifdef __linux__
TEST_F(LogCannotBeWritten, DeviceIsFull_CallsStillReachTheTarget) {
    ExpectCallsGoOnWithLog("/dev/full");
    EXPECT_EQ(Errors(), "");
}
#endif

TEST_F(LogCannotBeWritten, SystemRefusesForAWhile_CallsStillReachTheTarget) {
    for (const int error : {ENOSPC, EDQUOT, EIO, EFBIG, EROFS, EAGAIN}) {
        SearchAndRemove(LogPath());
        EXPECT_TRUE(SurvivesUnshielded([error] {
            Library library;
            library->C_Logout(1);
            writeScript.assign(100, {-1, error});
            writesAreScripted = true;
            ExpectCallsGoOn(library, 5);
            writeScript.clear();
            library->C_Logout(2);
        }));
        const ParsedLog log = ParseLog(Log());
        EXPECT_EQ(log.remainder, "");
        ASSERT_EQ(log.records.size(), 4U) << error;
        EXPECT_EQ(log.records[0].FirstNumber(), 1U);
        EXPECT_EQ(log.records[2].FirstNumber(), 2U);
    }
}

TEST_F(LogCannotBeWritten, DeviceFillsWithinARecord_CallsStillReachTheTarget) {
    EXPECT_TRUE(SurvivesUnshielded([] {
        const Library library;
        for (int i = 0; i < 200; ++i)
            writeScript.push_back(i % 2 == 0 ? WriteAnswer{5} : WriteAnswer{-1, ENOSPC});
        writesAreScripted = true;
        ExpectCallsGoOn(library);
    }));
}

TEST_F(LogCannotBeWritten, DeviceIsFullForAMoment_OnlyTheCutRecordIsLost) {
    EXPECT_TRUE(SurvivesUnshielded([] {
        Library library;
        library->C_Logout(1);
        writeScript = {{5}, {-1, ENOSPC}};
        writesAreScripted = true;
        library->C_Logout(2);
        EXPECT_TRUE(writeScript.empty());
        library->C_Logout(3);
    }));
    const ParsedLog log = ParseLog(Log());
    EXPECT_EQ(log.records.size(), 2U);
    std::string rest = log.remainder;
    // The end of the cut line stands behind the line. A record of the text log begins with such an end.
    rest.erase(0, AreEventsTested() ? 6 : 5);
    const ParsedLog behind = ParseLog(rest);
    EXPECT_EQ(behind.remainder, "");
    ASSERT_EQ(behind.records.size(), 3U);
    EXPECT_FALSE(behind.records[0].isStart);
    EXPECT_EQ(behind.records[1].FirstNumber(), 3U);
    EXPECT_TRUE(behind.records[1].isStart);
    EXPECT_FALSE(behind.records[2].isStart);
}

TEST_F(LogCannotBeWritten, WritesAreShortAndInterrupted_RecordsAreWhole) {
    EXPECT_TRUE(SurvivesUnshielded([] {
        const Library library;
        for (int i = 0; i < 3000; ++i) {
            writeScript.push_back(i % 4 == 0 ? WriteAnswer{-1, EINTR} : WriteAnswer{1 + i % 7});
        }
        writesAreScripted = true;
        ExpectCallsGoOn(library);
        EXPECT_LT(writeScript.size(), 2000U);
    }));
    EXPECT_EQ(WholeRecords(), 160U);
}

// ---- The limit of the file size ---------------------------------------------------------------------------

TEST_F(LogCannotBeWritten, LogReachesTheFileSizeLimit_CallsStillReachTheTarget) {
    for (const std::size_t limit : {0U, 1U, 100U, 1000U}) {
        SearchAndRemove(LogPath());
        EXPECT_TRUE(SurvivesUnshielded([limit] {
            LimitFileSize(static_cast<rlim_t>(limit));
            ExpectCallsGoOn(Library());
            LimitFileSize(RLIM_INFINITY);
        }));
        EXPECT_EQ(Log().size(), limit);
    }
}

TEST_F(LogCannotBeWritten, FileSizeLimitIsSetLater_CallsStillReachTheTarget) {
    for (std::size_t callsBefore = 0; callsBefore < 12; ++callsBefore) {
        SearchAndRemove(LogPath());
        std::size_t sizeBefore = 0;
        EXPECT_TRUE(SurvivesUnshielded([&] {
            Library library;
            for (std::size_t i = 0; i < callsBefore; ++i) library->C_Logout(i);
            sizeBefore = Log().size();
            LimitFileSize(static_cast<rlim_t>(sizeBefore + 1));
            ExpectCallsGoOn(library);
            LimitFileSize(RLIM_INFINITY);
            EXPECT_EQ(Log().size(), sizeBefore + 1);
        })) << callsBefore;
    }
}

// The application's own files have the same limit, and it gets its own signals.
TEST_F(LogCannotBeWritten, ApplicationReachesTheFileSizeLimit_ApplicationGetsItsSignals) {
    EXPECT_TRUE(Survives([this] {
        std::signal(SIGXFSZ, [](int) { ++signalsReceived; });
        LimitFileSize(100);
        const int own = open(directory.File("own").c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        const std::string text(100, 'o');
        ASSERT_EQ(WriteToSystem(own, text.data(), text.size()), 100);
        const Library library;
        ExpectCallsGoOn(library);
        EXPECT_EQ(signalsReceived, 0);
        EXPECT_EQ(WriteToSystem(own, "x", 1), -1);
        // The thread sanitizer hands on a signal at a call that may wait.
        usleep(1);
        EXPECT_EQ(signalsReceived, 1);
        ExpectCallsGoOn(library);
        EXPECT_EQ(signalsReceived, 1);
        LimitFileSize(RLIM_INFINITY);
    }));
}

// ---- FIFOs ------------------------------------------------------------------------------------------------

class LogIsAFifo : public LogCannotBeWritten {
protected:
    LogIsAFifo() { EXPECT_EQ(mkfifo(LogPath().c_str(), 0600), 0); }
};

TEST_F(LogIsAFifo, NoReader_CallsStillReachTheTarget) { ExpectCallsGoOnWithLog(LogPath()); }

TEST_F(LogIsAFifo, ReaderComesLate_LaterRecordsReachIt) {
    EXPECT_TRUE(SurvivesUnshielded([this] {
        const Library library;
        ExpectCallsGoOn(library, 5);
        const int reader = ReaderOf(LogPath());
        const ParsedLog log = ParseLog(TakenBy(reader));
        EXPECT_EQ(log.remainder, "");
        EXPECT_EQ(log.records.size(), 20U);
    }));
    EXPECT_EQ(Errors(), "");
}

TEST_F(LogIsAFifo, ReaderLeaves_CallsStillReachTheTarget) {
    EXPECT_TRUE(SurvivesUnshielded([this] {
        const int reader = ReaderOf(LogPath());
        const Library library;
        ExpectCallsGoOn(library, 5);
        EXPECT_EQ(ParseLog(TakenBy(reader)).records.size(), 20U);
        close(reader);
        ExpectCallsGoOn(library);
    }));
}

TEST_F(LogIsAFifo, FifoIsFull_CallsStillReachTheTarget) {
    EXPECT_TRUE(SurvivesUnshielded([this] {
        const Library library;
        ExpectCallsGoOn(library, 2000);
        const ParsedLog log = ParseLog(TakenBy(ReaderOf(LogPath())));
        EXPECT_EQ(log.remainder, "");
        EXPECT_GT(log.records.size(), 100U);
    }));
}

// ---- Terminals --------------------------------------------------------------------------------------------

class LogIsATerminal : public LogCannotBeWritten {
protected:
    LogIsATerminal() {
        EXPECT_GE(master, 0);
        EXPECT_EQ(grantpt(master), 0);
        EXPECT_EQ(unlockpt(master), 0);
        Set("File", ptsname(master));
    }
    ~LogIsATerminal() override { close(master); }

    int master = posix_openpt(O_RDWR | O_NOCTTY);
};

TEST_F(LogIsATerminal, TerminalHangsUp_CallsStillReachTheTarget) {
    EXPECT_TRUE(SurvivesUnshielded([this] {
        const Library library;
        ExpectCallsGoOn(library, 1);
        close(master);
        ExpectCallsGoOn(library);
    }));
}

TEST_F(LogIsATerminal, NobodyReadsTheTerminal_CallsStillReachTheTarget) {
    EXPECT_TRUE(SurvivesUnshielded([] { ExpectCallsGoOn(Library(), 2000); }));
}

// A process without a terminal gets none through its log, and no signals of that terminal.
TEST_F(LogIsATerminal, TerminalBelongsToNoProcess_TerminalDoesNotBecomeTheApplications) {
    EXPECT_TRUE(SurvivesUnshielded([this] {
        ASSERT_GT(setsid(), 0);
        ExpectCallsGoOn(Library(), 1);
        EXPECT_EQ(open("/dev/tty", O_RDWR), -1);
        close(master);
    }));
}

}  // namespace
