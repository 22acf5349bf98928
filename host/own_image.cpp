#include "host/own_image.h"

#include <functional>

// The linker makes these symbols. They are the first byte of the image, and the first byte behind it.
extern "C" {
extern const char __ehdr_start[] __attribute__((visibility("hidden")));
extern const char _end[] __attribute__((visibility("hidden")));
}

namespace ckscribe {

bool IsInOwnImage(const void* address) {
    const std::less<const void*> isBefore;
    return !isBefore(address, __ehdr_start) && isBefore(address, _end);
}

}  // namespace ckscribe
