#include "host/lasting_memory.h"

#include <pthread.h>
#include <unistd.h>

#if defined(__linux__)
#include <sys/auxv.h>
#endif

namespace ckscribe {

namespace {

// How far above the innermost frame an application's variables are looked for.
constexpr std::uintptr_t kNearbyStack = 64 * 1024;

std::uintptr_t AddressOf(const void* pointer) { return reinterpret_cast<std::uintptr_t>(pointer); }

#if defined(__linux__)
// The heap follows the program's image. Where the system loads a program by other ways, the two are far apart
// or the other way round, and what lies between is not believed to last.
bool IsInProgramOrHeap(std::uintptr_t page) {
    static const std::uintptr_t begin = getauxval(AT_PHDR) & ~(kPageSize - 1);
    return page >= begin && page < AddressOf(sbrk(0));
}
#else
// FreeBSD tells nobody where the program begins, and its heap is mapped as it goes.
bool IsInProgramOrHeap(std::uintptr_t) { return false; }
#endif

// The frames above this one are in use. A thread's stack may end nearby; the GNU C library keeps what
// describes the thread at that end.
bool IsOnOwnStack(std::uintptr_t page) {
    const std::uintptr_t frame = AddressOf(__builtin_frame_address(0));
    const std::uintptr_t thread = (std::uintptr_t)pthread_self();
    const std::uintptr_t end =
        thread > frame && thread - frame < kNearbyStack ? thread : frame + kNearbyStack;
    return page >= (frame & ~(kPageSize - 1)) && page < end;
}

}  // namespace

bool IsLastingPage(std::uintptr_t page) { return IsOnOwnStack(page) || IsInProgramOrHeap(page); }

}  // namespace ckscribe
