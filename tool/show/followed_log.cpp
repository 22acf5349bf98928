#include "tool/show/followed_log.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string_view>

#include "reader/log_source.h"
#include "tool/harmless_text.h"
#include "tool/messages.h"

namespace ckscribe {

namespace {

constexpr std::size_t kBlock = 1 << 20;
constexpr std::chrono::seconds kInProgress{1};

bool IsPackedFile(const std::string& path) {
    LogSource source;
    return source.Open(path) && source.IsUnpacking();
}

}  // namespace

FollowedLog::FollowedLog(std::vector<std::string> files, ShownCalls& shown)
    : paths(std::move(files)), calls(shown), reader(*this), block(kBlock) {}

FollowedLog::~FollowedLog() { Close(); }

void FollowedLog::Close() {
    if (descriptor > STDIN_FILENO) close(descriptor);
    descriptor = -1;
}

// Reads a file that cannot grow, compressed or not.
void FollowedLog::ReadPacked(const std::string& path) {
    LogSource source;
    if (source.Open(path)) {
        while (const std::size_t count = source.Read(block.data(), block.size()))
            reader.Feed({block.data(), count});
    }
    if (!source.Error().empty()) Say(fmt::format("{}: {}.", Harmless(path), source.Error()));
}

void FollowedLog::ReadOlderFiles() {
    for (std::size_t i = 0; i + 1 < paths.size(); ++i) {
        ReadPacked(paths[i]);
        reader.EndFile();
    }
}

void FollowedLog::Open() {
    const std::string& path = paths.back();
    // A FIFO without a writer must not block.
    descriptor = IsStandardInput() ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status {};
    if (descriptor < 0 || fstat(descriptor, &status) != 0) {
        if (!hasSaidWhyNotOpen)
            Say(fmt::format("{}: {}. It is read as soon as that is possible.", Harmless(path),
                            std::strerror(errno)));
        hasSaidWhyNotOpen = true;
        return;
    }
    if (S_ISDIR(status.st_mode)) {
        Say(fmt::format("{}: {}.", Harmless(path), std::strerror(EISDIR)));
        isEnded = isUseless = true;
        return;
    }
    offset = 0;
    isRegular = S_ISREG(status.st_mode);
    isPacked = isRegular && !IsStandardInput() && IsPackedFile(path);
    if (isPacked) ReadPacked(path);
}

bool FollowedLog::Read() {
    if (isEnded) return false;
    if (!isBegun) ReadOlderFiles();
    isBegun = true;
    if (descriptor < 0) Open();
    bool isNews = ReadDescriptor();
    if (isEnded) return true;
    // By now everything is read that was appended before the rotation.
    if (!isNews) isNews = FollowRotation();
    if (!isNews) reader.Settle();
    ShowCallsInProgress();
    return isNews;
}

bool FollowedLog::HasInput() const {
    pollfd input{descriptor, POLLIN, 0};
    return poll(&input, 1, 0) == 1;
}

bool FollowedLog::ReadDescriptor() {
    if (descriptor < 0 || isPacked || isEnded) return false;
    bool isNews = false;
    while (isRegular || HasInput()) {
        const ssize_t count = read(descriptor, block.data(), block.size());
        if (count < 0 && errno == EINTR) continue;
        if (count > 0) {
            reader.Feed({block.data(), static_cast<std::size_t>(count)});
            offset += static_cast<std::uint64_t>(count);
            isNews = true;
            // If a process writes without a pause, the calls that were read still reach the terminal.
            if (!isRegular) return true;
            continue;
        }
        if (isRegular) return isNews;
        if (IsStandardInput()) {
            End();
        } else {
            // All writers of the FIFO are gone. Others may come.
            Close();
        }
        return isNews;
    }
    return isNews;
}

// Returns whether there is another file to read, or the same one from its beginning.
bool FollowedLog::FollowRotation() {
    struct stat here {};
    struct stat there {};
    if (descriptor < 0 || !isRegular || fstat(descriptor, &here) != 0) return false;
    if (!isPacked && static_cast<std::uint64_t>(here.st_size) < offset) {
        reader.EndFile();
        lseek(descriptor, 0, SEEK_SET);
        offset = 0;
        return true;
    }
    if (IsStandardInput() || stat(paths.back().c_str(), &there) != 0 ||
        (here.st_ino == there.st_ino && here.st_dev == there.st_dev))
        return false;
    reader.EndFile();
    Close();
    return true;
}

void FollowedLog::ShowCallsInProgress() {
    for (auto& [place, seen] : inProgress) seen.isOpen = false;
    const Clock::time_point now = Clock::now();
    reader.ForEachOpen([&](const Call& call) {
        const auto [found, isNew] = inProgress.try_emplace({call.startPlace.file, call.startPlace.line});
        Seen& seen = found->second;
        if (isNew) seen.at = now;
        seen.isOpen = true;
        if (seen.isShown || now - seen.at < kInProgress) return;
        seen.isShown = true;
        calls.ShowOpen(call);
    });
    std::erase_if(inProgress, [](const auto& call) { return !call.second.isOpen; });
}

void FollowedLog::OnCall(const Call& call) {
    const auto found = inProgress.find({call.startPlace.file, call.startPlace.line});
    const bool isShown = found != inProgress.end() && found->second.isShown;
    if (!call.IsUnfinished() || !isShown) calls.OnCall(call);
}

void FollowedLog::End() {
    reader.Finish();
    isEnded = true;
}

}  // namespace ckscribe
