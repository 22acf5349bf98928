// Inputs that are too long for a CallEvent stay here from the start event to the end event.
//
// A thread may end inside the target, or leave it by longjmp, and then never asks for its input again. Inputs
// of ended threads are found and freed when the number of inputs has doubled. An input is also freed when
// another call has its CallEvent at the same address. Memory therefore does not grow with the number of
// calls.
//
// Every function needs the record lock.
#pragma once

#include <string_view>

#include "host/record_lock.h"

namespace ckscribe {

struct CallEvent;

// Keeps a copy of the input for that call. Returns false if there is no memory.
bool KeepInput(const CallEvent& event, std::string_view input);

// Returns the copy, or an empty text if there is none. It is valid until the next call of a function here.
std::string_view KeptInput(const CallEvent& event);

void FreeInput(const CallEvent& event) CKSCRIBE_NEEDS(theRecordLock);
void FreeAllInputs() CKSCRIBE_NEEDS(theRecordLock);

// A child made by fork calls this function. It keeps only the inputs of the thread that forked, under the
// number that this thread has now, and frees the others.
void KeepInputsOfForkingThread(int numberInParent, int numberInChild);

}  // namespace ckscribe
