#include "host/host_shield.h"

#include <gtest/gtest.h>

namespace ckscribe {
namespace {

int CancelState() {
    int state;
    pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, &state);
    pthread_setcancelstate(state, nullptr);
    return state;
}

TEST(HostShield, WorkChangesErrno_ErrnoIsAsBeforeAfterwards) {
    errno = ERANGE;
    int seen = 0;
    BehindHostShield([&] {
        seen = errno;
        errno = ENOENT;
    });
    EXPECT_EQ(errno, ERANGE);
    EXPECT_EQ(seen, ERANGE);
}

TEST(HostShield, WorkGoesOn_ThreadCannotBeCancelled) {
    ASSERT_EQ(CancelState(), PTHREAD_CANCEL_ENABLE);
    int states = 0;
    BehindHostShield([&] {
        EXPECT_EQ(CancelState(), PTHREAD_CANCEL_DISABLE);
        BehindHostShield([&] { EXPECT_EQ(CancelState(), PTHREAD_CANCEL_DISABLE); });
        EXPECT_EQ(CancelState(), PTHREAD_CANCEL_DISABLE);
        ++states;
    });
    EXPECT_EQ(CancelState(), PTHREAD_CANCEL_ENABLE);
    EXPECT_EQ(states, 1);
}

TEST(HostShield, ThreadCannotBeCancelledBefore_ItCannotBeCancelledAfterwards) {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
    BehindHostShield([] {});
    EXPECT_EQ(CancelState(), PTHREAD_CANCEL_DISABLE);
    pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, nullptr);
}

bool workWasDone = false;
bool wentOnAfterwards = false;

void* CancelItself(void*) {
    pthread_cancel(pthread_self());
    BehindHostShield([] {
        pthread_testcancel();
        workWasDone = true;
    });
    pthread_testcancel();
    wentOnAfterwards = true;
    return nullptr;
}

TEST(HostShield, CancellationCameBefore_ItStrikesOnlyAfterTheWork) {
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, nullptr, CancelItself, nullptr), 0);
    void* result = nullptr;
    ASSERT_EQ(pthread_join(thread, &result), 0);
    EXPECT_EQ(result, PTHREAD_CANCELED);
    EXPECT_TRUE(workWasDone);
    EXPECT_FALSE(wentOnAfterwards);
}

}  // namespace
}  // namespace ckscribe
