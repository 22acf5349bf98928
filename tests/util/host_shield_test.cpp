#include "util/host_shield.h"

#include <gtest/gtest.h>

namespace {

int CancelState() {
    int state;
    pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, &state);
    pthread_setcancelstate(state, nullptr);
    return state;
}

TEST(HostShield, ErrnoIsAsBeforeAtItsEnd) {
    errno = ERANGE;
    BehindHostShield([] { errno = ENOENT; });
    EXPECT_EQ(errno, ERANGE);
}

TEST(HostShield, TheThreadCannotBeCancelledMeanwhile) {
    ASSERT_EQ(CancelState(), PTHREAD_CANCEL_ENABLE);
    BehindHostShield([] {
        EXPECT_EQ(CancelState(), PTHREAD_CANCEL_DISABLE);
        BehindHostShield([] { EXPECT_EQ(CancelState(), PTHREAD_CANCEL_DISABLE); });
        EXPECT_EQ(CancelState(), PTHREAD_CANCEL_DISABLE);
    });
    EXPECT_EQ(CancelState(), PTHREAD_CANCEL_ENABLE);
}

TEST(HostShield, AThreadThatCannotBeCancelledStaysSo) {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
    BehindHostShield([] {});
    EXPECT_EQ(CancelState(), PTHREAD_CANCEL_DISABLE);
    pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, nullptr);
}

}  // namespace
