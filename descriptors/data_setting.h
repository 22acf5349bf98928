// The data setting says whether records show the data of calls: what goes in, what comes out and what objects
// hold.
#pragma once

#include <atomic>

#include "config/logging_configuration.h"

namespace ckscribe {

// This variable holds the key "HideData". The start-up sets it once; any thread may read it.
extern std::atomic<DataSetting> dataSetting;

inline bool IsDataHiddenInLog() {
    return dataSetting.load(std::memory_order_relaxed) == DataSetting::kHidden;
}
inline bool IsDataShownInEvents() {
    return dataSetting.load(std::memory_order_relaxed) == DataSetting::kShown;
}

// BytesAre says whether bytes of a call are data. The text log and events share this fact.
enum class BytesAre {
    kData,         // shown where data are shown
    kDescription,  // always shown: they say what something is, not what it holds
};

}  // namespace ckscribe
