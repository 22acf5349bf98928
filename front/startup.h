// Starts and stops the library inside the application's process.
#pragma once

#include <atomic>

// Both functions are exported for the host. Any thread may call them at any time. If calls coincide, one does
// the work and the others wait for it.
extern "C" {

// Reads the configuration, loads the target and opens the log, unless that is done. Every exported function
// calls it first.
__attribute__((visibility("default"))) void CkLogSpecialInitialize();

// Closes the log and unloads the target. The next call of any exported function starts the library again.
__attribute__((visibility("default"))) void CkLogSpecialFinalize();
}

// This is 1 from the end of a start to the beginning of a stop.
extern std::atomic<int> alreadyInitialized;
// This is 1 from the end of a stop to the end of a start.
extern std::atomic<int> alreadyFinalized;

namespace ckscribe {

// Exported functions call this function. Once the library has started, it does not call
// CkLogSpecialInitialize.
inline void StartLibrary() {
    if (alreadyInitialized.load(std::memory_order_acquire) == 0) [[unlikely]]
        CkLogSpecialInitialize();
}

}  // namespace ckscribe
