// The process's one view of the configuration file's section "CkLog2".
#pragma once

#include "config/logging_configuration.h"

// Constructed when the library is loaded. It stays usable to the end of the process: exit handlers and static
// destructors of the host may still call the library.
extern CkLogConfig& configuration;

namespace ckscribe {

// Ends it. Only the library's unloading by dlclose calls this.
void DestroyProcessConfiguration();

}  // namespace ckscribe
