// Starts and stops the library inside the application's process.
#pragma once

#include <atomic>

// Both are exported for the host. Any thread may call them at any time. If calls coincide, one does the
// work and the others wait for it.
extern "C" {

// Reads the configuration, loads the target and opens the log, unless that is done. Every exported function
// calls it first.
__attribute__((visibility("default"))) void CkLogSpecialInitialize();

// Closes the log and unloads the target. The next call of any exported function starts the library again.
__attribute__((visibility("default"))) void CkLogSpecialFinalize();
}

extern std::atomic<int> alreadyInitialized;  // 1 from the end of a start to the beginning of a stop
extern std::atomic<int> alreadyFinalized;    // 1 from the end of a stop to the end of a start

namespace ckscribe {

// Exported functions call this. Once the library has started, it does not call CkLogSpecialInitialize.
inline void StartLibrary() {
    if (alreadyInitialized.load(std::memory_order_acquire) == 0) [[unlikely]]
        CkLogSpecialInitialize();
}

}  // namespace ckscribe
