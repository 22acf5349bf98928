// What all descriptor printing and all record builders ask of the configuration. Set once, at start-up, by
// InitializeDescriptorLibrary; fixed until the next start-up.
#pragma once

#include <atomic>

// Application threads read these without a lock while a start-up on another thread may set them; each is a
// single word whose new value may arrive late, so relaxed order is enough.
extern std::atomic<int> bUseNewLogFormat;    // non-zero: one line a record; zero: indented, several lines
extern std::atomic<unsigned> uLoggingLevel;  // 1 "DESTROY", 2 "MODIFY", 3 "ADMIN", 4; 0 before the start-up

inline bool UseNewLogFormat() { return bUseNewLogFormat.load(std::memory_order_relaxed) != 0; }
inline unsigned LoggingLevel() { return uLoggingLevel.load(std::memory_order_relaxed); }
