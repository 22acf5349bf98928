// What `ckscribe check` says about the files that the library writes.
#pragma once

#include "tool/configuration/setup.h"

namespace ckscribe {

// Log, error file and events file: whether this user can append to them, and who may read them. Nothing is
// created or changed.
void CheckFiles(Setup& setup, Findings& findings);

}  // namespace ckscribe
