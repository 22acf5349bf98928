// The process's one view of the configuration file's section "CkLog2".
#pragma once

#include "config/logging_configuration.h"

// Constructed when the library is loaded. It stays usable to the end of the process: exit handlers and static
// destructors of the host may still call the library.
extern CkLogConfig& configuration;

namespace ckscribe {

// Destroys the configuration. Only the unloading of the library by dlclose calls this.
void DestroyProcessConfiguration();

}  // namespace ckscribe
