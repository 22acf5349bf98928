// Finds the differences between two runs.
//
// These functions are pure: any thread may call them at any time.
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

// A DifferentCall is a call that differs. The call of the other run is null where there is none.
struct DifferentCall {
    Difference difference;
    const ComparedCall* before;
    const ComparedCall* after;
};

// Returns the differences of two threads, in the order of their calls.
std::vector<DifferentCall> Compare(const std::vector<ComparedCall>& before,
                                   const std::vector<ComparedCall>& after, const SharedTexts& texts);

// Pairs the threads of two runs that belong together. It first pairs threads whose calls all ask the same,
// then threads whose first calls ask the same, then the rest, each time in the order of the runs. A pair has
// null where a run has fewer threads.
using ThreadPair = std::pair<const ComparedThread*, const ComparedThread*>;
std::vector<ThreadPair> PairThreads(const std::vector<ComparedThread>& before,
                                    const std::vector<ComparedThread>& after, const SharedTexts& texts);

}  // namespace ckscribe
