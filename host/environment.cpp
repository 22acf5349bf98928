#include "host/environment.h"

#include <stdlib.h>
#include <unistd.h>

namespace ckscribe {

const char* TrustedEnvironment(const char* name) {
#if defined(__FreeBSD__)
    return issetugid() ? nullptr : getenv(name);
#else
    return secure_getenv(name);
#endif
}

}  // namespace ckscribe
