// The library starts, stops and starts again. These tests say when it does so, and what happens to its target
// and its log then.
#include <algorithm>
#include <barrier>
#include <thread>

#include "tests/calls/every_function.h"

namespace {

class Lifecycle : public EveryFunction {
protected:
    void Initialize() { Exported<void()>("CkLogSpecialInitialize")(); }
    void Finalize() { Exported<void()>("CkLogSpecialFinalize")(); }

    const std::string kLogout =
        WithIds("\n\n10:15:30 <id>:STRTLogout {Sesn=81 }\n10:15:30 <id>:FINILogout CKR_OK12345clks {}");
};

}  // namespace

TEST_F(Lifecycle, LibraryIsLoaded_NothingStarts) {
    Load();
    EXPECT_EQ(0, script.loads);
    EXPECT_FALSE(std::filesystem::exists(LogPath()));
}

TEST_F(Lifecycle, AnyFunctionIsCalledFirst_LibraryStarts) {
    for (const char* function : {"C_Sign", "C_GetFunctionList", "C_GetFunctionStatus", "CA_GetTSV"}) {
        script.Reset();
        CallWith(function, 0);
        EXPECT_EQ(1, script.loads) << function;
        CallWith(function, 0);
        EXPECT_EQ(1, script.loads) << function;
        Unload();
        EXPECT_EQ(1, script.unloads) << function;
    }
}

TEST_F(Lifecycle, SpecialInitializeIsCalledTwice_LibraryStartsOnce) {
    Initialize();
    EXPECT_EQ(1, script.loads);
    EXPECT_TRUE(std::filesystem::exists(LogPath()));
    Initialize();
    api.C_Logout(0x51);
    EXPECT_EQ(1, script.loads);
    EXPECT_EQ(0, script.unloads);
    EXPECT_EQ(kLogout, Log());
}

TEST_F(Lifecycle, SpecialFinalizeIsCalled_TargetIsUnloadedAndTheNextCallLoadsItAgain) {
    Initialize();
    Finalize();
    EXPECT_EQ(1, script.unloads);
    EXPECT_EQ(CKR_OK, api.C_Logout(0x51));
    EXPECT_EQ(2, script.loads);
    EXPECT_EQ(1, script.unloads);
    EXPECT_EQ(kLogout, Log());
}

TEST_F(Lifecycle, SpecialFinalizeIsCalledTwice_SecondCallDoesNothing) {
    Initialize();
    Finalize();
    Finalize();
    EXPECT_EQ(1, script.unloads);
    api.C_Logout(0x51);
    Finalize();
    EXPECT_EQ(2, script.unloads);
}

TEST_F(Lifecycle, SpecialFinalizeIsCalledBeforeTheStart_NothingHappens) {
    Finalize();
    Finalize();
    EXPECT_EQ(0, script.loads);
    EXPECT_EQ(CKR_OK, api.C_Logout(0x51));
    EXPECT_EQ(1, script.loads);
    EXPECT_EQ(kLogout, Log());
}

TEST_F(Lifecycle, LibraryStartsAgain_ConfigurationIsReadAgain) {
    Load();
    api.C_Logout(0x51);
    Finalize();
    Set("LibUNIX64", TargetNamed("scripted_target_without_self_test"));
    Set("NewFormat", "0");
    Set("LoggingLevel", "ADMIN");
    Set("LoggingMask", "GEN_FUNC|SESSION_FUNC");
    Set("File", directory.File("other.log"));
    WriteConfiguration();
    RestartClock();
    api.C_Finalize(nullptr);                     // logged
    api.C_GetInfo(nullptr);                      // beyond the level
    api.C_SetPIN(0x51, nullptr, 0, nullptr, 0);  // beyond the mask
    EXPECT_EQ(kLogout, Log());
    EXPECT_EQ(WithIds(R"(
Command(Finalize, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
}
Command(Finalize, None, End, CKR_OK) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})"),
              Contents(directory.File("other.log")));
    EXPECT_EQ(CKR_FUNCTION_NOT_SUPPORTED, CallWith("CA_PerformSelfTest", 0));
}

TEST_F(Lifecycle, ConfigurationChangesWhileTheLibraryRuns_FormatLevelAndLogStay) {
    Load();
    api.C_Logout(0x51);
    Set("NewFormat", "0");
    Set("LoggingLevel", "DESTROY");
    Set("Enabled", "0");
    Set("File", directory.File("other.log"));
    WriteConfiguration();
    RestartClock();
    api.C_Logout(0x51);
    EXPECT_EQ(kLogout + kLogout, Log());
}

TEST_F(Lifecycle, ApplicationFinalizesTheTarget_TargetStaysLoaded) {
    Load();
    EXPECT_EQ(CKR_OK, api.C_Initialize(nullptr));
    EXPECT_EQ(CKR_OK, api.C_Finalize(nullptr));
    EXPECT_EQ(CKR_OK, api.C_Initialize(nullptr));
    EXPECT_EQ(CKR_OK, api.C_Finalize(nullptr));
    EXPECT_EQ(1, script.loads);
    EXPECT_EQ(0, script.unloads);
    EXPECT_EQ(4u, script.received.size());
    EXPECT_EQ(WithIds(R"(

10:15:30 <id>:STRTInitialize {}
10:15:30 <id>:FINIInitialize CKR_OK12345clks {}

10:15:30 <id>:STRTFinalize {}
10:15:30 <id>:FINIFinalize CKR_OK12595clks {}

10:15:30 <id>:STRTInitialize {}
10:15:30 <id>:FINIInitialize CKR_OK12845clks {}

10:15:30 <id>:STRTFinalize {}
10:15:30 <id>:FINIFinalize CKR_OK13095clks {})"),
              Log());
}

