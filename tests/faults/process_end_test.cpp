// The process ends. Calls may come after this library's own destructors, and other threads may be in calls.

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <thread>

#include "tests/faults/application.h"
#include "tests/faults/log_records.h"

namespace {

thread_local bool waitsInWrite = false;
std::atomic<bool> isWaitingInWrite{false};

}  // namespace

// The library's writes come to this function.
extern "C" __attribute__((visibility("default"))) ssize_t write(int descriptor, const void* bytes,
                                                                size_t size) {
    static const auto systemsWrite =
        reinterpret_cast<ssize_t (*)(int, const void*, size_t)>(dlsym(RTLD_NEXT, "write"));
    if (waitsInWrite) {
        isWaitingInWrite = true;
        while (true) pause();
    }
    return systemsWrite(descriptor, bytes, size);
}

namespace {

constexpr CK_ULONG kFromExitHandler = 101;
constexpr CK_ULONG kFromStaticDestructor = 102;
constexpr CK_ULONG kFromLibraryDestructor = 103;

Library* lateLibrary = nullptr;

// No expectation works any more when this runs. A wrong result ends the process with a status of its own.
void CallLate(CK_ULONG session) {
    if (lateLibrary == nullptr) return;
    if ((*lateLibrary)->C_Logout(session) != session + 1000) _exit(9);
}

CK_RV AnswerWithSession(const char*, const TargetWord* arguments, std::size_t) { return arguments[0] + 1000; }

// It is made before the library is loaded, and therefore destroyed after the library's own objects.
struct CallsWhenDestroyed {
    ~CallsWhenDestroyed() { CallLate(kFromStaticDestructor); }
} callsWhenDestroyed;

class ProcessEnd : public FaultsTest {
protected:
    // The process ends while threads write. The kernel ends a write of theirs only between two pages of the
    // file: the record is there up to the end of a page.
    void ExpectNoRecordIsCutButByTheSystem(const ParsedLog& log) const {
        constexpr std::size_t kPage = 4096;
        EXPECT_TRUE(log.remainder.empty() || Log().size() % kPage == 0) << log.remainder;
    }

    std::set<CK_ULONG> SessionsOfWholeCalls() const {
        const ParsedLog log = ParseLog(Log());
        EXPECT_EQ(log.remainder, "");
        std::set<CK_ULONG> sessions;
        for (std::size_t i = 0; i + 1 < log.records.size(); i += 2) {
            EXPECT_TRUE(log.records[i].isStart);
            EXPECT_FALSE(log.records[i + 1].isStart);
            sessions.insert(log.records[i].FirstNumber());
        }
        return sessions;
    }
};

}  // namespace

extern "C" __attribute__((visibility("default"))) void CallFromDestructor() {
    CallLate(kFromLibraryDestructor);
}

namespace {

// Only the loader knows in which order it runs the destructors of two libraries. One of them is loaded
// before this library and one after it.
TEST_F(ProcessEnd, CallsOfExitHandlersAndDestructors_AreForwardedAndLogged) {
    const std::string kFirst = directory.File("first.so");
    const std::string kLast = directory.File("last.so");
    std::filesystem::copy_file(LATE_CALLER, kFirst);
    std::filesystem::copy_file(LATE_CALLER, kLast);
    EXPECT_TRUE(Survives([&] {
        targetAnswer = AnswerWithSession;
        std::atexit([] { CallLate(kFromExitHandler); });
        ASSERT_NE(dlopen(kFirst.c_str(), RTLD_NOW), nullptr);
        lateLibrary = new Library;
        ASSERT_NE(dlopen(kLast.c_str(), RTLD_NOW), nullptr);
        (*lateLibrary)->C_Logout(1);
        std::exit(0);
    }));
    EXPECT_EQ(SessionsOfWholeCalls(),
              (std::set<CK_ULONG>{1, kFromExitHandler, kFromStaticDestructor, kFromLibraryDestructor}));
    EXPECT_EQ(ParseLog(Log()).records.size(), 10U);
}

// The process's first call comes from an exit handler.
TEST_F(ProcessEnd, FirstCallComesFromAnExitHandler_LibraryStarts) {
    EXPECT_TRUE(Survives([] {
        targetAnswer = AnswerWithSession;
        std::atexit([] { CallLate(kFromExitHandler); });
        lateLibrary = new Library;
        std::exit(0);
    }));
    EXPECT_EQ(SessionsOfWholeCalls(), (std::set<CK_ULONG>{kFromExitHandler, kFromStaticDestructor}));
}

TEST_F(ProcessEnd, ExitHandlerStopsTheLibrary_LaterCallsStartItAgain) {
    EXPECT_TRUE(Survives([] {
        targetAnswer = AnswerWithSession;
        std::atexit([] {
            lateLibrary->Finalize();
            CallLate(kFromExitHandler);
            lateLibrary->Finalize();
        });
        lateLibrary = new Library;
        (*lateLibrary)->C_Logout(1);
        std::exit(0);
    }));
    EXPECT_EQ(SessionsOfWholeCalls(), (std::set<CK_ULONG>{1, kFromExitHandler, kFromStaticDestructor}));
}

// ---- While other threads are in calls ---------------------------------------------------------------------

std::atomic<int> waitingInTarget{0};
std::atomic<int> callsMade{0};

CK_RV WaitOrAnswerWithSession(const char* function, const TargetWord* arguments, std::size_t) {
    if (std::string_view(function) == "C_WaitForSlotEvent") {
        ++waitingInTarget;
        while (true) pause();
    }
    ++callsMade;
    return arguments[0] + 1000;
}

class ProcessEndDuringCalls : public ProcessEnd {
protected:
    // Under the sanitizers some ends take seconds.
    static constexpr int kRounds = CKSCRIBE_IS_SANITIZED ? 3 : 30;
    static constexpr int kThreads = 2;
    static constexpr int kCallsBefore = 20;

