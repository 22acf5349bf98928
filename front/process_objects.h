// The objects of which a process has one.
#pragma once

#include "front/cryptoki_bridge.h"
#include "front/logging_configuration.h"

// Constructed in this order when the library is loaded, destroyed the other way round when it is unloaded; at
// the end of the process they stay usable.
extern CryptokiBridge& bridge;
extern CkLogConfig& configuration;

// For the library's unloading alone.
void DestroyProcessObjects();
