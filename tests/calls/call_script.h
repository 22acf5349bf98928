// A CallScript says what the scripted target does and notes what it saw. The test program has one;
// LibraryTest gives every test a fresh one.
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "tests/calls/scripted_target.h"

struct ReceivedCall {
    std::string function;
    std::vector<TargetWord> words;
};

// The test's thread uses the members, between calls of the library. AnswerCall reads `answer` and `result` on
// any thread.
struct CallScript {
    // A call does `answer`, which may fill outputs, and then returns `result`. An empty `answer` does
    // nothing.
    CK_RV result = CKR_OK;
    std::function<void()> answer;

    std::vector<ReceivedCall> received;
    int loads = 0;
    int unloads = 0;
    std::mutex mutex;  // of the three above

    void Reset() {
        result = CKR_OK;
        answer = nullptr;
        received.clear();
        loads = unloads = 0;
    }
};

extern CallScript script;