    // Some threads wait in the target for ever, some call all the time.
    static void MakeBusy(Library& library) {
        targetAnswer = WaitOrAnswerWithSession;
        for (int i = 0; i < kThreads; ++i) {
            std::thread([&library] { library->C_WaitForSlotEvent(0, nullptr, nullptr); }).detach();
            std::thread([&library] {
                for (CK_ULONG session = 1;; ++session) {
                    library->C_Logout(session);
                    std::this_thread::yield();
                }
            }).detach();
        }
        while (waitingInTarget < kThreads || callsMade < kCallsBefore) std::this_thread::yield();
    }

    void ExpectQuickEndAndWholeRecords(void (*end)()) {
        for (int round = 0; round < kRounds; ++round) {
            SearchAndRemove(LogPath());
            ASSERT_TRUE(Survives([end] {
                lateLibrary = new Library;
                MakeBusy(*lateLibrary);
                end();
            })) << "in round "
                << round;
            const ParsedLog log = ParseLog(Log());
            ExpectNoRecordIsCutButByTheSystem(log);
            EXPECT_GE(log.records.size(), 2U * kCallsBefore);
        }
    }
};

TEST_F(ProcessEndDuringCalls, ProcessExits_EndIsQuickAndRecordsAreWhole) {
    ExpectQuickEndAndWholeRecords([] { std::exit(0); });
}

TEST_F(ProcessEndDuringCalls, ProcessExitsWithCallsOfAnExitHandler_EndIsQuickAndRecordsAreWhole) {
    ExpectQuickEndAndWholeRecords([] {
        std::atexit([] {
            for (CK_ULONG i = 0; i < 20; ++i) CallLate(kFromExitHandler);
        });
        std::exit(0);
    });
}

TEST_F(ProcessEndDuringCalls, ProcessExitsAtOnce_EndIsQuickAndRecordsAreWhole) {
    ExpectQuickEndAndWholeRecords([] { _exit(0); });
}

TEST_F(ProcessEndDuringCalls, ProcessCallsQuickExit_EndIsQuickAndRecordsAreWhole) {
    ExpectQuickEndAndWholeRecords([] { std::quick_exit(0); });
}

TEST_F(ProcessEndDuringCalls, AnotherThreadExits_EndIsQuickAndRecordsAreWhole) {
    ExpectQuickEndAndWholeRecords([] {
        std::thread([] { std::exit(0); }).detach();
        (*lateLibrary)->C_WaitForSlotEvent(0, nullptr, nullptr);
    });
}

// The log may lie on a disk that does not answer.
TEST_F(ProcessEnd, ThreadWaitsInTheWriteOfARecord_ExitWaitsForNothing) {
    EXPECT_TRUE(Survives([] {
        Library library;
        CK_FUNCTION_LIST* list = nullptr;
        library->C_GetFunctionList(&list);
        std::thread([&library] {
            waitsInWrite = true;
            library->C_Logout(1);
        }).detach();
        while (!isWaitingInWrite) std::this_thread::yield();
        std::exit(0);
    }));
}

// ---- Of a program that is linked with the library ---------------------------------------------------------

// The loader runs the library's destructors before the exit handlers that were registered before the
// program's start, and threads call on meanwhile.
class EndOfLinkedProgram : public ProcessEnd, public testing::WithParamInterface<const char*> {};

TEST_P(EndOfLinkedProgram, LinkedProgramEndsDuringCalls_CallsStillReachTheTarget) {
    for (int round = 0; round < 3; ++round) {
        SearchAndRemove(LogPath());
        const int status = StatusOf([] {
            execl(GetParam(), GetParam(), nullptr);
            _exit(127);
        });
        EXPECT_EQ(status, 0) << Ending(status);
        const ParsedLog log = ParseLog(Log());
        ExpectNoRecordIsCutButByTheSystem(log);
        EXPECT_GE(log.records.size(), 240U);
    }
}

INSTANTIATE_TEST_SUITE_P(FirstCallComesFromMain, EndOfLinkedProgram, testing::Values(LINKED_PROGRAM));
INSTANTIATE_TEST_SUITE_P(FirstCallComesBeforeMain, EndOfLinkedProgram,
                         testing::Values(LINKED_PROGRAM_WITH_EARLY_CALL));

}  // namespace
