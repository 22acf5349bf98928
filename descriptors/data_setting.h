// What becomes of the data of calls: of what goes in and out, and of what objects hold.
#pragma once

#include <atomic>

#include "config/logging_configuration.h"

namespace ckscribe {

// The key "HideData", set once, at start-up. One word that any thread may read.
extern std::atomic<DataSetting> dataSetting;

inline bool IsDataHiddenInLog() {
    return dataSetting.load(std::memory_order_relaxed) == DataSetting::kHidden;
}
inline bool IsDataShownInEvents() {
    return dataSetting.load(std::memory_order_relaxed) == DataSetting::kShown;
}

// What bytes of a call are. One fact for the text log and for events.
enum class BytesAre {
    kData,         // shown where data are shown
    kDescription,  // tell what something is, and not what it holds: always shown
};

}  // namespace ckscribe
