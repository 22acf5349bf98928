#include "config/process_configuration.h"

#include "util/undestroyed.h"

namespace {

ckscribe::Undestroyed<CkLogConfig> theConfiguration;

}  // namespace

CkLogConfig& configuration = theConfiguration.object;

void ckscribe::DestroyProcessConfiguration() { configuration.~CkLogConfig(); }
