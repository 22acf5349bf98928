// What all descriptor printing and all record builders ask of the configuration. Set once, at start-up, by
// InitializeDescriptorLibrary; fixed until the next start-up.
#pragma once

#include <atomic>

#include "host/file_creation.h"

// Application threads read these without a lock while a start-up on another thread may set them; each is a
// single word whose new value may arrive late, so relaxed order is enough.
extern std::atomic<int> bUseNewLogFormat;    // non-zero: one line a record; zero: indented, several lines
extern std::atomic<unsigned> uLoggingLevel;  // 1 "DESTROY", 2 "MODIFY", 3 "ADMIN", 4; 0 before the start-up

inline bool UseNewLogFormat() { return bUseNewLogFormat.load(std::memory_order_relaxed) != 0; }
inline unsigned LoggingLevel() { return uLoggingLevel.load(std::memory_order_relaxed); }

namespace ckscribe {

// The key "FileMode", for every file that the library creates; -1 stands for 0666 less the umask.
extern std::atomic<int> newFileMode;

inline NewFilePermissions PermissionsOfNewFiles() {
    const int mode = newFileMode.load(std::memory_order_relaxed);
    return mode < 0 ? NewFilePermissions() : NewFilePermissions(static_cast<mode_t>(mode));
}

}  // namespace ckscribe
