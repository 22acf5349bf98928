// These functions open, write and close the file that events go to.
//
// Opening, closing and appending need the record lock.
#pragma once

#include <atomic>
#include <string_view>

#include "host/record_lock.h"

namespace ckscribe {

// The value is 1 while events are written. Threads also read it without the lock.
extern std::atomic<int> areEventsOpen;

inline bool AreEventsOpen() { return areEventsOpen.load(std::memory_order_relaxed) != 0; }

// Opens the file that the key "Events" names, in place of the one that is open. Opens nothing if `name` is
// empty. In the name, "%p" stands for the number of the process and "%%" for a percent sign. Reports a
// failure to the error file.
void OpenEvents(const char* name) CKSCRIBE_NEEDS(theRecordLock);
void CloseEvents() CKSCRIBE_NEEDS(theRecordLock);

// Appends whole lines with one write. Does not report errors.
void AppendToEvents(std::string_view lines);

// Reports once to a person that the file is lost. Call it after each event, when the text of the event no
// longer lies on the stack.
void ReportLossOfEvents();

// A child made by fork calls this function. If the name holds "%p", the child has another file and opens it
// with its first event.
void OpenEventsAnewInChild();

}  // namespace ckscribe
