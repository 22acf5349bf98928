// An application forks while its other threads log.

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>

#include "tests/faults/log_records.h"
#include "tests/faults/marked_calls.h"

namespace {

// The callers have numbers in this order: the threads of the parent, the thread that forks, then two for each
// round.
constexpr unsigned kThreads = 2;
constexpr unsigned kForker = kThreads;

// A calling thread pauses this long after every eighth call. The lock is often held, and the thread that
// forks gets it all the same.
constexpr std::chrono::microseconds kPause(20);

unsigned ChildOf(unsigned round) { return kForker + 1 + 2 * round; }
unsigned GrandchildOf(unsigned round) { return kForker + 2 + 2 * round; }

// A child writes SharedNumbers, and its parent reads them.
class SharedNumbers {
public:
    explicit SharedNumbers(std::size_t count)
        : size(count * sizeof(int)),
          numbers(static_cast<int*>(
              mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {}
    ~SharedNumbers() { munmap(numbers, size); }
    int& operator[](std::size_t i) { return numbers[i]; }

private:
    std::size_t size;
    int* numbers;
};

class Fork : public FaultsTest {
protected:
    // Forks a child that hangs no longer than a test may, and returns the child's process number.
    template <class Work>
    static pid_t ForkFor(const Work& work) {
        const pid_t child = fork();
        if (child != 0) return child;
        alarm(kPatience);
        work();
        _exit(1);
    }

    static void ExpectSuccess(pid_t child) {
        int status = -1;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0) << Ending(status);
    }

    [[noreturn]] static void BecomeAnotherProgram() {
        execlp("true", "true", nullptr);
        _exit(2);
    }

    static void Call(MarkedCaller& caller) {
        if (caller.Call() != CKR_OK) _exit(3);
    }

    // Does everything that a child with one call does.
    [[noreturn]] static void CallOnce(Library& library, unsigned caller) {
        MarkedCaller child(library, caller);
        Call(child);
        BecomeAnotherProgram();
    }

    static void ExpectRecords(MarkedLog& log, unsigned caller, unsigned long calls, int process) {
        const CallerRecords& records = log.callers[caller];
        EXPECT_EQ(records.next, 2 * calls) << "caller " << caller;
        EXPECT_EQ(records.missing, 0U) << "caller " << caller;
        EXPECT_EQ(records.process, process) << "caller " << caller;
    }
};

TEST_F(Fork, ChildrenCall_RecordsNameTheirOwnProcess) {
    EXPECT_TRUE(Survives([this] {
        constexpr unsigned kRounds = 1000;
        SharedNumbers grandchildren(kRounds);
        std::vector<pid_t> children(kRounds);
        targetAnswer = GiveDataBack;
        Library library;
        MarkedCaller forker(library, kForker);
        std::atomic<bool> isOver{false};
        std::vector<unsigned long> calls(kThreads);
        std::vector<std::thread> threads;
        for (unsigned i = 0; i < kThreads; ++i) {
            threads.emplace_back([&, i] {
                MarkedCaller caller(library, i);
                while (!isOver) {
                    ASSERT_EQ(caller.Call(), CKR_OK);
                    if (caller.Calls() % 8 == 0) std::this_thread::sleep_for(kPause);
                }
                calls[i] = caller.Calls();
            });
        }
        for (unsigned round = 0; round < kRounds; ++round) {
            EXPECT_EQ(forker.Call(), CKR_OK);
            children[round] = ForkFor([&, round] {
                MarkedCaller child(library, ChildOf(round));
                Call(child);
                const pid_t forked = ForkFor([&, round] {
                    grandchildren[round] = getpid();
                    MarkedCaller grandchild(library, GrandchildOf(round),
                                            round % 2 == 0 ? Marked::kStandard : Marked::kVendor);
                    Call(grandchild);
                    BecomeAnotherProgram();
                });
                Call(child);
                ExpectSuccess(forked);
                if (HasFailure()) _exit(4);
                Call(child);
                BecomeAnotherProgram();
            });
            ExpectSuccess(children[round]);
            if (HasFailure()) break;
        }
        isOver = true;
        for (std::thread& thread : threads) thread.join();
        ASSERT_FALSE(HasFailure());

        MarkedLog log;
        log.Read(Log());
        EXPECT_EQ(log.callers.size(), kThreads + 1 + 2 * kRounds);
        EXPECT_EQ(log.otherRecords, 0U);
        for (unsigned i = 0; i < kThreads; ++i) {
            ExpectRecords(log, i, calls[i], getpid());
            EXPECT_EQ(log.callers[i].threads.size(), 1U);
            EXPECT_EQ(log.callers[i].functions, kMarkedFunctions);
        }
        ExpectRecords(log, kForker, kRounds, getpid());
        for (unsigned round = 0; round < kRounds; ++round) {
            ExpectRecords(log, ChildOf(round), 3, children[round]);
            EXPECT_EQ(log.callers[ChildOf(round)].functions, kMarkedFunctions);
            ExpectRecords(log, GrandchildOf(round), 1, grandchildren[round]);
        }
    }));
}

TEST_F(Fork, SeveralThreadsForkAtOnce_EachChildWritesEventsIntoAFileOfItsOwn) {
    constexpr unsigned kForkers = 4;
    constexpr unsigned kForks = 25;
    WriteConfigurationFile("CkLog2 = {\n LibUNIX64 = " SCRIPTED_TARGET ";\n Events = " +
                           directory.File("events-%p.jsonl") + ";\n}\n");
    EXPECT_TRUE(Survives([] {
        Library library;
        std::vector<std::thread> threads;
        for (unsigned i = 0; i < kForkers; ++i) {
            threads.emplace_back([&library] {
                for (unsigned round = 0; round < kForks; ++round) {
                    EXPECT_EQ(library->C_Logout(1), CKR_OK);
                    ExpectSuccess(ForkFor([&library] { _exit(library->C_Logout(2) == CKR_OK ? 0 : 3); }));
                }
            });
        }
        for (std::thread& thread : threads) thread.join();
    }));
    unsigned files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(directory.Path())) {
        const std::string name = entry.path().filename();
        if (!name.starts_with("events-")) continue;
        SCOPED_TRACE(name);
        ++files;
        const ParsedLog log = ParseLog(Contents(entry.path()));
        EXPECT_EQ(log.remainder, "");
        ASSERT_FALSE(log.records.empty());
        const bool isChild = log.records[0].FirstNumber() == 2;
        EXPECT_EQ(log.records.size(), isChild ? 2U : 2 * kForkers * kForks);
        for (const LogRecord& record : log.records) {
            EXPECT_EQ("events-" + std::to_string(record.process) + ".jsonl", name);
            EXPECT_EQ(record.FirstNumber(), record.isStart ? (isChild ? 2U : 1U) : 0U);
        }
    }
    EXPECT_EQ(files, 1 + kForkers * kForks);
}

TEST_F(Fork, AnotherThreadStartsTheLibrary_ForkWaitsForIt) {
    EXPECT_TRUE(Survives([this] {
        constexpr unsigned kRounds = 100;
        targetAnswer = GiveDataBack;
        Library library;
        MarkedCaller starter(library, 0);
        for (unsigned round = 0; round < kRounds; ++round) {
            std::thread thread([&] { EXPECT_EQ(starter.Call(), CKR_OK); });
            if (round % 2 != 0) std::this_thread::yield();
            const pid_t child = ForkFor([&, round] { CallOnce(library, ChildOf(round)); });
            thread.join();
            ExpectSuccess(child);
            ASSERT_FALSE(HasFailure());
            library.Finalize();
        }
        MarkedLog log;
        log.Read(Log());
        ExpectRecords(log, 0, kRounds, getpid());
        for (unsigned round = 0; round < kRounds; ++round) EXPECT_EQ(log.callers[ChildOf(round)].next, 2U);
    }));
}

// Here the lock is only held to look at the lists and to ask whether they can be written. The parent's
// threads ask for the lists all the time. It forks all the same, and no child finds the lock locked.
TEST_F(Fork, OthersAskForTheFunctionLists_ChildHasWholeLists) {
    Set("LoggingMask", "SIGN_VERIFY_FUNC");
    Set("LibUNIX64", TARGET_WITH_CONST_LISTS);
    EXPECT_TRUE(Survives([this] {
        constexpr unsigned kRounds = 300;
        using GetVendorList = CK_RV(void***);
        targetAnswer = GiveDataBack;
        Library library;
        const auto areListsOwn = [&library,
                                  getVendorList = library.Exported<GetVendorList>("CA_GetFunctionList"),
                                  vendorFunction = library.Address("CA_GetFunctionList")] {
            CK_FUNCTION_LIST* list = nullptr;
            void** vendorList = nullptr;
            return library->C_GetFunctionList(&list) == CKR_OK && list->C_Sign == library->C_Sign &&
                   getVendorList(&vendorList) == CKR_OK && vendorList[1] == vendorFunction;
        };
        std::atomic<bool> isOver{false};
        std::vector<std::thread> threads;
        for (unsigned i = 0; i < kThreads; ++i) {
            threads.emplace_back([&] {
                for (unsigned long asked = 1; !isOver; ++asked) {
                    ASSERT_TRUE(areListsOwn());
                    if (asked % 8 == 0) std::this_thread::sleep_for(kPause);
                }
            });
        }
        std::vector<pid_t> children(kRounds);
        for (unsigned round = 0; round < kRounds; ++round) {
            children[round] = ForkFor([&, round] {
                if (!areListsOwn()) _exit(4);
                CallOnce(library, ChildOf(round));
            });
            ExpectSuccess(children[round]);
            if (HasFailure()) break;
        }
        isOver = true;
        for (std::thread& thread : threads) thread.join();
        ASSERT_FALSE(HasFailure());
        MarkedLog log;
        log.Read(Log());
        EXPECT_EQ(log.otherRecords, 0U);
        for (unsigned round = 0; round < kRounds; ++round) {
            ExpectRecords(log, ChildOf(round), 1, children[round]);
        }
    }));
}

// A target may run another program when it is loaded.
TEST_F(Fork, ForkHappensWhileTheTargetIsLoaded_CallsOfTheChildReachTheTarget) {
    EXPECT_TRUE(Survives([this] {
        targetAnswer = GiveDataBack;
        onTargetLoaded = [] { ExpectSuccess(ForkFor(BecomeAnotherProgram)); };
        Library library;
        MarkedCaller caller(library, 0);
        EXPECT_EQ(caller.Call(), CKR_OK);
        onTargetLoaded = nullptr;
        ExpectSuccess(ForkFor([&] { CallOnce(library, 1); }));
        MarkedLog log;
        log.Read(Log());
        ExpectRecords(log, 0, 1, getpid());
        EXPECT_EQ(log.callers[1].next, 2U);
    }));
}

}  // namespace
