#include "front/logged_call.h"

#include "descriptors/abstract_descriptor.h"
#include "descriptors/tree_memory.h"
#include "host/host_shield.h"
#include "host/readable_memory.h"
#include "host/record_lock.h"

void MakeRecord(ckscribe::CallEvent& event, void (*build)(const void* builder), const void* builder) {
    const bool isLogOpen = AbstractDescriptor::isStreamOpen.load(std::memory_order_relaxed) != 0;
    if (!isLogOpen && !event.isTimed) return;
    OrmaMutex* const recordLock = pCkLogMutex.load(std::memory_order_acquire);
    if (recordLock == nullptr) return;
    ckscribe::BehindHostShield([=, &event] {
        const ckscribe::RecordLock lock(*recordLock);
        ckscribe::currentCallEvent = event.isTimed ? &event : nullptr;
        const TreeMemory memory;
        // What an earlier record told of readable memory holds no longer: since then the application may have
        // unmapped it, and a target that refuses a call has looked at nothing.
        ckscribe::ForgetReadablePages();
        try {
            build(builder);
        } catch (...) {
        }
    });
}
