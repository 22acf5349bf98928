// Threads are cancelled or end themselves in or around a call. No lock stays locked, and the log holds the
// calls.

#include <dlfcn.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <cstdarg>
#include <cstring>
#include <ctime>
#include <thread>
#include <vector>

#include "tests/faults/marked_calls.h"
#include "tests/noexcept_of_system.h"

namespace {

// This function runs on the thread that asks for the time. Every record asks once. An event does not ask; the
// function then runs before the write, and every event writes once.
thread_local void (*onTimeAsked)() = nullptr;

}  // namespace

// The library calls this function for the time.
extern "C" __attribute__((visibility("default"))) std::time_t time(std::time_t* result) NOEXCEPT_OF_SYSTEM {
    if (onTimeAsked != nullptr) onTimeAsked();
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    if (result != nullptr) *result = now.tv_sec;
    return now.tv_sec;
}

// The library's writes come to these functions. They come to the second one from a thread that can be
// cancelled at any instruction.
extern "C" __attribute__((visibility("default"))) ssize_t write(int descriptor, const void* bytes,
                                                                size_t size) {
    static const auto systemsWrite =
        reinterpret_cast<ssize_t (*)(int, const void*, size_t)>(dlsym(RTLD_NEXT, "write"));
    if (AreEventsTested() && onTimeAsked != nullptr) onTimeAsked();
    return systemsWrite(descriptor, bytes, size);
}

#ifdef __linux__
extern "C" __attribute__((visibility("default"))) long syscall(long number, ...) NOEXCEPT_OF_SYSTEM {
    static const auto systemsSyscall = reinterpret_cast<long (*)(long, ...)>(dlsym(RTLD_NEXT, "syscall"));
    va_list list;
    va_start(list, number);
    long words[6];
    for (long& word : words) word = va_arg(list, long);
    va_end(list);
    if (number == SYS_write && AreEventsTested() && onTimeAsked != nullptr) onTimeAsked();
    return systemsSyscall(number, words[0], words[1], words[2], words[3], words[4], words[5]);
}
#endif

namespace {

// The sanitizers' own code is everywhere and may hold locks.
constexpr int kAnyInstruction = CKSCRIBE_IS_SANITIZED ? PTHREAD_CANCEL_DEFERRED : PTHREAD_CANCEL_ASYNCHRONOUS;

// Threads give the addresses of these as their results. Only the addresses count.
char wentOn;  // the thread was not cancelled
char endedItself;

std::atomic<bool> isInTarget{false};

CK_RV WaitInTarget(const char*, const TargetWord*, std::size_t) {
    isInTarget = true;
    for (;;) pause();
}
CK_RV SpinInTarget(const char*, const TargetWord*, std::size_t) {
    isInTarget = true;
    for (;;) asm volatile("");
}
// Only a cancellation ends an EndlessCall. `cancelType` says which type of cancellation does.
struct EndlessCall {
    TargetAnswer* target;
    int cancelType;
};
constexpr EndlessCall kEndlessCalls[] = {{WaitInTarget, PTHREAD_CANCEL_DEFERRED},
                                         {SpinInTarget, PTHREAD_CANCEL_ASYNCHRONOUS}};

CK_RV ExitInTarget(const char*, const TargetWord*, std::size_t) { pthread_exit(&endedItself); }

void CancelSelf() { pthread_cancel(pthread_self()); }
void CancelSelfInSecondRecord() {
    onTimeAsked = [] { CancelSelf(); };
}

struct Victim {
    MarkedCaller* caller;
    int cancelType = PTHREAD_CANCEL_DEFERRED;
    void (*beforeCall)() = nullptr;

    // This frame and those that it calls need no clean-up, unless a test says otherwise.
    static void* Run(void* victim) {
        Victim& self = *static_cast<Victim*>(victim);
        int before = 0;
        pthread_setcanceltype(self.cancelType, &before);
        if (self.beforeCall != nullptr) self.beforeCall();
        self.caller->Call();
        pthread_testcancel();
        return &wentOn;
    }
    static void* RunForEver(void* victim) {
        Victim& self = *static_cast<Victim*>(victim);
        int before = 0;
        pthread_setcanceltype(self.cancelType, &before);
        for (;;) {
            self.caller->Call();
            pthread_testcancel();
        }
    }
};

class EndedThreads : public FaultsTest {
protected:
    static pthread_t Begin(void* (*run)(void*), Victim& victim) {
        pthread_t thread;
        EXPECT_EQ(pthread_create(&thread, nullptr, run, &victim), 0);
        return thread;
    }

    static void* ResultOf(pthread_t thread) {
        void* result = nullptr;
        EXPECT_EQ(pthread_join(thread, &result), 0);
        return result;
    }

