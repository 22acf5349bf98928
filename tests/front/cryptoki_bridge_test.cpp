#include "front/cryptoki_bridge.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "front/overwritten_lists.h"
#include "front/process_bridge.h"
#include "tests/expected_functions.h"
#include "tests/front/target_answers.h"
#include "tests/logging_configuration_file.h"

using namespace std::literals;

namespace {

constexpr CK_RV kNotSupported = 0x54;

// Returns a different value for each place in a list of arguments, of the type that the place wants.
template <class Argument>
Argument Mark(std::size_t place) {
    const std::uint64_t word = 0x0102030405060708 * (place + 3);
    if constexpr (std::is_pointer_v<Argument>) {
        return reinterpret_cast<Argument>(word);
    } else {
        return static_cast<Argument>(word);
    }
}

template <class... Parameters, std::size_t... place>
CK_RV Call(CryptokiBridge& bridge, CK_RV (CryptokiBridge::*method)(Parameters...),
           std::index_sequence<place...>) {
    return (bridge.*method)(Mark<Parameters>(place)...);
}
template <class... Parameters>
CK_RV Call(CryptokiBridge& bridge, CK_RV (CryptokiBridge::*method)(Parameters...)) {
    return Call(bridge, method, std::index_sequence_for<Parameters...>());
}

template <class... Parameters, std::size_t... place>
CK_RV Expected(const char* name, CK_RV (CryptokiBridge::*)(Parameters...), std::index_sequence<place...>) {
    return AnswerOf(name, Mark<Parameters>(place)...);
}
template <class... Parameters>
CK_RV Expected(const char* name, CK_RV (CryptokiBridge::*method)(Parameters...)) {
    return Expected(name, method, std::index_sequence_for<Parameters...>());
}

// Calls `visit` for each forwarding method. `visit` gets the function's name, what a call of the method
// gives, and what the target's own answer to that call is.
template <class Visit>
void ForEachFunction(CryptokiBridge& bridge, const Visit& visit) {
#define METHOD(Name) \
    visit(#Name, Call(bridge, &CryptokiBridge::Name), Expected(#Name, &CryptokiBridge::Name));
#define C_EVERY_ROW(Name, ...) METHOD(C_##Name)
#define COUNTER_ROW(Name, ...) METHOD(Name)
#define CA_EVERY_ROW(Name) METHOD(CA_##Name)
#include "functions/functions.def"
#undef METHOD
}

void ExpectOnlyStubs(CryptokiBridge& bridge) {
    ForEachFunction(bridge, [](const char* name, CK_RV rv, CK_RV) { EXPECT_EQ(rv, kNotSupported) << name; });
}

// Expects every function to reach the target, except those whose names stand between blanks in `missing`.
void ExpectTargetWithout(CryptokiBridge& bridge, const std::string& missing) {
    ForEachFunction(bridge, [&](const std::string& name, CK_RV rv, CK_RV answer) {
        const bool isMissing = missing.find(" " + name + " ") != missing.npos;
        EXPECT_EQ(rv, isMissing ? kNotSupported : answer) << name;
    });
}

// Lies in the same image as the bridge, as the exports of the library do.
CK_RV OwnFunction() { return 0x777; }
void* const kOwnFunction = reinterpret_cast<void*>(OwnFunction);

bool IsLoaded(const char* path) {
    void* const handle = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr) dlclose(handle);
    return handle != nullptr;
}

class CryptokiBridgeTest : public testing::Test {
protected:
    ~CryptokiBridgeTest() override { CryptokiBridge::bindLevel = 0; }

    // Connects and returns what was announced meanwhile.
    std::string Connect(const char* path, int expected) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(bridge.Connect(path), expected);
        return testing::internal::GetCapturedStdout();
    }

    CryptokiBridge bridge;
};

