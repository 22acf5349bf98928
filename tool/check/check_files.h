// This part of `ckscribe check` looks at the files that the library writes.
#pragma once

#include "tool/configuration/setup.h"

namespace ckscribe {

// Says of the log, the error file and the events file whether this user can append to them, and who may read
// them. Creates and changes nothing.
void CheckFiles(Setup& setup, Findings& findings);

}  // namespace ckscribe
