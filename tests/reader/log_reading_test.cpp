// Two threads read whole logs.
#include "reader/log_reading.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>

#include "reader/log_blocks.h"
#include "tests/reader/collected_calls.h"
#include "tests/temporary_directory.h"

namespace ckscribe {
namespace {

// Collects what a reader finds as a text, with some facts of each call.
class Described : public LogSink {
public:
    void OnCall(const Call& call) override {
        ++calls;
        Add(std::string(call.Function()) + (call.hasStart ? " starts " : " - ") +
            std::to_string(call.startPlace.line) + (call.hasEnd ? " ends " : " - ") +
            std::to_string(call.endPlace.line));
        Add(std::string(call.result) + ' ' + std::to_string(call.process) + ' ' +
            std::to_string(call.thread.value_or(-1)) + ' ' + std::to_string(call.Time().nanoseconds));
        Add(std::to_string(call.In().size()) + ' ' + std::to_string(call.Out().size()));
        Add(std::string(call.startRecord.substr(0, 300)) + '|' + std::string(call.endRecord.substr(0, 300)));
    }
    void OnUnreadable(const UnreadableStretch& stretch) override {
        ++stretchCount;
        stretches += std::to_string(stretch.place.line) + ' ' + std::to_string(stretch.lines) + ' ' +
                     stretch.beginning + '\n';
    }

    std::size_t calls = 0;
    std::size_t stretchCount = 0;
    std::string text;
    std::string stretches;

private:
    void Add(const std::string& part) { text.append(part).append("\n"); }
};

// Returns a log with records of all formats, foreign lines, and texts that hold records and are longer than a
// block.
std::string MixedLog(std::size_t size) {
    std::mt19937 random(3);
    std::string log;
    while (log.size() < size) {
        const std::string number = std::to_string(random() % 1000);
        const std::string hour = std::to_string(10 + log.size() * 13 / size);
        switch (random() % 8) {
            case 0:
                log.append("\n\n").append(hour).append(":15:30 01234-5:STRTLogout {Sesn=").append(number);
                log.append(" }");
                break;
            case 1:
                log.append("\n").append(hour).append(":15:31 01234-5:FINILogout CKR_OK1clks {}");
                break;
            case 2:
                log.append("\nCommand(FindObjects, Init, Start) PID:  7  Time:  Sun Nov 15 10:15:32 2026\n");
                log.append("\n{\n   SessionHandle(0x").append(number).append(");\n   AttributeList\n   {\n");
                log.append("      Attribute(CKA_LABEL,Value(SimpleText\"a\"b\"));\n   };\n}");
                break;
            case 3:
                log.append("\nCommand(FindObjects, Init, End, CKR_OK) PID:  7  Time:  ");
                log.append("Sun Nov 15 10:15:33 2026\n // -7 clock cycles\n{\n}");
                break;
            case 4:
                log.append(
                    "\n{\"event\":\"start\",\"time\":\"2026-11-21T12:33:45Z\",\"run\":\"a-1\",\"pid\":1,");
                log.append("\"tid\":2,\"call\":")
                    .append(number)
                    .append(",\"function\":\"C_Sign\",\"in\":[]}");
                break;
            case 5:
                log.append("\nforeign line ").append(number);
                break;
            case 6: {
                const std::size_t length = random() % 20 == 0 ? 400'000 : random() % 3000;
                std::string text;
                while (text.size() < length) text.append("x\n10:15:30 00001-001:STRTFinalize {}\n");
                log.append("\n10:15:30 00001-001:STRTLogVerifyFile {Sesn=1 Ptr=0x1 (");
                log.append(std::to_string(text.size())).append(",\"").append(text);
                log.append("\") \"abc\" Ptr=0x2 }");
                break;
            }
            default:
                log.append("\n10:15:30 00001-001:STRTSign {Sesn=1 \"").append(random() % 4000, '7');
                log.append(random() % 10 == 0 ? "" : "\" }");
                break;
        }
    }
    return log;
}

class LogReadingTest : public ::testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& text) {
        const std::string path = directory.File(name);
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    TemporaryDirectory directory;
};

TEST_F(LogReadingTest, BlocksThatTwoThreadsReadGiveTheSameCallsAsTheWholeText) {
    const std::string log = MixedLog(20 * LogBlocks::kSize);
    Described whole;
    CallReader reader(whole);
    reader.Feed(log);
    reader.Finish();
    Described blocks;
    const std::vector<FileReading> files = ReadLogs({Write("log", log)}, {}, blocks);
    EXPECT_GT(whole.calls, 1000U);
    EXPECT_GT(whole.stretchCount, 100U);
    EXPECT_EQ(blocks.calls, whole.calls);
    EXPECT_EQ(blocks.stretchCount, whole.stretchCount);
    EXPECT_TRUE(blocks.text == whole.text);
    EXPECT_TRUE(blocks.stretches == whole.stretches);
    EXPECT_EQ(files.at(0).bytes, log.size());
}

TEST_F(LogReadingTest, SinkThatThrowsEndsTheReading) {
    struct Throwing : LogSink {
        void OnCall(const Call&) override { throw std::runtime_error("enough"); }
    } sink;
    const std::string path = Write("log", MixedLog(20 * LogBlocks::kSize));
    EXPECT_THROW(ReadLogs({path}, {}, sink), std::runtime_error);
}

TEST_F(LogReadingTest, PipeIsReadFromItsFirstByteEvenIfDatesAreNeeded) {
    const std::string log = MixedLog(3 * LogBlocks::kSize);
    Described expected;
    ReadLogs({Write("log", log)}, {}, expected);
    const std::string pipe = directory.File("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const bool needsDates : {false, true}) {
        std::thread writer([&] { std::ofstream(pipe, std::ios::binary) << log; });
        Described found;
        ReadingOptions options;
        options.needsDates = needsDates;
        const std::vector<FileReading> files = ReadLogs({pipe}, options, found);
        writer.join();
        EXPECT_EQ(found.calls, expected.calls) << needsDates;
        EXPECT_EQ(found.stretches, expected.stretches) << needsDates;
        EXPECT_EQ(files.at(0).error, "");
    }
}

TEST_F(LogReadingTest, ProgressEndsAtTheSizeOfAllFiles) {
    const std::string path = Write("log", MixedLog(3 * LogBlocks::kSize));
    for (const bool needsDates : {false, true}) {
        Described found;
        ReadingOptions options;
        options.needsDates = needsDates;
        ReadingProgress last;
        std::size_t times = 0;
        options.onProgress = [&](const ReadingProgress& progress) {
            EXPECT_GE(progress.bytesRead, last.bytesRead);
            last = progress;
            ++times;
        };
        ReadLogs({path}, options, found);
        EXPECT_EQ(last.bytesRead, last.size);
        EXPECT_GE(times, needsDates ? 6U : 3U);
    }
}

}  // namespace
}  // namespace ckscribe
