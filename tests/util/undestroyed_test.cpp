#include "util/undestroyed.h"

#include <gtest/gtest.h>

namespace {

int constructed = 0;
int destroyed = 0;

struct Counting {
    Counting() { ++constructed; }
    ~Counting() { ++destroyed; }
    int value = 42;
};

TEST(Undestroyed, Object_IsConstructedAndNeverDestroyed) {
    constructed = destroyed = 0;
    {
        const ckscribe::Undestroyed<Counting> holder;
        EXPECT_EQ(holder.object.value, 42);
        EXPECT_EQ(constructed, 1);
    }
    EXPECT_EQ(constructed, 1);
    EXPECT_EQ(destroyed, 0);
}

}  // namespace
