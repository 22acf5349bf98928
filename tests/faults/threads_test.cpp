// Many threads of one application make calls. Every call has its records, whole and in order, whatever
// changes meanwhile.

#include <semaphore.h>

#include <barrier>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

#include "tests/faults/marked_calls.h"

namespace {

constexpr unsigned kThreads = 8;
constexpr unsigned kRounds = 10;

// All threads together make a million calls.
constexpr unsigned long kCallsOfAThread = 1'000'000 / (kThreads * kRounds);

sem_t waitIsOver;
std::atomic<bool> isWaiting{false};

CK_RV WaitForSlotEvent(const char* function, const TargetWord* arguments, std::size_t count) {
    if (std::strcmp(function, "C_WaitForSlotEvent") != 0) return GiveDataBack(function, arguments, count);
    isWaiting = true;
    while (sem_wait(&waitIsOver) != 0) continue;
    return CKR_NO_EVENT;
}

class Threads : public FaultsTest {
protected:
    // Nobody sees the file half-written, and every mask includes marked calls.
    void ChangeConfiguration(unsigned step, bool isNewFormat) {
        static constexpr const char* kMasks[] = {"SIGN_VERIFY_FUNC | QUORVANTH_FUNC",
                                                 "SESSION_FUNC | SIGN_VERIFY_FUNC | QUORVANTH_FUNC",
                                                 "ALL_FUNC"};
        std::string text = ConfigurationText();
        const std::string mask = kMasks[step % std::size(kMasks)];
        text.insert(text.rfind('}'), "   LoggingMask = " + mask + ";\n");
        if (!isNewFormat) text.replace(text.find("NewFormat = 1"), 13, "NewFormat = 0");
        const std::string changed = directory.File("changed.conf");
        std::ofstream(changed, std::ios::binary) << text;
        std::filesystem::rename(changed, ConfigurationPath());
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }

    // Runs `work` on each thread with the thread's number. All begin at once.
    template <class Work>
    static void OnThreads(const Work& work) {
        std::barrier allAreReady(kThreads);
        std::vector<std::thread> threads;
        for (unsigned i = 0; i < kThreads; ++i) {
            threads.emplace_back([&, i] {
                allAreReady.arrive_and_wait();
                work(i);
            });
        }
        for (std::thread& thread : threads) thread.join();
    }

    // While an object of this class lives, a thread of its own does `work` again and again. `work` gets the
    // number of the repetition.
    class Meanwhile {
    public:
        template <class Work>
        explicit Meanwhile(const Work& work)
            : thread([this, work] {
                  for (unsigned step = 0; !isOver; ++step) work(step);
              }) {}
        ~Meanwhile() {
            isOver = true;
            thread.join();
        }

    private:
        std::atomic<bool> isOver{false};
        std::thread thread;
    };

    void ReadAndEmptyLog(MarkedLog& log) {
        log.Read(Log());
        SearchAndEmpty(LogPath());
    }

    bool HasLog() const {
        std::error_code missing;
        const std::uintmax_t size = std::filesystem::file_size(LogPath(), missing);
        return !missing && size > 0;
    }

