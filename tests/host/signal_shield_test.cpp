#include "host/signal_shield.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <cerrno>

#include "host/host_shield.h"

namespace ckscribe {
namespace {

sigset_t Mask() {
    sigset_t mask;
    pthread_sigmask(SIG_BLOCK, nullptr, &mask);
    return mask;
}

bool IsBlocked(int signal) {
    const sigset_t mask = Mask();
    return sigismember(&mask, signal) == 1;
}

bool IsPending(int signal) {
    sigset_t pending;
    sigpending(&pending);
    return sigismember(&pending, signal) == 1;
}

volatile sig_atomic_t received = 0;
void Receive(int signal) { received = signal; }

void WriteToPipeWithoutReader() {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    EXPECT_EQ(write(ends[1], "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
    close(ends[1]);
}

class SignalShieldTest : public testing::Test {
protected:
    void SetUp() override {
        received = 0;
        for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, Receive);
    }
    void TearDown() override {
        for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_DFL);
    }
};

TEST_F(SignalShieldTest, WriteFailsBehindTheShield_ItsSignalsDoNotReachTheProcess) {
    {
        const SignalShield shield;
        WriteToPipeWithoutReader();
        raise(SIGXFSZ);
        EXPECT_TRUE(IsPending(SIGPIPE));
    }
    EXPECT_EQ(received, 0);
    EXPECT_FALSE(IsPending(SIGPIPE));
    EXPECT_FALSE(IsPending(SIGXFSZ));
    WriteToPipeWithoutReader();
    EXPECT_EQ(received, SIGPIPE);  // without a shield it arrives
}

// The shield asks the kernel itself here, see host/uncancelled_io.h.
TEST_F(SignalShieldTest, ThreadCanBeCancelledAtAnyInstruction_SignalsOfAWriteDoNotReachTheProcess) {
    int type = 0;
    pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, &type);
    BehindHostShield([] {
        const SignalShield shield;
        WriteToPipeWithoutReader();
        raise(SIGXFSZ);
    });
    pthread_setcanceltype(type, nullptr);
    EXPECT_EQ(received, 0);
    EXPECT_FALSE(IsPending(SIGPIPE));
    EXPECT_FALSE(IsPending(SIGXFSZ));
}

TEST_F(SignalShieldTest, ShieldEnds_SignalMaskIsAsBefore) {
    sigset_t usr1;
    sigemptyset(&usr1);
    sigaddset(&usr1, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &usr1, nullptr);
    {
        const SignalShield shield;
        EXPECT_TRUE(IsBlocked(SIGPIPE));
        EXPECT_TRUE(IsBlocked(SIGXFSZ));
        EXPECT_TRUE(IsBlocked(SIGUSR1));
        EXPECT_FALSE(IsBlocked(SIGTERM));
    }
    EXPECT_FALSE(IsBlocked(SIGPIPE));
    EXPECT_FALSE(IsBlocked(SIGXFSZ));
    EXPECT_TRUE(IsBlocked(SIGUSR1));
    pthread_sigmask(SIG_UNBLOCK, &usr1, nullptr);
}

TEST_F(SignalShieldTest, HostHasASignalOfAWriteWaiting_ItGoesOnWaiting) {
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    raise(SIGPIPE);
    {
        const SignalShield shield;
        WriteToPipeWithoutReader();
    }
    EXPECT_TRUE(IsBlocked(SIGPIPE));
    EXPECT_TRUE(IsPending(SIGPIPE));
    pthread_sigmask(SIG_UNBLOCK, &pipe, nullptr);
    EXPECT_EQ(received, SIGPIPE);
}

[[gnu::noinline]] void LeaveOnesOnTheStack() {
    volatile unsigned char bytes[4096];
    for (volatile unsigned char& byte : bytes) byte = 0xff;
}

[[gnu::noinline]] void RaiseAndLowerShield() { const SignalShield shield; }

TEST_F(SignalShieldTest, AnotherSignalWaitsForTheHost_ItGoesOnWaiting) {
    sigset_t usr1;
    sigemptyset(&usr1);
    sigaddset(&usr1, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &usr1, nullptr);
    raise(SIGUSR1);
    LeaveOnesOnTheStack();
    RaiseAndLowerShield();
    EXPECT_TRUE(IsPending(SIGUSR1));
    const timespec atOnce = {};
    sigtimedwait(&usr1, nullptr, &atOnce);
    pthread_sigmask(SIG_UNBLOCK, &usr1, nullptr);
}

TEST_F(SignalShieldTest, OtherSignal_ReachesTheProcess) {
    std::signal(SIGUSR1, Receive);
    {
        const SignalShield shield;
        raise(SIGUSR1);
        EXPECT_EQ(received, SIGUSR1);
    }
    std::signal(SIGUSR1, SIG_DFL);
}

TEST_F(SignalShieldTest, ShieldEnds_ErrnoIsThatOfTheWrite) {
    errno = 0;
    {
        const SignalShield shield;
        errno = EPIPE;
    }
    EXPECT_EQ(errno, EPIPE);
}

}  // namespace
}  // namespace ckscribe
