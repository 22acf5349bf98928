// A call of the application makes a record before and a record after.
#pragma once

#include <p11-kit/pkcs11.h>

#include "config/process_configuration.h"
#include "descriptors/call_event.h"
#include "descriptors/events_file.h"
#include "front/process_bridge.h"
#include "front/startup.h"

namespace ckscribe {

// Builds and prints one record of a call: calls `build(builder)` under the record lock and behind the shield,
// unless neither log nor events are open. Nothing of it reaches the application. If there is no memory for a
// record, it is left out. `event` is null for a call that leaves no events. After the end record, frees the
// input that the call's start event has kept.
void MakeRecord(CallEvent* event, void (*build)(const void* builder), const void* builder);

template <class Builder>
void MakeRecord(CallEvent* event, const Builder& builder) {
    MakeRecord(
        event, [](const void* own) { (*static_cast<const Builder*>(own))(); }, &builder);
}

// Forwards the call and notes its time. The time is 0 if nothing was forwarded, because the target lacks the
// function.
template <class Forward>
CK_RV TimedCall(CallEvent& event, const Forward& forward) {
    const bool ofCallAround = stubHasAnswered;
    stubHasAnswered = false;
    const timespec forwarded = NoteForwarding();
    const CK_RV rv = forward();
    if (!stubHasAnswered) NoteReturn(event, forwarded);
    stubHasAnswered = ofCallAround;
    return rv;
}

// Makes a call while events are open. It is a function of its own, so that other calls need no place for an
// event.
template <class Start, class Forward, class End>
[[gnu::noinline]] CK_RV CallWithEvents(const char* function, int classBit, const Start& start,
                                       const Forward& forward, const End& end) {
    CallEvent event;
    BeginCallEvent(event, function);
    if (configuration.DoWeLogThis(classBit)) MakeRecord(&event, start);
    const CK_RV rv = TimedCall(event, forward);
    if (configuration.DoWeLogThis(classBit)) {
        MakeRecord(&event, [&] { end(rv); });
    } else if (event.isInputKept) {
        MakeRecord(&event, [] {});  // frees the input
    }
    return rv;
}

// Makes a call of a standard function. COMPAT: the mask is asked before and after the call, each time anew.
// If it changes in between, the call has one record.
//
// No lock is held across the forwarded call. Nothing here needs clean-up if the thread ends inside it (see
// host/host_shield.h). The builders hold copies of the arguments, so that a call without a record leaves
// the arguments in their registers.
//
// `function` is the exported name.
template <class Start, class Forward, class End>
CK_RV LoggedCall(const char* function, int classBit, const Start& start, const Forward& forward,
                 const End& end) {
    StartLibrary();
    if (AreEventsOpen()) [[unlikely]]
        return CallWithEvents(function, classBit, Start(start), Forward(forward), End(end));
    if (configuration.DoWeLogThis(classBit)) MakeRecord(nullptr, Start(start));
    const CK_RV rv = forward();
    if (configuration.DoWeLogThis(classBit)) MakeRecord(nullptr, [rv, end] { end(rv); });
    return rv;
}

}  // namespace ckscribe
