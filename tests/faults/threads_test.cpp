// Many threads of one application: every call has its records, whole and in order, whatever changes
// underneath.

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

// A million in all; a tenth of that in builds that are many times slower.
constexpr unsigned long kCallsOfAThread =
    (CKSCRIBE_IS_SANITIZED ? 100'000 : 1'000'000) / (kThreads * kRounds);

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
    // The file is never seen half-written, and signatures are in every mask.
    void ChangeConfiguration(unsigned step) {
        static constexpr const char* kMasks[] = {"SIGN_VERIFY_FUNC", "SESSION_FUNC | SIGN_VERIFY_FUNC",
                                                 "ALL_FUNC"};
        std::string text = ConfigurationText();
        const std::string mask = kMasks[step % std::size(kMasks)];
        text.insert(text.rfind('}'), "   LoggingMask = " + mask + ";\n");
        if (step / 2 % 2 != 0) text.replace(text.find("NewFormat = 1"), 13, "NewFormat = 0");
        const std::string changed = directory.File("changed.conf");
        std::ofstream(changed, std::ios::binary) << text;
        std::filesystem::rename(changed, ConfigurationPath());
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }

    // Runs `work` of each thread, which gets the thread's number; all begin at once.
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

    // While it lives, `work` is done again and again on a thread of its own; it gets the number of the
    // repetition.
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
        std::filesystem::resize_file(LogPath(), 0);
    }
};

TEST_F(Threads, HaveAllTheirRecordsInOrder) {
    EXPECT_TRUE(Survives([this] {
        targetAnswer = GiveDataBack;
        Library library;
        for (unsigned round = 0; round < kRounds; ++round) {
            {
                const Meanwhile changes([this, round](unsigned step) { ChangeConfiguration(round + step); });
                OnThreads([&](unsigned i) {
                    MarkedCaller caller(library, i);
                    for (unsigned long call = 0; call < kCallsOfAThread; ++call) {
                        ASSERT_EQ(caller.Call(), CKR_OK);
                        if (call % 8 == 0) library->C_Logout(i);  // not in every mask
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
            }
            EXPECT_GT(log.otherRecords, 0U);
            EXPECT_NE(log.hasNewFormat, log.hasOldFormat);
        }
    }));
}

// A call that is under way while the library stops may lose its records, and may find no target; no other
// may.
TEST_F(Threads, LoseAtMostTheCallInWhichTheLibraryIsStopped) {
    EXPECT_TRUE(Survives([this] {
        constexpr unsigned kMostStops = 200;
        targetAnswer = GiveDataBack;
        Library library;
        std::atomic<unsigned> stops{0};
        std::atomic<unsigned> withoutTarget{0};
        const auto stop = [&](unsigned) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            if (stops == kMostStops) return;
            library.Finalize();
            ++stops;
        };
        const Meanwhile changes([this](unsigned step) { ChangeConfiguration(step); });
        std::vector<unsigned long> calls(kThreads);
        {
            const Meanwhile stopping(stop);
            OnThreads([&](unsigned i) {
                MarkedCaller caller(library, i);
                while (caller.Calls() < kCallsOfAThread || stops < kMostStops) {
                    const CK_RV rv = caller.Call();
                    ASSERT_TRUE(rv == CKR_OK || rv == CKR_FUNCTION_NOT_SUPPORTED) << rv;
                    if (rv != CKR_OK) ++withoutTarget;
                }
                calls[i] = caller.Calls();
            });
        }
        MarkedLog log;
        log.Read(Log());
        ASSERT_EQ(log.callers.size(), kThreads);
        EXPECT_LE(withoutTarget, kThreads * kMostStops);
        for (const auto& [i, records] : log.callers) {
            EXPECT_LE(records.next, 2 * calls[i]) << "thread " << i;
            const unsigned long missing = records.missing + 2 * calls[i] - records.next;
            EXPECT_LE(missing, 2 * kMostStops) << "thread " << i << " of " << calls[i] << " calls";
        }
    }));
}

TEST_F(Threads, AreNotHeldUpByACallThatWaits) {
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
