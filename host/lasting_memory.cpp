#include "host/lasting_memory.h"

#include <pthread.h>
#include <unistd.h>

#if defined(__linux__)
#include <sys/auxv.h>
#endif

namespace ckscribe {

namespace {

// An application's variables are looked for up to this far above the innermost frame.
constexpr std::uintptr_t kNearbyStack = 64 * 1024;

std::uintptr_t AsNumber(const void* pointer) { return reinterpret_cast<std::uintptr_t>(pointer); }

#if defined(__linux__)
// The heap follows the program's image. If a program is loaded in another way, the two may be far apart or
// the other way round; then nothing between them counts as lasting.
bool IsInProgramOrHeap(std::uintptr_t page) {
    static const std::uintptr_t begin = getauxval(AT_PHDR) & ~(kPageSize - 1);
    return page >= begin && page < AsNumber(sbrk(0));
}
#else
// FreeBSD does not say where the program begins, and maps its heap as it goes.
bool IsInProgramOrHeap(std::uintptr_t) { return false; }
#endif

// The frames above this one are in use. A thread's stack may end nearby; the GNU C library keeps the
// thread's description at that end.
bool IsOnOwnStack(std::uintptr_t page) {
    const std::uintptr_t frame = AsNumber(__builtin_frame_address(0));
    const std::uintptr_t thread = (std::uintptr_t)pthread_self();
    const std::uintptr_t end =
        thread > frame && thread - frame < kNearbyStack ? thread : frame + kNearbyStack;
    return page >= (frame & ~(kPageSize - 1)) && page < end;
}

}  // namespace

bool IsLastingPage(std::uintptr_t page) { return IsOnOwnStack(page) || IsInProgramOrHeap(page); }

}  // namespace ckscribe
