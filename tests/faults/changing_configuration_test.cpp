// A configuration file changes while it is read. The store finds a value that stood in it, a beginning of
// such a value, or the default.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <set>
#include <thread>

#include "config/logging_configuration.h"
#include "tests/faults/application.h"
#include "tests/faults/log_records.h"
#include "tests/faults/undisturbed_calls.h"

namespace {

std::function<void()> betweenSizeAndRead;

}  // namespace

// The store knows between fstat and read how long the file is, and has not read it.
extern "C" int __real_fstat(int file, struct stat* status);
extern "C" int __wrap_fstat(int file, struct stat* status) {
    const int result = __real_fstat(file, status);
    if (betweenSizeAndRead) betweenSizeAndRead();
    return result;
}

namespace {

const std::string kOneLog = "/var/log/one/calls.log";
const std::string kOtherLog = "/home/somebody/else/file";
const std::string kDefaultLog = "log.txt";

std::string TextWithLog(const std::string& log) {
    std::string text = "CkLog2 = {\n   Enabled = 1;\n   File = ";
    text += log;
    text += ";\n   LoggingMask = MISC_FUNC;\n}\n";
    return text;
}

bool IsBeginningOf(const std::string& beginning, const std::string& text) {
    return text.starts_with(beginning);
}

class ChangingConfiguration : public FaultsTest {
protected:
    ChangingConfiguration() { WriteConfigurationFile(TextWithLog(kOneLog)); }
    ~ChangingConfiguration() override { betweenSizeAndRead = nullptr; }

    void Replace(const std::string& text) const {
        const std::string fresh = directory.File("fresh");
        {
            std::FILE* const file = std::fopen(fresh.c_str(), "w");
            std::fputs(text.c_str(), file);
            std::fclose(file);
        }
        std::rename(fresh.c_str(), ConfigurationPath().c_str());
    }