TEST_F(CryptokiBridgeTest, NotYetConnected_EveryFunctionIsTheStub) {
    EXPECT_STREQ(bridge.Error(), "Not yet connected.");
    ExpectOnlyStubs(bridge);
    EXPECT_EQ(CryptokiBridge::Stub(), kNotSupported);
}

TEST_F(CryptokiBridgeTest, TargetHasEveryFunction_EveryArgumentIsForwarded) {
    EXPECT_EQ(Connect(TARGET_WITH_COUNTERS, 1), "");
    EXPECT_STREQ(bridge.Error(), "Connected.");
    std::size_t functions = 0;
    ForEachFunction(bridge, [&](const char*, CK_RV, CK_RV) { ++functions; });
    EXPECT_EQ(functions, kExpectedFunctions.size() + 2);  // and the two counters
    // C_GetFunctionStatus is never looked up, though this target has it.
    ExpectTargetWithout(bridge, " C_GetFunctionStatus ");
}

TEST_F(CryptokiBridgeTest, TargetLacksTheCounters_ConnectSucceedsWithoutAnnouncement) {
    EXPECT_EQ(Connect(TARGET_COMPLETE, 1), "");
    EXPECT_STREQ(bridge.Error(), "Connected.");
    ExpectTargetWithout(bridge, " C_GetFunctionStatus GetTotalOperations ResetTotalOperations ");
}

TEST_F(CryptokiBridgeTest, TargetLacksDualFunctions_ConnectSucceeds) {
    EXPECT_EQ(Connect(TARGET_WITHOUT_DUAL_FUNCTIONS, 1),
              "Failed to load function 'C_DigestEncryptUpdate'.\n"
              "Failed to load function 'C_DecryptDigestUpdate'.\n"
              "Failed to load function 'C_SignEncryptUpdate'.\n"
              "Failed to load function 'C_DecryptVerifyUpdate'.\n");
    EXPECT_STREQ(bridge.Error(), "Connected.");
    ExpectTargetWithout(bridge,
                        " C_GetFunctionStatus GetTotalOperations ResetTotalOperations C_DigestEncryptUpdate "
                        "C_DecryptDigestUpdate C_SignEncryptUpdate C_DecryptVerifyUpdate ");
}

TEST_F(CryptokiBridgeTest, TargetLacksOneFunction_ErrorNamesItAndTheOthersAreForwarded) {
    EXPECT_EQ(Connect(TARGET_WITHOUT_SELF_TEST, 0), "Failed to load function 'CA_PerformSelfTest'.\n");
    EXPECT_STREQ(bridge.Error(), "CA_PerformSelfTest");
    ExpectTargetWithout(bridge,
                        " C_GetFunctionStatus GetTotalOperations ResetTotalOperations CA_PerformSelfTest ");
}

TEST_F(CryptokiBridgeTest, TargetLacksSeveralFunctions_ErrorNamesTheLast) {
    EXPECT_EQ(Connect(TARGET_WITHOUT_SEVERAL, 0),
              "Failed to load function 'C_WaitForSlotEvent'.\n"
              "Failed to load function 'C_GetInfo'.\n"
              "Failed to load function 'C_Login'.\n"
              "Failed to load function 'C_GetOperationState'.\n"
              "Failed to load function 'C_CancelFunction'.\n");
    EXPECT_STREQ(bridge.Error(), "C_CancelFunction");
}

TEST_F(CryptokiBridgeTest, TargetLacksMostFunctions_TheyAreAnnouncedInTheOrderOfTheirList) {
    const auto announcement = [](const std::string& name) {
        return name == "C_OpenSession" ? "" : "Failed to load function '" + name + "'.\n";
    };
    std::string expected;
    for (const ExpectedFunction& function : kExpectedFunctions) {
        if (function.lookUp != LookUp::kNeverLookedUp) expected += announcement(function.name);
    }
    EXPECT_EQ(Connect(TARGET_THAT_CALLS_BACK, 0), expected);
    EXPECT_EQ(bridge.Error(), kExpectedFunctions.back().name);
}

