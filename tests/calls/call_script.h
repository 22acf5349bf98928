// What the scripted target does and what it saw. One for the test program; LibraryTest gives every test a
// fresh one.
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

// The members are for the test's thread, between calls of the library. AnswerCall reads `answer` and `result`
// on any thread.
struct CallScript {
    // What a call returns, and what it does before that: fill outputs, say. No function does nothing.
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
