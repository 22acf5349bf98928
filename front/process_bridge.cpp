#include "front/process_bridge.h"

#include "util/undestroyed.h"

namespace {

ckscribe::Undestroyed<CryptokiBridge> theBridge;

}  // namespace

CryptokiBridge& bridge = theBridge.object;

void ckscribe::DestroyProcessBridge() { bridge.~CryptokiBridge(); }
