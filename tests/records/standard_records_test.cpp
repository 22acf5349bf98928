// These tests state the logging levels at which the builders of the standard functions write, and the records
// of functions that are not exported.

#include "records/standard_records.h"

#include <functional>
#include <string>

#include "descriptors/abstract_descriptor.h"
#include "descriptors/command_descriptor.h"
#include "tests/descriptors/record_test.h"
#include "tests/expected_functions.h"
#include "tests/logging_configuration_file.h"

namespace {

class StandardRecordsTest : public RecordTest {
protected:
    StandardRecordsTest() {
        UseNewFormat();
        AbstractDescriptor::OpenCaptureStream(reinterpret_cast<const unsigned char*>(log.c_str()));
    }
    ~StandardRecordsTest() override { AbstractDescriptor::CloseCaptureStream(); }

    // Returns the text that a builder adds to the log.
    template <class Builder, class... Arguments>
    std::string Written(Builder builder, Arguments... arguments) {
        const std::size_t before = FileText(log).size();
        builder(arguments...);
        return FileText(log).substr(before);
    }

    TemporaryDirectory directory;
    const std::string log = directory.File("log");
};

template <class... Parameters>
std::function<void()> WithoutArguments(void (*builder)(Parameters...)) {
    return [builder] { builder(Parameters{}...); };
}

struct Builders {
    std::string name;
    std::function<void()> start;
    std::function<void()> end;
};

std::vector<Builders> EveryBuilder() {
    return {
#define C_EVERY_ROW(Name, ...) {#Name, WithoutArguments(Name##Start), WithoutArguments(Name##End)},
#define C_UNEXPORTED_ROW C_EVERY_ROW
#include "functions/functions.def"
    };
}

// Returns the lowest level at which the builders of a function write.
unsigned ExpectedLevelOf(const std::string& name) {
    if (name == "Terminate" || name == "PerformSelfTest") return 3;  // not exported
    const ExpectedFunction* const row = FindExpectedFunction("C_" + name);
    EXPECT_NE(row, nullptr) << HowToExpect("C_" + name);
    return row == nullptr ? 0 : static_cast<unsigned>(row->level);
}

TEST_F(StandardRecordsTest, EveryBuilder_WritesFromItsLevelOn) {
    for (const Builders& function : EveryBuilder()) {
        const unsigned lowest = ExpectedLevelOf(function.name);
        for (const unsigned level : {0U, 1U, 2U, 3U, 4U, 5U, ~0U}) {
            uLoggingLevel.store(level);
            const bool isWritten = level >= lowest;
            EXPECT_EQ(Written(function.start).starts_with("\n\n10:15:30 01234-567:STRT"), isWritten)
                << function.name << " at " << level;
            EXPECT_EQ(Written(function.end).starts_with("\n10:15:30 01234-567:FINI"), isWritten)
                << function.name << " at " << level;
            if (!isWritten) {
                EXPECT_EQ(Written(function.start) + Written(function.end), "") << function.name;
            }
        }
    }
}

TEST_F(StandardRecordsTest, EveryBuilder_WritesOneRecordAndLeavesNoDescriptorBehind) {
    for (const Builders& function : EveryBuilder()) {
        for (const auto& builder : {function.start, function.end}) {
            const std::string record = Written(builder);
            EXPECT_EQ(record.find(" 01234-567:"), record.rfind(" 01234-567:")) << function.name;
            EXPECT_EQ(record.back(), '}') << function.name;
            EXPECT_EQ(AbstractDescriptor::uInstanceCount, 0U) << function.name;
        }
    }
}

TEST_F(StandardRecordsTest, NoLogIsOpen_NoBuilderWritesAnything) {
    AbstractDescriptor::CloseCaptureStream();
    for (const Builders& function : EveryBuilder()) {
        EXPECT_EQ(Written(function.start) + Written(function.end), "") << function.name;
    }
}

TEST_F(StandardRecordsTest, Terminate_RecordsInTheNewFormat) {
    EXPECT_EQ(Written(TerminateStart), "\n\n10:15:30 01234-567:STRTTerminate {}");
    EXPECT_EQ(Written(TerminateEnd, CKR_OK), "\n10:15:30 01234-567:FINITerminate CKR_OK12345clks {}");
    EXPECT_EQ(Written(TerminateEnd, CKR_GENERAL_ERROR),
              "\n10:15:30 01234-567:FINITerminate ***CKR_GENERAL_ERROR***12345clks {}");
}

TEST_F(StandardRecordsTest, Terminate_RecordsInTheOldFormat) {
    UseOldFormat();
    ticks = 0;
    EXPECT_EQ(Written(TerminateStart),
              "\nCommand(Terminate, None, Start) PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n\n{\n}");
    ticks = 9;
    EXPECT_EQ(
        Written(TerminateEnd, CKR_GENERAL_ERROR),
        "\nCommand(Terminate, None, End, CKR_GENERAL_ERROR) PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n"
        " // 9 clock cycles\n{\n}");
}

TEST_F(StandardRecordsTest, PerformSelfTest_RecordsInTheNewFormatHaveNoName) {
    EXPECT_EQ(Written(PerformSelfTestStart, CK_SESSION_HANDLE{5}, CK_ULONG{255}),
              "\n\n10:15:30 01234-567:STRTUnknownType {255 Sesn=5 }");
    EXPECT_EQ(Written(PerformSelfTestEnd, CKR_OK, CK_SESSION_HANDLE{5}, CK_ULONG{255}),
              "\n10:15:30 01234-567:FINIUnknownType CKR_OK12345clks {}");
}

TEST_F(StandardRecordsTest, PerformSelfTest_RecordsInTheOldFormatHaveNoName) {
    UseOldFormat();
    ticks = 0;
    EXPECT_EQ(Written(PerformSelfTestStart, CK_SESSION_HANDLE{5}, CK_ULONG{255}),
              "\nCommand(UnknownType, None, Start) PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n"
              "\n{"
              "\n   ULong(0xff);"
              "\n   SessionHandle(0x5);"
              "\n}");
    EXPECT_EQ(Written(PerformSelfTestEnd, CK_RV{0x80000999}, CK_SESSION_HANDLE{5}, CK_ULONG{255}),
              "\nCommand(UnknownType, None, End, CKR_UNKNOWN 0x80000999) PID:  1234  Time:  "
              "Sun Nov 15 10:15:30 2026\n // 0 clock cycles\n{\n}");
}

}  // namespace
