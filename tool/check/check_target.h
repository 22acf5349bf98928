// What `ckscribe check` says about the target library.
#pragma once

#include "tool/configuration/setup.h"

namespace ckscribe {

struct TargetCheck {
    bool initialize = false;  // also call C_Initialize and C_Finalize
    bool isVerbose = false;   // name every function that is missing
    int seconds = 10;         // how long the target may take
};

// Loads the target in a process of its own and tells what came of it.
void CheckTarget(Setup& setup, const TargetCheck& how, Findings& findings);

}  // namespace ckscribe
