// Several processes, with several threads each, log to one file.

#include <sys/wait.h>
#include <unistd.h>

#include <thread>
#include <vector>

#include "tests/faults/marked_calls.h"

namespace {

constexpr unsigned kProcesses = 8;
constexpr unsigned kThreads = 4;
constexpr unsigned kLengths = 14;
// Each thread makes this many calls.
constexpr unsigned kCalls = (CKSCRIBE_IS_SANITIZED ? 1 : 4) * kLengths;

// Returns the length of a call's text. Each length is the double of the one before, from 8 bytes on. With the
// last one the record has 64 KiB.
std::size_t LengthOfCall(unsigned call) {
    const std::size_t length = std::size_t{8} << call % kLengths;
    return length < MarkedCaller::kLongestText ? length : MarkedCaller::kLongestText - 100;
}

class SharedLog : public FaultsTest {
protected:
    static unsigned CallerOf(unsigned process, unsigned thread) { return process * kThreads + thread; }

    // Does the work of one of the processes, once `start` can be read.
    static void CallOnAllThreads(unsigned process, int start) {
        targetAnswer = GiveDataBack;
        Library library;
        char go;
        EXPECT_EQ(read(start, &go, 1), 0);  // the parent closes the pipe
        std::vector<std::thread> threads;
        for (unsigned i = 0; i < kThreads; ++i) {
            threads.emplace_back([&, i] {
                MarkedCaller caller(library, CallerOf(process, i));
                for (unsigned call = 0; call < kCalls; ++call) {
                    EXPECT_EQ(caller.Call(LengthOfCall(call + i)), CKR_OK);
                }
            });
        }
        for (std::thread& thread : threads) thread.join();
    }

    // Lets all processes log at once and checks the log. `hasThreads` says whether the records name their
    // thread, as those of the new format do.
    void LogFromAllProcesses(bool hasThreads) {
        int start[2];
        ASSERT_EQ(pipe(start), 0);
        std::vector<pid_t> processes(kProcesses);
        for (unsigned i = 0; i < kProcesses; ++i) {
            processes[i] = fork();
            if (processes[i] != 0) continue;
            alarm(kPatience);
            close(start[1]);
            CallOnAllThreads(i, start[0]);
            _exit(HasFailure() ? 1 : 0);
        }
        close(start[1]);
        for (const pid_t process : processes) {
            int status = -1;
            EXPECT_EQ(waitpid(process, &status, 0), process);
            EXPECT_EQ(status, 0) << Ending(status);
        }
        close(start[0]);
        MarkedLog log;
        log.Read(Log());
        EXPECT_EQ(log.callers.size(), kProcesses * kThreads);
        for (unsigned i = 0; i < kProcesses; ++i) {
            for (unsigned thread = 0; thread < kThreads; ++thread) {
                const CallerRecords& records = log.callers[CallerOf(i, thread)];
                EXPECT_EQ(records.next, 2 * kCalls);
                EXPECT_EQ(records.missing, 0U);
                EXPECT_EQ(records.process, processes[i]);
                EXPECT_EQ(records.threads.size(), hasThreads ? 1U : 0U);
                EXPECT_EQ(records.functions, kMarkedFunctions);
            }
        }
        EXPECT_LT(log.shortestChildren, 40U);
        EXPECT_GT(log.longestChildren, MarkedCaller::kLongestText - 100);
    }
};

TEST_F(SharedLog, SeveralProcessesInTheNewFormat_EveryRecordIsWhole) { LogFromAllProcesses(true); }

TEST_F(SharedLog, SeveralProcessesInTheOldFormat_EveryRecordIsWhole) {
    Set("NewFormat", "0");
    LogFromAllProcesses(false);
}

}  // namespace
