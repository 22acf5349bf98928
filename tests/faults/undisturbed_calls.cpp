#include "tests/faults/undisturbed_calls.h"

#include <cerrno>
#include <csignal>

namespace {

constexpr int kErrorOfTarget = 4711;

struct ReceivedCall {
    std::string function;
    TargetWord firstArgument = 0;
} received;

CK_RV RememberAndAnswer(const char* function, const TargetWord* arguments, std::size_t) {
    received = {function, arguments[0]};
    errno = kErrorOfTarget;
    return 0x80000000 + arguments[0];
}

std::string SignalMask() {
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    std::string members;
    for (int signal = 1; signal < NSIG; ++signal) members += sigismember(&mask, signal) == 1 ? '1' : '0';
    return members;
}

}  // namespace

void ExpectCallsGoOn(const Library& library, int calls) {
    using OneWord = CK_RV(TargetWord);
    TargetAnswer* const answerBefore = targetAnswer.exchange(RememberAndAnswer);
    const std::string maskBefore = SignalMask();
    for (const char* const function : {"C_Logout", "CA_PerformSelfTest"}) {
        OneWord* const call = library.Exported<OneWord>(function);
        for (TargetWord i = 0; i < static_cast<TargetWord>(calls); ++i) {
            received = {};
            errno = 0;
            const CK_RV result = call(i);
            const int error = errno;
            EXPECT_EQ(result, 0x80000000 + i);
            EXPECT_EQ(error, kErrorOfTarget);
            EXPECT_EQ(received.function, function);
            EXPECT_EQ(received.firstArgument, i);
        }
    }
    EXPECT_EQ(SignalMask(), maskBefore);
    targetAnswer = answerBefore;
}
