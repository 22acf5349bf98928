// Gives the whole process one binding to the target library.
#pragma once

#include "front/cryptoki_bridge.h"

// It is constructed when the library is loaded, and stays usable to the end of the process: exit handlers
// and static destructors of the host may still call the library.
extern CryptokiBridge& bridge;

namespace ckscribe {

// Destroys the binding. Only the unloading of the library by dlclose calls this function.
void DestroyProcessBridge();

}  // namespace ckscribe
