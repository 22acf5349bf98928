// Gives the whole process one object that reads the section "CkLog2" of the configuration file.
#pragma once

#include "config/logging_configuration.h"

// It is constructed when the library is loaded, and stays usable to the end of the process: exit handlers and
// static destructors of the host may still call the library.
extern CkLogConfig& configuration;

namespace ckscribe {

// Destroys the configuration. Only dlclose of the library leads here; the end of the process does not.
void DestroyProcessConfiguration();

}  // namespace ckscribe
