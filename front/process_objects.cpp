#include "front/process_objects.h"

#include "util/undestroyed.h"

namespace {

Undestroyed<CryptokiBridge> theBridge;
Undestroyed<CkLogConfig> theConfiguration;

}  // namespace

CryptokiBridge& bridge = theBridge.object;
CkLogConfig& configuration = theConfiguration.object;

void DestroyProcessObjects() {
    configuration.~CkLogConfig();
    bridge.~CryptokiBridge();
}
