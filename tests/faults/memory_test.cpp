// Any allocation may fail. The call has the target's result, its records are whole or left out, and no lock
// and no memory stays behind. The memory that a process needs does not grow with the number of its calls.

#include <pthread.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>
#include <vector>

#include "tests/faults/application.h"
#include "tests/faults/guarded_call.h"
#include "tests/faults/log_records.h"
#include "tests/faults/scarce_memory.h"
#include "tests/file_text.h"

namespace {

constexpr unsigned long kFewCalls = 10'000;
// The two formats make ten million calls, and a hundredth of that in builds that are many times slower.
constexpr unsigned long kManyCalls = CKSCRIBE_IS_SANITIZED ? 50'000 : 5'000'000;
// The memory that the process occupies may grow by this. The kernel counts on each processor for itself and
// is exact to some hundred KiB. One byte lost in each call would be five times this. The sanitizers keep
// freed memory for a while, and write down what happens.
constexpr long kMostGrowthInKiB = CKSCRIBE_IS_SANITIZED ? 256 * 1024 : 1024;
constexpr unsigned long kCallsInALog = 100'000;
constexpr std::size_t kLongestLog = 100'000'000;

// A child has this status if it had all the memory that it wanted.
constexpr int kNothingRefused = 17;

long LargestSizeInKiB() {
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

CK_RV result = CKR_OK;
unsigned long callsOfTarget = 0;

CK_RV GiveResult(const char*, const TargetWord*, std::size_t) {
    ++callsOfTarget;
    return result;
}

// Calls one function of the library again and again, with arguments that PKCS#11 allows.
class RepeatedCall {
public:
    RepeatedCall(const Library& library, const FunctionArguments& function)
        : name(function.function),
          address(library.Exported<AnyFunction>(function.function.c_str())),
          call(function, pages) {}

    CK_RV operator()() const { return call.Make(address); }

    void Replace(std::size_t argument, const void* pointer) {
        call.words[argument] = reinterpret_cast<CK_ULONG>(pointer);
    }
    void Replace(std::size_t argument, CK_ULONG word) { call.words[argument] = word; }

    const std::string name;

private:
    GuardedPages pages;
    AnyFunction* address;
    GuardedCall call;
};

const FunctionArguments& FunctionNamed(const char* name) {
    for (const FunctionArguments& function : ArgumentsOfFunctions()) {
        if (function.function == name) return function;
    }
    std::abort();
}

class Memory : public FaultsTest {
protected:
    // The library logs here by default. It does so if it has no memory for its configuration.
    Memory() { std::filesystem::current_path(directory.Path()); }
    ~Memory() override { std::filesystem::current_path("/"); }

    // Runs `body` in a child process that has a log of its own.
    testing::AssertionResult SurvivesWithNewLog(const std::function<void()>& body) {
        SearchAndRemove(LogPath());
        return Survives(body);
    }

    // Returns what the log got since it was last read.
    ParsedLog NewLog() {
        const std::string text = FileText(LogPath(), lengthRead);
        lengthRead += text.size();
        // The log is not emptied after every call, because a disk may take long.
        if (lengthRead > kLongestLog) {
            SearchAndEmpty(LogPath());
            lengthRead = 0;
        }
        return ParseLog(text);
    }

    // Makes a call while an allocation is refused, then a call with all the memory that it wants. Returns
    // whether an allocation was refused.
    static bool CallTwice(unsigned long allocation, Refused which, const RepeatedCall& call) {
        const unsigned long callsBefore = callsOfTarget;
        RefuseAllocation(allocation, which);
        const CK_RV rv = call();
        const bool wasRefused = StopRefusing();
        const CK_RV rvWithMemory = call();
        EXPECT_EQ(rv, result) << call.name << ", allocation " << allocation;
        EXPECT_EQ(rvWithMemory, result) << call.name << ", allocation " << allocation;
        EXPECT_EQ(callsOfTarget, callsBefore + 2) << call.name << ", allocation " << allocation;
        return wasRefused;
    }

    bool CallWithout(unsigned long allocation, Refused which, const RepeatedCall& call) {
        const long before = AllocatedBlocks();
        const bool wasRefused = CallTwice(allocation, which, call);
        // The C library may keep memory from now on, for example the name of the time zone. Such memory does
        // not grow again.
        const long after = AllocatedBlocks();
        if (after > before) {
            NewLog();
            CallTwice(allocation, which, call);
            EXPECT_LE(AllocatedBlocks(), after) << call.name << ", allocation " << allocation;
        }
        return wasRefused;
    }

    // Expects each record to be as it is with enough memory. The latest call has both records.
    void ExpectWholeRecords(const RepeatedCall& call, const ParsedLog& whole) {
        const ParsedLog log = NewLog();
        ASSERT_EQ(log.remainder, "") << call.name;
        ASSERT_GE(log.records.size(), 2U) << call.name;
        ASSERT_LE(log.records.size(), 4U) << call.name;
        leftOut += 4 - log.records.size();
        for (const LogRecord& record : log.records) {
            const LogRecord& expected = whole.records[record.isStart ? 0 : 1];
            EXPECT_EQ(record.function, expected.function);
            EXPECT_EQ(record.result, expected.result) << call.name;
            EXPECT_EQ(record.children, expected.children) << call.name;
        }
        EXPECT_TRUE(log.records.rbegin()[1].isStart) << call.name;
        EXPECT_FALSE(log.records.back().isStart) << call.name;
    }

    void CallWithoutEachAllocationInTurn(const RepeatedCall& call) {
        EXPECT_EQ(call(), result);
        const ParsedLog whole = NewLog();
        if (call.name == "CA_GetFunctionList") return;  // has no records
        ASSERT_EQ(whole.records.size(), 2U) << call.name;
        for (const Refused which : {Refused::kOne, Refused::kAllFromThen}) {
            for (unsigned long allocation = 0; CallWithout(allocation, which, call); ++allocation) {
                ExpectWholeRecords(call, whole);
                if (HasFailure()) return;
            }
            NewLog();
        }
        std::thread([&call] { call(); }).join();
        EXPECT_EQ(NewLog().records.size(), 2U) << call.name;
    }

    unsigned long leftOut = 0;  // records
    std::size_t lengthRead = 0;

    void ExpectNoGrowth() {
        EXPECT_TRUE(SurvivesWithNewLog([this] {
            targetAnswer = GiveResult;
            Library library;
            std::vector<std::unique_ptr<RepeatedCall>> calls;
            for (const FunctionArguments& function : ArgumentsOfFunctions()) {
                calls.push_back(std::make_unique<RepeatedCall>(library, function));
            }
            // The calls are the same again and again. The log that stays is therefore like any other, and is
            // searched for secrets.
            const auto callAll = [&](unsigned long times) {
                for (unsigned long i = 0; i < times; ++i) {
                    (*calls[i % calls.size()])();
                    if (i % kCallsInALog == 0) std::filesystem::resize_file(LogPath(), 0);
                }
            };
            callAll(kFewCalls);
            const long blocks = AllocatedBlocks();
            const long bytes = AllocatedBytes();
            const long size = LargestSizeInKiB();
            callAll(kManyCalls);
            EXPECT_EQ(AllocatedBlocks(), blocks);
            EXPECT_EQ(AllocatedBytes(), bytes);
            EXPECT_LE(LargestSizeInKiB(), size + kMostGrowthInKiB);
        }));
    }
};

TEST_F(Memory, MemoryIsShortInAnyCall_CallsReachTheTarget) {
    for (const char* const isNewFormat : {"1", "0"}) {
        Set("NewFormat", isNewFormat);
        for (const CK_RV rv : {CK_RV{CKR_OK}, CK_RV{0x8000BEEF}}) {
            EXPECT_TRUE(SurvivesWithNewLog([this, rv] {
                result = rv;
                targetAnswer = GiveResult;
                Library library;
                library.Exported<void()>("CkLogSpecialInitialize")();
                for (const FunctionArguments& function : ArgumentsOfFunctions()) {
                    if (function.function == "C_GetFunctionStatus") continue;  // never reaches the target
                    CallWithoutEachAllocationInTurn(RepeatedCall(library, function));
                    if (HasFailure()) return;
                }
                EXPECT_GT(leftOut, 0U);
            }));
        }
    }
}

TEST_F(Memory, CommonCallsAreRepeated_NothingIsAllocated) {
    EXPECT_TRUE(SurvivesWithNewLog([] {
        targetAnswer = GiveResult;
        Library library;
        const auto makeCalls = [&library] {
            CK_BYTE bytes[32] = {0xFF};
            CK_ULONG length = sizeof bytes;
            CK_BBOOL isToken = CK_TRUE;
            CK_ATTRIBUTE attributes[] = {{CKA_TOKEN, &isToken, sizeof isToken},
                                         {CKA_ID, bytes, sizeof bytes}};
            CK_MECHANISM mechanism = {CKM_AES_CBC, bytes, 16};
            CK_SESSION_INFO info = {};
            library->C_FindObjectsInit(1, attributes, 2);
            library->C_EncryptInit(1, &mechanism, 2);
            library->C_Sign(1, bytes, sizeof bytes, bytes, &length);
            library->C_GetSessionInfo(1, &info);
        };
        makeCalls();
        RefuseAllocation(0, Refused::kAllFromThen);
        makeCalls();
        EXPECT_FALSE(StopRefusing());
    }));
    EXPECT_EQ(NewLog().records.size(), 16U);
}

// A large call needs more memory than the library keeps from one record to the next.
TEST_F(Memory, MemoryIsShortInALargeCall_CallReachesTheTarget) {
    for (const char* const isNewFormat : {"1", "0"}) {
        Set("NewFormat", isNewFormat);
        EXPECT_TRUE(SurvivesWithNewLog([this] {
            targetAnswer = GiveResult;
            Library library;
            std::string value(100'000, 'v');
            std::vector<CK_ATTRIBUTE> attributes(12, CK_ATTRIBUTE{CKA_LABEL, value.data(), value.size()});
            RepeatedCall call(library, FunctionNamed("C_CreateObject"));
            call.Replace(1, attributes.data());
            call.Replace(2, attributes.size());
            library.Exported<void()>("CkLogSpecialInitialize")();
            CallWithoutEachAllocationInTurn(call);
            EXPECT_GT(leftOut, 4U);
        }));
    }
}

// Without memory the target cannot be loaded. The call then has the answer of a missing target.
TEST_F(Memory, MemoryIsShortAtTheStart_CallsReachTheTarget) {
    for (const Refused which : {Refused::kOne, Refused::kAllFromThen}) {
        EXPECT_TRUE(SurvivesWithNewLog([this, which] {
            result = CKR_DEVICE_ERROR;
            targetAnswer = GiveResult;
            Library library;
            const RepeatedCall call(library, FunctionNamed("C_Sign"));
            // The line of a failed start asks for the time zone, and the C library keeps it.
            tzset();
            EXPECT_EQ(call(), result);
            EXPECT_EQ(NewLog().records.size(), 2U);
            unsigned long loaded = 0;
            bool wasRefused = true;
            for (unsigned long allocation = 0; wasRefused && !HasFailure(); ++allocation) {
                const long blocksBefore = AllocatedBlocks();
                library.Finalize();
                callsOfTarget = 0;
                RefuseAllocation(allocation, which);
                const CK_RV rv = call();
                wasRefused = StopRefusing();
                library.Finalize();
                const CK_RV rvWithMemory = call();
                const long blocksAfter = AllocatedBlocks();
                EXPECT_EQ(rv, callsOfTarget == 2 ? result : CKR_FUNCTION_NOT_SUPPORTED) << allocation;
                EXPECT_EQ(rvWithMemory, result) << allocation;
                EXPECT_LE(blocksAfter, blocksBefore) << allocation;

                if (callsOfTarget == 2) ++loaded;

                std::thread([&call] { EXPECT_EQ(call(), result); }).join();
                const ParsedLog log = NewLog();
                EXPECT_EQ(log.remainder, "") << allocation;
                EXPECT_GE(log.records.size(), 4U) << allocation;
            }
            EXPECT_GT(loaded, 1U);
        }));
    }
}

TEST_F(Memory, MemoryIsShortInTheFirstCallOfAProcess_CallReachesTheTarget) {
    for (const Refused which : {Refused::kOne, Refused::kAllFromThen}) {
        bool wasRefused = true;
        for (unsigned long allocation = 0; wasRefused && !HasFailure(); ++allocation) {
            SearchAndRemove(LogPath());
            const int status = StatusOf([this, which, allocation] {
                result = CKR_DEVICE_ERROR;
                targetAnswer = GiveResult;
                Library library;
                const RepeatedCall call(library, FunctionNamed("C_Sign"));
                RefuseAllocation(allocation, which);
                const CK_RV rv = call();
                const bool refused = StopRefusing();
                EXPECT_EQ(rv, callsOfTarget == 1 ? result : CKR_FUNCTION_NOT_SUPPORTED);
                EXPECT_EQ(NewLog().remainder, "");
                std::thread([&library] { library.Finalize(); }).join();
                EXPECT_EQ(call(), result);
                EXPECT_EQ(NewLog().records.size(), 2U);
                if (!refused && !HasFailure()) _exit(kNothingRefused);
            });
            wasRefused = !(WIFEXITED(status) && WEXITSTATUS(status) == kNothingRefused);
            EXPECT_TRUE(status == 0 || !wasRefused) << "allocation " << allocation << ": " << Ending(status);
        }
    }
}

// A call that never comes back does not free what its start left. Its thread may have been at any depth of
// its stack.
TEST_F(Memory, ThreadsEndInCallsWithLongInput_MemoryDoesNotGrow) {
    EXPECT_TRUE(SurvivesWithNewLog([] {
        constexpr unsigned kThreads = 1000;
        constexpr std::size_t kLength = 4000;
        constexpr long kMostGrowth = 100 * 2 * kLength;  // the first threads' inputs, in hexadecimal
        targetAnswer = [](const char*, const TargetWord*, std::size_t) -> CK_RV { pthread_exit(nullptr); };
        static Library library;
        library.Exported<void()>("CkLogSpecialInitialize")();
        const long before = AllocatedBytes();
        for (std::uintptr_t i = 0; i < kThreads; ++i) {
            pthread_t thread;
            ASSERT_EQ(pthread_create(
                          &thread, nullptr,
                          [](void* depth) -> void* {
                              auto* const unused = static_cast<char*>(
                                  __builtin_alloca(reinterpret_cast<std::uintptr_t>(depth) * 64 + 64));
                              asm volatile("" : : "r"(unused) : "memory");
                              CK_BYTE data[kLength] = {0xFF};
                              CK_ULONG length = 0;
                              library->C_Sign(1, data, sizeof data, nullptr, &length);
                              return nullptr;
                          },
                          reinterpret_cast<void*>(i)),
                      0);
            ASSERT_EQ(pthread_join(thread, nullptr), 0);
        }
        EXPECT_LE(AllocatedBytes(), before + kMostGrowth);
        EXPECT_EQ(ParseLog(Contents("calls.log")).records.size(), kThreads);
    }));
}

// The mask changes while the target works. The input that the start event has kept is then freed without an
// end event, and no later call shows it.
TEST_F(Memory, MaskChangesDuringACallWithLongInput_InputIsFreedAndNotShownAgain) {
    static std::string otherMask;  // the configuration that a call of C_Sign puts in place
    Set("LoggingMask", "SLOT_TOKEN_FUNC");
    const std::string withoutSign = ConfigurationText();
    Set("LoggingMask", "SIGN_VERIFY_FUNC");
    const std::string withSign = ConfigurationText();
    EXPECT_TRUE(Survives([&] {
        static Library library;
        static const std::string configurationPath = ConfigurationPath();
        static const auto putOtherMaskInPlace = [] {
            std::ofstream(configurationPath) << otherMask;
            constexpr int kQuestionsBetweenLooks = 500;
            for (int i = 0; i < kQuestionsBetweenLooks; ++i) library->C_Logout(1);
        };
        targetAnswer = [](const char* function, const TargetWord*, std::size_t) -> CK_RV {
            if (std::strcmp(function, "C_Sign") == 0) putOtherMaskInPlace();
            return CKR_OK;
        };
        const auto sign = [](const std::string& maskThen) {
            CK_BYTE data[4000] = {0xFF};
            CK_ULONG length = 0;
            otherMask = maskThen;
            EXPECT_EQ(library->C_Sign(1, data, sizeof data, nullptr, &length), CKR_OK);
        };
        sign(withSign);  // both records
        const long blocks = AllocatedBlocks();
        const long bytes = AllocatedBytes();
        sign(withoutSign);  // the start only
        EXPECT_EQ(AllocatedBlocks(), blocks);
        EXPECT_LE(AllocatedBytes(), bytes);
        sign(withSign);  // the end only
    }));
    const ParsedLog log = ParseLog(Log());
    EXPECT_EQ(log.remainder, "");
    ASSERT_EQ(log.records.size(), 4U);
    const std::vector<bool> expected = {true, false, true, false};
    std::vector<bool> starts;
    for (const LogRecord& record : log.records) {
        EXPECT_EQ(record.function, "Sign");
        starts.push_back(record.isStart);
    }
    EXPECT_EQ(starts, expected);
    if (!AreEventsTested()) return;
    const std::string text = Log();
    std::vector<std::string> ends;
    for (std::size_t at = 0; (at = text.find("{\"event\":\"end\"", at)) != text.npos; ++at) {
        ends.push_back(text.substr(at, text.find('\n', at) - at));
    }
    ASSERT_EQ(ends.size(), 2U);
    EXPECT_NE(ends[0].find("\"size\":4000,\"hex\":\"ff00"), ends[0].npos) << ends[0];
    EXPECT_NE(ends[1].find("\"in\":[],"), ends[1].npos) << ends[1];
}

TEST_F(Memory, ManyCallsInTheNewFormat_MemoryDoesNotGrow) { ExpectNoGrowth(); }

TEST_F(Memory, ManyCallsInTheOldFormat_MemoryDoesNotGrow) {
    Set("NewFormat", "0");
    ExpectNoGrowth();
}

}  // namespace
