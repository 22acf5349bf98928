// What `ckscribe check` says about the values of the keys that count.
#pragma once

#include "tool/configuration/setup.h"

namespace ckscribe {

// Tells what each key means, and what counts in place of those that are missing.
void CheckValues(Setup& setup, Findings& findings);

}  // namespace ckscribe
