#include "descriptors/error_log.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>
#include <string>

#include "tests/logging_configuration_file.h"

namespace {

// Returns one entry of the error file, written at `time`.
std::string Entry(std::time_t time, const std::string& text) {
    std::tm local{};
    localtime_r(&time, &local);
    char stamp[64];
    std::strftime(stamp, sizeof stamp, "%y/%m/%d[%H:%M:%S]", &local);
    return "\n " + std::string(stamp) + ":  " + text;
}

class ErrorLogTest : public testing::Test {
protected:
    // Reports `text` and expects the file to hold one more entry afterwards.
    void ExpectReport(const std::string& text) {
        const std::string before = FileText(path);
        const std::time_t earliest = std::time(nullptr);
        ReportErrorInLog(text.c_str());
        const std::time_t latest = std::time(nullptr);
        const std::string after = FileText(path);
        bool isExpected = false;
        for (std::time_t time = earliest; time <= latest; ++time)
            isExpected |= after == before + Entry(time, text);
        EXPECT_TRUE(isExpected) << after;
    }

    LoggingConfigurationFile file;
    const std::string path = file.directory.File("errors");
};

TEST_F(ErrorLogTest, Report_AppendsTheTimeAndTheText) {
    file.Write("Error = " + path + ";\n");
    ExpectReport("x");
    ExpectReport("a second text, %s and %n as they are");
    ExpectReport("");
}

TEST_F(ErrorLogTest, Entry_HasTheFixedShape) {
    file.Write("Error = " + path + ";\n");
    ReportErrorInLog("x");
    const std::string text = FileText(path);
    const std::string shape = "\n dd/dd/dd[dd:dd:dd]:  x";
    ASSERT_EQ(text.size(), shape.size());
    for (std::size_t i = 0; i < shape.size(); ++i) {
        if (shape[i] == 'd') {
            EXPECT_TRUE(text[i] >= '0' && text[i] <= '9') << i;
        } else {
            EXPECT_EQ(text[i], shape[i]) << i;
        }
    }
}

TEST_F(ErrorLogTest, TimeZoneChanges_EntryShowsTheTimeOfTheNewZone) {
    file.Write("Error = " + path + ";\n");
    for (const char* zone : {"UTC", "EAST-9", "WEST11:30"}) {
        setenv("TZ", zone, 1);
        tzset();
        ExpectReport(zone);
    }
    setenv("TZ", "UTC", 1);
    tzset();
    setenv("TZ", "EAST-9", 1);  // the C library does not know it yet
    const std::size_t before = FileText(path).size();
    const std::time_t earliest = std::time(nullptr) + 9 * 3600;
    ReportErrorInLog("x");
    const std::time_t latest = std::time(nullptr) + 9 * 3600;
    setenv("TZ", "UTC", 1);
    tzset();
    const std::string entry = FileText(path).substr(before);
    EXPECT_TRUE(entry == Entry(earliest, "x") || entry == Entry(latest, "x")) << entry;
}

TEST_F(ErrorLogTest, ErrorKeyIsAbsent_EntryGoesToTheCurrentDirectory) {
    file.Write("");
    char before[4096];
    ASSERT_NE(getcwd(before, sizeof before), nullptr);
    ASSERT_EQ(chdir(file.directory.Path().c_str()), 0);
    const std::time_t earliest = std::time(nullptr);
    ReportErrorInLog("x");
    const std::time_t latest = std::time(nullptr);
    ASSERT_EQ(chdir(before), 0);
    const std::string entry = FileText(file.directory.File("logerror.txt"));
    EXPECT_TRUE(entry == Entry(earliest, "x") || entry == Entry(latest, "x")) << entry;
}

TEST_F(ErrorLogTest, NameIsEmptyOrFileCannotBeOpened_NothingIsReported) {
    file.Write("Error = ;\n");
    ReportErrorInLog("x");
    file.Write("Error = " + file.directory.Path() + ";\n");
    ReportErrorInLog("x");
    file.Write("Error = /nowhere/at/all;\n");
    ReportErrorInLog("x");
    EXPECT_EQ(FileText(file.directory.File("logerror.txt")), "");
}

TEST_F(ErrorLogTest, ErrorKeyChanges_NextEntryGoesToTheNewFile) {
    file.Write("Error = " + path + ";\n");
    ReportErrorInLog("first");
    const std::string second = file.directory.File("second");
    file.Write("Error = " + second + ";\n");
    ReportErrorInLog("second");
    EXPECT_NE(FileText(path).find("first"), std::string::npos);
    EXPECT_EQ(FileText(path).find("second"), std::string::npos);
    EXPECT_NE(FileText(second).find("second"), std::string::npos);
}

TEST_F(ErrorLogTest, ErrorFileIsAFifoWithoutAReader_ReportReturns) {
    file.Write("Error = " + path + ";\n");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    ReportErrorInLog("x");
}

TEST_F(ErrorLogTest, LongestReport_IsWrittenWhole) {
    file.Write("Error = " + path + ";\n");
    ExpectReport(std::string("Could not open capture file /").append(498, 'p').append("."));
}

}  // namespace
