// Where the inputs of calls stay that are too long for a CallEvent, from the start event to the end event.
//
// A thread may end inside the target, or leave it by longjmp, and then never asks for its input again. Inputs
// of ended threads are found and freed when the number of inputs has doubled, and an input is freed when
// another call has its CallEvent at the same address. So what is kept never grows with the calls.
//
// Needs the record lock.
#pragma once

#include <string_view>

namespace ckscribe {

struct CallEvent;

// Keeps a copy for that call. False if there is no memory.
bool KeepInput(const CallEvent& event, std::string_view input);

// The copy, valid until the next call of a function here; empty if there is none.
std::string_view KeptInput(const CallEvent& event);

void FreeInput(const CallEvent& event);
void FreeAllInputs();

// For a child made by fork: of its parent's inputs it needs only those of the thread that forked, which has
// another number now.
void KeepInputsOfForkingThread(int numberInParent, int numberInChild);

}  // namespace ckscribe
