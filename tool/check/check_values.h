// This part of `ckscribe check` looks at the values of the keys that count.
#pragma once

#include "tool/configuration/setup.h"

namespace ckscribe {

// Says what each key means, and which values count in place of missing keys.
void CheckValues(Setup& setup, Findings& findings);

}  // namespace ckscribe