    // The GNU C library forgets the result of a thread that can be cancelled at any instruction when it is
    // cancelled in the call that allows cancellations again.
    static void ExpectCancelled(pthread_t thread) {
        void* const result = ResultOf(thread);
        EXPECT_TRUE(result == PTHREAD_CANCELED || result == nullptr) << result;
    }

    static void CancelInTarget(Victim& victim) {
        isInTarget = false;
        const pthread_t thread = Begin(Victim::Run, victim);
        while (!isInTarget) std::this_thread::yield();
        pthread_cancel(thread);
        ExpectCancelled(thread);
    }

    // Callers 0 and 1 use everything that needs a lock.
    static void ExpectNothingIsLocked(Library& library) {
        targetAnswer = GiveDataBack;
        MarkedCaller caller(library, 0);
        EXPECT_EQ(caller.Call(), CKR_OK);
        std::thread([&] { EXPECT_EQ(caller.Call(), CKR_OK); }).join();
        EXPECT_TRUE(Survives([&] { EXPECT_EQ(MarkedCaller(library, 1).Call(), CKR_OK); }));
        library.Finalize();
        EXPECT_EQ(caller.Call(), CKR_OK);
    }

    // `body` gets the library and makes calls as caller 2. The log then holds that caller's records up to
    // number `next`, which is not there.
    template <class Body>
    void ExpectRecordsOfVictim(unsigned long next, const Body& body, Marked functions = Marked::kInTurn) {
        SearchAndRemove(LogPath());
        EXPECT_TRUE(Survives([&] {
            Library library;
            MarkedCaller caller(library, 2, functions);
            targetAnswer = GiveDataBack;
            body(caller);
            ExpectNothingIsLocked(library);
        }));
        MarkedLog log;
        log.Read(Log());
        EXPECT_EQ(log.callers[0].next, 6U);
        EXPECT_EQ(log.callers[1].next, 2U);
        EXPECT_EQ(log.callers[2].next, next);
    }
};

TEST_F(EndedThreads, ThreadIsCancelledInTheTarget_NoLockStaysLocked) {
    for (const EndlessCall& each : kEndlessCalls) {
        ExpectRecordsOfVictim(1, [&each](MarkedCaller& caller) {
            targetAnswer = each.target;
            Victim victim{&caller, each.cancelType};
            CancelInTarget(victim);
        });
    }
}

TEST_F(EndedThreads, ThreadEndsItselfInTheTarget_NoLockStaysLocked) {
    ExpectRecordsOfVictim(1, [](MarkedCaller& caller) {
        targetAnswer = ExitInTarget;
        Victim victim{&caller};
        EXPECT_EQ(ResultOf(Begin(Victim::Run, victim)), &endedItself);
    });
}

TEST_F(EndedThreads, ThreadIsCancelledBeforeTheFirstCall_LibraryStartsForOthers) {
    ExpectRecordsOfVictim(2, [](MarkedCaller& caller) {
        Victim victim{&caller, PTHREAD_CANCEL_DEFERRED, CancelSelf};
        ExpectCancelled(Begin(Victim::Run, victim));
    });
}

TEST_F(EndedThreads, ThreadIsCancelledWhileTheTargetIsLoaded_LibraryStartsForOthers) {
    struct Case {
        int cancelType;
        unsigned long next;
    };
    for (const Case& each : {Case{PTHREAD_CANCEL_DEFERRED, 2}, Case{PTHREAD_CANCEL_ASYNCHRONOUS, 0}}) {
        ExpectRecordsOfVictim(each.next, [&each](MarkedCaller& caller) {
            onTargetLoaded = [] {
                CancelSelf();
                pthread_testcancel();
            };
            Victim victim{&caller, each.cancelType};
            ExpectCancelled(Begin(Victim::Run, victim));
            onTargetLoaded = nullptr;
        });
    }
}

TEST_F(EndedThreads, ThreadIsCancelledWhileARecordIsMade_RecordIsWhole) {
    struct Case {
        int cancelType;
        void (*setUp)();
        unsigned long next;
    };
    constexpr auto inFirst = [] { onTimeAsked = CancelSelf; };
    constexpr auto inSecond = [] { onTimeAsked = CancelSelfInSecondRecord; };
    const Case cases[] = {
        {PTHREAD_CANCEL_DEFERRED, inFirst, 2},
        {PTHREAD_CANCEL_DEFERRED, inSecond, 2},
        {PTHREAD_CANCEL_ASYNCHRONOUS, inFirst, 1},
        {PTHREAD_CANCEL_ASYNCHRONOUS, inSecond, 2},
    };
    for (const char* const isNewFormat : {"0", "1"}) {
        Set("NewFormat", isNewFormat);
        for (const Case& each : cases) {
            ExpectRecordsOfVictim(each.next, [&each](MarkedCaller& caller) {
                Victim victim{&caller, each.cancelType, each.setUp};
                ExpectCancelled(Begin(Victim::Run, victim));
            });
        }
    }
}

TEST_F(EndedThreads, ThreadIsCancelledAtAnyTime_OtherThreadsGoOn) {
    EXPECT_TRUE(Survives([this] {
        constexpr unsigned kRounds = 500;
        targetAnswer = GiveDataBack;
        Library library;
        MarkedCaller own(library, 3);
        EXPECT_EQ(own.Call(), CKR_OK);
        std::vector<unsigned long> calls(kRounds);
        for (unsigned round = 0; round < kRounds; ++round) {
            MarkedCaller caller(library, 4 + round);
            Victim victim{&caller, kAnyInstruction};
            const pthread_t thread = Begin(Victim::RunForEver, victim);
            const unsigned long atLeast = round % 4;
            while (caller.Calls() < atLeast) std::this_thread::yield();
            std::this_thread::sleep_for(std::chrono::microseconds(round));
            pthread_cancel(thread);
            ExpectCancelled(thread);
            calls[round] = caller.Calls();
            ASSERT_EQ(own.Call(), CKR_OK);
        }
        ExpectNothingIsLocked(library);
        MarkedLog log;
        log.Read(Log());
        EXPECT_EQ(log.callers[3].next, 2 * (kRounds + 1));
        EXPECT_EQ(log.callers[3].missing, 0U);
        for (unsigned round = 0; round < kRounds; ++round) {
            const CallerRecords& records = log.callers[4 + round];
            EXPECT_EQ(records.missing, 0U);
            EXPECT_LE(records.next, 2 * calls[round]);
            EXPECT_GE(records.next + 2, 2 * calls[round]);
        }
    }));
}

MarkedCaller* lastCaller = nullptr;

TEST_F(EndedThreads, ThreadCallsWhileItEnds_CallsReachTheTarget) {
    ExpectRecordsOfVictim(6, [](MarkedCaller& caller) {
        lastCaller = &caller;
        static pthread_key_t key;
        pthread_key_create(&key, [](void*) { EXPECT_EQ(lastCaller->Call(), CKR_OK); });
        targetAnswer = [](const char* function, const TargetWord* arguments, std::size_t count) -> CK_RV {
            targetAnswer = GiveDataBack;
            struct CallingWhenUnwound {
                ~CallingWhenUnwound() { EXPECT_EQ(lastCaller->Call(), CKR_OK); }
            } unwound;
            pthread_setspecific(key, &key);
            return ExitInTarget(function, arguments, count);
        };
        Victim victim{&caller};
        EXPECT_EQ(ResultOf(Begin(Victim::Run, victim)), &endedItself);
    });
}

// ---- In a function of the vendor --------------------------------------------------------------------------

TEST_F(EndedThreads, ThreadIsCancelledInAVendorFunction_NoLockStaysLocked) {
    for (const char* const isNewFormat : {"0", "1"}) {
        Set("NewFormat", isNewFormat);
        for (const EndlessCall& each : kEndlessCalls) {
            ExpectRecordsOfVictim(
                1,
                [&each](MarkedCaller& caller) {
                    targetAnswer = each.target;
                    Victim victim{&caller, each.cancelType};
                    CancelInTarget(victim);
                },
                Marked::kVendor);
        }
    }
}

TEST_F(EndedThreads, ThreadEndsItselfInAVendorFunction_NoLockStaysLocked) {
    ExpectRecordsOfVictim(
        1,
        [](MarkedCaller& caller) {
            targetAnswer = ExitInTarget;
            Victim victim{&caller};
            EXPECT_EQ(ResultOf(Begin(Victim::Run, victim)), &endedItself);
        },
        Marked::kVendor);
}

TEST_F(EndedThreads, ThreadIsCancelledWhileARecordOfTheVendorIsMade_RecordIsWhole) {
    for (const int cancelType : {PTHREAD_CANCEL_DEFERRED, PTHREAD_CANCEL_ASYNCHRONOUS}) {
        for (void (*const inWhich)() : {CancelSelf, CancelSelfInSecondRecord}) {
            // The thread can be cancelled at any instruction: it ends with the record, before the call
            // behind the first one.
            const bool isFirstAlone = cancelType == PTHREAD_CANCEL_ASYNCHRONOUS && inWhich == CancelSelf;
            ExpectRecordsOfVictim(
                isFirstAlone ? 1 : 2,
                [cancelType, inWhich](MarkedCaller& caller) {
                    static void (*onFirstTimeAsked)();
                    onFirstTimeAsked = inWhich;
                    Victim victim{&caller, cancelType, [] { onTimeAsked = onFirstTimeAsked; }};
                    ExpectCancelled(Begin(Victim::Run, victim));
                },
                Marked::kVendor);
        }
    }
}

// ---- Asking for the function lists ------------------------------------------------------------------------

class EndedThreadsWithLists : public EndedThreads {
protected:
    using GetList = CK_RV(CK_FUNCTION_LIST**);
    static constexpr const char* kGetLists[] = {"C_GetFunctionList", "CA_GetFunctionList"};

