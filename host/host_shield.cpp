#include "host/host_shield.h"

constinit thread_local bool isAsynchronousBehindShield = false;
