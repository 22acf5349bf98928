#include "front/logged_call.h"

#include <utility>

#include "descriptors/abstract_descriptor.h"
#include "descriptors/kept_inputs.h"
#include "descriptors/tree_memory.h"
#include "host/host_shield.h"
#include "host/readable_memory.h"
#include "host/record_lock.h"

namespace ckscribe {

void MakeRecord(CallEvent* event, void (*build)(const void* builder), const void* builder) {
    const bool isLogOpen = AbstractDescriptor::isStreamOpen.load(std::memory_order_relaxed) != 0;
    if (!isLogOpen && event == nullptr) return;
    OrmaMutex* const recordLock = pCkLogMutex.load(std::memory_order_acquire);
    if (recordLock == nullptr) return;
    BehindHostShield([=] {
        const RecordLock lock(*recordLock);
        // A signal may interrupt a record on this thread, and its handler may make a call.
        CallEvent* const interrupted = std::exchange(currentCallEvent, event);
        const bool isEndOfLongInput = event != nullptr && event->isInputKept;
        const TreeMemory memory;
        // Pages that an earlier record found readable may be unmapped by now, and a target that refuses a
        // call has not looked at them.
        ForgetReadablePages();
        try {
            build(builder);
        } catch (...) {
        }
        // The input is freed here and not where the end event is written: if memory is short, the record may
        // fail before that place.
        if (isEndOfLongInput) FreeInput(*event);
        currentCallEvent = interrupted;
    });
}

}  // namespace ckscribe
