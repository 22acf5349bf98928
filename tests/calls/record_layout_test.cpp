// These tests state everything around the arguments of a record: lines, times, results, clocks and threads.
// They also state when a record is written.
#include <pthread.h>
#include <sys/mman.h>

#include <barrier>
#include <thread>

#include "tests/calls/every_function.h"

namespace {

class RecordLayout : public EveryFunction {
protected:
    void UseOldFormat() { Set("NewFormat", "0"); }

    const std::string kNewStart = WithIds("\n\n10:15:30 <id>:STRTLogout {Sesn=81 }");
    const std::string kOldStart = WithIds(R"(
Command(Logout, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
};

}  // namespace

TEST_F(RecordLayout, OldFormat_NoEmptyLineBetweenRecords) {
    UseOldFormat();
    Load();
    api.C_Logout(0x51);
    api.C_CloseAllSessions(0x7);
    EXPECT_EQ(WithIds(R"(
Command(Logout, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
}
Command(Logout, None, End, CKR_OK) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
}
Command(CloseAllSessions, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
}
Command(CloseAllSessions, None, End, CKR_OK) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})"),
              Log());
}

TEST_F(RecordLayout, CallIsInTheTarget_StartRecordIsInTheLog) {
    std::string logDuringCall;
    script.answer = [&] { logDuringCall = Log(); };
    Load();
    api.C_Logout(0x51);
    EXPECT_EQ(kNewStart, logDuringCall);

    UseOldFormat();
    Restart();
    api.C_Logout(0x51);
    EXPECT_EQ(kOldStart, logDuringCall);
}

TEST_F(RecordLayout, ResultsOfEachKind_AreNamedInTheEndRecord) {
    const std::pair<CK_RV, const char*> results[] = {
        {CKR_OK, "CKR_OK"},
        {CKR_CANCEL, "***CKR_CANCEL***"},
        {CKR_CRYPTOKI_ALREADY_INITIALIZED, "***CKR_CRYPTOKI_ALREADY_INITIALIZED***"},
        {0x80000020, "***CKR_PARTITION_DISABLED***"},
        {0x80000041, "***CKR_UNKNOWN 0x80000041***"},
        {0x123456789ABCDEF0, "***CKR_UNKNOWN 0x123456789abcdef0***"},
    };
    Load();
    for (const auto& [result, text] : results) {
        Restart();
        script.result = result;
        EXPECT_EQ(result, api.C_Logout(0x51));
        EXPECT_EQ(kNewStart + WithIds("\n10:15:30 <id>:FINILogout ") + text + "12345clks {}", Log());
    }
}

TEST_F(RecordLayout, TimeZoneChanges_RecordsShowTheNewLocalTime) {
    Load();
    setenv("TZ", "ABC-20:30", 1);
    api.C_Finalize(nullptr);
    EXPECT_EQ(WithIds("\n\n03:45:30 <id>:STRTFinalize {}\n03:45:30 <id>:FINIFinalize CKR_OK12345clks {}"),
              Log());

    UseOldFormat();
    Restart();
    api.C_Finalize(nullptr);
    EXPECT_EQ(WithIds(R"(
Command(Finalize, None, Start) PID:  <pid>  Time:  Mon Nov 16 03:45:30 2026

{
}
Command(Finalize, None, End, CKR_OK) PID:  <pid>  Time:  Mon Nov 16 03:45:30 2026
 // 250 clock cycles
{
})"),
              Log());
}

TEST_F(RecordLayout, ClockExceeds32Bits_RecordsShowItsLower32Bits) {
    Load();
    RestartClock(0x180000005);
    api.C_Logout(0x51);
    EXPECT_EQ(kNewStart + WithIds("\n10:15:30 <id>:FINILogout CKR_OK-2147483643clks {}"), Log());
}

