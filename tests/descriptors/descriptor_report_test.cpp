#include "descriptors/descriptor_report.h"

#include <gtest/gtest.h>

#include <cstddef>

#include "tests/descriptors/printed_text.h"

namespace {

std::string Written(const DescriptorReport& report) {
    return PrintedText([&](std::FILE* stream) { report.write(stream); });
}

TEST(DescriptorReport, NewReport_HasNoError) {
    const DescriptorReport report;
    EXPECT_EQ(report.errorOccurred(), 0);
    EXPECT_EQ(Written(report), "Descriptor Report\n\tNo error.");
}

TEST(DescriptorReport, CountersAndErrors_CountersArePrintedFirst) {
    DescriptorReport report;
    report.objectCount = 4000000001;
    report.skippedObjects = 2;
    report.secondSkippedObjects = 3;
    EXPECT_EQ(Written(report),
              "Descriptor Report\n\tObject count: 4000000001\n\tSkipped objects during processing: 2"
              "\n\tSkipped objects during processing: 3\n\tNo error.");
    report.parsingError = 1;
    EXPECT_EQ(Written(report),
              "Descriptor Report\n\tObject count: 4000000001\n\tSkipped objects during processing: 2"
              "\n\tSkipped objects during processing: 3\n\tParsing error.");
}

TEST(DescriptorReport, OneObjectIsSkipped_CountersArePrinted) {
    DescriptorReport report;
    report.skippedObjects = 1;
    EXPECT_EQ(Written(report),
              "Descriptor Report\n\tObject count: 0\n\tSkipped objects during processing: 1"
              "\n\tSkipped objects during processing: 0\n\tNo error.");
}

TEST(DescriptorReport, OnlyTheSecondSkippedCountIsSet_CountersAreNotPrinted) {
    DescriptorReport report;
    report.secondSkippedObjects = 7;
    EXPECT_EQ(Written(report), "Descriptor Report\n\tNo error.");
}

TEST(DescriptorReport, SumOfTheCountersWrapsToZero_CountersAreNotPrinted) {
    DescriptorReport report;
    report.skippedObjects = 0x80000000;
    EXPECT_EQ(Written(report), "Descriptor Report\n\tNo error.");
    report.objectCount = 2;
    report.skippedObjects = 0xFFFFFFFF;
    EXPECT_EQ(Written(report), "Descriptor Report\n\tNo error.");
}

TEST(DescriptorReport, RunIsAborted_CountersAreNotPrinted) {
    DescriptorReport report;
    report.operationAborted = 1;
    report.objectCount = 5;
    EXPECT_NE(report.errorOccurred(), 0);
    EXPECT_EQ(Written(report), "Descriptor ReportOperation aborted");
    report.fileError = 1;
    report.parsingError = 1;
    EXPECT_EQ(Written(report),
              "Descriptor ReportOperation aborted\n\tFile error occurred.\n\tParsing error.");
}

struct Flag {
    std::uint16_t DescriptorReport::*field;
    const char* line;
};

constexpr Flag kFlags[] = {
    {&DescriptorReport::fileError, "\n\tFile error occurred."},
    {&DescriptorReport::cryptokiError, "\n\tCryptoki error occurred."},
    {&DescriptorReport::noTokenFound, "\n\tCan not find a token in any slot."},
    {&DescriptorReport::sessionNotOpened, "\n\tCan not open session on token."},
    {&DescriptorReport::loginFailed, "\n\tCan not log to token."},
    {&DescriptorReport::memoryError, "\n\tMemory error occurred."},
    {&DescriptorReport::handleNumbersMismatch, "\n\tHandle numbers mismatch."},
    {&DescriptorReport::tokenNotInitialised, "\n\tToken could not initialize."},
    {&DescriptorReport::parsingError, "\n\tParsing error."},
};

TEST(DescriptorReport, EachFlag_IsAnErrorWithItsOwnLine) {
    for (const Flag& flag : kFlags) {
        for (const std::uint16_t set : {std::uint16_t{1}, std::uint16_t{0x8000}}) {
            DescriptorReport report;
            report.*flag.field = set;
            EXPECT_NE(report.errorOccurred(), 0) << flag.line;
            EXPECT_EQ(Written(report), std::string("Descriptor Report") + flag.line);
        }
    }
}

TEST(DescriptorReport, AllFlagsAreSet_LinesStandInThisOrder) {
    DescriptorReport report;
    std::string expected = "Descriptor Report";
    for (const Flag& flag : kFlags) {
        report.*flag.field = 1;
        expected += flag.line;
    }
    EXPECT_EQ(Written(report), expected);
}

// Tools fill a report in place and know its fields in this order.
TEST(DescriptorReport, FieldsOfTheReport_LieInThisOrder) {
    EXPECT_EQ(offsetof(DescriptorReport, objectCount), 0u);
    EXPECT_EQ(offsetof(DescriptorReport, skippedObjects), 4u);
    EXPECT_EQ(offsetof(DescriptorReport, secondSkippedObjects), 8u);
    EXPECT_EQ(offsetof(DescriptorReport, operationAborted), 12u);
    EXPECT_EQ(offsetof(DescriptorReport, fileError), 14u);
    EXPECT_EQ(offsetof(DescriptorReport, cryptokiError), 16u);
    EXPECT_EQ(offsetof(DescriptorReport, noTokenFound), 18u);
    EXPECT_EQ(offsetof(DescriptorReport, sessionNotOpened), 20u);
    EXPECT_EQ(offsetof(DescriptorReport, loginFailed), 22u);
    EXPECT_EQ(offsetof(DescriptorReport, memoryError), 24u);
    EXPECT_EQ(offsetof(DescriptorReport, handleNumbersMismatch), 26u);
    EXPECT_EQ(offsetof(DescriptorReport, tokenNotInitialised), 28u);
    EXPECT_EQ(offsetof(DescriptorReport, parsingError), 30u);
}

}  // namespace
