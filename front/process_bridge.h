// The process's one binding to the target library.
#pragma once

#include "front/cryptoki_bridge.h"

// Constructed when the library is loaded. It stays usable to the end of the process: exit handlers and static
// destructors of the host may still call the library.
extern CryptokiBridge& bridge;

namespace ckscribe {

// Ends it. Only the library's unloading by dlclose calls this.
void DestroyProcessBridge();

}  // namespace ckscribe
