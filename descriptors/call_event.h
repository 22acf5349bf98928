// A CallEvent describes one call of the application. The start event shows the call before it is forwarded,
// the end event after it has returned.
//
// A CallEvent lies in the frame of the exported function while the call is in the target. It is plain data
// and needs no clean-up, because the thread may end inside the target. An input that does not fit into it is
// kept in descriptors/kept_inputs.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>

class CommandDescriptor;

namespace ckscribe {

// People select calls by these values. AbstractDescriptor::TellSubject sets each from the first child of its
// kind.
struct CallSubject {
    enum Field : unsigned { kSlot = 1, kSession = 2, kObject = 4, kUser = 8, kMechanism = 16 };

    unsigned known;  // the sum of all set fields
    unsigned long slot;
    unsigned long session;
    unsigned long object;
    unsigned long user;
    unsigned long mechanism;

    // Sets a field once: a field that is known keeps its value.
    void Tell(Field field, unsigned long CallSubject::*member, unsigned long value) {
        if ((known & field) != 0) return;
        known |= field;
        this->*member = value;
    }
};

// An EventRun names one load of this library in one process. No two loads share a name; a child made by fork
// has a name of its own.
struct EventRun {
    std::uint64_t began;  // nanoseconds since 1970
    unsigned process;
};

struct CallEvent {
    static constexpr std::size_t kInputRoom = 512;

    const char* function;  // the exported name
    timespec time;         // when the call began
    // The call has spent this time in the target. It is 0 if nothing was forwarded.
    std::uint64_t nanoseconds;
    std::uint64_t number;    // 0 until the first event
    EventRun run;            // the run of the first event
    bool isOutputUndefined;  // the call failed, and what its output arguments hold is not the target's
    CallSubject subject;
    // This is the length of the JSON values in "in" of a written start event.
    std::size_t inputLength;
    bool showsData;    // the input holds data
    bool isInputKept;  // the input is in descriptors/kept_inputs.h, not in `input`
    char input[kInputRoom];
};

// This is the call whose record is being built. It is null if the record belongs to no call. Whoever calls a
// builder sets it, under the record lock.
extern CallEvent* currentCallEvent;

// Returns whether the event that is being written leaves out what output arguments hold. After a failure they
// hold what happened to be there before, or reach beyond the caller's room. An event that shows no data shows
// none of it, also where it would show what a target has set: names, structures and elements of lists.
bool AreOutputsLeftOut();

// Call this function when a call begins while events are open.
void BeginCallEvent(CallEvent& event, const char* exportedName);
timespec NoteForwarding();
void NoteReturn(CallEvent& event, const timespec& forwarded);

// These functions write one event into the events file, with the content of the record's tree. They need the
// record lock and throw std::bad_alloc.
void WriteStartEvent(CallEvent& event, const CommandDescriptor& record);
void WriteEndEvent(CallEvent& event, const CommandDescriptor& record, unsigned long rv);

// Gives the events of this process a new run from here on. A child made by fork calls this function.
void ForgetEventRun();

}  // namespace ckscribe
