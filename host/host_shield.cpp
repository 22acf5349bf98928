#include "host/host_shield.h"

namespace ckscribe {

constinit thread_local bool isAsynchronousBehindShield = false;

}  // namespace ckscribe
