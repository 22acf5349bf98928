#include "host/own_image.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <memory>

namespace ckscribe {
namespace {

const char constant[] = "constant";
int initialized = 42;
int zeroed;

void Function() {}

TEST(OwnImage, OwnCodeAndData_AreInTheImage) {
    EXPECT_TRUE(IsInOwnImage(reinterpret_cast<const void*>(&Function)));
    EXPECT_TRUE(IsInOwnImage(reinterpret_cast<const void*>(&IsInOwnImage)));
    EXPECT_TRUE(IsInOwnImage(constant));
    EXPECT_TRUE(IsInOwnImage(&initialized));
    EXPECT_TRUE(IsInOwnImage(&zeroed));
}

TEST(OwnImage, AddressesOfOthers_AreNotInTheImage) {
    EXPECT_FALSE(IsInOwnImage(nullptr));
    EXPECT_FALSE(IsInOwnImage(reinterpret_cast<const void*>(UINTPTR_MAX)));
    const int onStack = 1;
    EXPECT_FALSE(IsInOwnImage(&onStack));
    EXPECT_FALSE(IsInOwnImage(std::make_unique<int>(1).get()));

    EXPECT_FALSE(IsInOwnImage(stdout));  // lies in the C library
}

}  // namespace
}  // namespace ckscribe