    void Truncate(std::size_t size) const {
        EXPECT_EQ(truncate(ConfigurationPath().c_str(), static_cast<off_t>(size)), 0);
    }
};

TEST_F(ChangingConfiguration, FileIsCutBeforeTheRead_ValueIsTheRestInTheFileOrTheDefault) {
    const std::string text = TextWithLog(kOneLog);
    const std::size_t begin = text.find(kOneLog);
    CkLogConfig store;
    for (std::size_t size = 0; size <= text.size(); ++size) {
        WriteConfigurationFile(text);
        betweenSizeAndRead = [&] { Truncate(size); };
        const std::string log = store.LogFileName();
        betweenSizeAndRead = nullptr;
        if (size < begin - 1) {
            // Even "File =" is an entry once its "=" is there.
            EXPECT_TRUE(log == kDefaultLog || log.empty()) << size;
        } else {
            EXPECT_EQ(log, std::string_view(kOneLog).substr(0, size > begin ? size - begin : 0)) << size;
        }
    }
}

TEST_F(ChangingConfiguration, FileIsRewrittenBeforeTheRead_ValueIsABeginningOfTheNewOneOrTheDefault) {
    const std::string text = TextWithLog(kOtherLog);
    CkLogConfig store;
    for (std::size_t size = 0; size <= text.size(); ++size) {
        WriteConfigurationFile(TextWithLog(kOneLog));
        betweenSizeAndRead = [&] { WriteConfigurationFile({text.data(), size}); };
        const std::string log = store.LogFileName();
        betweenSizeAndRead = nullptr;
        EXPECT_TRUE(log == kDefaultLog || IsBeginningOf(log, kOtherLog)) << size << log;
    }
}

// The store reads the file that it opened, whatever has the file's name by then.
TEST_F(ChangingConfiguration, FileIsReplacedBeforeTheRead_ValueIsThatOfTheOpenedFile) {
    CkLogConfig store;
    betweenSizeAndRead = [this] { Replace(TextWithLog(kOtherLog)); };
    EXPECT_EQ(store.LogFileName(), kOneLog);
    EXPECT_EQ(store.LogFileName(), kOtherLog);
    WriteConfigurationFile(TextWithLog(kOneLog));
    betweenSizeAndRead = [this] { unlink(ConfigurationPath().c_str()); };
    EXPECT_EQ(store.LogFileName(), kOneLog);
    EXPECT_EQ(store.LogFileName(), kDefaultLog);
}

TEST_F(ChangingConfiguration, FileGrowsBeforeTheRead_ValueIsTheDefault) {
    CkLogConfig store;
    WriteConfigurationFile("\n");
    std::string grown = "\n";
    grown += TextWithLog(kOneLog);
    betweenSizeAndRead = [&] { WriteConfigurationFile(grown); };
    EXPECT_EQ(store.LogFileName(), kDefaultLog);
    betweenSizeAndRead = nullptr;
    EXPECT_EQ(store.LogFileName(), kOneLog);
}

// ---- All the time -----------------------------------------------------------------------------------------

constexpr int kChanges = 1000;
constexpr int kLookUps = 1000;

// Calls `change` all the time on one thread and `body` on another, until both were called often enough.
void DoDuring(const std::function<void(int)>& change, const std::function<void()>& body,
              const std::function<bool()>& isEnough) {
    std::atomic<int> changes{0};
    std::atomic<bool> isDone{false};
    std::thread writer([&] {
        while (changes < kChanges || !isDone) change(++changes);
    });
    for (int i = 0; i < kLookUps || changes < kChanges || !isEnough(); ++i) body();
    isDone = true;
    writer.join();
}

TEST_F(ChangingConfiguration, FileIsReplacedAllTheTime_ValueIsAlwaysOneThatStood) {
    CkLogConfig store;
    std::set<std::string> found;
    DoDuring([this](int i) { Replace(TextWithLog(i % 2 == 0 ? kOneLog : kOtherLog)); },
             [&] { found.insert(store.LogFileName()); },
             [&] { return found.contains(kOneLog) && found.contains(kOtherLog); });
    EXPECT_EQ(found, (std::set<std::string>{kOneLog, kOtherLog}));
}

TEST_F(ChangingConfiguration, FileIsRewrittenAllTheTime_ValueIsAlwaysABeginningOrTheDefault) {
    CkLogConfig store;
    std::set<std::string> found;
    DoDuring([this](int i) { WriteConfigurationFile(TextWithLog(i % 2 == 0 ? kOneLog : kOtherLog)); },
             [&] { found.insert(store.LogFileName()); },
             [&] { return found.contains(kOneLog) && found.contains(kOtherLog); });
    for (const std::string& log : found) {
        EXPECT_TRUE(log == kDefaultLog || IsBeginningOf(log, kOneLog) || IsBeginningOf(log, kOtherLog))
            << log;
    }
}

// The application notices no change, and its log shows the changes.
TEST_F(ChangingConfiguration, FileChangesDuringCalls_CallsGoOnAndTheLogShowsTheChanges) {
    Set("LoggingMask", "SESSION_FUNC");
    const std::string sessions = ConfigurationText();
    Set("LoggingMask", "MISC_FUNC|QUORVANTH_FUNC");
    const std::string others = ConfigurationText();
    EXPECT_TRUE(Survives([&] {
        const Library library;
        library.Exported<void()>("CkLogSpecialInitialize")();
        unsigned long calls = 0;  // of each function
        DoDuring(
            [&](int i) {
                const std::string& text = i % 2 == 0 ? sessions : others;
                i % 3 == 0 ? Replace(text) : WriteConfigurationFile(text);
            },
            [&] {
                ExpectCallsGoOn(library, 20);
                calls += 20;
            },
            [] { return true; });
        const ParsedLog log = ParseLog(Log());
        EXPECT_EQ(log.remainder, "");
        std::map<std::string, unsigned long> records;
        for (const LogRecord& record : log.records) ++records[record.function];
        EXPECT_EQ(records.size(), 2U);
        // Each mask held for some of the calls.
        for (const char* const function : {"Logout", "PerformSelfTest"}) {
            EXPECT_GT(records[function], 0U) << function;
            EXPECT_LT(records[function], 2 * calls) << function;
        }
    }));
}

}  // namespace