TEST_F(RecordLayout, CallsAreNested_OldFormatCountsClocksFromTheLatestStart) {
    UseOldFormat();
    Load();
    bool isNested = false;
    script.answer = [&] {
        if (isNested) return;
        isNested = true;
        api.C_CloseAllSessions(0x7);
    };
    api.C_Logout(0x51);
    EXPECT_EQ(kOldStart + WithIds(R"(
Command(CloseAllSessions, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
}
Command(CloseAllSessions, None, End, CKR_OK) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
}
Command(Logout, None, End, CKR_OK) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 500 clock cycles
{
})"),
              Log());
}

// COMPAT: Only start records of the old format set the stamp. It outlives a change of the format.
TEST_F(RecordLayout, OldRecordIsWrittenFirst_NewFormatCountsClocksFromIt) {
    UseOldFormat();
    Load();
    api.C_Logout(0x51);
    Set("NewFormat", "1");
    Restart();
    RestartClock(kFirstTicks + 777);
    api.C_Logout(0x51);
    EXPECT_EQ(kNewStart + WithIds("\n10:15:30 <id>:FINILogout CKR_OK777clks {}"), Log());
}

TEST_F(RecordLayout, CallsOfTwoThreads_RecordsShowTwoThreads) {
    Load();
    std::string expected;
    std::thread([&] {
        expected =
            WithIds("\n\n10:15:30 <id>:STRTLogout {Sesn=81 }\n10:15:30 <id>:FINILogout CKR_OK12345clks {}");
        api.C_Logout(0x51);
    }).join();
    EXPECT_NE(WithIds("<id>"), expected.substr(11, WithIds("<id>").size()));
    EXPECT_EQ(expected, Log());
}

// The identity of a thread is an address close to its stack.
TEST_F(RecordLayout, LowerHalfOfAThreadIsNegative_RecordShowsAMinusSign) {
    constexpr std::size_t kReserved = std::size_t{1} << 32;
    constexpr std::size_t kStack = std::size_t{1} << 20;
    void* const reserved =
        mmap(nullptr, kReserved + kStack, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(MAP_FAILED, reserved);
    const std::uintptr_t begin = reinterpret_cast<std::uintptr_t>(reserved);
    // This is the first address from `begin` on whose low 32 bits are 0xC0000000.
    const std::uintptr_t stack =
        begin + static_cast<std::uint32_t>(0xC0000000 - static_cast<std::uint32_t>(begin));
    ASSERT_EQ(0, mprotect(reinterpret_cast<void*>(stack), kStack, PROT_READ | PROT_WRITE));

    Load();
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(0, pthread_attr_setstack(&attributes, reinterpret_cast<void*>(stack), kStack));
    pthread_t thread;
    const auto logout = [](void* function) -> void* {
        reinterpret_cast<CK_C_Logout>(function)(0x51);
        return nullptr;
    };
    ASSERT_EQ(0, pthread_create(&thread, &attributes, logout, reinterpret_cast<void*>(api.C_Logout)));
    const int number = static_cast<int>(static_cast<std::uint32_t>((std::uintptr_t)thread));
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    munmap(reserved, kReserved + kStack);

    EXPECT_LT(number, 0);
    const std::string id = WithIds("<id>").substr(0, WithIds("<id>").find('-') + 1) + std::to_string(number);
    EXPECT_EQ(
        "\n\n10:15:30 " + id + ":STRTLogout {Sesn=81 }\n10:15:30 " + id + ":FINILogout CKR_OK12345clks {}",
        Log());
}

// The library holds no lock while a call is in the target.
TEST_F(RecordLayout, TwoCallsWaitForEachOtherInTheTarget_BothReturn) {
    std::barrier bothAreInside(2);
    script.answer = [&] { bothAreInside.arrive_and_wait(); };
    Load();
    std::thread other([&] { api.C_Logout(0x52); });
    api.C_Logout(0x51);
    other.join();
    EXPECT_EQ(2u, script.received.size());
}
