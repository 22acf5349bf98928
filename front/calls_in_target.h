// Counts the calls that are inside the target library. The target is not unloaded while there are any.
//
// Any thread may use an object of this class at any time. A call may never come back: its thread ended
// inside, or the call left by longjmp. Such a call stays counted, and the target stays loaded. That does no
// harm.
#pragma once

#include <pthread.h>

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "util/cache_line.h"

namespace ckscribe {

class CallsInTarget {
public:
    // A Line counts calls and has a cache line of its own. Most threads get a line to themselves and need no
    // locked instruction on the way out. The other threads share some lines.
    struct alignas(ckscribe::kCacheLine) Line {
        // Only this thread counts here. 0 means that none does yet, and kShared that any thread may.
        std::atomic<std::uintptr_t> thread{0};
        std::atomic<long> calls{0};
    };

    // If a thread stores a value and then None() is true, every later Enter() sees that value. None() sees
    // every call that entered before.
    //
    // Entering and leaving are always inline: a call without a record consists of little else.
    [[gnu::always_inline]] Line& Enter() {
        const std::uintptr_t self = reinterpret_cast<std::uintptr_t>((void*)pthread_self());
        const std::size_t place = self / kSpacing * kSpread >> kShift;
        Line& own = ownLines[place];
        std::uintptr_t owner = own.thread.load(std::memory_order_relaxed);
        if (owner == 0 && own.thread.compare_exchange_strong(owner, self, std::memory_order_relaxed))
            owner = self;
        if (owner == self) {
            own.calls.exchange(own.calls.load(std::memory_order_relaxed) + 1, std::memory_order_seq_cst);
            return own;
        }
        Line& shared = sharedLines[place % kSharedLines];
        shared.calls.fetch_add(1, std::memory_order_seq_cst);
        return shared;
    }

    // Ends the call that was counted on `line`.
    [[gnu::always_inline]] static void Leave(Line& line) {
        if (line.thread.load(std::memory_order_relaxed) != kShared) {
            line.calls.store(line.calls.load(std::memory_order_relaxed) - 1, std::memory_order_release);
        } else {
            line.calls.fetch_sub(1, std::memory_order_release);
        }
    }

    CallsInTarget() {
        for (Line& line : sharedLines) line.thread.store(kShared, std::memory_order_relaxed);
    }

    // Returns true if no call is inside.
    bool None() const {
        for (const Line& line : ownLines) {
            if (line.calls.load(std::memory_order_seq_cst) != 0) return false;
        }
        for (const Line& line : sharedLines) {
            if (line.calls.load(std::memory_order_seq_cst) != 0) return false;
        }
        return true;
    }

private:
    static constexpr std::uintptr_t kShared = ~std::uintptr_t{0};
    static constexpr std::size_t kSharedLines = 16;
    static constexpr std::uint64_t kSpacing = 64;
    static constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;  // 2^64 over the golden ratio
    static constexpr unsigned kShift = 64 - 6;

    Line ownLines[64];
    Line sharedLines[kSharedLines];
};

}  // namespace ckscribe