TEST_F(CryptokiBridgeTest, BindLevelIsOne_AnyConnectSucceeds) {
    CryptokiBridge::bindLevel = 1;
    EXPECT_EQ(Connect(TARGET_WITHOUT_SELF_TEST, 1), "Failed to load function 'CA_PerformSelfTest'.\n");
    EXPECT_STREQ(bridge.Error(), "Connected.");
    EXPECT_EQ(Connect("/nowhere/at/all.so", 1), "");
    EXPECT_STREQ(bridge.Error(), "Connected.");
    ExpectOnlyStubs(bridge);
}

TEST_F(CryptokiBridgeTest, BindLevelIsTwo_NothingIsAnnounced) {
    CryptokiBridge::bindLevel = 2;
    EXPECT_EQ(Connect(TARGET_WITHOUT_SEVERAL, 1), "");
    EXPECT_STREQ(bridge.Error(), "Connected.");
    EXPECT_EQ(Connect(TARGET_WITHOUT_DUAL_FUNCTIONS, 1), "");
}

TEST_F(CryptokiBridgeTest, TargetIsMissing_ErrorIsWhatTheLoaderSays) {
    EXPECT_EQ(dlopen("/nowhere/at/all.so", RTLD_NOW), nullptr);
    const std::string words = dlerror();
    EXPECT_EQ(Connect("/nowhere/at/all.so", 0), "");
    EXPECT_EQ(bridge.Error(), words);
    ExpectOnlyStubs(bridge);
    EXPECT_EQ(Connect(nullptr, 0), "");
    EXPECT_STREQ(bridge.Error(), "Error during dlerror() call");
}

TEST_F(CryptokiBridgeTest, LoaderSaysMuch_ErrorIsCutAt249Characters) {
    const std::string path = std::string("/").append(240, 'p').append("/").append(200, 'q');
    EXPECT_EQ(Connect(path.c_str(), 0), "");
    EXPECT_EQ(bridge.Error(), path.substr(0, 249));
}

TEST_F(CryptokiBridgeTest, ConnectIsCalledAgain_TargetIsReplaced) {
    Connect(TARGET_COMPLETE, 1);
    Connect(TARGET_WITHOUT_SELF_TEST, 0);
    EXPECT_FALSE(IsLoaded(TARGET_COMPLETE));
    EXPECT_TRUE(IsLoaded(TARGET_WITHOUT_SELF_TEST));
    EXPECT_EQ(Call(bridge, &CryptokiBridge::CA_PerformSelfTest), kNotSupported);
    Connect("/nowhere/at/all.so", 0);
    EXPECT_FALSE(IsLoaded(TARGET_WITHOUT_SELF_TEST));
    ExpectOnlyStubs(bridge);
}

TEST_F(CryptokiBridgeTest, DisconnectIsCalled_TargetIsUnloaded) {
    Connect(TARGET_COMPLETE, 1);
    EXPECT_TRUE(IsLoaded(TARGET_COMPLETE));
    bridge.Disconnect();
    EXPECT_FALSE(IsLoaded(TARGET_COMPLETE));
    EXPECT_STREQ(bridge.Error(), "Not yet connected.");
    ExpectOnlyStubs(bridge);
    bridge.Disconnect();
    EXPECT_STREQ(bridge.Error(), "Not yet connected.");
    Connect(TARGET_COMPLETE, 1);
    EXPECT_STREQ(bridge.Error(), "Connected.");
}

TEST_F(CryptokiBridgeTest, DisconnectIsCalledWithoutATarget_ErrorStays) {
    Connect("/nowhere/at/all.so", 0);
    const std::string message = bridge.Error();
    bridge.Disconnect();
    EXPECT_EQ(bridge.Error(), message);
}

