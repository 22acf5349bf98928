#include "tool/progress_bar.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace ckscribe {

namespace {

constexpr std::size_t kWidth = 30;

// Tests set the variable: they need no log then that takes a second.
std::chrono::milliseconds TimeBeforeFirst() {
    const char* const set = std::getenv("CKSCRIBE_PROGRESS_AFTER_MS");
    return std::chrono::milliseconds(set != nullptr ? std::atoi(set) : 1000);
}

}  // namespace

ProgressBar::ProgressBar() : isOnTerminal(isatty(STDERR_FILENO) == 1), next(begin + TimeBeforeFirst()) {}

ProgressBar::~ProgressBar() {
    if (isShown) std::fputs("\r\033[K", stderr);
}

std::string ProgressBar::Text(const ReadingProgress& progress, double seconds) {
    const double rate = static_cast<double>(progress.bytesRead) / seconds;
    const std::string speed = fmt::format("{:.0f} MB/s", rate / 1e6);
    // The size of a pipe's data is not known, and a file may have grown in the meantime.
    if (progress.size == 0)
        return fmt::format("{:.0f} MB  {}", static_cast<double>(progress.bytesRead) / 1e6, speed);
    const std::uint64_t done = std::min(progress.bytesRead, progress.size);
    const auto filled = static_cast<std::size_t>(kWidth * done / progress.size);
    const double left = rate == 0 ? 0 : static_cast<double>(progress.size - done) / rate;
    const auto whole = static_cast<long>(left + 0.5);
    return fmt::format("[{}{}] {:3} %  {}  {}:{:02} left", std::string(filled, '='),
                       std::string(kWidth - filled, ' '), 100 * done / progress.size, speed, whole / 60,
                       whole % 60);
}

void ProgressBar::Show(const ReadingProgress& progress) {
    if (!isOnTerminal) return;
    const Clock::time_point now = Clock::now();
    if (now < next) return;
    next = now + std::chrono::milliseconds(200);
    isShown = true;
    const double seconds = std::chrono::duration<double>(now - begin).count();
    std::fputs(("\r\033[K" + Text(progress, seconds)).c_str(), stderr);
    std::fflush(stderr);
}

}  // namespace ckscribe
