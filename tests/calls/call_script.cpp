#include "tests/calls/call_script.h"

CallScript script;

CK_RV AnswerCall(const char* function, const TargetWord* arguments, std::size_t count) {
    {
        const std::lock_guard lock(script.mutex);
        script.received.push_back({function, {arguments, arguments + count}});
    }
    if (script.answer) script.answer();
    return script.result;
}

void TargetIsLoaded() {
    const std::lock_guard lock(script.mutex);
    ++script.loads;
}

void TargetIsUnloaded() {
    const std::lock_guard lock(script.mutex);
    ++script.unloads;
}
