// Shows a progress bar on standard error for work on files that takes longer than a second. It prints nothing
// where standard error is no terminal.
#pragma once

#include <chrono>

#include "reader/log_reading.h"

namespace ckscribe {

class ProgressBar {
public:
    ProgressBar();
    // Removes the bar from the terminal.
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void Show(const ReadingProgress& progress);

    // Returns "[=====     ]  50 %  120 MB/s  0:12 left".
    static std::string Text(const ReadingProgress& progress, double seconds);

private:
    using Clock = std::chrono::steady_clock;

    const bool isOnTerminal;
    const Clock::time_point begin = Clock::now();
    Clock::time_point next;
    bool isShown = false;
};

}  // namespace ckscribe
