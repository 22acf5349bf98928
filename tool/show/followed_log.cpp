#include "tool/show/followed_log.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "reader/log_source.h"

namespace ckscribe {

namespace {

constexpr std::size_t kBlock = 1 << 20;
constexpr std::chrono::seconds kInProgress{1};

}  // namespace

FollowedLog::FollowedLog(std::vector<std::string> files, ShownCalls& shown)
    : paths(std::move(files)), calls(shown), reader(shown) {}

FollowedLog::~FollowedLog() {
    if (descriptor > STDIN_FILENO) close(descriptor);
}

void FollowedLog::ReadOlderFiles() {
    std::vector<char> block(kBlock);
    for (std::size_t i = 0; i + 1 < paths.size(); ++i) {
        LogSource source;
        if (!source.Open(paths[i])) continue;
        while (const std::size_t count = source.Read(block.data(), block.size()))
            reader.Feed({block.data(), count});
        reader.EndFile();
    }
}

bool FollowedLog::Read() {
    if (!isBegun) ReadOlderFiles();
    isBegun = true;
    if (descriptor < 0) {
        const std::string& path = paths.back();
        descriptor = path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC);
        offset = 0;
    }
    bool isNews = ReadDescriptor();
    // What the file still got before it was rotated has been read by now.
    if (!isNews) isNews = FollowRotation();
    if (!isNews) reader.Settle();
    ShowCallsInProgress();
    return isNews;
}

bool FollowedLog::ReadDescriptor() {
    if (descriptor < 0) return false;
    std::vector<char> block(kBlock);
    bool isNews = false;
    while (true) {
        const ssize_t count = read(descriptor, block.data(), block.size());
        if (count <= 0) return isNews;
        reader.Feed({block.data(), static_cast<std::size_t>(count)});
        offset += static_cast<std::uint64_t>(count);
        isNews = true;
    }
}

// Returns whether there is another file to read, or the same one from its beginning.
bool FollowedLog::FollowRotation() {
    struct stat here {};
    struct stat there {};
    if (descriptor <= STDIN_FILENO || fstat(descriptor, &here) != 0) return false;
    if (static_cast<std::uint64_t>(here.st_size) < offset) {
        reader.EndFile();
        lseek(descriptor, 0, SEEK_SET);
        offset = 0;
        return true;
    }
    if (stat(paths.back().c_str(), &there) != 0 ||
        (here.st_ino == there.st_ino && here.st_dev == there.st_dev))
        return false;
    reader.EndFile();
    close(descriptor);
    descriptor = -1;
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

}  // namespace ckscribe