TEST_F(CryptokiBridgeTest, BridgeIsDestroyed_TargetIsUnloaded) {
    {
        CryptokiBridge brief;
        EXPECT_EQ(brief.Connect(TARGET_COMPLETE), 1);
        EXPECT_TRUE(IsLoaded(TARGET_COMPLETE));
    }
    EXPECT_FALSE(IsLoaded(TARGET_COMPLETE));
}

TEST_F(CryptokiBridgeTest, InitializeStubsIsCalled_EveryFunctionIsTheStub) {
    Connect(TARGET_COMPLETE, 1);
    bridge.InitializeStubs();
    ExpectOnlyStubs(bridge);
}

TEST_F(CryptokiBridgeTest, SlotIsGivenNull_SlotKeepsItsAddress) {
    int mark;
    CryptokiBridge::Slot slot{&mark};
    EXPECT_EQ(CryptokiBridge::SetFunctionPointer(&slot, nullptr), 0);
    EXPECT_EQ(slot.load(), &mark);
    EXPECT_EQ(CryptokiBridge::SetFunctionPointer(&slot, &slot), 1);
    EXPECT_EQ(slot.load(), &slot);
}

TEST_F(CryptokiBridgeTest, SymbolIsMissing_ItIsAnnouncedUnlessSilent) {
    void* const handle = dlopen(TARGET_COMPLETE, RTLD_NOW);
    testing::internal::CaptureStdout();
    EXPECT_EQ(CryptokiBridge::GetSymbolAddressSilent(handle, "C_Sign", 0), dlsym(handle, "C_Sign"));
    EXPECT_EQ(CryptokiBridge::GetSymbolAddressSilent(handle, "C_Nothing", 1), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    testing::internal::CaptureStdout();
    EXPECT_EQ(CryptokiBridge::GetSymbolAddressSilent(handle, "C_Nothing", 0), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failed to load function 'C_Nothing'.\n");
    dlclose(handle);
}

TEST_F(CryptokiBridgeTest, TargetLacksFunctionsOrIsMissing_LoaderHasNoErrorOfOursForTheApplication) {
    dlerror();
    for (const char* target : {TARGET_WITHOUT_SEVERAL, TARGET_WITHOUT_SELF_TEST, TARGET_THAT_CALLS_BACK,
                               TARGET_THAT_EXPORTS_ITS_LIST, TARGET_WITHOUT_LIST, "/nowhere/at/all.so"}) {
        Connect(target, 0);
        EXPECT_EQ(dlerror(), nullptr) << target;
    }
}

TEST_F(CryptokiBridgeTest, AnnouncingIsSwitchedOff_MissingFunctionsAreNotAnnouncedAndStillFail) {
    CryptokiBridge::isAnnouncing = false;
    EXPECT_EQ(Connect(TARGET_WITHOUT_SEVERAL, 0), "");
    EXPECT_STREQ(bridge.Error(), "C_CancelFunction");
    EXPECT_EQ(Connect(TARGET_WITHOUT_DUAL_FUNCTIONS, 1), "");
    CryptokiBridge::isAnnouncing = true;
    EXPECT_NE(Connect(TARGET_WITHOUT_DUAL_FUNCTIONS, 1), "");
}

// ---- Why a target cannot be used -------------------------------------------------------------------------

TEST_F(CryptokiBridgeTest, TargetIsUsable_FailureIsEmpty) {
    EXPECT_STREQ(bridge.Failure(), "");
    for (const char* target : {"/nowhere/at/all.so", TARGET_COMPLETE, TARGET_WITHOUT_SEVERAL}) {
        testing::internal::CaptureStdout();
        bridge.Connect(target);
        testing::internal::GetCapturedStdout();
    }
    EXPECT_STREQ(bridge.Failure(), "");
}

TEST_F(CryptokiBridgeTest, TargetIsMissing_FailureSaysItsPathOnceAndTheLoadersReason) {
    Connect("/nowhere/at/all.so", 0);
    EXPECT_STREQ(bridge.Failure(),
                 "Could not load target library /nowhere/at/all.so: "
                 "cannot open shared object file: No such file or directory.");
    Connect("no library of this name", 0);
    EXPECT_STREQ(bridge.Failure(),
                 "Could not load target library no library of this name: "
                 "cannot open shared object file: No such file or directory.");
    Connect(nullptr, 0);
    EXPECT_STREQ(bridge.Failure(), "Could not load target library : Error during dlerror() call.");
}

TEST_F(CryptokiBridgeTest, TargetHasALongPath_FailureIsWholeWhereTheMessageIsCut) {
    const std::string path = std::string("/").append(240, 'p').append("/").append(250, 'q');
    Connect(path.c_str(), 0);
    EXPECT_EQ(bridge.Failure(), "Could not load target library " + path +
                                    ": cannot open shared object file: No such file or directory.");
}

TEST_F(CryptokiBridgeTest, TargetLacksItsList_FailureSaysItsPathAndTheLoadersReason) {
    Connect(TARGET_WITHOUT_LIST, 0);
    EXPECT_EQ(bridge.Failure(), "Found no C_GetFunctionList in target library " TARGET_WITHOUT_LIST
                                ": undefined symbol: C_GetFunctionList."s);
    ExpectTargetWithout(bridge,
                        " C_GetFunctionStatus GetTotalOperations ResetTotalOperations C_GetFunctionList ");
}

// ---- A target that leaves its functions to its list ------------------------------------------------------

class ListingTarget : public CryptokiBridgeTest {
protected:
    ListingTarget() : handle(dlopen(TARGET_THAT_EXPORTS_ITS_LIST, RTLD_NOW)) {
        kept = List();
        keptFunctions = *kept;
    }
    ~ListingTarget() override {
        bridge.Disconnect();
        Variable<CK_RV>("resultOfListing") = CKR_OK;
        List() = kept;
        *kept = keptFunctions;
        dlclose(handle);
    }

    CK_FUNCTION_LIST*& List() { return Variable<CK_FUNCTION_LIST*>("listToHandOut"); }
    void AnswerWith(CK_RV rv) { Variable<CK_RV>("resultOfListing") = rv; }

    std::string Connect() { return CryptokiBridgeTest::Connect(TARGET_THAT_EXPORTS_ITS_LIST, 0); }

    // Returns what is announced if the list has every function of the standard except these.
    static std::string Announced(const std::vector<std::string>& missing) {
        std::string lines;
        for (const std::string& name : missing) lines += Line(name);
        for (const ExpectedFunction& function : kExpectedFunctions) {
            if (function.IsOfVendor()) lines += Line(function.name);
        }
        return lines;
    }

    void ExpectListedFunctionsWithout(const std::string& missing) {
        ForEachFunction(bridge, [&](const std::string& name, CK_RV rv, CK_RV answer) {
            const bool isListed = name.starts_with("C_") && name != "C_GetFunctionStatus" &&
                                  missing.find(" " + name + " ") == missing.npos;
            EXPECT_EQ(rv, isListed ? answer : kNotSupported) << name;
        });
    }

private:
    static std::string Line(const std::string& name) { return "Failed to load function '" + name + "'.\n"; }

    template <class Type>
    Type& Variable(const char* name) {
        return *static_cast<Type*>(dlsym(handle, name));
    }

    void* const handle;
    CK_FUNCTION_LIST* kept;
    CK_FUNCTION_LIST keptFunctions;
};

TEST_F(ListingTarget, ListHasEveryFunction_AllButFunctionStatusAreForwarded) {
    EXPECT_EQ(Connect(), Announced({}));
    ExpectListedFunctionsWithout("");
    EXPECT_STREQ(bridge.Failure(), "");
}

TEST_F(ListingTarget, ListLacksFunctions_TheseAreAnnouncedAndTheOthersForwarded) {
    List()->C_Sign = nullptr;
    List()->C_DigestEncryptUpdate = nullptr;
    EXPECT_EQ(Connect(), Announced({"C_Sign", "C_DigestEncryptUpdate"}));
    ExpectListedFunctionsWithout(" C_Sign C_DigestEncryptUpdate ");
}

TEST_F(ListingTarget, ListIsOverwrittenWithOurFunctions_BindingAgainFindsTheTargetsOwn) {
    Connect();
    CK_FUNCTION_LIST& list = *List();
    EXPECT_TRUE(ckscribe::overwrittenLists.Remember(&list));
#define C_EVERY_ROW(Name, ...) list.C_##Name = reinterpret_cast<CK_C_##Name>(kOwnFunction);
#include "functions/functions.def"
    EXPECT_EQ(Connect(), Announced({}));
    ExpectListedFunctionsWithout("");
    ckscribe::overwrittenLists.GiveBack();
}

TEST_F(ListingTarget, ListNamesOurFunctionsFromTheBeginning_TheyAreNotBound) {
    List()->C_Logout = reinterpret_cast<CK_C_Logout>(kOwnFunction);
    EXPECT_EQ(Connect(), Announced({"C_Logout"}));
    ExpectListedFunctionsWithout(" C_Logout ");
    EXPECT_TRUE(ckscribe::overwrittenLists.Remember(List()));
    EXPECT_EQ(Connect(), Announced({"C_Logout"}));
    ckscribe::overwrittenLists.GiveBack();
}

TEST_F(ListingTarget, AnotherListIsHandedOut_NothingOfTheEarlierOneIsBound) {
    Connect();
    CK_FUNCTION_LIST other = *List();
    other.C_Logout = reinterpret_cast<CK_C_Logout>(kOwnFunction);
    List() = &other;
    EXPECT_EQ(Connect(), Announced({"C_Logout"}));
    ExpectListedFunctionsWithout(" C_Logout ");
}

TEST_F(ListingTarget, AnotherTargetIsBoundNext_NothingOfTheListStays) {
    Connect();
    EXPECT_EQ(CryptokiBridgeTest::Connect(TARGET_WITHOUT_SELF_TEST, 0),
              "Failed to load function 'CA_PerformSelfTest'.\n");
    ExpectTargetWithout(bridge,
                        " C_GetFunctionStatus GetTotalOperations ResetTotalOperations CA_PerformSelfTest ");
}

TEST_F(ListingTarget, ListIsRefused_FailureSaysTheResultAndNothingButTheListFunctionIsBound) {
    AnswerWith(CKR_GENERAL_ERROR);
    std::vector<std::string> missing;
    for (const ExpectedFunction& function : kExpectedFunctions) {
        const bool isLookedUp = function.lookUp != LookUp::kNeverLookedUp;
        if (!function.IsOfVendor() && isLookedUp && function.name != "C_GetFunctionList")
            missing.push_back(function.name);
    }
    EXPECT_EQ(Connect(), Announced(missing));
    EXPECT_EQ(bridge.Failure(), "Got no functions from target library " TARGET_THAT_EXPORTS_ITS_LIST
                                ": its C_GetFunctionList returned CKR_GENERAL_ERROR (0x5) and no list."s);
    CK_FUNCTION_LIST* list = nullptr;
    EXPECT_EQ(bridge.C_GetFunctionList(&list), CKR_GENERAL_ERROR);
    EXPECT_EQ(bridge.C_Logout(5), kNotSupported);
}

TEST_F(ListingTarget, AnswerIsOkWithoutAList_FailureSaysSo) {
    List() = nullptr;
    Connect();
    EXPECT_EQ(bridge.Failure(), "Got no functions from target library " TARGET_THAT_EXPORTS_ITS_LIST
                                ": its C_GetFunctionList returned CKR_OK (0x0) and no list."s);
    EXPECT_EQ(bridge.C_Logout(5), kNotSupported);
}

// ---- A call inside the target ----------------------------------------------------------------------------

std::atomic<bool> isInside{false};
std::atomic<bool> mayReturn{false};

// A target calls this function while a call is inside its C_OpenSession; see waiting_target.cpp.
CK_RV StayInside(CK_SESSION_HANDLE, CK_NOTIFICATION, CK_VOID_PTR) {
    isInside = true;
    while (!mayReturn) std::this_thread::yield();
    return CKR_OK;
}

TEST_F(CryptokiBridgeTest, DisconnectDuringACall_TargetStaysLoaded) {
    Connect(TARGET_THAT_CALLS_BACK, 0);
    std::thread caller([&] {
        CK_SESSION_HANDLE session = 0;
        EXPECT_EQ(bridge.C_OpenSession(1, CKF_SERIAL_SESSION, nullptr, StayInside, &session), CKR_OK);
        EXPECT_EQ(session, 77U);
    });
    while (!isInside) std::this_thread::yield();
    bridge.Disconnect();
    EXPECT_TRUE(IsLoaded(TARGET_THAT_CALLS_BACK));
    ExpectOnlyStubs(bridge);
    mayReturn = true;
    caller.join();
    Connect(TARGET_COMPLETE, 1);
    bridge.Disconnect();
    EXPECT_FALSE(IsLoaded(TARGET_COMPLETE));
}

// ---- A call that finds the library stopped ---------------------------------------------------------------

CryptokiBridge* stoppedBridge = nullptr;
int starts = 0;

class StoppedBridge : public CryptokiBridgeTest {
protected:
    StoppedBridge() {
        stoppedBridge = &bridge;
        starts = 0;
    }
    ~StoppedBridge() override {
        CryptokiBridge::startAgain = [] {};
    }

    static inline const CK_RV kAnswer = AnswerOf("C_Logout", CK_SESSION_HANDLE{5});
};

TEST_F(StoppedBridge, CallFindsTheStub_LibraryIsStartedAgain) {
    CryptokiBridge::startAgain = [] {
        if (++starts == 1) stoppedBridge->Connect(TARGET_COMPLETE);
    };
    EXPECT_EQ(bridge.C_Logout(5), kAnswer);
    EXPECT_EQ(starts, 1);
    EXPECT_EQ(bridge.C_Logout(5), kAnswer);
    EXPECT_EQ(starts, 1);
}

TEST_F(StoppedBridge, LibraryIsStoppedAgainAndAgain_CallStartsItEachTime) {
    CryptokiBridge::startAgain = [] {
        stoppedBridge->Connect(TARGET_COMPLETE);
        if (++starts < 4) stoppedBridge->Disconnect();
    };
    EXPECT_EQ(bridge.C_Logout(5), kAnswer);
    EXPECT_EQ(starts, 4);
}

TEST_F(StoppedBridge, TargetLacksTheFunction_CallDoesNotWait) {
    CryptokiBridge::startAgain = [] { ++starts; };
    Connect(TARGET_WITHOUT_SELF_TEST, 0);
    ExpectTargetWithout(bridge,
                        " C_GetFunctionStatus GetTotalOperations ResetTotalOperations CA_PerformSelfTest ");
    EXPECT_EQ(starts, 4);
}

TEST_F(StoppedBridge, CallStartsTheLibrary_NoCallIsLeftCounted) {
    CryptokiBridge::startAgain = [] { stoppedBridge->Connect(TARGET_COMPLETE); };
    EXPECT_EQ(bridge.C_Logout(5), kAnswer);
    bridge.Disconnect();
    EXPECT_FALSE(IsLoaded(TARGET_COMPLETE));  // no call is left inside
}

// ---- The path of the other section -----------------------------------------------------------------------

class WendrafilLibraryTest : public CryptokiBridgeTest {
protected:
    // The bridge's own store finds its file once, by the environment of the first look.
    WendrafilLibraryTest() {
        setenv("WendrafilConfigurationPath", directory().c_str(), 1);
        std::remove((directory() + "/Wendrafil.conf").c_str());
    }
    ~WendrafilLibraryTest() override {
        // Only Disconnect of a connected bridge takes DisableLB back.
        Connect(TARGET_COMPLETE, 1);
        bridge.Disconnect();
    }

    static void Write(const std::string& text) { std::ofstream(directory() + "/Wendrafil.conf") << text; }

    static const std::string& directory() {
        static const TemporaryDirectory theDirectory;
        return theDirectory.Path();
    }
};

TEST_F(WendrafilLibraryTest, SectionNamesAPath_PathIsReturned) {
    EXPECT_STREQ(CryptokiBridge::WendrafilLibrary(), "/usr/lib/libmordavek2.so");
    Write("Wendrafil2 = {\nLibUNIX64 = /opt/other.so;\n}\n");
    EXPECT_STREQ(CryptokiBridge::WendrafilLibrary(), "/opt/other.so");
}

TEST_F(WendrafilLibraryTest, PathIsAskedFor_BindLevelIsRead) {
    Write("Misc = {\nFunctionBindLevel = 2;\n}\n");
    CryptokiBridge::WendrafilLibrary();
    EXPECT_EQ(CryptokiBridge::bindLevel, 2);
    Write("Misc = {\n}\n");
    CryptokiBridge::WendrafilLibrary();
    EXPECT_EQ(CryptokiBridge::bindLevel, 0);
}

TEST_F(WendrafilLibraryTest, BalancingIsDisabled_BalancingLibraryIsReplaced) {
    const std::string balancing = "LBLib2 = {\nLibUNIX = /opt/plain.so;\n}\n";
    Write(balancing + "Wendrafil2 = {\nLibUNIX64 = /opt/liblblib2.so;\n}\n");
    EXPECT_STREQ(CryptokiBridge::WendrafilLibrary(), "/opt/liblblib2.so");
    CryptokiBridge::DisableLB();
    EXPECT_STREQ(CryptokiBridge::WendrafilLibrary(), "/opt/plain.so");
    Write(balancing + "Wendrafil2 = {\nLibUNIX64 = liblblib2.so;\n}\n");
    EXPECT_STREQ(CryptokiBridge::WendrafilLibrary(), "/opt/plain.so");
    for (const char* path : {"iblblib2.so", "/opt/liblblib2.so.1", "/opt/LIBLBLIB2.SO"}) {
        Write(balancing + "Wendrafil2 = {\nLibUNIX64 = " + path + ";\n}\n");
        EXPECT_STREQ(CryptokiBridge::WendrafilLibrary(), path);
    }
}

TEST_F(WendrafilLibraryTest, DisconnectIsCalled_BalancingIsEnabledAgain) {
    Write("LBLib2 = {\nLibUNIX = /opt/plain.so;\n}\nWendrafil2 = {\nLibUNIX64 = /opt/liblblib2.so;\n}\n");
    CryptokiBridge::DisableLB();
    bridge.Disconnect();  // not connected: nothing changes
    EXPECT_STREQ(CryptokiBridge::WendrafilLibrary(), "/opt/plain.so");
    Connect(TARGET_COMPLETE, 1);
    bridge.Disconnect();
    EXPECT_STREQ(CryptokiBridge::WendrafilLibrary(), "/opt/liblblib2.so");
}

TEST(ShimLibrary, NameIsAskedFor_ItIsThatOfTheShim) {
    EXPECT_STREQ(CryptokiBridge::shimLibrary(), "ormaShim.so");
}

TEST(ProcessBridge, ProcessStarts_BridgeIsThereAndNotConnected) {
    EXPECT_STREQ(bridge.Error(), "Not yet connected.");
}

}  // namespace
