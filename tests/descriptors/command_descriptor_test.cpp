#include "descriptors/command_descriptor.h"

#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include <climits>
#include <cstdint>

#include "descriptors/scalar_descriptors.h"
#include "tests/descriptors/record_test.h"

using namespace ckscribe;

namespace {

constexpr unsigned long kPinIncorrect = 0xA0;
constexpr unsigned long kUnnamed = 0x80000999;
constexpr CommandPhase kNoPhase{2};

class CommandDescriptorTest : public RecordTest {
protected:
    CommandDescriptorTest() { ResetStamp(); }
    ~CommandDescriptorTest() override { ResetStamp(); }

    template <class... Arguments>
    static std::string Record(Arguments... arguments) {
        return Printed(CommandDescriptor(arguments...));
    }

    // Only start records of the old format set the stamp from which end records count.
    static void StampStart(std::clock_t stamp) {
        UseOldFormat();
        ticks = stamp;
        Record(kLogout, CommandPhase::kStart, 0UL);
    }

private:
    static void ResetStamp() {
        StampStart(0);
        ticks = 12345;
    }
};

class NewRecord : public CommandDescriptorTest {
protected:
    void SetUp() override { UseNewFormat(); }
};

class OldRecord : public CommandDescriptorTest {
protected:
    void SetUp() override { UseOldFormat(); }
};

// ---- The new format ---------------------------------------------------------------------------------------

TEST_F(NewRecord, StartInNewFormat_EmptyLineStandsInFront) {
    CommandDescriptor command(kLogout, CommandPhase::kStart, 0);
    command.AddDescriptor(new SessionHandleDescriptor(5));
    EXPECT_EQ(Printed(command), "\n\n10:15:30 01234-567:STRTLogout {Sesn=5 }");
}

TEST_F(NewRecord, EndInNewFormat_ShowsResultAndClock) {
    EXPECT_EQ(Record(kLogout, CommandPhase::kEnd, 0UL), "\n10:15:30 01234-567:FINILogout CKR_OK12345clks {}");
}

TEST_F(NewRecord, CallFails_AsterisksEncloseTheResult) {
    EXPECT_EQ(Record(kLogout, CommandPhase::kEnd, kPinIncorrect),
              "\n10:15:30 01234-567:FINILogout ***CKR_PIN_INCORRECT***12345clks {}");
}

TEST_F(NewRecord, ResultHasNoName_RecordShowsItsNumber) {
    EXPECT_EQ(Record(kLogout, CommandPhase::kEnd, kUnnamed),
              "\n10:15:30 01234-567:FINILogout ***CKR_UNKNOWN 0x80000999***12345clks {}");
    EXPECT_EQ(Record(kLogout, CommandPhase::kEnd, ULONG_MAX),
              "\n10:15:30 01234-567:FINILogout ***CKR_UNKNOWN 0xffffffffffffffff***12345clks {}");
}

TEST_F(NewRecord, CommandHasASpecifier_ItFollowsTheName) {
    EXPECT_EQ(Record(kEncrypt, CommandSpecifier::kSingle, CommandPhase::kStart, 0UL),
              "\n\n10:15:30 01234-567:STRTEncrypt {}");
    EXPECT_EQ(Record(kEncrypt, CommandSpecifier::kInit, CommandPhase::kStart, 0UL),
              "\n\n10:15:30 01234-567:STRTEncrypt_Init {}");
    EXPECT_EQ(Record(kEncrypt, CommandSpecifier::kUpdate, CommandPhase::kEnd, 0UL),
              "\n10:15:30 01234-567:FINIEncrypt_Update CKR_OK12345clks {}");
    EXPECT_EQ(Record(kEncrypt, CommandSpecifier::kFinal, CommandPhase::kEnd, kPinIncorrect),
              "\n10:15:30 01234-567:FINIEncrypt_Final ***CKR_PIN_INCORRECT***12345clks {}");
    EXPECT_EQ(Record(kDigest, CommandSpecifier::kKey, CommandPhase::kStart, 0UL),
              "\n\n10:15:30 01234-567:STRTDigest_Key {}");
    EXPECT_EQ(Record(kDigest, CommandSpecifier{5}, CommandPhase::kStart, 0UL),
              "\n\n10:15:30 01234-567:STRTDigest_UnknownSpecifier {}");
}

TEST_F(NewRecord, PhaseIsUnknown_RecordShowsAnErrorWithAResult) {
    EXPECT_EQ(Record(kLogout, kNoPhase, 0UL), "\n10:15:30 01234-567:ERR!Logout CKR_OK12345clks {}");
    EXPECT_EQ(Record(kLogout, CommandSpecifier::kInit, kNoPhase, kUnnamed),
              "\n10:15:30 01234-567:ERR!Logout_Init ***CKR_UNKNOWN 0x80000999***12345clks {}");
}

TEST_F(NewRecord, TypeHasNoName_RecordShowsAnUnknownType) {
    for (const unsigned type : {14U, 44U, 45U, 50U, 145U, 146U, 280U, 300U, UINT_MAX}) {
        EXPECT_EQ(Record(CommandType{type}, CommandPhase::kStart, 0UL),
                  "\n\n10:15:30 01234-567:STRTUnknownType {}")
            << type;
    }
}

TEST_F(NewRecord, StartHasAResult_RecordDoesNotShowIt) {
    EXPECT_EQ(Record(kLogout, CommandPhase::kStart, kPinIncorrect), "\n\n10:15:30 01234-567:STRTLogout {}");
}

TEST_F(NewRecord, NumbersOfTheHead_ArePaddedAndMayBeNegative) {
    now = PointInTime(2026, 1, 2, 3, 4, 5);
    processId = 7;
    threadId = 8;
    EXPECT_EQ(Record(kLogout, CommandPhase::kStart, 0UL), "\n\n03:04:05 00007-008:STRTLogout {}");
    processId = 1234567;
    threadId = 123456;
    EXPECT_EQ(Record(kLogout, CommandPhase::kStart, 0UL), "\n\n03:04:05 1234567-123456:STRTLogout {}");
    threadId = -5;
    EXPECT_EQ(Record(kLogout, CommandPhase::kStart, 0UL), "\n\n03:04:05 1234567--05:STRTLogout {}");
    threadId = INT_MIN;
    EXPECT_EQ(Record(kLogout, CommandPhase::kStart, 0UL), "\n\n03:04:05 1234567--2147483648:STRTLogout {}");
}

TEST_F(NewRecord, ClockOfAnEnd_ShowsTheProcessorTimeOfTheProcess) {
    ticks = 0;
    EXPECT_EQ(Record(kLogout, CommandPhase::kEnd, 0UL), "\n10:15:30 01234-567:FINILogout CKR_OK0clks {}");
    Record(kLogout, CommandPhase::kStart, 0UL);
    ticks = 1000;
    Record(kLogout, CommandPhase::kStart, 0UL);  // sets no stamp
    ticks = 1500;
    EXPECT_EQ(Record(kLogout, CommandPhase::kEnd, 0UL), "\n10:15:30 01234-567:FINILogout CKR_OK1500clks {}");
    ticks = 0x1'8000'0000;  // 32 bits with a sign
    EXPECT_EQ(Record(kLogout, CommandPhase::kEnd, 0UL),
              "\n10:15:30 01234-567:FINILogout CKR_OK-2147483648clks {}");
}

TEST_F(NewRecord, TimeZoneChanges_NewRecordShowsTheNewTime) {
    EXPECT_EQ(Record(kLogout, CommandPhase::kStart, 0UL), "\n\n10:15:30 01234-567:STRTLogout {}");
    setenv("TZ", "EAST-9", 1);
    EXPECT_EQ(Record(kLogout, CommandPhase::kStart, 0UL), "\n\n19:15:30 01234-567:STRTLogout {}");
}

TEST_F(NewRecord, NewRecordForAStream_IsFlushedPieceByPiece) {
    CommandDescriptor start(kEncrypt, CommandSpecifier::kInit, CommandPhase::kStart, 0);
    start.AddDescriptor(new SessionHandleDescriptor(5));
    EXPECT_EQ(FlushedPieces(start), (std::vector<std::string>{"\n", "\n10:15:30 01234-567:STRTEncrypt_Init",
                                                              " ", "{Sesn=5", " }", "(end)"}));
    EXPECT_EQ(FlushedPieces(CommandDescriptor(kLogout, CommandPhase::kEnd, 0)),
              (std::vector<std::string>{"\n10:15:30 01234-567:FINILogout CKR_OK12345clks ", "{}", "(end)"}));
    EXPECT_EQ(FlushedPieces(CommandDescriptor(kSign, CommandSpecifier::kFinal, CommandPhase::kEnd, 0)),
              (std::vector<std::string>{"\n10:15:30 01234-567:FINISign_Final", " CKR_OK12345clks ", "{}",
                                        "(end)"}));
}

// ---- The old format ---------------------------------------------------------------------------------------

TEST_F(OldRecord, StartInOldFormat_ShowsHeadAndChildren) {
    CommandDescriptor command(kLogout, CommandPhase::kStart, 0);
    command.AddDescriptor(new SessionHandleDescriptor(5));
    EXPECT_EQ(Printed(command),
              "\nCommand(Logout, None, Start) PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n"
              "\n{"
              "\n   SessionHandle(0x5);"
              "\n}");
}

TEST_F(OldRecord, EndInOldFormat_ShowsResultAndClock) {
    StampStart(12345);
    EXPECT_EQ(Record(kLogout, CommandPhase::kEnd, 0UL),
              "\nCommand(Logout, None, End, CKR_OK) PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n"
              " // 0 clock cycles"
              "\n{"
              "\n}");
}

TEST_F(OldRecord, ResultHasNoName_RecordShowsItsNumberWithoutAsterisks) {
    StampStart(0);
    ticks = 77;
    EXPECT_EQ(Record(kLogout, CommandPhase::kEnd, kPinIncorrect),
              "\nCommand(Logout, None, End, CKR_PIN_INCORRECT) PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n"
              " // 77 clock cycles\n{\n}");
    EXPECT_EQ(Record(kLogout, CommandPhase::kEnd, kUnnamed),
              "\nCommand(Logout, None, End, CKR_UNKNOWN 0x80000999) PID:  1234  Time:  "
              "Sun Nov 15 10:15:30 2026\n // 77 clock cycles\n{\n}");
}

TEST_F(OldRecord, EachSpecifier_HasItsNameInTheHead) {
    const auto head = [](CommandSpecifier specifier) {
        const std::string record = Record(kDigest, specifier, CommandPhase::kStart, 0UL);
        return record.substr(0, record.find(')') + 1);
    };
    EXPECT_EQ(head(CommandSpecifier::kSingle), "\nCommand(Digest, None, Start)");
    EXPECT_EQ(head(CommandSpecifier::kInit), "\nCommand(Digest, Init, Start)");
    EXPECT_EQ(head(CommandSpecifier::kUpdate), "\nCommand(Digest, Update, Start)");
    EXPECT_EQ(head(CommandSpecifier::kFinal), "\nCommand(Digest, Final, Start)");
    EXPECT_EQ(head(CommandSpecifier::kKey), "\nCommand(Digest, Key, Start)");
    EXPECT_EQ(head(CommandSpecifier{5}), "\nCommand(Digest, UnknownSpecifier, Start)");
}

TEST_F(OldRecord, PhaseIsUnknown_RecordShowsNoResultAndSetsTheStamp) {
    StampStart(100);
    ticks = 1100;
    EXPECT_EQ(Record(kLogout, kNoPhase, kPinIncorrect),
              "\nCommand(Logout, None, UnknownPhase) PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n\n{\n}");
    ticks = 1250;
    EXPECT_EQ(Record(kLogout, CommandPhase::kEnd, 0UL),
              "\nCommand(Logout, None, End, CKR_OK) PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n"
              " // 150 clock cycles\n{\n}");
}

TEST_F(OldRecord, TypeHasNoName_RecordShowsAnUnknownType) {
    for (const unsigned type : {14U, 300U}) {
        EXPECT_EQ(Record(CommandType{type}, CommandPhase::kStart, 0UL),
                  "\nCommand(UnknownType, None, Start) PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n\n{\n}");
    }
}

TEST_F(OldRecord, NumbersOfTheHead_AreNotPadded) {
    now = PointInTime(2026, 1, 2, 3, 4, 5);
    processId = 7;
    EXPECT_EQ(Record(kLogout, CommandPhase::kStart, 0UL),
              "\nCommand(Logout, None, Start) PID:  7  Time:  Fri Jan  2 03:04:05 2026\n\n{\n}");
    processId = -7;
    EXPECT_EQ(Record(kLogout, CommandPhase::kStart, 0UL),
              "\nCommand(Logout, None, Start) PID:  -7  Time:  Fri Jan  2 03:04:05 2026\n\n{\n}");
}

TEST_F(OldRecord, ClockOfAnEnd_CountsFromTheLatestStartOfAnyCall) {
    const auto cycles = [] {
        const std::string record = Record(kLogin, CommandPhase::kEnd, 0UL);
        return record.substr(record.find(" // "), record.find("\n{") - record.find(" // "));
    };
    StampStart(1000);
    StampStart(1600);
    ticks = 2000;
    EXPECT_EQ(cycles(), " // 400 clock cycles");
    ticks = 2500;
    EXPECT_EQ(cycles(), " // 900 clock cycles");  // an end does not change the stamp
    ticks = 1500;
    EXPECT_EQ(cycles(), " // -100 clock cycles");
    StampStart(0x7FFF'FFFF);
    ticks = 0x8000'0001;
    EXPECT_EQ(cycles(), " // 2 clock cycles");  // 32 bits that wrap around
    StampStart(0);
    ticks = 0x1'0000'0005;
    EXPECT_EQ(cycles(), " // 5 clock cycles");
}

TEST_F(OldRecord, StampOfAnOldRecord_IsSubtractedInTheNewFormatToo) {
    StampStart(45);
    UseNewFormat();
    ticks = 100;
    EXPECT_EQ(Record(kLogout, CommandPhase::kEnd, 0UL), "\n10:15:30 01234-567:FINILogout CKR_OK55clks {}");
}

TEST_F(OldRecord, OldRecordForAStream_IsFlushedPieceByPiece) {
    CommandDescriptor start(kLogout, CommandPhase::kStart, 0);
    start.AddDescriptor(new SessionHandleDescriptor(5));
    EXPECT_EQ(FlushedPieces(start),
              (std::vector<std::string>{"\nCommand(Logout, None, Start",
                                        ") PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n",
                                        "\n{\n   SessionHandle(0x5)", ";\n}", "(end)"}));
    EXPECT_EQ(FlushedPieces(CommandDescriptor(kLogout, CommandPhase::kEnd, 0)),
              (std::vector<std::string>{"\nCommand(Logout, None, End, CKR_OK",
                                        ") PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n",
                                        " // 0 clock cycles", "\n{\n}", "(end)"}));
}

TEST_F(OldRecord, RecordsInOldFormat_FollowEachOtherWithoutAnEmptyLine) {
    std::string log;
    CommandDescriptor start(kLogout, CommandPhase::kStart, 0);
    start.AddDescriptor(new SessionHandleDescriptor(5));
    log += Printed(start);
    log += Record(kLogout, CommandPhase::kEnd, 0UL);
    EXPECT_EQ(log,
              "\n"
              "Command(Logout, None, Start) PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n"
              "\n"
              "{\n"
              "   SessionHandle(0x5);\n"
              "}\n"
              "Command(Logout, None, End, CKR_OK) PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n"
              " // 0 clock cycles\n"
              "{\n"
              "}");
}

// ---- Surroundings -----------------------------------------------------------------------------------------

TEST(RecordEnvironment, EnvironmentIsNotReplaced_GivesTimeProcessAndThread) {
    EXPECT_EQ(recordEnvironment.processId(), getpid());
    EXPECT_EQ(recordEnvironment.threadId(),
              static_cast<int>(static_cast<std::uint32_t>((std::uintptr_t)pthread_self())));
    const std::time_t before = std::time(nullptr);
    const std::time_t given = recordEnvironment.now();
    EXPECT_LE(before, given);
    EXPECT_LE(given, std::time(nullptr));
    const std::clock_t ticks = recordEnvironment.processorTime();
    EXPECT_GE(ticks, 0);
    EXPECT_LE(ticks, std::clock());
}

TEST(RecordEnvironment, ChildForgetsTheProcessId_GivesItsOwnNumber) {
    EXPECT_EQ(recordEnvironment.processId(), getpid());
    const pid_t child = fork();
    if (child == 0) {
        ForgetProcessId();
        _exit(recordEnvironment.processId() == getpid() ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

}  // namespace
