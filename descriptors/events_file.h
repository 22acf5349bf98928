// The file that events go to.
//
// Opening, closing and appending need the record lock.
#pragma once

#include <atomic>
#include <string_view>

namespace ckscribe {

// 1 while events are written; read without the lock, too.
extern std::atomic<int> areEventsOpen;

inline bool AreEventsOpen() { return areEventsOpen.load(std::memory_order_relaxed) != 0; }

// Opens the file that the key "Events" names, in place of the one that is open; nothing if `name` is empty.
// "%p" in the name stands for the number of the process, "%%" for a percent sign. A failure goes to the error
// file.
void OpenEvents(const char* name);
void CloseEvents();

// Appends whole lines with one write. Errors are silent.
void AppendToEvents(std::string_view lines);

// To be called after each event, when its text is gone from the stack: tells a person once that the file is
// lost.
void ReportLossOfEvents();

// For a child made by fork: a name with "%p" means another file there. It is opened with the first event.
void OpenEventsAnewInChild();

}  // namespace ckscribe
