// One call of the application: a record before, the call itself, a record after.
#pragma once

#include <p11-kit/pkcs11.h>

#include "config/process_configuration.h"
#include "descriptors/call_event.h"
#include "descriptors/events_file.h"
#include "front/process_bridge.h"
#include "front/startup.h"

namespace ckscribe {

// Builds and prints one record of the call `event`: calls `build(builder)` under the record lock and behind
// the shield, unless neither log nor events are open. Nothing of it reaches the application: a record that
// cannot be built, for want of memory, is left out.
void MakeRecord(CallEvent& event, void (*build)(const void* builder), const void* builder);

template <class Builder>
void MakeRecord(CallEvent& event, const Builder& builder) {
    MakeRecord(
        event, [](const void* own) { (*static_cast<const Builder*>(own))(); }, &builder);
}

// A call of a standard function. The mask is asked before and after, each time on its own: when it changes in
// between, a call has one record; kept.
//
// No lock is held across the forwarded call, and nothing here needs clean-up when the thread ends inside it
// (see host/host_shield.h). The builders hold copies of the arguments, so that a call without a record leaves
// the arguments in their registers.
//
// `function` is the exported name.
template <class Start, class Forward, class End>
CK_RV LoggedCall(const char* function, int classBit, const Start& start, const Forward& forward,
                 const End& end) {
    StartLibrary();
    CallEvent event;
    event.Begin(function);
    if (AreEventsOpen()) NoteBeginOfCall(event);
    if (configuration.DoWeLogThis(classBit)) MakeRecord(event, Start(start));
    const CK_RV rv = event.isTimed ? Timed(event, forward) : forward();
    if (configuration.DoWeLogThis(classBit)) MakeRecord(event, [rv, end] { end(rv); });
    return rv;
}

}  // namespace ckscribe
