// Asks for the number that the system gives to a thread. `top -H` shows it, and `gettid` returns it.
//
// Asking the system costs as much as a small write, so the number is remembered for each thread.
#pragma once

namespace ckscribe {

// Returns the system's number of the calling thread. Any thread may call it at any time.
int SystemThreadNumber();

// Forgets the number of the calling thread. A child made by fork calls this function, because its thread has
// a new number.
void ForgetThreadNumber();

}  // namespace ckscribe
