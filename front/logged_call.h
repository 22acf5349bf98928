// One call of the application: a record before, the call itself, a record after.
#pragma once

#include <p11-kit/pkcs11.h>

#include "descriptors/abstract_descriptor.h"
#include "descriptors/tree_memory.h"
#include "front/process_objects.h"
#include "front/record_lock.h"
#include "front/startup.h"
#include "util/host_shield.h"
#include "util/readable_memory.h"

// Builds and prints one record. Nothing of it reaches the application: a record that cannot be built, for
// want of memory, is left out.
template <class Builder>
void MakeRecord(const Builder& builder) {
    if (AbstractDescriptor::isStreamOpen.load(std::memory_order_relaxed) == 0) return;
    OrmaMutex* const recordLock = pCkLogMutex.load(std::memory_order_acquire);
    if (recordLock == nullptr) return;
    BehindHostShield([&] {
        const OrmaLock lock(*recordLock);
        const TreeMemory memory;
        try {
            builder();
        } catch (...) {
        }
    });
}

// What an earlier call's arguments told of readable memory holds no longer: the application may have unmapped
// it.
template <class Builder>
[[gnu::noinline]] void MakeStartRecord(const Builder& builder) {
    MakeRecord([&] {
        ForgetReadablePages();
        builder();
    });
}

// What the start record told holds no longer either: a target that refuses a call has looked at nothing, and
// one that accepts it has had what it needs of the input.
template <class Builder>
[[gnu::noinline]] void MakeEndRecord(CK_RV rv, const Builder& builder) {
    MakeRecord([&] {
        ForgetReadablePages();
        builder(rv);
    });
}

// A call of a standard function. The mask is asked before and after, each time on its own: when it changes in
// between, a call has one record; kept.
//
// No lock is held across the forwarded call, and nothing here needs clean-up when the thread ends inside it
// (see util/host_shield.h).
template <class Start, class Forward, class End>
CK_RV LoggedCall(int classBit, const Start& start, const Forward& forward, const End& end) {
    StartLibrary();
    if (configuration.DoWeLogThis(classBit)) MakeStartRecord(Start(start));
    const CK_RV rv = forward();
    if (configuration.DoWeLogThis(classBit)) MakeEndRecord(rv, End(end));
    return rv;
}