    // An Asking is a thread that asks for one list or for both.
    struct Asking {
        GetList* functions[2];
        int cancelType;
        std::atomic<unsigned long> calls{0};

        void Ask() {
            CK_FUNCTION_LIST* list = nullptr;
            functions[calls++ % 2](&list);
        }
        static void* Once(void* asking) {
            int before = 0;
            pthread_setcanceltype(static_cast<Asking*>(asking)->cancelType, &before);
            static_cast<Asking*>(asking)->Ask();
            pthread_testcancel();
            return &wentOn;
        }
        static void* ForEver(void* asking) {
            int before = 0;
            pthread_setcanceltype(static_cast<Asking*>(asking)->cancelType, &before);
            for (;;) {
                static_cast<Asking*>(asking)->Ask();
                pthread_testcancel();
            }
        }
    };

    static pthread_t Begin(void* (*run)(void*), Asking& asking) {
        pthread_t thread;
        EXPECT_EQ(pthread_create(&thread, nullptr, run, &asking), 0);
        return thread;
    }

    // A later caller gets this library's functions.
    static void ExpectOwnLists(Library& library) {
        CK_FUNCTION_LIST* list = nullptr;
        ASSERT_EQ(library->C_GetFunctionList(&list), CKR_OK);
        EXPECT_EQ(list->C_Sign, library->C_Sign);
        EXPECT_EQ(list->C_GetFunctionList, library->C_GetFunctionList);
        void** vendorList = nullptr;
        ASSERT_EQ(library.Exported<CK_RV(void***)>("CA_GetFunctionList")(&vendorList), CKR_OK);
        EXPECT_EQ(vendorList[1], library.Address("CA_GetFunctionList"));
    }
};

TEST_F(EndedThreadsWithLists, ThreadIsCancelledWhileItAsksForAList_NoLockStaysLocked) {
    for (const char* const function : kGetLists) {
        for (const EndlessCall& each : kEndlessCalls) {
            SearchAndRemove(LogPath());
            EXPECT_TRUE(Survives([&] {
                Library library;
                GetList* const getList = library.Exported<GetList>(function);
                Asking asking{{getList, getList}, each.cancelType};
                targetAnswer = each.target;
                const pthread_t thread = Begin(Asking::Once, asking);
                while (!isInTarget) std::this_thread::yield();
                pthread_cancel(thread);
                ExpectCancelled(thread);
                targetAnswer = GiveDataBack;
                ExpectOwnLists(library);
                ExpectNothingIsLocked(library);
            }));
            const ParsedLog log = ParseLog(Log());
            EXPECT_EQ(log.remainder, "");
            // The log holds the start of this call, then both records of the next one. The vendor's list is
            // never logged.
            const bool isLogged = function[1] == '_';
            ASSERT_GE(log.records.size(), 3U);
            for (std::size_t i = 0; i < (isLogged ? 3U : 2U); ++i) {
                EXPECT_EQ(log.records[i].function, "GetFunctionList");
                EXPECT_EQ(log.records[i].isStart, i + 1 < (isLogged ? 3U : 2U));
            }
            EXPECT_EQ(log.records[isLogged ? 3 : 2].function, "Sign");
        }
    }
}

TEST_F(EndedThreadsWithLists, ThreadThatAsksForListsIsCancelledAtAnyTime_OtherThreadsGoOn) {
    EXPECT_TRUE(Survives([] {
        constexpr unsigned kRounds = 200;
        targetAnswer = GiveDataBack;
        Library library;
        GetList* const getLists[] = {library.Exported<GetList>(kGetLists[0]),
                                     library.Exported<GetList>(kGetLists[1])};
        for (unsigned round = 0; round < kRounds; ++round) {
            Asking asking{{getLists[0], getLists[1]}, kAnyInstruction};
            const pthread_t thread = Begin(Asking::ForEver, asking);
            while (asking.calls < round % 4) std::this_thread::yield();
            std::this_thread::sleep_for(std::chrono::microseconds(round));
            pthread_cancel(thread);
            ExpectCancelled(thread);
            ExpectOwnLists(library);
            if (HasFailure()) return;
        }
        ExpectNothingIsLocked(library);
    }));
    EXPECT_EQ(ParseLog(Log()).remainder, "");
}

}  // namespace
