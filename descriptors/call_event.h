// One call of the application, as its two events tell it: the start event when the call has not been
// forwarded yet, the end event when it has returned.
//
// A CallEvent lies in the frame of the exported function while the call is in the target. It is plain data
// and needs no clean-up: the thread may end inside the target. What does not fit in it is kept elsewhere (see
// descriptors/kept_inputs.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>

class CommandDescriptor;

namespace ckscribe {

// What people select calls by: the first child of each kind. Set by AbstractDescriptor::TellSubject.
struct CallSubject {
    enum Field : unsigned { kSlot = 1, kSession = 2, kObject = 4, kUser = 8, kMechanism = 16 };

    unsigned known;  // fields, added
    unsigned long slot;
    unsigned long session;
    unsigned long object;
    unsigned long user;
    unsigned long mechanism;

    // A field that is known keeps its value.
    void Tell(Field field, unsigned long CallSubject::*member, unsigned long value) {
        if ((known & field) != 0) return;
        known |= field;
        this->*member = value;
    }
};

// Names one load of this library in one process: no two share it. A child made by fork has its own.
struct EventRun {
    std::uint64_t began;  // nanoseconds since 1970
    unsigned process;
};

struct CallEvent {
    static constexpr std::size_t kInputRoom = 512;

    const char* function;       // the exported name
    timespec time;              // when the call began
    std::uint64_t nanoseconds;  // in the target; 0 if nothing was forwarded
    std::uint64_t number;       // 0 until the call leaves its first event
    EventRun run;               // of the first event
    CallSubject subject;
    std::size_t inputLength;  // of the JSON values in "in", of a start event that was written
    bool isInputKept;         // elsewhere, and not in `input`
    bool isTimed;             // events were open when the call began; if not, nothing else is set
    char input[kInputRoom];
};

// The call whose record is built now; null if no call is. Set by whoever calls a builder, under the record
// lock.
extern CallEvent* currentCallEvent;

// For a call that begins while events are open.
void BeginCallEvent(CallEvent& event, const char* exportedName);
timespec NoteForwarding();
void NoteReturn(CallEvent& event, const timespec& forwarded);

// Write one event into the events file, as the tree of the record has it. Need the record lock; throw
// std::bad_alloc.
void WriteStartEvent(CallEvent& event, const CommandDescriptor& record);
void WriteEndEvent(CallEvent& event, const CommandDescriptor& record, unsigned long rv);

// Names the events of this process from here on differently. For a child made by fork.
void ForgetEventRun();

}  // namespace ckscribe
