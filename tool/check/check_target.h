// This part of `ckscribe check` looks at the target library.
#pragma once

#include "tool/configuration/setup.h"

namespace ckscribe {

struct TargetCheck {
    bool initialize = false;  // also call C_Initialize and C_Finalize
    bool isVerbose = false;   // name every function that is missing
    int seconds = 10;         // the target may take so long
};

// Loads the target in a process of its own and says what happened.
void CheckTarget(Setup& setup, const TargetCheck& how, Findings& findings);

}  // namespace ckscribe