TEST_F(Lifecycle, LibraryIsUnloaded_TargetIsUnloaded) {
    Load();
    api.C_Logout(0x51);
    Unload();
    EXPECT_EQ(1, script.unloads);
}

TEST_F(Lifecycle, LogExists_RecordsAreAppended) {
    WriteFile(LogPath(), "from an earlier run");
    Load();
    api.C_Logout(0x51);
    Finalize();
    RestartClock();
    api.C_Logout(0x51);
    EXPECT_EQ("from an earlier run" + kLogout + kLogout, Log());
}

TEST_F(Lifecycle, LoggingIsDisabled_CallsAreForwardedAndNoFileIsMade) {
    for (const char* disabled : {"0", "", "off"}) {
        Set("Enabled", disabled);
        WriteConfiguration();
        Load();
        script.result = 0x80000999;
        EXPECT_EQ(0x80000999u, api.C_Logout(0x51)) << disabled;
        EXPECT_EQ(0x80000999u, CallWith("CA_GetTSV", 0)) << disabled;
        EXPECT_FALSE(std::filesystem::exists(LogPath())) << disabled;
        Unload();
    }
    Unset("Enabled");
    WriteConfiguration();
    Load();
    EXPECT_EQ(0x80000999u, api.C_Logout(0x51));
    EXPECT_FALSE(std::filesystem::exists(LogPath()));
}

TEST_F(Lifecycle, EnabledIsAnyNumberButZero_CallsAreLogged) {
    Set("Enabled", "-3");
    Load();
    api.C_Logout(0x51);
    EXPECT_EQ(kLogout, Log());
}

TEST_F(Lifecycle, NewFormatIsAbsent_RecordsHaveTheOldFormat) {
    Unset("NewFormat");
    Load();
    api.C_Finalize(nullptr);
    EXPECT_EQ(WithIds(R"(
Command(Finalize, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
}
Command(Finalize, None, End, CKR_OK) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})"),
              Log());
}

TEST_F(Lifecycle, FileIsAbsent_LogIsInTheCurrentDirectory) {
    Unset("File");
    Load();
    api.C_Logout(0x51);
    EXPECT_EQ(kLogout, Contents(directory.File("log.txt")));
    EXPECT_FALSE(std::filesystem::exists(LogPath()));
}

TEST_F(Lifecycle, ConfigurationFileIsMissing_NothingIsForwardedOrLogged) {
    WriteConfiguration();
    std::filesystem::remove(ConfigurationPath());
    Load();
    EXPECT_EQ(CKR_FUNCTION_NOT_SUPPORTED, api.C_Logout(0x51));
    EXPECT_FALSE(std::filesystem::exists(directory.File("log.txt")));
}

TEST_F(Lifecycle, FirstCallsCoincide_LibraryStartsOnce) {
    constexpr int kThreads = 8;
    Load();
    std::barrier allAreReady(kThreads);
    std::vector<std::string> expected(kThreads);
    std::vector<CK_RV> results(kThreads, 1);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            const std::string session = std::to_string(i);
            expected[i] = WithIds("<id>:STRTLogout {Sesn=" + session + " }");
            allAreReady.arrive_and_wait();
            results[i] = api.C_Logout(i);
        });
    }
    for (std::thread& thread : threads) thread.join();

    EXPECT_EQ(1, script.loads);
    EXPECT_EQ(0, script.unloads);
    EXPECT_EQ(std::vector<CK_RV>(kThreads, CKR_OK), results);
    std::vector<TargetWord> sessions;
    for (const ReceivedCall& call : script.received) sessions.push_back(call.words.at(0));
    std::sort(sessions.begin(), sessions.end());
    EXPECT_EQ((std::vector<TargetWord>{0, 1, 2, 3, 4, 5, 6, 7}), sessions);

    // Every record is whole, whatever the order of the records is.
    const std::string log = Log();
    std::size_t length = 0;
    for (const std::string& start : expected) {
        EXPECT_NE(log.npos, log.find("\n\n10:15:30 " + start)) << start;
        length += ("\n\n10:15:30 " + start).size();
    }
    for (std::size_t i = 0; i < kThreads; ++i) {
        const std::string id = expected[i].substr(0, expected[i].find(':'));
        const std::string clocks = std::to_string(kFirstTicks + i * kTicksPerReading) + "clks {}";
        EXPECT_NE(log.npos, log.find("\n10:15:30 " + id + ":FINILogout CKR_OK")) << id;
        EXPECT_NE(log.npos, log.find(":FINILogout CKR_OK" + clocks)) << clocks;
        length += ("\n10:15:30 " + id + ":FINILogout CKR_OK" + clocks).size();
    }
    EXPECT_EQ(length, log.size());
}
