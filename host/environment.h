// Reads the environment of this process, for settings that decide which files it opens.
#pragma once

namespace ckscribe {

// Returns the value of the environment variable `name`, or null if it is unset. Also returns null in a
// process that has rights its caller lacks (set-user-ID, set-group-ID, file capabilities): there the caller
// must not choose the files that the process opens. The text belongs to the environment; do not free or
// change it. Like getenv, this function must not run while another thread changes the environment.
const char* TrustedEnvironment(const char* name);

}  // namespace ckscribe
