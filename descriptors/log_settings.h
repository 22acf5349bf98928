// Printing and record builders use these settings. InitializeDescriptorLibrary reads them from the
// configuration at each start of the library; they stay fixed until the next start.
#pragma once

#include <atomic>

#include "host/file_creation.h"

// Application threads read these without a lock while another thread may start the library. Relaxed order is
// enough: each is a single word, and its new value may arrive late.
//
// bUseNewLogFormat is 0 if a record has several indented lines. Any other value means one line a record.
// uLoggingLevel is 1 for "DESTROY", 2 for "MODIFY", 3 for "ADMIN" and 4 otherwise. It is 0 before the
// start-up.
extern std::atomic<int> bUseNewLogFormat;
extern std::atomic<unsigned> uLoggingLevel;

namespace ckscribe {

inline bool UseNewLogFormat() { return bUseNewLogFormat.load(std::memory_order_relaxed) != 0; }

// Returns the logging level since the latest start.
inline unsigned LevelInForce() { return uLoggingLevel.load(std::memory_order_relaxed); }

// This is the value of the key "FileMode" for every file that the library creates. -1 stands for 0666 less
// the umask.
extern std::atomic<int> newFileMode;

inline NewFilePermissions PermissionsOfNewFiles() {
    const int mode = newFileMode.load(std::memory_order_relaxed);
    return mode < 0 ? NewFilePermissions() : NewFilePermissions(static_cast<mode_t>(mode));
}

}  // namespace ckscribe
