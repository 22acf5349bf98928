// Counts the calls that are inside the target library, so that it is never unloaded under one of them.
//
// Any thread may use it at any time. A call that never comes back (its thread ended inside, it left by
// longjmp) is counted for ever, and the target then stays loaded: the harmless side of the mistake.
#pragma once

#include <atomic>
#include <cstdint>

class CallsInTarget {
public:
    using Counter = std::atomic<long>;

    // The counter of a call, told by any address on its stack. Threads have far-apart stacks and so seldom
    // share one, which would slow their calls down.
    Counter& CounterFor(const void* onStack) {
        const std::uint64_t block = reinterpret_cast<std::uintptr_t>(onStack) / kSmallestStack;
        return counters[block * kSpread >> kShift].count;
    }

    bool None() const {
        for (const Line& line : counters) {
            if (line.count.load(std::memory_order_seq_cst) != 0) return false;
        }
        return true;
    }

private:
    static constexpr std::uint64_t kSmallestStack = 16 * 1024;
    static constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;  // 2^64 over the golden ratio
    static constexpr unsigned kShift = 64 - 6;

    struct alignas(64) Line {
        Counter count{0};
    };
    Line counters[64];
};
