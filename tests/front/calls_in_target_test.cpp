#include "front/calls_in_target.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <thread>
#include <vector>

using ckscribe::CallsInTarget;

namespace {

TEST(CallsInTarget, CallEntersAndLeaves_NoneIsTrueOnlyOutside) {
    ckscribe::CallsInTarget calls;
    EXPECT_TRUE(calls.None());
    auto& first = calls.Enter();
    EXPECT_FALSE(calls.None());
    auto& inside = calls.Enter();  // the target called back
    ckscribe::CallsInTarget::Leave(inside);
    EXPECT_FALSE(calls.None());
    ckscribe::CallsInTarget::Leave(first);
    EXPECT_TRUE(calls.None());
}

TEST(CallsInTarget, CallOfAnotherThreadIsInside_NoneIsFalse) {
    ckscribe::CallsInTarget calls;
    ckscribe::CallsInTarget::Line* line = nullptr;
    std::thread([&] { line = &calls.Enter(); }).join();
    EXPECT_FALSE(calls.None());
    auto& own = calls.Enter();
    ckscribe::CallsInTarget::Leave(own);
    EXPECT_FALSE(calls.None());
}

TEST(CallsInTarget, MoreThreadsThanLines_EveryCallIsCounted) {
    constexpr std::size_t kThreads = 200;
    ckscribe::CallsInTarget calls;
    std::atomic<std::size_t> inside{0};
    std::atomic<bool> mayLeave{false};
    std::vector<ckscribe::CallsInTarget::Line*> lines(kThreads);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            lines[i] = &calls.Enter();
            ++inside;
            while (!mayLeave) std::this_thread::yield();
            ckscribe::CallsInTarget::Leave(*lines[i]);
        });
    }
    while (inside < kThreads) std::this_thread::yield();
    long counted = 0;
    for (const ckscribe::CallsInTarget::Line* line :
         std::set<ckscribe::CallsInTarget::Line*>(lines.begin(), lines.end())) {
        counted += line->calls;
    }
    EXPECT_EQ(counted, static_cast<long>(kThreads));
    EXPECT_FALSE(calls.None());
    mayLeave = true;
    for (std::thread& thread : threads) thread.join();
    EXPECT_TRUE(calls.None());
}

TEST(CallsInTarget, ThreadsEnterAndLeaveAtOnce_NoCountIsLost) {
    ckscribe::CallsInTarget calls;
    std::vector<std::thread> threads;
    for (int i = 0; i < 100; ++i) {
        threads.emplace_back([&] {
            for (int call = 0; call < 2000; ++call) ckscribe::CallsInTarget::Leave(calls.Enter());
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_TRUE(calls.None());
}

}  // namespace
