// The number that the system gives to a thread: what `top -H` shows, and `gettid` returns.
//
// Asking the system costs as much as a small write, so the number is remembered for each thread.
#pragma once

namespace ckscribe {

// Returns the system's number of the calling thread. Any thread may call it at any time.
int SystemThreadNumber();

// Forgets the number of the calling thread. For a child made by fork: its thread has a new number.
void ForgetThreadNumber();

}  // namespace ckscribe
