// The environment of this process, for settings that decide which files it opens.
#pragma once

namespace ckscribe {

// The value of the environment variable `name`, or null when it is unset. Also null in a process that runs
// with rights its caller lacks (set-user-ID, set-group-ID, file capabilities): there the caller must not be
// able to choose the files that the process opens. The text belongs to the environment and is not to be
// freed or changed; like getenv, it must not run while another thread changes the environment.
const char* TrustedEnvironment(const char* name);

}  // namespace ckscribe
