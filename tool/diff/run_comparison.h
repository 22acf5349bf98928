// What differs between two runs.
//
// Pure functions: any thread may call them at any time.
#pragma once

#include <span>
#include <utility>
#include <vector>

#include "tool/diff/call_order.h"

namespace ckscribe {

enum class Difference {
    kGone,         // only in the first run
    kNew,          // only in the second run
    kOtherAnswer,  // in both, with another answer
    kMuchLonger,   // in both, and it took 10 times as long and 10 ms more in the second
};

// What is compared and where it differs. The call of the other run is null where there is none.
struct DifferentCall {
    Difference difference;
    const ComparedCall* before;
    const ComparedCall* after;
};

// The differences of two threads, in the order of their calls.
std::vector<DifferentCall> Compare(const std::vector<ComparedCall>& before,
                                   const std::vector<ComparedCall>& after, const SharedTexts& texts);

// Which threads of two runs belong together: those whose first calls ask the same, in the order of the runs,
// and of several first those that ask the same all along; then the rest, in order. Null where a run has
// fewer.
using ThreadPair = std::pair<const ComparedThread*, const ComparedThread*>;
std::vector<ThreadPair> PairThreads(const std::vector<ComparedThread>& before,
                                    const std::vector<ComparedThread>& after, const SharedTexts& texts);

}  // namespace ckscribe