    // Expects that records that name a thread name the right one. Records of the old format name none.
    static void ExpectThread(const CallerRecords& records, const MarkedLog& log, const std::string& id) {
        EXPECT_EQ(records.threads, log.hasNewFormat ? std::set<std::string>{id} : std::set<std::string>{});
    }
};

TEST_F(Threads, ManyThreadsCall_EachHasAllItsRecordsInOrder) {
    EXPECT_TRUE(Survives([this] {
        targetAnswer = GiveDataBack;
        Library library;
        std::atomic<unsigned long> logouts{0};
        unsigned long loggedLogouts = 0;
        for (unsigned round = 0; round < kRounds; ++round) {
            const bool isNewFormat = round % 2 == 0;
            std::vector<std::string> ids(kThreads);
            ChangeConfiguration(round, isNewFormat);
            {
                // After the first record the format does not change any more.
                const Meanwhile changes([&](unsigned step) {
                    ChangeConfiguration(round + step, isNewFormat != (HasLog() && step % 2 != 0));
                });
                OnThreads([&](unsigned i) {
                    ids[i] = IdOfThisThread();
                    MarkedCaller caller(library, i);
                    for (unsigned long call = 0; call < kCallsOfAThread; ++call) {
                        ASSERT_EQ(caller.Call(), CKR_OK);
                        if (call % 8 != 0) continue;
                        library->C_Logout(i);  // not in every mask
                        ++logouts;
                    }
                });
            }
            library.Finalize();
            MarkedLog log;
            ReadAndEmptyLog(log);
            ASSERT_EQ(log.callers.size(), kThreads);
            for (const auto& [i, records] : log.callers) {
                EXPECT_EQ(records.next, 2 * kCallsOfAThread) << "thread " << i;
                EXPECT_EQ(records.missing, 0U) << "thread " << i;
                EXPECT_EQ(records.functions, kMarkedFunctions) << "thread " << i;
                ExpectThread(records, log, ids[i]);
            }
            loggedLogouts += log.otherRecords;
            // Events have one form, and name their threads as the new format does.
            EXPECT_EQ(log.hasNewFormat, isNewFormat || AreEventsTested());
            EXPECT_EQ(log.hasOldFormat, !isNewFormat && !AreEventsTested());
        }
        // The mask has changed and changed back in the meantime.
        EXPECT_GT(loggedLogouts, 0U);
        EXPECT_LT(loggedLogouts, 2 * logouts);
    }));
}

// Only a call that is under way while the library stops may lose its records. No call loses the target's
// answer.
TEST_F(Threads, LibraryIsStoppedDuringCalls_OnlyRecordsOfThoseCallsAreMissing) {
    EXPECT_TRUE(Survives([this] {
        constexpr unsigned kMostStops = 200;
        targetAnswer = GiveDataBack;
        Library library;
        std::atomic<unsigned> stops{0};
        const auto stop = [&](unsigned) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            if (stops == kMostStops) return;
            library.Finalize();
            ++stops;
        };
        const Meanwhile changes([this](unsigned step) { ChangeConfiguration(step, step / 2 % 2 == 0); });
        std::vector<unsigned long> calls(kThreads);
        std::vector<std::string> ids(kThreads);
        {
            const Meanwhile stopping(stop);
            OnThreads([&](unsigned i) {
                ids[i] = IdOfThisThread();
                MarkedCaller caller(library, i);
                while (caller.Calls() < kCallsOfAThread || stops < kMostStops) {
                    ASSERT_EQ(caller.Call(), CKR_OK);
                }
                calls[i] = caller.Calls();
            });
        }
        MarkedLog log;
        log.Read(Log());
        ASSERT_EQ(log.callers.size(), kThreads);
        EXPECT_TRUE(log.hasNewFormat);
        EXPECT_EQ(log.hasOldFormat, !AreEventsTested());  // events have one form
        for (const auto& [i, records] : log.callers) {
            EXPECT_LE(records.next, 2 * calls[i]) << "thread " << i;
            const unsigned long missing = records.missing + 2 * calls[i] - records.next;
            EXPECT_LE(missing, 2 * kMostStops) << "thread " << i << " of " << calls[i] << " calls";
            EXPECT_EQ(records.functions, kMarkedFunctions) << "thread " << i;
            ExpectThread(records, log, ids[i]);
        }
    }));
}

TEST_F(Threads, OneCallWaitsInTheTarget_OthersAreNotHeldUp) {
    EXPECT_TRUE(Survives([this] {
        sem_init(&waitIsOver, 0, 0);
        targetAnswer = WaitForSlotEvent;
        Library library;
        CK_RV result = CKR_OK;
        std::thread waiting([&] {
            CK_SLOT_ID slot = 0;
            result = library->C_WaitForSlotEvent(0, &slot, nullptr);
        });
        while (!isWaiting) std::this_thread::yield();

        constexpr unsigned kCalls = 10;
        OnThreads([&](unsigned i) {
            MarkedCaller caller(library, i);
            for (unsigned call = 0; call < kCalls; ++call) EXPECT_EQ(caller.Call(), CKR_OK);
        });
        EXPECT_TRUE(Survives([&] { EXPECT_EQ(MarkedCaller(library, kThreads).Call(), CKR_OK); }));
        library.Finalize();
        EXPECT_EQ(MarkedCaller(library, kThreads + 1).Call(), CKR_OK);

        sem_post(&waitIsOver);
        waiting.join();
        EXPECT_EQ(result, CKR_NO_EVENT);
        MarkedLog log;
        log.Read(Log());
        for (unsigned i = 0; i < kThreads; ++i) EXPECT_EQ(log.callers[i].next, 2 * kCalls);
        EXPECT_EQ(log.callers[kThreads].next, 2U);
        EXPECT_EQ(log.callers[kThreads + 1].next, 2U);
        EXPECT_EQ(log.otherRecords, 2U);
    }));
}

}  // namespace
