// Start and stop of the library inside the application's process.
#pragma once

#include <atomic>

// Both are exported for the host. Any thread may call them at any time; of calls that coincide one does the
// work and the others wait for it.
extern "C" {

// Reads the configuration, loads the target library and opens the log, unless that is done. Every exported
// function calls it first.
__attribute__((visibility("default"))) void CkLogSpecialInitialize();

// Closes the log and unloads the target; the next call of any exported function starts again.
__attribute__((visibility("default"))) void CkLogSpecialFinalize();
}

extern std::atomic<int> alreadyInitialized;
extern std::atomic<int> alreadyFinalized;

namespace ckscribe {

// What exported functions call: CkLogSpecialInitialize without the call once the library has started.
inline void StartLibrary() {
    if (alreadyInitialized.load(std::memory_order_acquire) == 0) [[unlikely]]
        CkLogSpecialInitialize();
}

}  // namespace ckscribe
